#include "ExpressionBinder.h"
#include "QueryBinder.h"
#include "Types.h"
#include <dao/sql/ast/NearestName.h>

#include <dao/sql/ast/Parser.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

const QString kWrongCount = u"Wrong number of arguments used with function"_s;

bool isNamed(const FunctionInfo &function, QStringView name)
{
    return QStringView(function.name) == name;
}

// Compiles a domain function as a query of its own text. Places in this text are reported as the place of the call.
QueryPtr bindDomainQuery(BindContext &context, const FunctionInfo &function, const QStringList &texts, Range range)
{
    const QString sql = domainQuery(function, texts);
    const BindContext::Substitution substitution(context, QString::fromUtf16(function.signature), sql, range);
    try {
        ast::Statement statement = ast::Parser(sql).parseStatement();
        return QueryBinder(context, nullptr).bind(*std::get<ast::QueryPtr>(statement.node));
    } catch (const DaoException &exception) {
        context.rethrow(exception);
    }
}

/// The type of a domain call whose criteria are known only at run time. Errors in its texts are reported when it runs.
DataType domainType(BindContext &context, const FunctionInfo &function, const QStringList &texts, Range range)
{
    const bool before = context.forbidParameters();
    const auto restore = qScopeGuard([&] { context.forbidParameters(before); });
    try {
        return bindDomainQuery(context, function, texts, range)->output().front().info.type;
    } catch (const DaoException &) {
        return function.result;
    }
}

} // namespace

ExprPtr ExpressionBinder::bindNode(const ast::Call &node, const ast::Expr &expr)
{
    const FunctionInfo &function = *chooseFunction(node, expr.range);
    switch (function.kind) {
    case FunctionKind::Special:
        return bindSpecial(function, node, expr.range);
    case FunctionKind::Aggregate:
        return bindAggregate(function, node, expr.range);
    case FunctionKind::Domain:
        return bindDomain(function, node, expr.range);
    default:
        return bindPlainCall(function, node, expr.range);
    }
}

// Overloads differ only in the number of arguments.
const FunctionInfo *ExpressionBinder::chooseFunction(const ast::Call &node, Range range) const
{
    const std::span<const FunctionInfo> candidates = functionsNamed(node.name);
    if (candidates.empty()) {
        const Range name{range.start, int(node.name.size())};
        m_context.fail(error::UndefinedFunction, name, {node.name}, didYouMeanFunction(node.name, functionNames()));
    }
    const int count = int(node.arguments.size());
    for (const FunctionInfo &candidate : candidates) {
        const bool isCount = isNamed(candidate, u"Count") && node.star;
        const int most = candidate.maxArguments();
        if (isCount || (!node.star && count >= candidate.minArguments() && (most < 0 || count <= most)))
            return &candidate;
    }
    m_context.fail(error::SyntaxInExpression, range, {kWrongCount, m_context.textOf(range)},
                   QString::fromUtf16(candidates.back().signature));
}

// Converts an argument to the type that the function table declares for its position.
ExprPtr ExpressionBinder::bindArgument(const FunctionInfo &function, const ast::Call &node, int index)
{
    const ast::Expr &argument = *node.arguments[size_t(index)];
    switch (function.parameterAt(index)) {
    case u't':
        return asText(bindAny(argument));
    case u'n':
        return asNumber(bindAny(argument));
    case u'd':
        return asDate(bindAny(argument));
    case u'b':
        return bindCondition(argument);
    default:
        return bind(argument);
    }
}

// The static type of a call, which determines the type of an output column and of comparisons.
DataType ExpressionBinder::resultType(const FunctionInfo &function, const std::vector<ExprPtr> &arguments) const
{
    const DataType first = arguments.empty() ? DataType::Unknown : arguments.front()->type;
    switch (function.rule) {
    case ResultRule::FirstAny:
        return first;
    case ResultRule::FirstNumber:
        return isNumericType(first) || first == DataType::Date ? first : DataType::Double;
    default:
        break;
    }
    const bool ofLongText =
        function.result == DataType::Text && function.kind == FunctionKind::Plain &&
        std::any_of(arguments.begin(), arguments.end(), [](const ExprPtr &e) { return e->type == DataType::Memo; });
    return ofLongText ? DataType::Memo : function.result;
}

ExprPtr ExpressionBinder::bindPlainCall(const FunctionInfo &function, const ast::Call &node, Range range)
{
    Call call{&function, {}, node.name.endsWith(u'$')};
    for (int i = 0; i < int(node.arguments.size()); ++i)
        call.arguments.push_back(bindArgument(function, node, i));
    const DataType type = resultType(function, call.arguments);
    return m_context.make(range, type, std::move(call));
}

ExprPtr ExpressionBinder::bindSpecial(const FunctionInfo &function, const ast::Call &node, Range range)
{
    if (isNamed(function, u"IIf"))
        return bindIIf(node, range);
    if (isNamed(function, u"Switch"))
        return bindSwitch(node, range);
    if (isNamed(function, u"Choose"))
        return bindChoose(node, range);
    if (isNamed(function, u"Nz"))
        return bindNz(node, range);
    return m_context.make(range, DataType::Boolean, IsNull{bind(*node.arguments.front()), false});
}

ExprPtr ExpressionBinder::bindIIf(const ast::Call &node, Range range)
{
    std::vector<When> branches;
    branches.push_back({bindCondition(*node.arguments[0]), bind(*node.arguments[1])});
    return bindCase(std::move(branches), bind(*node.arguments[2]), range);
}

