#pragma once
#include "PendingRow.h"

#include <dao/store/Connection.h>

namespace dao {

/// Writes rows of one base table. Statements are prepared once for each set of written fields.
class RowWriter
{
public:
    /// A field of the recordset that is a field of this table.
    struct Field
    {
        int index;    ///< in the recordset
        QString name; ///< in the table
    };

    RowWriter(store::Connection &connection, const TableInfo &table, const std::vector<Field> &fields);

    bool hasChanges(const PendingRow &row) const;
    /// Returns the key of the new row.
    qint64 insert(const PendingRow &row);
    /// Returns false if the row does not exist.
    bool update(const PendingRow &row, qint64 key);
    bool remove(qint64 key);

private:
    struct Prepared
    {
        PendingRow::Mask mask;
        store::Statement statement;
    };

    store::Statement &prepared(std::vector<Prepared> &cache, const PendingRow &row,
                               QString (RowWriter::*text)(const PendingRow &));
    QString insertSql(const PendingRow &row);
    QString updateSql(const PendingRow &row);
    int bindFields(store::Statement &statement, const PendingRow &row) const;

    store::Connection &m_connection;
    QString m_table; ///< quoted
    QString m_key;   ///< quoted
    std::vector<Field> m_fields;
    std::vector<Prepared> m_inserts;
    std::vector<Prepared> m_updates;
    store::Statement m_delete;
};

} // namespace dao
