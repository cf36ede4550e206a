#include "RuleBinder.h"

#include <dao/sql/ast/Parser.h>

namespace dao::sql::bound {
namespace {

/// Binds an expression without names: only literals, operators and functions.
ExprPtr tryBindDefault(BindContext &context, const QString &text, const FieldInfo &field)
{
    try {
        const BindContext::Substitution substitution(context, field.name, text, {});
        const std::shared_ptr<const ast::Expr> expr = ast::Parser(text).parseLoneExpression();
        const bool isBareWord = expr->as<ast::Name>() != nullptr;
        if (isBareWord)
            return nullptr;
        ExpressionBinder binder(context, nullptr, clause::kValues);
        return binder.bindFor(*expr, field);
    } catch (const DaoException &) {
        return nullptr;
    }
}

} // namespace

ExprPtr bindDefault(BindContext &context, const QString &text, const FieldInfo &field)
{
    if (ExprPtr bound = tryBindDefault(context, text, field))
        return bound;
    const QString word = text.trimmed().startsWith(u'=') ? text.trimmed().sliced(1).trimmed() : text.trimmed();
    const Value value = convertValue(Value::fromText(word), field.type);
    if (value.isEmpty())
        context.fail(error::ConversionFailed, {});
    return context.make({}, field.type, Literal{value}, true);
}

ExprPtr bindRule(BindContext &context, const Source &source, const FieldInfo *implied)
{
    const std::shared_ptr<const ast::Expr> rule =
        implied ? ast::Parser(context.text()).parseCriterion() : ast::Parser(context.text()).parseLoneExpression();
    ScopeSource scoped(source.name, source);
    context.forbidParameters();
    ExpressionBinder binder(context, nullptr, clause::kWhere);
    Scope scope;
    if (implied)
        binder.setImpliedField(scoped.column(source.table->indexOf(implied->name), context));
    scope.add(std::move(scoped));
    binder.setScope(&scope);
    return binder.bindCondition(*rule);
}

} // namespace dao::sql::bound