ExprPtr ExpressionBinder::bindSwitch(const ast::Call &node, Range range)
{
    if (node.arguments.size() % 2 != 0)
        m_context.fail(error::SyntaxInExpression, range, {kWrongCount, m_context.textOf(range)});
    std::vector<When> branches;
    for (size_t i = 0; i < node.arguments.size(); i += 2)
        branches.push_back({bindCondition(*node.arguments[i]), bind(*node.arguments[i + 1])});
    return bindCase(std::move(branches), nullptr, range);
}

ExprPtr ExpressionBinder::bindChoose(const ast::Call &node, Range range)
{
    FieldInfo whole;
    whole.type = DataType::Long;
    const ExprPtr index = assigned(bindAny(*node.arguments[0]), whole);
    std::vector<When> branches;
    for (size_t i = 1; i < node.arguments.size(); ++i) {
        const ExprPtr place = m_context.make(range, DataType::Long, Literal{Value::fromLong(qint32(i))}, true);
        const ExprPtr condition = m_context.make(range, DataType::Boolean, Compare{BinaryOp::Equal, index, place});
        branches.push_back({condition, bind(*node.arguments[i])});
    }
    return bindCase(std::move(branches), nullptr, range);
}

ExprPtr ExpressionBinder::bindCase(std::vector<When> branches, ExprPtr otherwise, Range range)
{
    DataType type = otherwise ? otherwise->type : DataType::Unknown;
    for (const When &branch : branches)
        type = commonType(type, branch.value->type);
    for (When &branch : branches)
        branch.value = asType(std::move(branch.value), type);
    if (otherwise)
        otherwise = asType(std::move(otherwise), type);
    return m_context.make(range, type, Case{std::move(branches), std::move(otherwise)});
}

// Nz without a second argument replaces Null by 0 for numbers, else by "".
ExprPtr ExpressionBinder::bindNz(const ast::Call &node, Range range)
{
    ExprPtr value = bind(*node.arguments[0]);
    ExprPtr instead;
    if (node.arguments.size() > 1) {
        instead = bind(*node.arguments[1]);
    } else {
        const bool number = familyOf(value->type) == Family::Number || familyOf(value->type) == Family::Date;
        instead = m_context.make(range, number ? DataType::Long : DataType::Text,
                                 Literal{number ? Value::fromLong(0) : Value::fromText({})}, true);
    }
    const DataType type = commonType(value->type, instead->type);
    value = asType(std::move(value), type);
    instead = asType(std::move(instead), type);
    return m_context.make(range, type, Coalesce{std::move(value), std::move(instead)});
}

bool ExpressionBinder::isOwnColumn(const Expr &expr) const
{
    const FieldRef *field = expr.as<FieldRef>();
    const Output *output = expr.as<Output>();
    const Source *source = field ? field->source : output ? output->source : nullptr;
    return source && std::any_of(m_select->sources.begin(), m_select->sources.end(),
                                 [source](const auto &own) { return own.get() == source; });
}

ExprPtr ExpressionBinder::bindAggregate(const FunctionInfo &function, const ast::Call &node, Range range)
{
    if (m_clause.aggregateError != 0 || !m_select)
        m_context.fail(m_clause.aggregateError ? m_clause.aggregateError : error::AggregateInWhere, range,
                       {m_context.textOf(range)});
    Aggregate aggregate{&function, nullptr, {}, m_filter};
    bool namesOwn = false;
    if (!node.star) {
        aggregate.argument = bindArgument(function, node, 0);
        const bool nested = hasAggregate(*aggregate.argument);
        if (nested)
            m_context.fail(error::NestedAggregate, range, {m_context.textOf(range)});
        namesOwn = anyPart(*aggregate.argument, [this](const Expr &part) { return isOwnColumn(part); });
        aggregate.namesOuter = m_scope && m_scope->outer() && !namesOwn && !aggregate.argument->as<Literal>();
        if (aggregate.namesOuter && m_select->sources.empty())
            m_context.fail(error::TooComplexExpression, range);
    }
    if (!namesOwn && !m_select->sources.empty())
        aggregate.own = m_select->sources.front().get();
    if (isNamed(function, u"First") || isNamed(function, u"Last")) {
        for (const auto &source : m_select->sources) {
            if (source->table)
                aggregate.order.push_back(source.get());
        }
    }
    DataType type = function.result;
    if (function.rule == ResultRule::FirstAny)
        type = aggregate.argument->type;
    else if (aggregate.argument && aggregate.argument->type == DataType::Currency &&
             (isNamed(function, u"Sum") || isNamed(function, u"Avg")))
        type = DataType::Currency;
    return m_context.make(range, type, std::move(aggregate));
}

// If all texts of a domain function are literals, they are compiled as a subquery.
ExprPtr ExpressionBinder::bindDomain(const FunctionInfo &function, const ast::Call &node, Range range)
{
    QStringList texts;
    for (const ast::ExprPtr &argument : node.arguments) {
        const ast::Literal *literal = argument->as<ast::Literal>();
        if (!literal || literal->value.type() != Value::Type::Text)
            break;
        texts.append(literal->value.text());
    }
    if (texts.size() != qsizetype(node.arguments.size())) {
        DomainCall call{&function, {}};
        for (int i = 0; i < int(node.arguments.size()); ++i)
            call.arguments.push_back(bindArgument(function, node, i));
        const bool open = function.result == DataType::Unknown && texts.size() > 1;
        const DataType type = open ? domainType(m_context, function, texts, range) : function.result;
        return m_context.make(range, type, std::move(call));
    }
    QueryPtr query = bindDomainQuery(m_context, function, texts, range);
    const DataType type = query->output().front().info.type;
    return m_context.make(range, type, ScalarQuery{std::move(query), true});
}

} // namespace dao::sql::bound
