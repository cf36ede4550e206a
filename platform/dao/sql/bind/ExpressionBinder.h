#pragma once
#include "BindContext.h"
#include "Scope.h"

namespace dao::sql::bound {

/// The restrictions of a clause, and the errors for violating them.
struct Clause
{
    int aggregateError = 0; ///< 0: aggregates are allowed
    int mismatchError = error::CriteriaMismatch;
    int unknownSourceError = 0; ///< error for "x.f" without a source x; 0: it is a parameter
};

namespace clause {
inline constexpr Clause kSelectList{};
inline constexpr Clause kWhere{error::AggregateInWhere};
inline constexpr Clause kJoin{error::AggregateInJoin, error::JoinTypeMismatch, error::TableNotInFrom};
inline constexpr Clause kGroupBy{error::AggregateInGroupBy};
inline constexpr Clause kHaving{};
inline constexpr Clause kOrderBy{};
inline constexpr Clause kOrderByUngrouped{error::AggregateInOrderBy};
inline constexpr Clause kValues{error::AggregateInWhere};
} // namespace clause

/// Binds the expressions of one clause: names to columns or parameters, operators and functions to typed nodes.
class ExpressionBinder
{
public:
    /// scope: null if no column can be named.
    ExpressionBinder(BindContext &context, const Scope *scope, const Clause &clause)
        : m_context(context)
        , m_scope(scope)
        , m_clause(clause)
    {
    }

    void setScope(const Scope *scope) { m_scope = scope; }
    /// The select whose rows are aggregated.
    void setSelect(const Select *select) { m_select = select; }
    /// Looks up an unqualified name as an alias of the same select list first; returns null if it is none.
    using AliasLookup = std::function<ExprPtr(const QString &name, Range where)>;
    void setAliases(AliasLookup aliases) { m_aliases = std::move(aliases); }
    /// Restricts names to the sources with these indexes (the tables of a join); else error 3082.
    void limitTo(size_t first, size_t last) { m_first = first, m_last = last; }
    /// Aggregates use only the rows that satisfy the filter.
    void setAggregateFilter(ExprPtr filter) { m_filter = std::move(filter); }
    /// The field that a validation rule refers to implicitly.
    void setImpliedField(ExprPtr field) { m_implied = std::move(field); }

    /// Binds a value. A parameter without type information is Text.
    ExprPtr bind(const ast::Expr &expr);
    /// Binds a condition.
    ExprPtr bindCondition(const ast::Expr &expr);
    /// Binds a value for a field, converted like an assignment; literals are converted at compile time.
    ExprPtr bindFor(const ast::Expr &expr, const FieldInfo &field);
    ExprPtr assigned(ExprPtr expr, const FieldInfo &field);

    // Conversions of bound values to the type that an operator or a function needs. A parameter without type
    // information gets this type.
    ExprPtr asText(ExprPtr expr);
    ExprPtr asNumber(ExprPtr expr, DataType parameterType = DataType::Double);
    ExprPtr asDate(ExprPtr expr);
    /// A text becomes a number or date; numbers and dates stay as they are.
    ExprPtr asQuantity(ExprPtr expr, DataType parameterType, DataType type, Conversion conversion);
    ExprPtr asTruth(ExprPtr expr);
    ExprPtr asType(ExprPtr expr, DataType type);

private:
    ExprPtr bindAny(const ast::Expr &expr);
    ExprPtr bindNode(const ast::Literal &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Name &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Unary &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Binary &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Chain &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Call &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Between &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::InList &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::InQuery &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::IsNull &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Exists &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::Quantified &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::ScalarQuery &node, const ast::Expr &expr);
    ExprPtr bindNode(const ast::ImpliedField &node, const ast::Expr &expr);

    std::shared_ptr<Expr> lookUp(const ast::Name &name, Range where);
    std::shared_ptr<Expr> lookUpSimple(const QString &name, Range where);
    bool isSource(const QString &name) const;
    void checkSource(const ast::Name &name, Range where) const;
    QString suggestionFor(const ast::Name &name) const;
    bool isOpenParameter(const Expr &expr) const;
    ExprPtr typed(ExprPtr expr, DataType type);
    ExprPtr withDefaultType(ExprPtr expr);
    DataType contextType(const Expr &expr) const;

    ExprPtr bindArithmetic(BinaryOp op, ExprPtr left, ExprPtr right, Range range);
    ExprPtr bindAdd(ExprPtr left, ExprPtr right, Range range);
    ExprPtr bindLogic(const ast::Binary &node, Range range);
    void collectEqualities(Chain &chain);
    void reconcile(ExprPtr &left, ExprPtr &right, Range range);
    void convertTo(ExprPtr &side, const ExprPtr &other, Range range);
    QueryPtr bindSubquery(const ast::Query &query, bool oneColumn);
    void reconcileWithQuery(ExprPtr &operand, const Query &query, Range range);

    // FunctionBinder.cpp
    const FunctionInfo *chooseFunction(const ast::Call &node, Range range) const;
    ExprPtr bindPlainCall(const FunctionInfo &function, const ast::Call &node, Range range);
    ExprPtr bindArgument(const FunctionInfo &function, const ast::Call &node, int index);
    ExprPtr bindSpecial(const FunctionInfo &function, const ast::Call &node, Range range);
    ExprPtr bindIIf(const ast::Call &node, Range range);
    ExprPtr bindSwitch(const ast::Call &node, Range range);
    ExprPtr bindChoose(const ast::Call &node, Range range);
    ExprPtr bindNz(const ast::Call &node, Range range);
    ExprPtr bindCase(std::vector<When> branches, ExprPtr otherwise, Range range);
    bool isOwnColumn(const Expr &expr) const;
    ExprPtr bindAggregate(const FunctionInfo &function, const ast::Call &node, Range range);
    ExprPtr bindDomain(const FunctionInfo &function, const ast::Call &node, Range range);
    DataType resultType(const FunctionInfo &function, const std::vector<ExprPtr> &arguments) const;

    BindContext &m_context;
    const Scope *m_scope;
    Clause m_clause;
    const Select *m_select = nullptr;
    AliasLookup m_aliases;
    ExprPtr m_implied;
    ExprPtr m_filter;
    size_t m_first = 0;
    size_t m_last = size_t(-1);
};

} // namespace dao::sql::bound
