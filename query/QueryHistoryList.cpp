#include "QueryHistoryList.h"

#include <tarnwick/OptionPrompts.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JFile;

namespace {

constexpr int kFileVersion = 1;
constexpr int kEntryVersion = 1;
constexpr int kPairVersion = 1;
// Fixed parts of a record: versions, byte counts of texts, symbol, colour, count.
constexpr int kSmallestPair = 12;
constexpr int kSmallestEntry = 18;

void serializeParameter(JFile &file, QueryHistoryList::Parameter &parameter)
{
    file.version(kPairVersion);
    file.serialize(parameter.name);
    file.serialize(parameter.value);
}

void serializeEntry(JFile &file, QueryHistoryList::Entry &entry)
{
    file.version(kEntryVersion);
    file.serialize(entry.queryName);
    entry.mark.serialize(file);
    file.list(entry.parameters, kSmallestPair, serializeParameter);
}

bool sameName(QStringView one, QStringView other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

} // namespace

QueryHistoryList::QueryHistoryList()
    : OptionFile(u"config\\arvo\\query_history.opt"_s, u"Query History"_s, kFileVersion)
{
}

const QueryHistoryList::Entry *QueryHistoryList::find(QStringView queryName) const
{
    for (const Entry &entry : m_entries)
        if (sameName(entry.queryName, queryName))
            return &entry;
    return nullptr;
}

std::optional<QString> QueryHistoryList::value(QStringView queryName, QStringView parameter) const
{
    if (const Entry *entry = find(queryName))
        for (const Parameter &known : entry->parameters)
            if (sameName(known.name, parameter))
                return known.value;
    return std::nullopt;
}

QStringList QueryHistoryList::valuesOf(QStringView queryName, QStringView parameter) const
{
    QStringList values;
    if (const auto own = value(queryName, parameter))
        values.append(*own);
    for (const Entry &entry : m_entries)
        for (const Parameter &known : entry.parameters)
            if (sameName(known.name, parameter) && !known.value.isEmpty() && !values.contains(known.value))
                values.append(known.value);
    return values;
}

QueryHistoryList::Entry *QueryHistoryList::findOrAppend(const QString &queryName)
{
    for (Entry &entry : m_entries)
        if (sameName(entry.queryName, queryName))
            return &entry;
    Entry entry;
    entry.queryName = queryName;
    m_entries.append(entry);
    return &m_entries.last();
}

void QueryHistoryList::make(const Change &change)
{
    change(*this);
    m_changes.push_back(change);
}

void QueryHistoryList::repeatChanges()
{
    for (const Change &change : m_changes)
        change(*this);
}

void QueryHistoryList::refresh(const tarnwick::PathRoots &roots)
{
    try {
        if (loadIfChanged(roots))
            repeatChanges();
    } catch (const tarnwick::Error &) {
        // Already reported at the start of the program; otherwise storing reports it.
    }
}

void QueryHistoryList::storeChanges(const tarnwick::PathRoots &roots)
{
    if (m_changes.empty())
        return;
    tarnwick::changeStoredOptions(*this, roots, [this] { repeatChanges(); });
    m_changes.clear();
}

void QueryHistoryList::remember(const QString &queryName, const QString &parameter, const QString &value)
{
    if (queryName.isEmpty() || parameter.isEmpty())
        return;
    make([=](QueryHistoryList &list) { list.setValue(queryName, parameter, value); });
}

void QueryHistoryList::setValue(const QString &queryName, const QString &parameter, const QString &value)
{
    Entry *entry = findOrAppend(queryName);
    for (Parameter &known : entry->parameters) {
        if (sameName(known.name, parameter)) {
            known.value = value;
            return;
        }
    }
    entry->parameters.append({parameter, value});
}

void QueryHistoryList::forget(const QString &queryName)
{
    make([queryName](QueryHistoryList &list) {
        list.m_entries.removeIf([&](const Entry &entry) { return sameName(entry.queryName, queryName); });
    });
}

void QueryHistoryList::forgetAll()
{
    m_changes.clear();
    make([](QueryHistoryList &list) { list.m_entries.clear(); });
}

void QueryHistoryList::setMark(const QString &queryName, const ellery::TubeMark &mark)
{
    if (queryName.isEmpty())
        return;
    make([=](QueryHistoryList &list) {
        Entry *entry = list.findOrAppend(queryName);
        entry->mark = mark;
    });
}

void QueryHistoryList::serializeBody(JFile &file, int)
{
    file.list(m_entries, kSmallestEntry, serializeEntry);
}

} // namespace query
