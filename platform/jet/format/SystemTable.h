#pragma once
#include "LongValues.h"
#include "TableScan.h"
#include "TextCodec.h"

namespace jet::format {

/// Result of reading a system table, compared with its stated row count.
struct SystemTableState
{
    qint64 rowsRead = 0;
    qint64 rowsStated = 0;
    bool damaged = false; ///< pages, rows or values could not be read
};

/// Reads a system table by column names. Throws Damage if the table cannot be read or a required column is missing. A
/// single value that cannot be read counts as a fault and is returned as empty.
class SystemTable
{
public:
    SystemTable(Pages &pages, const TextCodec &text, quint32 definitionPage);

    /// Column number for the functions below. Throws Damage if there is none.
    qsizetype column(QStringView name) const;

    bool next();
    qint32 integer(qsizetype column) const; ///< Byte, Integer or Long; 0 if Null
    QString text(qsizetype column);         ///< Text or Memo; empty if Null
    QByteArray bytes(qsizetype column);     ///< Binary or OLE; empty if Null

    /// Call after the last row.
    SystemTableState state() const;

private:
    Bytes raw(qsizetype column);

    const TextCodec &m_text;
    TableDefinition m_table;
    TableScan m_scan;
    LongValues m_longValues;
    const Row *m_row = nullptr;
    int m_valueFaults = 0;
};

} // namespace jet::format
