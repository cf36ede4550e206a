#include "Row.h"

namespace jet::format {

// Layout of a row: column count, fixed values, variable values, their offsets, null mask.
struct Row::Frame
{
    size_t columns = 0;   ///< number of columns of the table when the row was written
    size_t variables = 0; ///< number of variable values; the offset table has one more entry
    size_t valuesEnd = 0; ///< end of the values and begin of the offset table
    Bytes mask;
};

namespace {

constexpr size_t kMostColumns = 255;

size_t maskSize(size_t columns)
{
    return (columns + 7) / 8;
}

} // namespace

// Offsets are stored from last to first, two bytes each, before their count and the null mask.
Row::Frame Row::frameJet4(Bytes bytes, bool variable)
{
    Frame frame;
    frame.columns = u16At(bytes, 0);
    const size_t mask = maskSize(frame.columns);
    if (frame.columns > kMostColumns + 1 || bytes.size() < 2 + mask)
        throw Damage(Fault::BadCount);
    frame.mask = bytes.last(mask);
    frame.valuesEnd = bytes.size() - mask;
    if (!variable)
        return frame;
    if (frame.valuesEnd < 4)
        throw Damage(Fault::BadLength);
    frame.variables = u16At(bytes, frame.valuesEnd - 2);
    const size_t table = 2 + 2 * (frame.variables + 1);
    if (frame.variables > kMostColumns || frame.valuesEnd < 2 + table)
        throw Damage(Fault::BadCount);
    frame.valuesEnd -= table;
    return frame;
}

// Offsets have one byte. A second table lists the variable columns from which on another 256 must be added.
Row::Frame Row::frameJet3(Bytes bytes, bool variable, std::array<quint16, 257> &offsets)
{
    Frame frame;
    frame.columns = u8At(bytes, 0);
    const size_t mask = maskSize(frame.columns);
    if (bytes.size() < 1 + mask)
        throw Damage(Fault::BadCount);
    frame.mask = bytes.last(mask);
    frame.valuesEnd = bytes.size() - mask;
    if (!variable)
        return frame;
    frame.variables = u8At(bytes, frame.valuesEnd - 1);
    size_t jumps = (bytes.size() - 1) / 256;
    if (frame.valuesEnd < 1 + jumps + frame.variables + 2)
        throw Damage(Fault::BadCount);
    const size_t jumpTable = frame.valuesEnd - 2; // the first jump; the others precede it
    const size_t offsetTable = jumpTable - jumps; // the first offset; the others precede it
    if ((offsetTable - frame.variables) / 256 < jumps)
        --jumps; // the last entry only encodes the length
    size_t used = 0;
    for (size_t i = 0; i <= frame.variables; ++i) {
        while (used < jumps && i == bytes[jumpTable - used])
            ++used;
        offsets[i] = quint16(bytes[offsetTable - i] + used * 256);
    }
    frame.valuesEnd = offsetTable - frame.variables;
    return frame;
}

void Row::place(Field &field, const ColumnDefinition &column, Bytes bytes, const Frame &frame, size_t head) const
{
    if (column.fixed) {
        field.bytes = part(bytes.first(frame.valuesEnd), head + size_t(column.fixedOffset), size_t(column.size));
        return;
    }
    const size_t slot = size_t(column.variableSlot);
    if (slot >= frame.variables)
        throw Damage(Fault::BadCount);
    const size_t start = m_offsets[slot];
    const size_t end = m_offsets[slot + 1];
    if (start < head || start > end || end > frame.valuesEnd)
        throw Damage(Fault::BadOffset);
    field.bytes = bytes.subspan(start, end - start);
}

void Row::parse(Bytes bytes, const TableDefinition &table, bool jet4)
{
    const size_t head = jet4 ? 2 : 1;
    const bool variable = table.variableColumns > 0;
    const Frame frame = jet4 ? frameJet4(bytes, variable) : frameJet3(bytes, variable, m_offsets);
    if (jet4 && variable) {
        for (size_t i = 0; i <= frame.variables; ++i)
            m_offsets[i] = u16At(bytes, frame.valuesEnd + 2 * (frame.variables - i));
    }
    m_fields.resize(size_t(table.columns.size()));
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const ColumnDefinition &column = table.columns.at(qsizetype(i));
        Field &field = m_fields[i];
        const size_t number = size_t(column.number);
        // A row written before the column was added has no bit for it: Null, or False.
        field.bit = number < frame.columns && (frame.mask[number / 8] & (1 << (number % 8)));
        field.bytes = {};
        if (field.bit && column.type != ColumnType::Boolean)
            place(field, column, bytes, frame, head);
    }
}

} // namespace jet::format
