#include "ExpressionBinder.h"

#include "QueryBinder.h"
#include "Types.h"
#include <dao/sql/ast/NearestName.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

DataType typeOfLiteral(const Value &value)
{
    switch (value.type()) {
    case Value::Type::Long:
        return DataType::Long;
    case Value::Type::Double:
        return DataType::Double;
    case Value::Type::Date:
        return DataType::Date;
    case Value::Type::Text:
        return DataType::Text;
    case Value::Type::Boolean:
        return DataType::Boolean;
    default:
        return DataType::Unknown;
    }
}

/// The type of concatenated texts: Memo if one of them is a Memo.
DataType joinedType(const Expr &left, const Expr &right)
{
    return left.type == DataType::Memo || right.type == DataType::Memo ? DataType::Memo : DataType::Text;
}

} // namespace

ExprPtr ExpressionBinder::bind(const ast::Expr &expr)
{
    return withDefaultType(bindAny(expr));
}

ExprPtr ExpressionBinder::bindCondition(const ast::Expr &expr)
{
    return asTruth(bindAny(expr));
}

ExprPtr ExpressionBinder::bindFor(const ast::Expr &expr, const FieldInfo &field)
{
    return assigned(bindAny(expr), field);
}

ExprPtr ExpressionBinder::bindAny(const ast::Expr &expr)
{
    const BindContext::Level level(m_context, expr.range);
    return std::visit([&](const auto &node) { return bindNode(node, expr); }, expr.node);
}

ExprPtr ExpressionBinder::bindNode(const ast::Literal &node, const ast::Expr &expr)
{
    return m_context.make(expr.range, typeOfLiteral(node.value), Literal{node.value}, true);
}

ExprPtr ExpressionBinder::bindNode(const ast::Name &node, const ast::Expr &expr)
{
    if (const std::shared_ptr<Expr> named = lookUp(node, expr.range)) {
        named->range = expr.range;
        named->place = m_context.placeOf(expr.range);
        return named;
    }
    checkSource(node, expr.range);
    const QString suggestion = m_context.wantsSuggestion(node.text) ? suggestionFor(node) : QString();
    const int id = m_context.parameter(node.text, expr.range, suggestion);
    const BoundParameter &parameter = m_context.parameterAt(id);
    // A declared parameter is treated like a column of its type.
    return m_context.make(expr.range, parameter.declared ? parameter.type : DataType::Unknown, ParameterRef{id});
}

// Searches this query first, then the outer queries. Within an ON clause only the tables of the join may be named.
// Aliases and flattened queries share their expressions; the result is a copy, which gets the place of the name.
std::shared_ptr<Expr> ExpressionBinder::lookUp(const ast::Name &name, Range where)
{
    if (name.isSimple())
        return lookUpSimple(name.text, where);
    if (name.parts.size() != 2)
        return nullptr;
    for (const Scope *scope = m_scope; scope; scope = scope->outer()) {
        const Scope::Found found = scope->find(name.parts[0], name.parts[1]);
        if (found.count == 0)
            continue;
        const size_t place = size_t(found.source - scope->sources().data());
        if (scope == m_scope && (place < m_first || place >= m_last))
            m_context.fail(error::JoinFieldOutside, where, {name.text});
        return found.source->column(found.column, m_context);
    }
    return nullptr;
}

// Aliases of the select list have priority over fields.
std::shared_ptr<Expr> ExpressionBinder::lookUpSimple(const QString &name, Range where)
{
    if (m_aliases) {
        if (ExprPtr alias = m_aliases(name, where))
            return m_context.newExpr(*alias);
    }
    for (const Scope *scope = m_scope; scope; scope = scope->outer()) {
        const bool innermost = scope == m_scope;
        const Scope::Found found = scope->find(name, innermost ? m_first : 0, innermost ? m_last : size_t(-1));
        if (found.count > 1) {
            QStringList qualified;
            for (const ScopeSource &source : scope->sources()) {
                if (scope->find(source.name(), name).count > 0)
                    qualified.append(source.name() + u'.' + name);
            }
            m_context.fail(error::AmbiguousField, where, {name}, u"Write "_s + qualified.join(u" or ") + u'.');
        }
        if (found.count == 1)
            return found.source->column(found.column, m_context);
        if (innermost && m_last != size_t(-1) && scope->find(name, 0, size_t(-1)).count > 0)
            m_context.fail(error::JoinFieldOutside, where, {name});
    }
    return nullptr;
}

