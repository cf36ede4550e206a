#include "ListNames.h"

#include "FieldAccess.h"
#include "Messages.h"

#include <tarnwick/Failures.h>

namespace db {

using namespace Qt::StringLiterals;

std::optional<QStringList> fetchListNames(DatabaseSession &session, const QString &column, const QString &table)
{
    if (!checkConnected(session))
        return std::nullopt;
    QStringList names;
    const auto fetch = [&] {
        const QString sql = tarnwick::format(u"SELECT %S FROM %S ORDER BY %S", column, table, column);
        dao::Recordset records(session.database());
        for (records.open(dao::Recordset::Type::Dynaset, sql); !records.isEof(); records.moveNext()) {
            const QString name = getField<QString>(records, 0);
            if (!name.isEmpty())
                names.append(name);
        }
    };
    if (!tarnwick::attempt(session.prompts(), fetch, messages::kFetchListNames))
        return std::nullopt;
    return names;
}

} // namespace db
