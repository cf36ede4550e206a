#include "TableDefinition.h"

#include "TextCodec.h"

#include <algorithm>
#include <QSet>

namespace jet::format {
namespace {

// No valid definition is larger; this limits memory.
constexpr size_t kLongestDefinition = 4 * 1024 * 1024;
constexpr int kMostColumns = 255;
constexpr quint32 kMostIndexes = 4096;
constexpr quint16 kNoColumn = 0xFFFF;
constexpr int kKeySlots = 10;

// Offsets in a definition, in a column entry and in an index entry.
struct Layout
{
    size_t rowCount, lastAutoNumber, variableColumns, columns, indexes, realIndexes, ownedPages, start, realEntry;
    size_t columnEntry, number, variableSlot, position, scale, flags, fixedOffset, size;
    size_t realDefinition, keys, realFlags, logicalDefinition, logicalReal, logicalType;
};
constexpr Layout kJet4{16, 20, 43, 45, 47, 51, 55, 63, 12, 25, 5, 7, 9, 12, 15, 21, 23, 52, 4, 46, 28, 8, 23};
constexpr Layout kJet3{12, 16, 23, 25, 27, 31, 35, 43, 8, 18, 1, 3, 5, 10, 13, 14, 16, 39, 0, 38, 20, 4, 19};

constexpr uchar kColumnFixed = 0x01;
constexpr uchar kColumnAutoNumber = 0x04;
constexpr uchar kColumnAutoGuid = 0x40;

// A definition that does not fit on its page continues on others, after the eight bytes of their headers.
std::vector<uchar> joinPages(Pages &pages, quint32 page)
{
    std::vector<uchar> joined;
    QSet<quint32> seen;
    for (quint32 next = page; next != 0;) {
        if (seen.contains(next) || joined.size() > kLongestDefinition)
            throw Damage(Fault::EndlessChain, page);
        seen.insert(next);
        const Bytes bytes = pages.view(next);
        if (bytes[0] != kDefinitionPage)
            throw Damage(Fault::WrongPageKind, next);
        const Bytes content = joined.empty() ? bytes : bytes.subspan(8);
        joined.insert(joined.end(), content.begin(), content.end());
        next = u32At(bytes, 4);
    }
    return joined;
}

int expectedSize(ColumnType type)
{
    switch (type) {
    case ColumnType::Byte:
        return 1;
    case ColumnType::Integer:
        return 2;
    case ColumnType::Long:
    case ColumnType::Single:
        return 4;
    case ColumnType::Currency:
    case ColumnType::Double:
    case ColumnType::Date:
        return 8;
    case ColumnType::Guid:
        return 16;
    case ColumnType::Decimal:
        return 17;
    default:
        return -1;
    }
}

ColumnDefinition readColumn(Bytes entry, const Layout &layout)
{
    ColumnDefinition column;
    column.type = ColumnType(entry[0]);
    column.number = u16At(entry, layout.number);
    column.variableSlot = u16At(entry, layout.variableSlot);
    column.position = u16At(entry, layout.position);
    column.scale = column.type == ColumnType::Decimal ? u8At(entry, layout.scale) : 0;
    const uchar flags = u8At(entry, layout.flags);
    column.fixed = flags & kColumnFixed;
    column.autoNumber = (column.type == ColumnType::Long && (flags & kColumnAutoNumber)) ||
                        (column.type == ColumnType::Guid && (flags & kColumnAutoGuid));
    column.fixedOffset = u16At(entry, layout.fixedOffset);
    column.size = column.type == ColumnType::Boolean ? 0 : u16At(entry, layout.size);
    if (column.number > kMostColumns || column.scale > 28)
        throw Damage(Fault::BadCount);
    if (!column.isKnownType() || (expectedSize(column.type) >= 0 && column.size != expectedSize(column.type)))
        throw Damage(Fault::BadType);
    return column;
}

QString readName(ByteCursor &cursor, bool jet4, const TextCodec &text)
{
    const size_t length = jet4 ? cursor.u16() : cursor.u8();
    return text.name(cursor.take(length));
}

// If two columns used the same bytes, one of them would be read wrongly.
void checkPlaces(const QList<ColumnDefinition> &columns)
{
    QList<std::pair<int, int>> fixed;
    QSet<int> slots;
    for (const ColumnDefinition &column : columns) {
        if (column.type == ColumnType::Boolean)
            continue;
        if (column.fixed)
            fixed.append({column.fixedOffset, column.fixedOffset + column.size});
        else if (slots.contains(column.variableSlot))
            throw Damage(Fault::BadOffset);
        else
            slots.insert(column.variableSlot);
    }
    std::sort(fixed.begin(), fixed.end());
    for (qsizetype i = 1; i < fixed.size(); ++i) {
        if (fixed.at(i).first < fixed.at(i - 1).second)
            throw Damage(Fault::BadOffset);
    }
}

QList<ColumnDefinition> readColumns(ByteCursor &cursor, int count, bool jet4, const TextCodec &text)
{
    const Layout &layout = jet4 ? kJet4 : kJet3;
    QList<ColumnDefinition> columns;
    QSet<int> numbers;
    QSet<QString> names;
    for (int i = 0; i < count; ++i)
        columns.append(readColumn(cursor.take(layout.columnEntry), layout));
    for (ColumnDefinition &column : columns) {
        column.name = readName(cursor, jet4, text);
        numbers.insert(column.number);
        names.insert(column.name.toCaseFolded());
    }
    if (numbers.size() != count || names.size() != count)
        throw Damage(Fault::BadName);
    checkPlaces(columns);
    std::stable_sort(columns.begin(), columns.end(), [](const ColumnDefinition &a, const ColumnDefinition &b) {
        return std::pair(a.position, a.number) < std::pair(b.position, b.number);
    });
    return columns;
}

struct RealIndex
{
    QList<IndexDefinition::Key> keys;
    int flags = 0;
};

RealIndex readRealIndex(Bytes bytes, const Layout &layout, const TableDefinition &table)
{
    RealIndex index;
    for (int i = 0; i < kKeySlots; ++i) {
        const size_t at = layout.keys + size_t(i) * 3;
        const quint16 column = u16At(bytes, at);
        if (column == kNoColumn)
            continue;
        if (!table.columnByNumber(column))
            throw Damage(Fault::BadName);
        index.keys.append({column, u8At(bytes, at + 2) != 1});
    }
    index.flags = u8At(bytes, layout.realFlags);
    return index;
}

// An index as users see it is a logical index. Several may share one physical index, which has the keys and flags.
QList<IndexDefinition> readIndexes(ByteCursor &cursor, quint32 logicalCount, quint32 realCount, bool jet4,
                                   const TextCodec &text, const TableDefinition &table)
{
    const Layout &layout = jet4 ? kJet4 : kJet3;
    QList<RealIndex> real;
    for (quint32 i = 0; i < realCount; ++i)
        real.append(readRealIndex(cursor.take(layout.realDefinition), layout, table));
    QList<IndexDefinition> indexes;
    for (quint32 i = 0; i < logicalCount; ++i) {
        const Bytes entry = cursor.take(layout.logicalDefinition);
        const quint32 number = u32At(entry, layout.logicalReal);
        if (number >= quint32(real.size()))
            throw Damage(Fault::BadCount);
        const int type = u8At(entry, layout.logicalType);
        const RealIndex &source = real.at(qsizetype(number));
        indexes.append({QString(), source.keys, type == 1, type == 2, source.flags});
    }
    for (IndexDefinition &index : indexes) {
        index.name = readName(cursor, jet4, text);
        if (index.keys.isEmpty())
            throw Damage(Fault::BadCount);
    }
    return indexes;
}

} // namespace

bool ColumnDefinition::isKnownType() const
{
    return (type >= ColumnType::Boolean && type <= ColumnType::Memo) || type == ColumnType::Guid ||
           type == ColumnType::Decimal;
}

const ColumnDefinition *TableDefinition::column(QStringView name) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const ColumnDefinition &column) {
        return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? nullptr : &*found;
}

