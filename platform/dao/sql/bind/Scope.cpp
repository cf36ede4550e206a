#include "Scope.h"

#include <algorithm>

namespace dao::sql::bound {

bool Scope::add(ScopeSource added)
{
    if (source(added.name))
        return false;
    m_sources.push_back(std::move(added));
    return true;
}

const ScopeSource *Scope::source(QStringView name) const
{
    for (const ScopeSource &source : m_sources) {
        if (name.compare(source.name, Qt::CaseInsensitive) == 0)
            return &source;
    }
    return nullptr;
}

Scope::Found Scope::find(QStringView field, size_t first, size_t last) const
{
    // Linear search: a query uses few names, so building a hash of all columns would take longer.
    Found found;
    for (size_t i = first; i < std::min(last, m_sources.size()); ++i) {
        const ScopeSource &source = m_sources[i];
        const auto named = std::ranges::find_if(source.columns, [field](const ScopeColumn &column) {
            return column.name.size() == field.size() && field.compare(column.name, Qt::CaseInsensitive) == 0;
        });
        // If a source has two columns with the same name, the first one is used.
        if (named != source.columns.end() && found.count++ == 0)
            found = {1, &*named, &source};
    }
    return found;
}

Scope::Found Scope::find(QStringView sourceName, QStringView field) const
{
    const ScopeSource *named = source(sourceName);
    if (!named)
        return {};
    const size_t index = size_t(named - m_sources.data());
    return find(field, index, index + 1);
}

QStringList Scope::columnNames() const
{
    QStringList names;
    for (const ScopeSource &source : m_sources) {
        for (const ScopeColumn &column : source.columns)
            names.append(column.name);
    }
    return names;
}

} // namespace dao::sql::bound
