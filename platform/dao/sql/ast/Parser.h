#pragma once
#include "Statement.h"

#include <dao/values/Errors.h>

namespace dao::sql::ast {

/// Recursive descent parser for the tokens of one text. There is one function per production of the grammar; it leaves
/// the token after the production as the current one. Every error is a DaoException with a place. There is no error
/// recovery.
class Parser
{
public:
    explicit Parser(const QString &text);

    Statement parseStatement();
    /// Parses the whole text as one expression.
    std::shared_ptr<const Expr> parseLoneExpression();
    /// Parses the whole text as a validation rule. Comparisons may omit the left operand (an ImpliedField replaces it);
    /// a single operand means equality with the field. This applies to each term of And and Or.
    std::shared_ptr<const Expr> parseCriterion();

private:
    class DepthGuard;
    class ExpressionScope;

    Parser(const Parser &outer, QList<Token> tokens);

    // Parser.cpp: tokens and failures
    const Token &current() const { return m_tokens[m_at]; }
    const Token &ahead(qsizetype count = 1) const { return m_tokens[std::min(m_at + count, m_tokens.size() - 1)]; }
    const Token &take();
    void pass();
    bool at(Keyword keyword) const { return current().is(keyword); }
    bool at(Symbol symbol) const { return current().is(symbol); }
    bool accept(Keyword keyword);
    bool accept(Symbol symbol);
    void expect(Keyword keyword, int error);
    void expect(Symbol symbol, int error);
    NameAt expectName(int error);
    const Token &takeName();
    std::vector<NameAt> nameList(int error);
    Range since(const Token &first) const;
    QString textOf(Range range) const;
    [[noreturn]] void fail(int number, const QStringList &arguments = {}) const;
    [[noreturn]] void failAt(Range range, int number, const QStringList &arguments = {}) const;
    [[noreturn]] void failExpression(const QString &what) const;
    [[noreturn]] void failMissingOperator() const;
    [[noreturn]] void failFaulty() const;
    QString expressionText() const;
    void checkCurrent() const;
    void expectEnd();
    Statement parseWhole();
    void explain(DaoException &exception) const;
    template <typename Node>
    ExprPtr make(Range range, Node node);
    std::shared_ptr<const Expr> withMemory(ExprPtr expr) const;
    int depthOf(const std::vector<ExprPtr> &children) const;
    void limitDepth(int depth, Range range);

    // ParserExpression.cpp
    ExprPtr parseClauseExpression();
    bool atClauseEnd() const;
    ExprPtr parseClause(int errorWhenEmpty);
    ExprPtr parseExpression();
    ExprPtr parsePivot();
    ExprPtr parseLogical(int lowest);
    ExprPtr parseChain(bool isAnd);
    ExprPtr parseNot();
    ExprPtr parseComparison();
    ExprPtr parseComparisonTail(ExprPtr left, bool &found);
    ExprPtr parseBetween(ExprPtr left, bool negated);
    ExprPtr parseIn(ExprPtr left, bool negated);
    ExprPtr parseRelation(ExprPtr left, BinaryOp op);
    ExprPtr parseArithmetic(int lowest);
    std::vector<ExprPtr> parseExpressionList();
    ExprPtr withImpliedField(ExprPtr expr);
    bool atCriterionOperator() const;

    // ParserOperand.cpp
    bool beginsOperand() const;
    void closeParenthesis();
    ExprPtr parseUnary();
    ExprPtr parsePower();
    ExprPtr parsePrimary();
    ExprPtr parseWord();
    ExprPtr parseName();
    ExprPtr parseCall();
    ExprPtr parseParenthesis();
    QueryPtr parseSubquery();

    // ParserQuery.cpp
    QueryPtr parseQuery();
    QueryPart parseQueryPart();
    void refuseInto(const Query &query) const;
    std::unique_ptr<Select> parseSelect();
    void parsePredicates(Select &select);
    void parseTop(Select &select);
    std::vector<SelectItem> parseSelectList(int error);
    SelectItem parseSelectItem(int error);
    std::vector<OrderItem> parseOrderBy();
    void parseClauses(Select &select);
    void parseOwnerAccess();
    std::vector<TableRefPtr> parseFrom();
    TableRefPtr parseJoins();
    TableRefPtr parseTable();
    TableRefPtr parseBracketedQuery();
    TableRefPtr parseParenthesisedTable();
    void parseTableAlias(TableRef &table);
    TableRefPtr makeTable(Range range, DerivedTable node);
    bool atJoin() const;
    JoinKind parseJoinKind();
    Transform parseTransform();

