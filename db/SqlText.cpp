#include "SqlText.h"

#include <dao/Recordset.h>

namespace db {

using namespace Qt::StringLiterals;

void refuseQuotes(std::span<const tarnwick::FormatArg> arguments)
{
    constexpr int kSyntaxError = 3075;
    for (const tarnwick::FormatArg &argument : arguments) {
        const QString *text = std::get_if<QString>(&argument.value());
        const QChar *character = std::get_if<QChar>(&argument.value());
        if ((text && text->contains(u'\'')) || (character && *character == u'\''))
            throw dao::DaoException(kSyntaxError, u"DAO.QueryDef"_s,
                                    u"Syntax error in string in query expression: \"%1\" holds a single quote."_s.arg(
                                        text ? *text : QString(*character)));
    }
}

int executeSql(dao::Database &database, const QString &sql)
{
    return dao::QueryDef(database, sql).execute();
}

dao::Value firstValue(dao::Database &database, const QString &sql)
{
    const dao::QueryDef query(database, sql);
    dao::Recordset recordset(database);
    recordset.open(dao::Recordset::Type::Snapshot, query);
    return recordset.isEof() ? dao::Value::null() : recordset.value(0);
}

} // namespace db
