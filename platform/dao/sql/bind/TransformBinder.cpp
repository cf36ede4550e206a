#include "TransformBinder.h"

#include "Types.h"

#include <dao/values/OleDate.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

/// True if the expression handles a Null result of an aggregate itself.
bool handlesNull(const Expr &expr)
{
    if (expr.as<Coalesce>() || expr.as<Case>() || expr.as<IsNull>())
        return true;
    bool found = false;
    if (!expr.as<Aggregate>())
        forEachChild(expr, [&found](const ExprPtr &child) { found = found || handlesNull(*child); });
    return found;
}

} // namespace

Transform TransformBinder::bind(const ast::Transform &node)
{
    SelectBinder binder(m_context, nullptr);
    return bindWith(binder, node);
}

std::shared_ptr<Select> TransformBinder::bindSource(const ast::Transform &node)
{
    SelectBinder binder(m_context, nullptr);
    Transform bound = bindWith(binder, node);
    if (!bound.cell)
        return bound.select;
    const BindContext::Headings headings = m_context.readHeadings(bound);
    if (!headings)
        return bound.select;
    const qsizetype count = qsizetype(bound.select->columns.size()) + headings->size();
    if (count > kMaxCrosstabColumns)
        m_context.fail(error::TooManyCrosstabColumns, node.pivot->range, {QString::number(count)});
    for (const CrosstabHeading &heading : *headings) {
        const ExprPtr value = m_context.make(node.pivot->range, bound.pivot->type, Heading{heading.valueSql}, true);
        addHeadingColumn(bound, heading.name, cell(binder, node, bound.pivot, value));
    }
    return bound.select;
}

Transform TransformBinder::bindWith(SelectBinder &binder, const ast::Transform &node)
{
    checkClauses(node);
    // Parameters of a cross table must be declared, so an unknown name is an error here.
    const bool before = m_context.forbidParameters();
    const auto restore = qScopeGuard([&] { m_context.forbidParameters(before); });
    Transform bound;
    bound.select = binder.bind(node.select);
    bound.pivot = binder.expressions(clause::kGroupBy).bind(*node.pivot);
    if (node.headings.empty())
        bound.cell =
            cell(binder, node, bound.pivot, m_context.make(node.pivot->range, bound.pivot->type, Heading{}, true));
    else
        addFixedHeadings(bound, binder, node);
    return bound;
}

void TransformBinder::checkClauses(const ast::Transform &node) const
{
    for (const ast::SelectItem &item : node.select.items) {
        if (item.isStar())
            m_context.fail(error::StarInTransform, item.range);
    }
    if (node.select.having)
        m_context.fail(error::HavingInTransform, node.select.having->range);
    if (node.select.groupBy.empty() || node.select.into)
        m_context.fail(error::SyntaxInTransform, node.select.range);
}

// The value, aggregated over the rows of the group that have the heading.
ExprPtr TransformBinder::cell(SelectBinder &binder, const ast::Transform &node, const ExprPtr &pivot, ExprPtr heading)
{
    ExpressionBinder values = binder.expressions(clause::kSelectList);
    const ExprPtr filter = m_context.make(node.pivot->range, DataType::Boolean, Same{pivot, std::move(heading)});
    values.setAggregateFilter(filter);
    ExprPtr value = values.bind(*node.value);
    const bool aggregates = hasAggregate(*value);
    if (!aggregates)
        m_context.fail(error::NotGrouped, node.value->range, {m_context.textOf(node.value->range)});
    binder.checkGrouped(*value, value->range);
    return value->as<Aggregate>() || handlesNull(*value) ? value : nullWithoutRows(std::move(value), filter);
}

// A cell without rows is Null, even if a function in it would replace Null.
ExprPtr TransformBinder::nullWithoutRows(ExprPtr value, const ExprPtr &filter) const
{
    const Range range = value->range;
    const DataType type = value->type;
    const ExprPtr rows =
        m_context.make(range, DataType::Long, Aggregate{&functionsNamed(u"Count").front(), nullptr, {}, filter});
    const ExprPtr noRows = m_context.make(range, DataType::Boolean, IsNull{rows, false});
    const ExprPtr null = m_context.make(range, DataType::Unknown, Literal{Value::null()}, true);
    return m_context.make(range, type, Case{{When{noRows, null}}, std::move(value)});
}

void TransformBinder::addFixedHeadings(Transform &bound, SelectBinder &binder, const ast::Transform &node)
{
    QStringList names;
    for (const ast::ExprPtr &item : node.headings) {
        ExpressionBinder literals(m_context, nullptr, clause::kValues);
        FieldInfo kind;
        kind.type = bound.pivot->type;
        const ExprPtr heading = kind.type == DataType::Unknown ? literals.bind(*item) : literals.bindFor(*item, kind);
        const Literal *literal = heading->as<Literal>();
        if (!literal)
            m_context.fail(error::SyntaxInTransform, item->range);
        const QString name = headingName(literal->value);
        if (names.contains(name, Qt::CaseInsensitive))
            m_context.fail(error::DuplicatePivotValue, item->range, {name});
        names.append(name);
        addHeadingColumn(bound, name, cell(binder, node, bound.pivot, heading));
    }
}

void TransformBinder::addHeadingColumn(Transform &bound, const QString &name, ExprPtr cell) const
{
    OutputColumn column;
    column.expr = std::move(cell);
    column.info = outputInfo(name, *column.expr);
    column.named = true;
    bound.select->columns.push_back(std::move(column));
}

QString TransformBinder::headingName(const Value &value) const
{
    if (value.isNull())
        return u"<>"_s;
    if (value.type() == Value::Type::Boolean)
        return value.boolean() ? u"-1"_s : u"0"_s;
    return convertValue(value, DataType::Text).text();
}

} // namespace dao::sql::bound
