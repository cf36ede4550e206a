#include "CancelTriggers.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao {

CancelTriggers::CancelTriggers(store::Connection &connection, const QStringList &tables)
    : m_connection(connection)
{
    if (tables.isEmpty())
        return;
    connection.releaseRead();
    for (const QString &table : tables) {
        for (const QString &event : {u"INSERT"_s, u"UPDATE"_s, u"DELETE"_s}) {
            const QString name = u"dao_cancel_%1"_s.arg(m_names.size());
            connection.run(u"CREATE TEMP TRIGGER "_s + name + u" BEFORE "_s + event + u" ON main."_s +
                           sql::quotedName(table) + u" WHEN dao_cancelled() BEGIN SELECT 1; END"_s);
            m_names.append(name);
        }
    }
}

CancelTriggers::~CancelTriggers()
{
    try {
        for (const QString &name : m_names)
            m_connection.run(u"DROP TRIGGER IF EXISTS temp."_s + name);
    } catch (const std::exception &) {
        // If DROP fails, the transaction was rolled back, which removed the temporary triggers as well.
    }
}

} // namespace dao
