#include "CreateDatabase.h"

#include "DatabaseSession.h"
#include "Errors.h"
#include "Messages.h"
#include "Schema.h"

#include <QFile>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kLocale = u";LANGID=0x0409;CP=1252;COUNTRY=0"_s;
const QString kFormatYearProperty = u"FormatYear"_s;

/// The file under a name of its own beside the wanted one until it is whole.
class UnfinishedFile
{
public:
    explicit UnfinishedFile(const QString &path)
        : m_path(path)
    {
        int number = 0;
        do
            m_unfinished = u"%1.%2.new"_s.arg(path).arg(++number);
        while (QFile::exists(m_unfinished));
    }
    ~UnfinishedFile() { QFile::remove(m_unfinished); }
    UnfinishedFile(const UnfinishedFile &) = delete;
    UnfinishedFile &operator=(const UnfinishedFile &) = delete;

    const QString &path() const { return m_unfinished; }

    void finish()
    {
        constexpr int kCannotOpenFile = 3051;
        if (!QFile::rename(m_unfinished, m_path))
            throw dao::DaoException(kCannotOpenFile, u"DAO.Workspace"_s,
                                    u"The file '%1' cannot be written."_s.arg(m_path));
    }

private:
    QString m_path;
    QString m_unfinished;
};

void fillNewFile(tarnwick::UserPrompts &prompts, const QString &path, int formatYear)
{
    dao::Workspace workspace;
    dao::Database database(workspace);
    createEmptyDatabase(database, path, formatYear);
    dao::Transaction transaction(workspace);
    createSchema(prompts, database);
    seedStatistics(database);
    transaction.commit();
    database.close();
}

void refuseExisting(const QString &path)
{
    constexpr int kDatabaseExists = 3204;
    if (QFile::exists(path))
        throw dao::DaoException(kDatabaseExists, u"DAO.Workspace"_s, u"Database already exists: '%1'."_s.arg(path));
}

} // namespace

bool createDatabase(tarnwick::UserPrompts &prompts, const QString &path, int formatYear)
{
    prompts.status(messages::kCreatingStatus, path);
    try {
        refuseExisting(path);
        UnfinishedFile file(path);
        try {
            fillNewFile(prompts, file.path(), formatYear);
        } catch (const dao::DaoException &exception) {
            // The user asked for the file by its own name.
            throw dao::DaoException(exception.number(), exception.source(),
                                    QString(exception.description()).replace(file.path(), path));
        }
        file.finish();
        return true;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, messages::kCreateDatabase);
        return false;
    }
}

void createEmptyDatabase(dao::Database &database, const QString &path, int formatYear)
{
    database.create(path, kLocale, formatYear == kOldFormatYear ? dao::FileFormat::Jet3 : dao::FileFormat::Jet4);
    database.setProperty(kFormatYearProperty, QString::number(formatYear));
}

int formatYear(const DatabaseSession &session)
{
    return session.isOpen() ? session.database().property(kFormatYearProperty).toInt() : 0;
}

} // namespace db