bool ExpressionBinder::isSource(const QString &name) const
{
    for (const Scope *scope = m_scope; scope; scope = scope->outer()) {
        if (scope->source(name))
            return true;
    }
    return false;
}

// In ON clauses an unknown table is an error, not a parameter. "Forms!F" is not a table name.
void ExpressionBinder::checkSource(const ast::Name &name, Range where) const
{
    const bool qualified = name.parts.size() == 2 && !name.text.contains(u'!');
    if (!m_clause.unknownSourceError || !qualified || isSource(name.parts[0]) || m_context.isParameter(name.text))
        return;
    QStringList names;
    for (const ScopeSource &source : m_scope->sources())
        names.append(source.name());
    m_context.fail(m_clause.unknownSourceError, where, {name.parts[0]}, didYouMean(name.parts[0], names));
}

// Suggests a field for "source.field": a similar one of that source, or the same field of another source.
QString ExpressionBinder::suggestionFor(const ast::Name &name) const
{
    const QString &field = name.last();
    const bool qualified = name.parts.size() == 2;
    QStringList names;
    QString elsewhere;
    for (const Scope *scope = m_scope; scope; scope = scope->outer()) {
        names += scope->columnNames();
        for (const ScopeSource &source : scope->sources()) {
            if (!qualified)
                break;
            if (source.name().compare(name.parts[0], Qt::CaseInsensitive) == 0) {
                if (const QString nearest = nearestName(field, source.columnNames()); !nearest.isEmpty())
                    return source.name() + u'.' + nearest;
            } else if (const Scope::Found found = scope->find(source.name(), field); found.count > 0) {
                elsewhere =
                    elsewhere.isEmpty() ? QString(source.name() + u'.' + source.columnName(found.column)) : elsewhere;
            }
        }
    }
    return elsewhere.isEmpty() ? nearestName(field, names) : elsewhere;
}

// A minus before a literal is calculated here: the smallest Long can only be written so, and an index is searched by a
// literal. "+" has no effect but to require a number.
ExprPtr ExpressionBinder::bindNode(const ast::Unary &node, const ast::Expr &expr)
{
    if (node.op == ast::UnaryOp::Not)
        return m_context.make(expr.range, DataType::Boolean, Not{bindCondition(*node.operand)});
    ExprPtr operand = asNumber(bindAny(*node.operand));
    if (node.op == ast::UnaryOp::Plus)
        return operand;
    // The smallest Long has no positive counterpart.
    const Literal *whole = operand->as<Literal>();
    if (whole && operand->type == DataType::Long && whole->value.integer() > std::numeric_limits<qint32>::min())
        return m_context.make(expr.range, DataType::Long, Literal{Value::fromLong(qint32(-whole->value.integer()))},
                              true);
    if (whole && operand->type == DataType::Long)
        return m_context.make(expr.range, DataType::Double, Literal{Value::fromDouble(-whole->value.real())}, true);
    if (const Literal *literal = operand->as<Literal>(); literal && operand->type == DataType::Double)
        return m_context.make(expr.range, DataType::Double, Literal{Value::fromDouble(-literal->value.real())}, true);
    const DataType type = operand->type == DataType::Boolean ? DataType::Integer : operand->type;
    return m_context.make(expr.range, type, Negate{std::move(operand)});
}

