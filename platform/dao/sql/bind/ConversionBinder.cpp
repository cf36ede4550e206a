#include "ExpressionBinder.h"
#include "Types.h"

// Converts operands to the types that operators, functions and fields need, and determines the types of parameters from
// these uses.

namespace dao::sql::bound {

bool ExpressionBinder::isOpenParameter(const Expr &expr) const
{
    const ParameterRef *parameter = expr.as<ParameterRef>();
    return parameter && expr.type == DataType::Unknown && !m_context.parameterAt(parameter->id).declared;
}

// Gives an undeclared parameter the type of the operand it is used with; returns other expressions unchanged.
ExprPtr ExpressionBinder::typed(ExprPtr expr, DataType type)
{
    if (!isOpenParameter(*expr) || type == DataType::Unknown)
        return expr;
    const int id = expr->as<ParameterRef>()->id;
    m_context.noteUse(id, type);
    return m_context.make(expr->range, type, ParameterRef{id});
}

// If this use does not determine the type of a parameter, other uses do; without any it is Text.
ExprPtr ExpressionBinder::withDefaultType(ExprPtr expr)
{
    if (!isOpenParameter(*expr))
        return expr;
    const DataType known = contextType(*expr);
    return m_context.make(expr->range, known == DataType::Unknown ? DataType::Text : known, *expr->as<ParameterRef>());
}

DataType ExpressionBinder::contextType(const Expr &expr) const
{
    return isOpenParameter(expr) ? m_context.parameterAt(expr.as<ParameterRef>()->id).type : expr.type;
}

ExprPtr ExpressionBinder::asText(ExprPtr expr)
{
    expr = typed(std::move(expr), DataType::Text);
    const bool isNull = expr->as<Literal>() && expr->type == DataType::Unknown;
    if (familyOf(expr->type) == Family::Text || isNull)
        return expr;
    const Range range = expr->range;
    return m_context.make(range, DataType::Text, Convert{Conversion::ToText, std::move(expr)});
}

ExprPtr ExpressionBinder::asNumber(ExprPtr expr, DataType parameterType)
{
    return asQuantity(std::move(expr), parameterType, DataType::Double, Conversion::ToNumber);
}

ExprPtr ExpressionBinder::asDate(ExprPtr expr)
{
    return asQuantity(std::move(expr), DataType::Date, DataType::Date, Conversion::ToDate);
}

ExprPtr ExpressionBinder::asQuantity(ExprPtr expr, DataType parameterType, DataType type, Conversion conversion)
{
    expr = typed(std::move(expr), parameterType);
    const Family family = familyOf(expr->type);
    const bool isNull = expr->as<Literal>() && expr->type == DataType::Unknown;
    if (family == Family::Number || family == Family::Date || isNull)
        return expr;
    if (family == Family::Binary)
        m_context.fail(m_clause.mismatchError, expr->range);
    const Range range = expr->range;
    return m_context.make(range, type, Convert{conversion, std::move(expr)});
}

// Numbers are conditions as they are: any value except 0 is true.
ExprPtr ExpressionBinder::asTruth(ExprPtr expr)
{
    expr = typed(std::move(expr), DataType::Boolean);
    const Family family = familyOf(expr->type);
    if (family == Family::Number || family == Family::Date || expr->as<Literal>()) {
        if (family == Family::Text)
            m_context.fail(m_clause.mismatchError, expr->range);
        return expr;
    }
    if (family == Family::Binary || (family == Family::Text && expr->hasFixedType))
        m_context.fail(m_clause.mismatchError, expr->range);
    const Range range = expr->range;
    return m_context.make(range, DataType::Boolean, Convert{Conversion::ToTruth, std::move(expr)});
}

ExprPtr ExpressionBinder::asType(ExprPtr expr, DataType type)
{
    expr = typed(std::move(expr), type);
    return familyOf(type) == Family::Text ? asText(std::move(expr)) : expr;
}

// A literal is converted now, so that an impossible value is an error with a place and not a failure of each row.
ExprPtr ExpressionBinder::assigned(ExprPtr expr, const FieldInfo &field)
{
    expr = typed(std::move(expr), field.type);
    if (const Literal *literal = expr->as<Literal>()) {
        const Value value = convertValue(literal->value, field.type);
        if (value.isEmpty())
            m_context.fail(familyOf(expr->type) == Family::Text ? error::CriteriaMismatch : error::NumericOverflow,
                           expr->range);
        return m_context.make(expr->range, field.type, Literal{value}, true);
    }
    const bool isParameterOfType = expr->as<ParameterRef>() && expr->type == field.type;
    if (isParameterOfType || fitsField(*expr, field.type))
        return expr;
    if (familyOf(field.type) == Family::Text)
        return asText(std::move(expr));
    const Range range = expr->range;
    return m_context.make(range, field.type, Convert{Conversion::Assign, std::move(expr)});
}

} // namespace dao::sql::bound
