#pragma once
#include "DataType.h"

#include <QByteArray>
#include <QString>
#include <variant>

namespace dao {

/// A field value. The types are those of OLE VARIANT with the same codes.
class Value
{
public:
    enum class Type : int {
        Empty = 0, ///< no value: not set, or a conversion that failed
        Null = 1,
        Short = 2,
        Long = 3,
        Float = 4,
        Double = 5,
        Currency = 6,
        Date = 7,
        Text = 8,
        Error = 10, ///< a calculated cell that failed; integer() is the error number
        Boolean = 11,
        Byte = 17,
        Binary = 8209
    };

    Value() = default; ///< Empty
    static Value null();
    static Value fromShort(qint16 value);
    static Value fromLong(qint32 value);
    static Value fromFloat(float value);
    static Value fromDouble(double value);
    /// value: in ten-thousandths
    static Value fromCurrencyScaled(qint64 tenThousandths);
    /// days: since 1899-12-30, as in OLE Automation
    static Value fromDate(double days);
    static Value fromText(const QString &text);
    static Value fromBoolean(bool value);
    static Value fromByte(quint8 value);
    static Value fromBinary(const QByteArray &bytes);
    static Value fromError(int number);

    Type type() const { return m_type; }
    bool isNull() const { return m_type == Type::Null; }
    bool isEmpty() const { return m_type == Type::Empty; }
    bool isError() const { return m_type == Type::Error; }
    /// True for Null and Empty.
    bool hasNoValue() const { return m_type == Type::Null || m_type == Type::Empty; }

    /// The integer of a Short, Long, Byte, Boolean (-1/0), Currency (ten-thousandths) or Error; 0 for other types.
    qint64 integer() const;
    /// A numeric, Currency, Date or Boolean value as a double; 0 for other types.
    double real() const;
    /// The text of a Text value; empty for other types (no conversion).
    QString text() const;
    QByteArray binary() const;
    bool boolean() const { return integer() != 0; }

    /// Equal type and content. Text is compared exactly.
    bool operator==(const Value &other) const = default;

private:
    Type m_type = Type::Empty;
    std::variant<std::monostate, qint64, double, QString, QByteArray> m_data;
};

/// The value type in which a field of that type is read.
Value::Type valueTypeOf(DataType type);

/// Converts a value as an assignment does: numbers are rounded half to even and range-checked, numeric text uses "." as
/// decimal sign, dates in text are in US order or ISO form, Null stays Null (Null becomes False for Boolean). Returns
/// Empty if the value cannot be converted.
Value convertValue(const Value &value, DataType type);

} // namespace dao
