#pragma once
#include <QString>

namespace dao {

/// Field types by their DAO numbers.
enum class DataType : int {
    Unknown = 0,
    Boolean = 1,  ///< stored as -1 or 0
    Byte = 2,     ///< unsigned 8 bits
    Integer = 3,  ///< signed 16 bits
    Long = 4,     ///< signed 32 bits
    Currency = 5, ///< 4 decimals; stored as a real rounded to four decimals
    Single = 6,   ///< stored as the nearest 32-bit float, widened
    Double = 7,
    Date = 8, ///< days since 1899-12-30; the fraction is the time of day
    Binary = 9,
    Text = 10, ///< up to 255 characters, or the field's size
    LongBinary = 11,
    Memo = 12, ///< text of any length
    Guid = 15,
    Decimal = 20 ///< stored as Double
};

/// Bits of a field's attribute word.
enum FieldAttribute : int { FixedField = 1, VariableField = 2, AutoIncrement = 16, Updatable = 32 };

/// Bits of a table's attribute word. Tables with one of the first two bits are hidden from users.
enum TableAttribute : int { HiddenObject = 1, SystemObject = int(0x80000002), AttachedTable = 0x40000000 };

/// Bits of a relation's attribute word.
enum RelationAttribute : int { RelationUnique = 1, DontEnforce = 2, UpdateCascade = 0x100, DeleteCascade = 0x1000 };

constexpr bool isTextType(DataType type)
{
    return type == DataType::Text || type == DataType::Memo;
}
constexpr bool isNumericType(DataType type)
{
    return (type >= DataType::Byte && type <= DataType::Double) || type == DataType::Decimal;
}
constexpr bool isIntegerType(DataType type)
{
    return type >= DataType::Byte && type <= DataType::Long;
}

} // namespace dao