ExprPtr ExpressionBinder::bindNode(const ast::Binary &node, const ast::Expr &expr)
{
    switch (node.op) {
    case BinaryOp::Xor:
    case BinaryOp::Eqv:
    case BinaryOp::Imp:
        return bindLogic(node, expr.range);
    case BinaryOp::Equal:
    case BinaryOp::NotEqual:
    case BinaryOp::Less:
    case BinaryOp::Greater:
    case BinaryOp::LessEqual:
    case BinaryOp::GreaterEqual: {
        ExprPtr left = bindAny(*node.left);
        ExprPtr right = bindAny(*node.right);
        reconcile(left, right, expr.range);
        return m_context.make(expr.range, DataType::Boolean, Compare{node.op, std::move(left), std::move(right)});
    }
    case BinaryOp::Like:
    case BinaryOp::ALike: {
        ExprPtr text = asText(bindAny(*node.left));
        ExprPtr pattern = asText(bindAny(*node.right));
        return m_context.make(expr.range, DataType::Boolean,
                              Like{std::move(text), std::move(pattern), node.op == BinaryOp::ALike});
    }
    default: {
        ExprPtr left = bindAny(*node.left);
        ExprPtr right = bindAny(*node.right);
        return bindArithmetic(node.op, std::move(left), std::move(right), expr.range);
    }
    }
}

// Every operator but "&" and "+" needs numbers; texts are converted at run time.
ExprPtr ExpressionBinder::bindArithmetic(BinaryOp op, ExprPtr left, ExprPtr right, Range range)
{
    if (op == BinaryOp::Concatenate) {
        const DataType type = joinedType(*left, *right);
        Concatenate node;
        // "a & b & c" becomes one node, so that a long chain does not make a deep tree.
        if (const Concatenate *chain = left->as<Concatenate>())
            node.terms = chain->terms;
        else
            node.terms.push_back(asText(std::move(left)));
        node.terms.push_back(asText(std::move(right)));
        return m_context.make(range, type, std::move(node));
    }
    if (op == BinaryOp::Add)
        return bindAdd(std::move(left), std::move(right), range);
    left = asNumber(std::move(left));
    right = asNumber(std::move(right));
    const DataType type = arithmeticType(op, left->type, right->type);
    return m_context.make(range, type, Arithmetic{op, std::move(left), std::move(right)});
}

// "+" concatenates two texts, adds numbers and dates, and is decided at run time if the type of an operand is unknown.
ExprPtr ExpressionBinder::bindAdd(ExprPtr left, ExprPtr right, Range range)
{
    left = typed(std::move(left), contextType(*right));
    right = typed(std::move(right), contextType(*left));
    left = withDefaultType(std::move(left));
    right = withDefaultType(std::move(right));
    const auto isNull = [](const ExprPtr &e) { return e->as<Literal>() && e->type == DataType::Unknown; };
    const Family leftFamily = familyOf(left->type);
    const Family rightFamily = familyOf(right->type);
    const bool leftText = leftFamily == Family::Text;
    const bool rightText = rightFamily == Family::Text;
    if ((leftText && (rightText || isNull(right))) || (rightText && isNull(left))) {
        const DataType type = joinedType(*left, *right);
        JoinText node;
        if (const JoinText *chain = left->as<JoinText>())
            node.terms = chain->terms;
        else
            node.terms.push_back(std::move(left));
        node.terms.push_back(std::move(right));
        return m_context.make(range, type, std::move(node));
    }
    const bool leftOpen = leftFamily == Family::Any && !isNull(left);
    const bool rightOpen = rightFamily == Family::Any && !isNull(right);
    if (leftOpen || rightOpen)
        return m_context.make(range, DataType::Unknown, AddAny{std::move(left), std::move(right)});
    left = asNumber(std::move(left));
    right = asNumber(std::move(right));
    const DataType type = arithmeticType(BinaryOp::Add, left->type, right->type);
    return m_context.make(range, type, Arithmetic{BinaryOp::Add, std::move(left), std::move(right)});
}

ExprPtr ExpressionBinder::bindLogic(const ast::Binary &node, Range range)
{
    ExprPtr left = bindCondition(*node.left);
    ExprPtr right = bindCondition(*node.right);
    return m_context.make(range, DataType::Boolean, Logic{node.op, std::move(left), std::move(right)});
}

