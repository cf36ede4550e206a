#pragma once
#include "TableDefinition.h"

namespace jet::format {

/// A parsed row: for each column of the definition whether it has a value, and its bytes. The bytes are those of the
/// page, so a row is valid as long as the page.
class Row
{
public:
    /// Throws Damage if the row's internal tables are inconsistent.
    void parse(Bytes bytes, const TableDefinition &table, bool jet4);

    /// Bit of the null mask: the value of a Boolean; for other types whether there is a value (an empty text is one).
    bool bit(qsizetype column) const { return m_fields[size_t(column)].bit; }
    bool isNull(qsizetype column) const { return !bit(column); }
    Bytes bytes(qsizetype column) const { return m_fields[size_t(column)].bytes; }

private:
    struct Field
    {
        bool bit = false;
        Bytes bytes;
    };
    struct Frame;

    static Frame frameJet4(Bytes bytes, bool variable);
    static Frame frameJet3(Bytes bytes, bool variable, std::array<quint16, 257> &offsets);
    void place(Field &field, const ColumnDefinition &column, Bytes bytes, const Frame &frame, size_t head) const;

    std::vector<Field> m_fields;
    std::array<quint16, 257> m_offsets{};
};

} // namespace jet::format
