#include "Scope.h"

namespace dao::sql::bound {

bool Scope::add(ScopeSource added)
{
    if (source(added.name))
        return false;
    for (size_t i = 0; i < added.columns.size(); ++i)
        m_columns[added.columns[i].name.toLower()].push_back({m_sources.size(), i});
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
    Found found;
    const auto entries = m_columns.constFind(field.toString().toLower());
    if (entries == m_columns.constEnd())
        return found;
    const ScopeSource *previous = nullptr;
    for (const auto &[source, column] : *entries) {
        if (source < first || source >= last)
            continue;
        // Two columns of one name in one source: the first of them is meant.
        if (previous == &m_sources[source])
            continue;
        previous = &m_sources[source];
        if (found.count++ == 0)
            found = {1, &m_sources[source].columns[column], previous};
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