ExprPtr ExpressionBinder::bindNode(const ast::Chain &node, const ast::Expr &expr)
{
    Chain chain{node.isAnd, {}};
    chain.terms.reserve(node.terms.size());
    for (const ast::ExprPtr &term : node.terms)
        chain.terms.push_back(bindCondition(*term));
    if (!node.isAnd)
        collectEqualities(chain);
    if (chain.terms.size() == 1)
        return chain.terms.front();
    return m_context.make(expr.range, DataType::Boolean, std::move(chain));
}

// Translates "x = 1 Or x = 2 Or ..." into "x In (1, 2, ...)": SQLite uses an index for lists of thousands only in this
// form.
void ExpressionBinder::collectEqualities(Chain &chain)
{
    constexpr size_t kMinEqualities = 16;
    if (chain.terms.size() < kMinEqualities)
        return;
    QHash<std::pair<const Source *, int>, size_t> places;
    std::vector<ExprPtr> terms;
    std::vector<InList> lists;
    for (ExprPtr &term : chain.terms) {
        const Compare *compare = term->as<Compare>();
        const FieldRef *field = compare && compare->op == BinaryOp::Equal ? compare->left->as<FieldRef>() : nullptr;
        if (!field || !compare->right->as<Literal>()) {
            terms.push_back(std::move(term));
            continue;
        }
        const std::pair key{field->source, field->field};
        if (!places.contains(key)) {
            places.insert(key, lists.size());
            lists.push_back({compare->left, {}, false});
        }
        lists[places[key]].items.push_back(compare->right);
    }
    for (InList &list : lists) {
        const Range range = list.operand->range;
        terms.push_back(m_context.make(range, DataType::Boolean, std::move(list)));
    }
    chain.terms = std::move(terms);
}

// Makes both operands comparable. Columns and literals of different type families are an error; computed operands are
// converted by value.
void ExpressionBinder::reconcile(ExprPtr &left, ExprPtr &right, Range range)
{
    left = typed(std::move(left), contextType(*right));
    right = withDefaultType(typed(std::move(right), contextType(*left)));
    left = withDefaultType(typed(std::move(left), contextType(*right)));
    convertTo(left, right, range);
    convertTo(right, left, range);
}

// Converts one operand to the family of the other. A number and a date can be compared without conversion: a date is
// stored as a number.
void ExpressionBinder::convertTo(ExprPtr &side, const ExprPtr &other, Range range)
{
    const Family mine = familyOf(side->type);
    const Family wanted = familyOf(other->type);
    const bool isNull = side->as<Literal>() && side->type == DataType::Unknown;
    const bool same = mine == wanted || (mine == Family::Number && wanted == Family::Date) ||
                      (mine == Family::Date && wanted == Family::Number);
    if (same || isNull || wanted == Family::Any)
        return;
    if (mine == Family::Binary || wanted == Family::Binary)
        m_context.fail(m_clause.mismatchError, range);
    const bool otherIsText = wanted == Family::Text;
    if (otherIsText && mine == Family::Any)
        side = asText(std::move(side));
    else if (otherIsText && other->hasFixedType)
        m_context.fail(m_clause.mismatchError, range);
    else if (otherIsText)
        return; // the other operand is converted
    else if (side->hasFixedType)
        m_context.fail(m_clause.mismatchError, range);
    else
        side = wanted == Family::Date ? asDate(std::move(side)) : asNumber(std::move(side));
}

// The operand is reconciled with both bounds, because each can be of another type.
ExprPtr ExpressionBinder::bindNode(const ast::Between &node, const ast::Expr &expr)
{
    ExprPtr operand = bindAny(*node.operand);
    ExprPtr low = bindAny(*node.low);
    ExprPtr high = bindAny(*node.high);
    operand = typed(std::move(operand), contextType(*low));
    operand = withDefaultType(typed(std::move(operand), contextType(*high)));
    reconcile(operand, low, expr.range);
    reconcile(operand, high, expr.range);
    return m_context.make(expr.range, DataType::Boolean,
                          Between{std::move(operand), std::move(low), std::move(high), node.negated});
}

ExprPtr ExpressionBinder::bindNode(const ast::InList &node, const ast::Expr &expr)
{
    InList list{bindAny(*node.operand), {}, node.negated};
    list.items.reserve(node.items.size());
    for (const ast::ExprPtr &item : node.items) {
        ExprPtr bound = bindAny(*item);
        reconcile(list.operand, bound, expr.range);
        list.items.push_back(std::move(bound));
    }
    return m_context.make(expr.range, DataType::Boolean, std::move(list));
}

