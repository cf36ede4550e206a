#include "FormatList.h"

#include "Messages.h"

namespace query {

using namespace Qt::StringLiterals;
using db::ColumnFormat;

const QString DEFAULT_DISPLAY_FORMAT = u"config\\arvo\\display_format.opt"_s;

namespace {

constexpr int kFileVersion = 1;
constexpr int kEntryVersion = 1;
// Smallest record: version, byte counts of texts, numbers.
constexpr int kSmallestFormat = 28;
constexpr int kSmallestTable = 12;

bool sameName(QStringView one, QStringView other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

} // namespace

FormatList::FormatList()
    : OptionFile(DEFAULT_DISPLAY_FORMAT, u"ARVO Display Formats"_s, kFileVersion)
{
}

const ColumnFormat *FormatList::find(QStringView table, QStringView field, dao::DataType type) const
{
    for (const Table &entry : tables) {
        if (!sameName(entry.name, table))
            continue;
        for (const ColumnFormat &format : entry.fields)
            if (format.type == type && sameName(format.name, field))
                return &format;
    }
    return nullptr;
}

ColumnFormat FormatList::formatOf(const dao::FieldInfo &column) const
{
    const ColumnFormat *stored =
        column.sourceTable.isEmpty() ? nullptr : find(column.sourceTable, column.sourceField, column.type);
    if (!stored)
        return ColumnFormat(column.name, column.type);
    ColumnFormat format = *stored;
    format.name = column.name;
    return format;
}

void FormatList::revalidate()
{
    for (Table &table : tables)
        for (ColumnFormat &format : table.fields)
            format.revalidate();
}

bool FormatList::rebuild(const dao::Database &database)
{
    constexpr int kNotListed = dao::SystemObject | dao::HiddenObject;
    bool anyNew = false;
    QList<Table> rebuilt;
    for (const QString &name : database.tableNames()) {
        const dao::TableInfo &info = database.table(name);
        if (info.attributes & kNotListed)
            continue;
        Table table{info.name, {}};
        for (const dao::FieldInfo &field : info.fields) {
            const ColumnFormat *known = find(info.name, field.name, field.type);
            anyNew |= !known;
            table.fields.append(known ? *known : ColumnFormat(field.name, field.type));
        }
        rebuilt.append(table);
    }
    tables = rebuilt;
    return anyNew;
}

void FormatList::resetToDefaults()
{
    tables.clear();
    m_refused.clear();
}

void FormatList::serializeTable(tarnwick::JFile &file, Table &table)
{
    file.version(kEntryVersion);
    file.serialize(table.name);
    file.list(table.fields, kSmallestFormat, [](tarnwick::JFile &to, ColumnFormat &format) { format.serialize(to); });
    if (!file.isReading())
        return;
    table.fields.removeIf([&](const ColumnFormat &format) {
        const QString fault = format.fault();
        if (!fault.isEmpty())
            m_refused.append(u"%1.%2: %3"_s.arg(table.name, format.name, fault));
        return !fault.isEmpty();
    });
}

void FormatList::serializeBody(tarnwick::JFile &file, int)
{
    file.list(tables, kSmallestTable, [this](tarnwick::JFile &to, Table &table) { serializeTable(to, table); });
    if (file.isReading())
        revalidate();
}

void showRefused(const FormatList &formats, tarnwick::UserPrompts &prompts)
{
    constexpr qsizetype kMostShown = 20;
    QStringList lines = formats.refused().first(qMin(kMostShown, formats.refused().size()));
    if (lines.isEmpty())
        return;
    if (const qsizetype more = formats.refused().size() - lines.size(); more > 0)
        lines.append(u"... and %1 more"_s.arg(more));
    prompts.information(messages::kFormatsRefused, lines.join(u'\n'));
}

void loadFormats(FormatList &formats, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts)
{
    if (tarnwick::loadOptions(formats, roots, prompts))
        showRefused(formats, prompts);
}

} // namespace query
