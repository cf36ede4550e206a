#pragma once
#include "BindContext.h"
#include "ExpressionBinder.h"
#include "Scope.h"

#include <dao/values/Names.h>

namespace dao::sql::bound {

/// What is read of a query. Rows: only whether it has rows, as for EXISTS, so that "*" need not be expanded.
enum class Reads { Cells, Rows };

/// Binds a query: a single select or a union.
class QueryBinder
{
public:
    QueryBinder(BindContext &context, const Scope *outer, Reads reads = Reads::Cells)
        : m_context(context)
        , m_outer(outer)
        , m_reads(reads)
    {
    }

    std::shared_ptr<Query> bind(const ast::Query &query);
    /// Sets depth and size; error 3360 if they are too large.
    void measure(Query &query, Range range) const;

private:
    QueryPart bindPart(const ast::QueryPart &part);
    void mergeColumns(Query &query, Range range);
    void convertColumn(Query &query, size_t index, DataType type);
    void bindUnionOrder(Query &query, const ast::Query &source);
    int unionColumn(const Query &query, const ast::Expr &expr);

    BindContext &m_context;
    const Scope *m_outer;
    Reads m_reads;
};

/// Binds one select: first FROM, then the clauses that use its sources.
class SelectBinder
{
public:
    SelectBinder(BindContext &context, const Scope *outer, Reads reads = Reads::Cells);

    std::shared_ptr<Select> bind(const ast::Select &select);

    // The steps of bind(), for statements that have only some clauses.
    void bindFrom(const std::vector<ast::TableRefPtr> &from);
    void bindWhere(const ast::Expr *where);
    ExpressionBinder expressions(const Clause &clause);
    const Scope &scope() const { return m_scope; }
    const std::shared_ptr<Select> &select() const { return m_select; }
    /// Error 3122 for a column that is neither aggregated nor a group key. place: of the whole expression in the text.
    void checkGrouped(const Expr &expr, Range place) const { checkGrouped(expr, place, false); }

private:
    struct Alias
    {
        const ast::Expr *expr = nullptr;
        ExprPtr bound;
        bool binding = false;
    };
    struct PendingJoin
    {
        std::shared_ptr<JoinTree> join;
        const ast::Expr *on;
        size_t first;
        size_t last;
        std::vector<ExprPtr> filters; ///< conditions of flattened queries, added to ON
    };

    // FromBinder.cpp
    std::shared_ptr<JoinTree> bindTable(const ast::TableRef &table, bool nullable);
    std::shared_ptr<JoinTree> bindNode(const ast::NamedTable &node, const ast::TableRef &table, bool nullable);
    std::shared_ptr<JoinTree> bindNode(const ast::DerivedTable &node, const ast::TableRef &table, bool nullable);
    std::shared_ptr<JoinTree> bindNode(const ast::Join &node, const ast::TableRef &table, bool nullable);
    std::shared_ptr<JoinTree> addBaseTable(const TableInfo &info, const QString &name, Range range, bool nullable);
    std::shared_ptr<JoinTree> addQuery(const std::shared_ptr<Query> &query, const QString &name, Range range,
                                       bool nullable);
    static std::vector<OrderKey> orderOfOutput(const Query &query, const std::vector<ScopeColumn> &scoped);
    void replaceTop(Select &select, Range range);
    std::shared_ptr<JoinTree> flattenSubquery(const Query &query, std::vector<ScopeColumn> &scoped, bool nullable);
    ExprPtr wherePresent(const OutputColumn &column, const Source &table);
    void addWhere(const ExprPtr &condition);
    std::shared_ptr<Query> bindStoredQuery(const QueryInfo &info, Range range);
    std::shared_ptr<Query> bindStoredTransform(const ast::Transform &node);
    void addToScope(ScopeSource source, Range range);
    void bindPendingJoins();

    // SelectBinder.cpp
    void bindList(const std::vector<ast::SelectItem> &items);
    bool readsNoCell(const ast::Select &select) const;
    void addStar(const ast::SelectItem &item);
    void addItem(const ast::SelectItem &item);
    void nameColumns();
    ExprPtr aliasNamed(const QString &name, Range where);
    ExprPtr bindAlias(Alias &alias, const QString &name, Range where);
    void bindGroupBy(const ast::Select &select);
    void bindOrderBy(const ast::Select &select);
    OrderKey bindOrderItem(const ast::OrderItem &item);
    void inheritOrder();
    void bindDistinctRow();
    void checkClauses(const ast::Select &select);
    void checkGrouped(const Expr &expr, Range place, bool inSubquery) const;

    BindContext &m_context;
    Reads m_reads;
    bool m_expandsStar = true;
    Scope m_scope;
    std::shared_ptr<Select> m_select;
    std::vector<PendingJoin> m_pending;
    QHash<const JoinTree *, ExprPtr> m_filters; ///< conditions of flattened queries that are not in a join yet
    std::vector<OrderKey> m_inheritedOrder;
    QHash<NameKey, Alias> m_aliases; ///< refers to the syntax tree
    int m_unnamed = 0;
};

/// The query for a domain function with these texts.
QString domainQuery(const FunctionInfo &function, const QStringList &texts);

} // namespace dao::sql::bound
