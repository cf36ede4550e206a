#pragma once
#include "LongValues.h"
#include "TableScan.h"
#include "TextCodec.h"

namespace jet::format {

/// What was read of a table of the file's own, against what it states.
struct SystemTableState
{
    qint64 rowsRead = 0;
    qint64 rowsStated = 0;
    bool damaged = false; ///< pages, rows or values could not be read
};

/// A table of the file's own, read by the names of its columns. Damage when the table cannot be read or lacks a column
/// that is asked for; a single value that cannot be read counts as a fault and reads as empty.
class SystemTable
{
public:
    SystemTable(Pages &pages, const TextCodec &text, quint32 definitionPage);

    /// The number of a column for the calls below; Damage when there is none.
    qsizetype column(QStringView name) const;

    bool next();
    qint32 integer(qsizetype column) const; ///< Byte, Integer or Long; 0 when Null
    QString text(qsizetype column);         ///< Text or Memo; empty when Null
    QByteArray bytes(qsizetype column);     ///< Binary or OLE; empty when Null

    /// To be asked after the last row.
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