    // ParserModify.cpp
    void parseParameters(Statement &statement);
    void parseProcedure(Statement &statement);
    ParameterDeclaration parseParameter();
    Insert parseInsert();
    Update parseUpdate();
    Delete parseDelete();
    Execute parseExecute();
    void refuseOtherDatabase();

    // ParserDefine.cpp
    void parseCreate(Statement &statement);
    CreateTable parseCreateTable();
    FieldDefinition parseFieldDefinition();
    void parseFieldType(FieldDefinition &field);
    Constraint parseConstraint(bool ofTable);
    void parseConstraintBody(Constraint &constraint, bool ofTable);
    void parseReferences(Constraint &constraint);
    bool atConstraint(bool ofTable) const;
    Range parseCheck();
    AlterTable parseAlterTable();
    void refuseConstraints(const FieldDefinition &field) const;
    CreateIndex parseCreateIndex(bool unique);
    CreateQuery parseCreateQuery();
    void refuseAction(const Statement &stored, Range place) const;
    void parseDrop(Statement &statement);

    QString m_text;
    QList<Token> m_tokens;
    std::shared_ptr<ExprMemory> m_memory;
    qsizetype m_at = 0;
    qsizetype m_expressionStart = -1;
    int m_depth = 0;
    int m_deepest = 0; ///< greatest depth of the trees of the current query
    int m_open = 0;    ///< number of open parentheses around queries and joins
    bool m_criterion = false;
    bool m_headingsFollow =
        false; ///< "In (" starts the headings of a cross table; the In operator needs parentheses there
};

/// Counts the nesting levels and refuses too many of them, so that no text can overflow the stack.
class Parser::DepthGuard
{
public:
    explicit DepthGuard(Parser &parser);
    ~DepthGuard() { --m_parser.m_depth; }
    DepthGuard(const DepthGuard &) = delete;
    DepthGuard &operator=(const DepthGuard &) = delete;

private:
    Parser &m_parser;
};

/// While it exists, syntax errors quote the expression that starts here.
class Parser::ExpressionScope
{
public:
    explicit ExpressionScope(Parser &parser)
        : m_parser(parser)
        , m_outer(parser.m_expressionStart)
    {
        m_parser.m_expressionStart = m_parser.m_at;
    }
    ~ExpressionScope() { m_parser.m_expressionStart = m_outer; }
    ExpressionScope(const ExpressionScope &) = delete;
    ExpressionScope &operator=(const ExpressionScope &) = delete;

private:
    Parser &m_parser;
    qsizetype m_outer;
};

template <typename Node>
ExprPtr Parser::make(Range range, Node node)
{
    ExprPtr expr(std::pmr::polymorphic_allocator<Expr>(m_memory.get()).new_object<Expr>());
    expr->range = range;
    if constexpr (requires { node.operand; })
        expr->depth = std::max(expr->depth, node.operand->depth + 1);
    if constexpr (requires { node.left; })
        expr->depth = std::max({expr->depth, node.left->depth + 1, node.right->depth + 1});
    if constexpr (requires { node.low; })
        expr->depth = std::max({expr->depth, node.low->depth + 1, node.high->depth + 1});
    if constexpr (requires { node.terms; })
        expr->depth = std::max(expr->depth, depthOf(node.terms) + 1);
    if constexpr (requires { node.arguments; })
        expr->depth = std::max(expr->depth, depthOf(node.arguments) + 1);
    if constexpr (requires { node.items; })
        expr->depth = std::max(expr->depth, depthOf(node.items) + 1);
    if constexpr (requires { node.query; })
        expr->depth = std::max(expr->depth, node.query->depth + 1);
    expr->node = std::move(node);
    limitDepth(expr->depth, expr->range);
    return expr;
}

} // namespace dao::sql::ast