const ColumnDefinition *TableDefinition::columnByNumber(int number) const
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const ColumnDefinition &column) { return column.number == number; });
    return found == columns.end() ? nullptr : &*found;
}

TableDefinition readTableDefinition(Pages &pages, const TextCodec &text, quint32 page)
{
    const bool jet4 = pages.isJet4();
    const Layout &layout = jet4 ? kJet4 : kJet3;
    const std::vector<uchar> joined = joinPages(pages, page);
    const Bytes bytes(joined);

    TableDefinition table;
    table.page = page;
    table.rowCount = u32At(bytes, layout.rowCount);
    table.lastAutoNumber = u32At(bytes, layout.lastAutoNumber);
    table.variableColumns = u16At(bytes, layout.variableColumns);
    table.ownedPages = RowPointer::of(u32At(bytes, layout.ownedPages));
    const int columnCount = u16At(bytes, layout.columns);
    const quint32 logicalCount = u32At(bytes, layout.indexes);
    const quint32 realCount = u32At(bytes, layout.realIndexes);
    if (columnCount > kMostColumns || table.variableColumns > kMostColumns || logicalCount > kMostIndexes ||
        realCount > kMostIndexes)
        throw Damage(Fault::BadCount, page);

    ByteCursor cursor(bytes, layout.start + realCount * layout.realEntry);
    try {
        table.columns = readColumns(cursor, columnCount, jet4, text);
    } catch (const Damage &damage) {
        throw Damage(damage.fault(), page);
    }
    try {
        table.indexes = readIndexes(cursor, logicalCount, realCount, jet4, text, table);
    } catch (const Damage &damage) {
        table.indexFault = Damage(damage.fault(), page);
    }
    return table;
}

} // namespace jet::format
