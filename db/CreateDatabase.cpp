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
constexpr int kOldFormatYear = 1997;

/// The file under a name beside the wanted one until it is whole.
class UnfinishedFile
{
public:
    explicit UnfinishedFile(const QString &path)
        : m_path(path)
        , m_unfinished(path + u".new"_s)
    {
        QFile::remove(m_unfinished);
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
        {
            dao::Workspace workspace;
            dao::Database database(workspace);
            database.create(file.path(), kLocale,
                            formatYear == kOldFormatYear ? dao::FileFormat::Jet3 : dao::FileFormat::Jet4);
            dao::Transaction transaction(workspace);
            createSchema(prompts, database);
            seedStatistics(database);
            database.setProperty(kFormatYearProperty, QString::number(formatYear));
            transaction.commit();
            database.close();
        }
        file.finish();
        return true;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, messages::kCreateDatabase);
        return false;
    }
}

int formatYear(const DatabaseSession &session)
{
    return session.isOpen() ? session.database().property(kFormatYearProperty).toInt() : 0;
}

} // namespace db
