#include "CreateDatabase.h"

#include "DatabaseSession.h"
#include "Errors.h"
#include "Messages.h"
#include "Schema.h"
#include "UnfinishedFile.h"

#include <dao/values/Errors.h>
#include <QFileInfo>

namespace db {

using namespace Qt::StringLiterals;

namespace {

const QString kLocale = u";LANGID=0x0409;CP=1252;COUNTRY=0"_s;
const QString kFormatYearProperty = u"FormatYear"_s;

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
    if (QFileInfo::exists(path))
        throw dao::DaoException(dao::error::DatabaseExists, u"DAO.Workspace"_s,
                                u"Database already exists: '%1'."_s.arg(path));
}

} // namespace

bool createDatabase(tarnwick::UserPrompts &prompts, const QString &path, int formatYear)
{
    prompts.status(messages::kCreatingStatus, path);
    const auto create = [&] {
        refuseExisting(path);
        UnfinishedFile file(path);
        file.fill([&] { fillNewFile(prompts, file.path(), formatYear); });
        file.finish();
    };
    return tarnwick::attempt(prompts, create, messages::kCreateDatabase);
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
