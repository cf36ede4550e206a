#pragma once
#include "Pages.h"

#include <optional>
#include <QList>
#include <QString>

namespace jet::format {

class TextCodec;

/// Column types, with the numbers of the file format.
enum class ColumnType : quint8 {
    Boolean = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    Date = 8,
    Binary = 9,
    Text = 10,
    LongBinary = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 16
};

struct ColumnDefinition
{
    QString name;
    ColumnType type = ColumnType::Long;
    int number = 0;       ///< counts deleted columns too; also the bit number in the null mask
    int variableSlot = 0; ///< index in a row's table of variable columns
    int position = 0;     ///< in the order shown to users
    int fixedOffset = 0;  ///< from the first byte after a row's column count
    int size = 0;         ///< bytes
    bool fixed = false;
    bool autoNumber = false;
    int scale = 0; ///< for Decimal

    bool isKnownType() const;
    bool isLongValue() const { return type == ColumnType::Memo || type == ColumnType::LongBinary; }
};

struct IndexDefinition
{
    struct Key
    {
        int column = 0; ///< ColumnDefinition::number
        bool descending = false;
    };
    QString name;
    QList<Key> keys;
    bool primary = false;
    bool foreign = false;
    int flags = 0; ///< 1 unique, 2 ignores nulls, 8 required
};

/// Content of a table's definition pages.
struct TableDefinition
{
    quint32 page = 0;
    quint32 rowCount = 0;
    quint32 lastAutoNumber = 0;
    int variableColumns = 0; ///< including deleted ones; 0: rows have no table of variable columns
    RowPointer ownedPages;
    QList<ColumnDefinition> columns; ///< in the order shown to users
    QList<IndexDefinition> indexes;
    std::optional<Damage> indexFault; ///< set if the indexes could not be read; the other members are valid

    /// Finds a column by name, ignoring case; null if there is none.
    const ColumnDefinition *column(QStringView name) const;
    const ColumnDefinition *columnByNumber(int number) const;
};

/// Reads the definition that begins on a page. Throws Damage if the columns cannot be read. A fault in the indexes is
/// stored in indexFault.
TableDefinition readTableDefinition(Pages &pages, const TextCodec &text, quint32 page);

} // namespace jet::format
