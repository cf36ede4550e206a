#include "Scope.h"

#include <algorithm>

namespace dao::sql::bound {

namespace {

void setField(Expr &expr, const Source &table, int field)
{
    expr.type = table.table->fields[field].type;
    expr.hasFixedType = true;
    expr.node = FieldRef{&table, field};
}

} // namespace

ScopeSource::ScopeSource(const QString &name, std::vector<ScopeColumn> columns)
    : m_name(name)
    , m_columns(std::move(columns))
{
}

ScopeSource::ScopeSource(const QString &name, const Source &table)
    : m_name(name)
    , m_table(&table)
{
}

std::vector<ScopeColumn> ScopeSource::columns() const
{
    if (!m_table)
        return m_columns;
    const QList<FieldInfo> &fields = m_table->table->fields;
    // One allocation for the expressions of all columns.
    const auto exprs = std::make_shared<std::vector<Expr>>(size_t(fields.size()));
    std::vector<ScopeColumn> columns;
    columns.reserve(exprs->size());
    for (int i = 0; i < fields.size(); ++i) {
        Expr &expr = (*exprs)[size_t(i)];
        setField(expr, *m_table, i);
        columns.push_back({fields[i].name, ExprPtr(exprs, &expr)});
    }
    return columns;
}

QStringList ScopeSource::columnNames() const
{
    QStringList names;
    const auto add = [&names](const auto &columns) {
        names.reserve(qsizetype(columns.size()));
        for (const auto &column : columns)
            names.append(column.name);
    };
    m_table ? add(m_table->table->fields) : add(m_columns);
    return names;
}

int ScopeSource::indexOf(QStringView column) const
{
    // Linear search: a query uses few names, so building a hash of all columns would take longer.
    const auto search = [column](const auto &columns) {
        const auto found = std::ranges::find_if(columns, [column](const auto &each) {
            return each.name.size() == column.size() && column.compare(each.name, Qt::CaseInsensitive) == 0;
        });
        return found == columns.end() ? -1 : int(found - columns.begin());
    };
    return m_table ? search(m_table->table->fields) : search(m_columns);
}

const QString &ScopeSource::columnName(int index) const
{
    return m_table ? m_table->table->fields[index].name : m_columns[size_t(index)].name;
}

std::shared_ptr<Expr> ScopeSource::column(int index, BindContext &context) const
{
    if (!m_table)
        return context.newExpr(*m_columns[size_t(index)].expr);
    std::shared_ptr<Expr> expr = context.newExpr();
    setField(*expr, *m_table, index);
    return expr;
}

bool Scope::add(ScopeSource added)
{
    if (source(added.name()))
        return false;
    m_sources.push_back(std::move(added));
    return true;
}

const ScopeSource *Scope::source(QStringView name) const
{
    for (const ScopeSource &source : m_sources) {
        if (name.compare(source.name(), Qt::CaseInsensitive) == 0)
            return &source;
    }
    return nullptr;
}

Scope::Found Scope::find(QStringView field, size_t first, size_t last) const
{
    Found found;
    for (size_t i = first; i < std::min(last, m_sources.size()); ++i) {
        // If a source has two columns with the same name, the first one is used.
        const int column = m_sources[i].indexOf(field);
        if (column >= 0 && found.count++ == 0)
            found = {1, &m_sources[i], column};
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
    for (const ScopeSource &source : m_sources)
        names += source.columnNames();
    return names;
}

} // namespace dao::sql::bound