ExprPtr ExpressionBinder::bindNode(const ast::InQuery &node, const ast::Expr &expr)
{
    ExprPtr operand = bindAny(*node.operand);
    QueryPtr query = bindSubquery(*node.query, true);
    reconcileWithQuery(operand, *query, expr.range);
    return m_context.make(expr.range, DataType::Boolean, InQuery{std::move(operand), std::move(query), node.negated});
}

ExprPtr ExpressionBinder::bindNode(const ast::IsNull &node, const ast::Expr &expr)
{
    ExprPtr operand = bind(*node.operand);
    return m_context.make(expr.range, DataType::Boolean, IsNull{std::move(operand), node.negated});
}

ExprPtr ExpressionBinder::bindNode(const ast::Exists &node, const ast::Expr &expr)
{
    QueryPtr query = bindSubquery(*node.query, false);
    return m_context.make(expr.range, DataType::Boolean, Exists{std::move(query)});
}

ExprPtr ExpressionBinder::bindNode(const ast::Quantified &node, const ast::Expr &expr)
{
    ExprPtr operand = bindAny(*node.operand);
    // Inside the subquery of a test an aggregate needs a source that shows which query it belongs to.
    const bool sourceless = m_select && m_select->sources.empty();
    if (sourceless && hasAggregate(*operand))
        m_context.fail(error::TooComplexExpression, expr.range);
    QueryPtr query = bindSubquery(*node.query, true);
    reconcileWithQuery(operand, *query, expr.range);
    return m_context.make(expr.range, DataType::Boolean,
                          Quantified{node.op, std::move(operand), node.all, std::move(query)});
}

// single: no check at run time is needed that there is only one row. Error 3354 otherwise tells the user.
ExprPtr ExpressionBinder::bindNode(const ast::ScalarQuery &node, const ast::Expr &expr)
{
    QueryPtr query = bindSubquery(*node.query, true);
    const Select &select = *query->singleSelect();
    const bool oneGroup = select.aggregated && select.groupBy.empty();
    const bool firstOnly = select.top && select.top->count <= 1 && !select.top->percent && select.order.empty();
    const bool single = oneGroup || firstOnly || select.sources.empty();
    const DataType type = query->output().front().info.type;
    return m_context.make(expr.range, type, ScalarQuery{std::move(query), single});
}

ExprPtr ExpressionBinder::bindNode(const ast::ImpliedField &, const ast::Expr &expr)
{
    if (!m_implied)
        m_context.fail(error::SyntaxInExpression, expr.range, {u"Syntax error (missing operator)"_s, m_context.text()});
    return m_implied;
}

// The dialect has no UNION in a subquery (3361); a subquery that is compared has one column (3306).
QueryPtr ExpressionBinder::bindSubquery(const ast::Query &query, bool oneColumn)
{
    if (query.isUnion())
        m_context.fail(error::UnionInSubquery, query.range);
    QueryPtr bound = QueryBinder(m_context, m_scope, oneColumn ? Reads::Cells : Reads::Rows).bind(query);
    if (oneColumn && bound->output().size() != 1)
        m_context.fail(error::SubqueryColumns, query.range);
    return bound;
}

void ExpressionBinder::reconcileWithQuery(ExprPtr &operand, const Query &query, Range range)
{
    const OutputColumn &column = query.output().front();
    operand = withDefaultType(typed(std::move(operand), column.info.type));
    // A placeholder with the type of the column: only the operand can be converted.
    const bool fixedType = !column.expr || column.expr->hasFixedType;
    const ExprPtr standIn = m_context.make(range, column.info.type, Literal{Value::null()}, fixedType);
    if (familyOf(column.info.type) == Family::Text && !fixedType && familyOf(operand->type) != Family::Text)
        operand = asText(std::move(operand));
    else
        convertTo(operand, standIn, range);
}

} // namespace dao::sql::bound
