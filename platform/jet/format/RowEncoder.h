#pragma once
#include "LongValues.h"
#include "Row.h"
#include "TextCodec.h"

#include <jet/wire/WireWriter.h>

namespace jet::format {

/// Faults in the values of one column. A damaged value is written as Null.
struct ColumnFaults
{
    qint64 damaged = 0;
    std::optional<Damage> first;
    qint64 undecodable = 0; ///< texts with invalid bytes
    qint64 rounded = 0;     ///< decimals with more digits than a Double holds
};

/// Writes rows in the format of the stream: a tag and the value for each column of the definition.
class RowEncoder
{
public:
    RowEncoder(Pages &pages, const TextCodec &text, const TableDefinition &table);

    void encode(const Row &row, wire::WireWriter &to);
    const std::vector<ColumnFaults> &faults() const { return m_faults; }

private:
    void encodeValue(qsizetype column, const Row &row, wire::WireWriter &to);
    void encodeText(qsizetype column, Bytes bytes, wire::WireWriter &to);
    void encodeDecimal(qsizetype column, Bytes bytes, wire::WireWriter &to);

    const TextCodec &m_text;
    const TableDefinition &m_table;
    LongValues m_longValues;
    std::vector<ColumnFaults> m_faults;
    QString m_buffer;
};

/// A Decimal's 17 bytes (sign and 128 bits) as digits with a point.
QByteArray decimalText(Bytes bytes, int scale);
/// A replication id as text: {8-4-4-4-12}.
QString guidText(Bytes bytes);

} // namespace jet::format
