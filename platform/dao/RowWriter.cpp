#include "RowWriter.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao {

RowWriter::RowWriter(store::Connection &connection, const TableInfo &table, const std::vector<Field> &fields)
    : m_connection(connection)
    , m_table(sql::quotedName(table.name))
    , m_key(sql::quotedName(table.keyColumn))
    , m_fields(fields)
{
}

// A recordset over a join can change one of its tables alone.
bool RowWriter::hasChanges(const PendingRow &row) const
{
    return std::any_of(m_fields.begin(), m_fields.end(), [&](const Field &field) { return row.isSet(field.index); });
}

store::Statement &RowWriter::prepared(std::vector<Prepared> &cache, const PendingRow &row,
                                      QString (RowWriter::*text)(const PendingRow &))
{
    for (Prepared &entry : cache) {
        if (entry.mask == row.mask())
            return entry.statement;
    }
    // Limits the cache: programs normally use few sets of fields, and each cached statement takes memory.
    constexpr size_t kMaxStatements = 64;
    if (cache.size() >= kMaxStatements)
        cache.clear();
    cache.push_back({row.mask(), store::Statement(m_connection, (this->*text)(row))});
    return cache.back().statement;
}

QString RowWriter::insertSql(const PendingRow &row)
{
    QStringList names;
    QStringList places;
    for (const Field &field : m_fields) {
        if (row.isSet(field.index)) {
            names.append(sql::quotedName(field.name));
            places.append(u"?"_s);
        }
    }
    if (names.isEmpty())
        return u"INSERT INTO "_s + m_table + u" DEFAULT VALUES"_s;
    return u"INSERT INTO "_s + m_table + u" ("_s + names.join(u", "_s) + u") VALUES ("_s + places.join(u", "_s) + u')';
}

QString RowWriter::updateSql(const PendingRow &row)
{
    QStringList assignments;
    for (const Field &field : m_fields) {
        if (row.isSet(field.index))
            assignments.append(sql::quotedName(field.name) + u" = ?"_s);
    }
    return u"UPDATE "_s + m_table + u" SET "_s + assignments.join(u", "_s) + u" WHERE "_s + m_key + u" = ?"_s;
}

int RowWriter::bindFields(store::Statement &statement, const PendingRow &row) const
{
    int parameter = 0;
    for (const Field &field : m_fields) {
        if (row.isSet(field.index))
            row.bind(statement, ++parameter, field.index);
    }
    return parameter;
}

qint64 RowWriter::insert(const PendingRow &row)
{
    store::Statement &statement = prepared(m_inserts, row, &RowWriter::insertSql);
    bindFields(statement, row);
    statement.run();
    return m_connection.lastRowId();
}

bool RowWriter::update(const PendingRow &row, qint64 key)
{
    store::Statement &statement = prepared(m_updates, row, &RowWriter::updateSql);
    const int fields = bindFields(statement, row);
    statement.bind(fields + 1, key);
    statement.run();
    return m_connection.changes() > 0;
}

bool RowWriter::remove(qint64 key)
{
    if (!m_delete.isValid())
        m_delete = store::Statement(m_connection, u"DELETE FROM "_s + m_table + u" WHERE "_s + m_key + u" = ?"_s);
    m_delete.bind(1, key);
    m_delete.run();
    return m_connection.changes() > 0;
}

} // namespace dao
