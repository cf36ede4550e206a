#include "CancelTriggers.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const char16_t *const events[] = {u"INSERT", u"UPDATE", u"DELETE"};

QString triggerName(const char16_t *event)
{
    return u"dao_cancel_"_s + QString::fromUtf16(event);
}

} // namespace

CancelTriggers::CancelTriggers(store::Connection &connection, const QString &table)
    : m_connection(connection)
    , m_installed(!table.isEmpty())
{
    if (!m_installed)
        return;
    connection.releaseRead();
    for (const char16_t *event : events) {
        connection.run(u"CREATE TEMP TRIGGER "_s + triggerName(event) + u" BEFORE "_s + QString::fromUtf16(event) +
                       u" ON main."_s + sql::quotedName(table) + u" WHEN dao_cancelled() BEGIN SELECT 1; END"_s);
    }
}

CancelTriggers::~CancelTriggers()
{
    if (!m_installed)
        return;
    try {
        drop();
    } catch (const std::exception &) {
        // Gone with the transaction, then.
    }
}

void CancelTriggers::drop()
{
    for (const char16_t *event : events)
        m_connection.run(u"DROP TRIGGER IF EXISTS temp."_s + triggerName(event));
}

} // namespace dao
