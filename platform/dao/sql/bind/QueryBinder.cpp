#include "QueryBinder.h"

#include "Types.h"
#include <dao/sql/ast/NearestName.h>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

// SQLite's limit for terms of a compound SELECT.
constexpr size_t kMaxUnited = 500;

} // namespace

std::shared_ptr<Query> QueryBinder::bind(const ast::Query &query)
{
    const BindContext::Level level(m_context, query.range);
    if (query.parts.size() > kMaxUnited)
        m_context.fail(error::TooComplex, query.range);
    auto bound = std::make_shared<Query>();
    for (const ast::QueryPart &part : query.parts) {
        bound->parts.push_back(bindPart(part));
        bound->parts.back().all = part.all;
    }
    // A single query in parentheses is the query itself.
    if (!bound->isUnion() && bound->parts.front().nested)
        return std::const_pointer_cast<Query>(bound->parts.front().nested);
    if (bound->isUnion()) {
        mergeColumns(*bound, query.range);
        bindUnionOrder(*bound, query);
    }
    measure(*bound, query.range);
    return bound;
}

// The SQL of a query contains that of all nested queries.
void QueryBinder::measure(Query &query, Range range) const
{
    const auto add = [&query](int depth, qint64 size) {
        query.depth = std::max(query.depth, depth + 1);
        query.size += size;
    };
    const auto addExpr = [&add](const ExprPtr &expr) {
        if (expr)
            add(expr->depth, expr->size);
    };
    for (const QueryPart &part : query.parts) {
        if (part.nested) {
            add(part.nested->depth, part.nested->size);
            continue;
        }
        for (const OutputColumn &column : part.select->columns)
            addExpr(column.expr);
        addExpr(part.select->where);
        addExpr(part.select->having);
        for (const ExprPtr &key : part.select->groupBy)
            addExpr(key);
        for (const OrderKey &key : part.select->order)
            addExpr(key.expr);
        for (const auto &source : part.select->sources) {
            if (source->query)
                add(source->query->depth, source->query->size);
        }
        m_context.limit(query.depth, query.size, range);
    }
    m_context.limit(query.depth, query.size, range);
}

QueryPart QueryBinder::bindPart(const ast::QueryPart &part)
{
    QueryPart bound;
    if (part.select) {
        bound.select = SelectBinder(m_context, m_outer, m_reads).bind(*part.select);
    } else if (part.nested) {
        bound.nested = bind(*part.nested);
    } else { // TABLE name
        auto table = std::make_unique<ast::TableRef>();
        table->range = part.table->range;
        table->node = ast::NamedTable{part.table->name};
        ast::Select select;
        select.range = part.table->range;
        select.items.emplace_back();
        select.items.back().range = part.table->range;
        select.from.push_back(std::move(table));
        bound.select = SelectBinder(m_context, m_outer).bind(select);
    }
    return bound;
}

// Output columns have the names of the first part and the common types of all parts.
void QueryBinder::mergeColumns(Query &query, Range range)
{
    const auto columnsOf = [](const QueryPart &part) -> const std::vector<OutputColumn> & {
        return part.select ? part.select->columns : part.nested->output();
    };
    query.columns = columnsOf(query.parts.front());
    for (OutputColumn &column : query.columns) {
        FieldInfo info;
        info.name = column.info.name;
        info.type = column.info.type;
        info.size = column.info.size;
        column = {info, nullptr, true, {}};
    }
    for (const QueryPart &part : query.parts) {
        const std::vector<OutputColumn> &columns = columnsOf(part);
        if (columns.size() != query.columns.size())
            m_context.fail(error::UnionColumns, range);
        for (size_t i = 0; i < columns.size(); ++i) {
            FieldInfo &info = query.columns[i].info;
            const bool isNull =
                columns[i].expr && columns[i].expr->type == DataType::Unknown && columns[i].expr->as<Literal>();
            if (isNull)
                continue;
            const OutputColumn &firstColumn = columnsOf(query.parts.front())[i];
            const bool firstIsNull =
                firstColumn.expr && firstColumn.expr->as<Literal>() && firstColumn.expr->type == DataType::Unknown;
            const DataType merged = firstIsNull && info.type == DataType::Text
                                        ? columns[i].info.type
                                        : commonType(info.type, columns[i].info.type);
            info.size = merged == columns[i].info.type && merged == info.type
                            ? std::max(info.size, columns[i].info.size)
                            : sizeOf(merged);
            info.type = merged;
        }
    }
    for (size_t i = 0; i < query.columns.size(); ++i) {
        if (familyOf(query.columns[i].info.type) == Family::Text)
            convertColumn(query, i, query.columns[i].info.type);
    }
}

// If one part has text, the others are converted to text, so that equal values are recognised as duplicates and dates
// are formatted as dates.
void QueryBinder::convertColumn(Query &query, size_t index, DataType type)
{
    ExpressionBinder binder(m_context, nullptr, clause::kValues);
    for (QueryPart &part : query.parts) {
        if (part.nested) {
            convertColumn(*std::const_pointer_cast<Query>(part.nested), index, type);
            continue;
        }
        OutputColumn &column = part.select->columns[index];
        column.expr = binder.asType(column.expr, type);
    }
    if (query.isUnion())
        query.columns[index].info.type = type;
}

void QueryBinder::bindUnionOrder(Query &query, const ast::Query &source)
{
    for (const ast::OrderItem &item : source.orderBy)
        query.order.push_back({nullptr, item.descending, unionColumn(query, *item.expr)});
}

// The column that an ORDER BY term of a union names: by name, qualified or not, or by position.
int QueryBinder::unionColumn(const Query &query, const ast::Expr &expr)
{
    if (const ast::Literal *literal = expr.as<ast::Literal>(); literal && literal->value.type() == Value::Type::Long) {
        const qint64 place = literal->value.integer();
        if (place >= 1 && place <= qint64(query.columns.size()))
            return int(place) - 1;
    }
    QStringList names;
    for (const OutputColumn &column : query.columns)
        names.append(column.info.name);
    if (const ast::Name *name = expr.as<ast::Name>()) {
        for (const QString &wanted : {name->text, name->last()}) {
            for (qsizetype i = 0; i < names.size(); ++i) {
                if (names[i].compare(wanted, Qt::CaseInsensitive) == 0)
                    return int(i);
            }
        }
    }
    const QString text = m_context.textOf(expr.range);
    m_context.fail(error::UnionOrder, expr.range, {text}, didYouMean(text, names));
}

QString domainQuery(const FunctionInfo &function, const QStringList &texts)
{
    const QString name = QString::fromUtf16(function.name);
    QString source = texts[1].trimmed();
    if (!source.startsWith(u'['))
        source = u'[' + source + u']';
    const QString list =
        name == u"DLookup" ? QString(u"TOP 1 "_s + texts[0]) : QString(name.sliced(1) + u'(' + texts[0] + u')');
    QString sql = u"SELECT "_s + list + u" FROM " + source;
    if (texts.size() > 2 && !texts[2].trimmed().isEmpty())
        sql += u" WHERE "_s + texts[2];
    return sql;
}

} // namespace dao::sql::bound
