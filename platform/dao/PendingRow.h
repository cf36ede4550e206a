#pragma once
#include <dao/store/Statement.h>
#include <dao/values/Schema.h>
#include <dao/values/Value.h>

#include <QStringEncoder>
#include <vector>

namespace dao {

/// The field values set since edit() or addNew(), in stored form. Used for bulk loading: the buffers are reused, so
/// nothing is allocated per row once they have grown to the largest row.
class PendingRow
{
public:
    /// One bit for each field.
    using Mask = std::vector<quint64>;

    void reset(int fieldCount);
    /// Stores the value converted to the field's type. Errors: 3421 cannot be converted, 3163 too long.
    void set(int field, const FieldInfo &info, const Value &value);
    bool isSet(int field) const { return m_mask[size_t(field) / 64] >> (field % 64) & 1; }
    bool isEmpty() const;
    const Mask &mask() const { return m_mask; }
    Value value(int field, DataType type) const;
    /// The bound memory stays valid until the next set().
    void bind(store::Statement &statement, int parameter, int field) const;

private:
    enum class Kind : quint8 { Null, Integer, Real, Text, Bytes };
    struct Cell
    {
        Kind kind = Kind::Null;
        qint64 integer = 0;
        double real = 0;
        qsizetype offset = 0;
        qsizetype length = 0;
    };

    void setText(Cell &cell, const QString &text);
    void setBytes(Cell &cell, const QByteArray &bytes);
    void reserve(qsizetype bytes);

    std::vector<Cell> m_cells;
    Mask m_mask;
    std::vector<char> m_bytes; ///< UTF-8 and binary content of all cells
    qsizetype m_used = 0;
    QStringEncoder m_encoder{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
};

} // namespace dao
