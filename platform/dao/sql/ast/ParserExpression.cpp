#include "Parser.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

struct KeywordOperator
{
    Keyword keyword;
    BinaryOp op;
};

// Lowest precedence first. Or and And have their own production, between these and Not.
constexpr KeywordOperator kLogicalOperators[] = {
    {Keyword::Imp, BinaryOp::Imp}, {Keyword::Eqv, BinaryOp::Eqv}, {Keyword::Xor, BinaryOp::Xor}};

struct ArithmeticOperator
{
    int level;
    Symbol symbol;
    Keyword keyword;
    BinaryOp op;
};

constexpr ArithmeticOperator kArithmeticOperators[] = {{0, Symbol::Ampersand, Keyword::None, BinaryOp::Concatenate},
                                                       {1, Symbol::Plus, Keyword::None, BinaryOp::Add},
                                                       {1, Symbol::Minus, Keyword::None, BinaryOp::Subtract},
                                                       {2, Symbol::None, Keyword::Mod, BinaryOp::Mod},
                                                       {3, Symbol::Backslash, Keyword::None, BinaryOp::IntegerDivide},
                                                       {4, Symbol::Star, Keyword::None, BinaryOp::Multiply},
                                                       {4, Symbol::Slash, Keyword::None, BinaryOp::Divide}};

struct RelationOperator
{
    Symbol symbol;
    BinaryOp op;
};

constexpr RelationOperator kRelationOperators[] = {
    {Symbol::Equal, BinaryOp::Equal},         {Symbol::NotEqual, BinaryOp::NotEqual},
    {Symbol::Less, BinaryOp::Less},           {Symbol::Greater, BinaryOp::Greater},
    {Symbol::LessEqual, BinaryOp::LessEqual}, {Symbol::GreaterEqual, BinaryOp::GreaterEqual}};

const KeywordOperator *logicalOperator(const Token &token)
{
    for (const KeywordOperator &entry : kLogicalOperators) {
        if (token.is(entry.keyword))
            return &entry;
    }
    return nullptr;
}

const ArithmeticOperator *arithmeticOperator(const Token &token)
{
    for (const ArithmeticOperator &entry : kArithmeticOperators) {
        if (entry.keyword == Keyword::None ? token.is(entry.symbol) : token.is(entry.keyword))
            return &entry;
    }
    return nullptr;
}

const RelationOperator *relationOperator(const Token &token)
{
    for (const RelationOperator &entry : kRelationOperators) {
        if (token.is(entry.symbol))
            return &entry;
    }
    return nullptr;
}

} // namespace

// The expression of a clause. Whatever follows must end the clause, so an operand here means a missing operator.
ExprPtr Parser::parseClauseExpression()
{
    const ExpressionScope scope(*this);
    ExprPtr expr = parseExpression();
    if (beginsOperand())
        failMissingOperator();
    if (at(Symbol::RightParen) && m_open == 0)
        failExpression(u"Extra )"_s);
    return expr;
}

// True if the clause is empty: its end follows at once.
bool Parser::atClauseEnd() const
{
    if (current().kind == Token::Kind::End || at(Symbol::Semicolon) || at(Symbol::RightParen))
        return true;
    const bool startsNext = at(Keyword::Where) || at(Keyword::Group) || at(Keyword::Having) || at(Keyword::Order) ||
                            at(Keyword::Union) || at(Keyword::Pivot) || at(Keyword::With);
    return startsNext && !ahead().is(Symbol::Dot) && !ahead().is(Symbol::Bang);
}

// The expression of a clause that must not be empty.
ExprPtr Parser::parseClause(int errorWhenEmpty)
{
    if (atClauseEnd())
        fail(errorWhenEmpty);
    return parseClauseExpression();
}

// expression := logical
ExprPtr Parser::parseExpression()
{
    const DepthGuard guard(*this);
    const bool outside = std::exchange(m_headingsFollow, false);
    ExprPtr expr = parseLogical(0);
    m_headingsFollow = outside;
    return expr;
}

// PIVOT expression [IN (heading, ...)]: an unparenthesised IN starts the headings.
ExprPtr Parser::parsePivot()
{
    const DepthGuard guard(*this);
    m_headingsFollow = true;
    ExprPtr expr = parseLogical(0);
    m_headingsFollow = false;
    return expr;
}

// logical := logical IMP logical | logical EQV logical | logical XOR logical | disjunction
// Takes the operators from that level on; lowest precedence first. All three are left-associative.
ExprPtr Parser::parseLogical(int lowest)
{
    ExprPtr left = parseChain(false);
    while (const KeywordOperator *found = logicalOperator(current())) {
        const int level = int(found - kLogicalOperators);
        if (level < lowest)
            break;
        take();
        ExprPtr right = parseLogical(level + 1);
        const Range range = left->range.to(right->range);
        left = make(range, Binary{found->op, std::move(left), std::move(right)});
    }
    return left;
}

// disjunction := conjunction { OR conjunction }
// conjunction := negation { AND negation }
ExprPtr Parser::parseChain(bool isAnd)
{
    const Keyword keyword = isAnd ? Keyword::And : Keyword::Or;
    ExprPtr first = isAnd ? parseNot() : parseChain(true);
    if (!at(keyword))
        return first;
    Chain chain{isAnd, {}};
    chain.terms.push_back(std::move(first));
    while (accept(keyword))
        chain.terms.push_back(isAnd ? parseNot() : parseChain(true));
    const Range range = chain.terms.front()->range.to(chain.terms.back()->range);
    return make(range, std::move(chain));
}

// negation := NOT negation | comparison
ExprPtr Parser::parseNot()
{
    const Token &first = current();
    const bool negatesField = m_criterion && first.is(Keyword::Not);
    if (!first.is(Keyword::Not) && !negatesField)
        return parseComparison();
    const DepthGuard guard(*this);
    take();
    ExprPtr operand = parseNot();
    return make(since(first), Unary{UnaryOp::Not, std::move(operand)});
}

// True at an operator that lacks its left operand in a validation rule (">= 0").
bool Parser::atCriterionOperator() const
{
    if (relationOperator(current()))
        return true;
    return at(Keyword::Like) || at(Keyword::ALike) || at(Keyword::Between) || at(Keyword::In) || at(Keyword::Is);
}

// comparison := arithmetic { comparison tail }
ExprPtr Parser::parseComparison()
{
    ExprPtr left =
        m_criterion && atCriterionOperator() ? make({current().range.start, 0}, ImpliedField{}) : parseArithmetic(0);
    bool found = true;
    while (found)
        left = parseComparisonTail(std::move(left), found);
    return left;
}

// comparison tail := relation | IS [NOT] NULL | [NOT] LIKE arithmetic | [NOT] BETWEEN ... | [NOT] IN (...)
ExprPtr Parser::parseComparisonTail(ExprPtr left, bool &found)
{
    if (const RelationOperator *relation = relationOperator(current())) {
        take();
        return parseRelation(std::move(left), relation->op);
    }
    const Token &first = current();
    if (accept(Keyword::Is)) {
        const bool negated = accept(Keyword::Not);
        if (!accept(Keyword::Null))
            failMissingOperator();
        const Range range = {left->range.start, since(first).end() - left->range.start};
        return make(range, IsNull{std::move(left), negated});
    }
    const bool negated = at(Keyword::Not) && (ahead().is(Keyword::Like) || ahead().is(Keyword::ALike) ||
                                              ahead().is(Keyword::Between) || ahead().is(Keyword::In));
    if (negated)
        take();
    if (accept(Keyword::Between))
        return parseBetween(std::move(left), negated);
    if ((negated || !m_headingsFollow) && accept(Keyword::In))
        return parseIn(std::move(left), negated);
    if (at(Keyword::Like) || at(Keyword::ALike)) {
        const BinaryOp op = take().is(Keyword::Like) ? BinaryOp::Like : BinaryOp::ALike;
        ExprPtr right = parseArithmetic(0);
        const Range range = left->range.to(right->range);
        ExprPtr like = make(range, Binary{op, std::move(left), std::move(right)});
        return negated ? make(range, Unary{UnaryOp::Not, std::move(like)}) : std::move(like);
    }
    found = false;
    return left;
}

// relation := operator (ALL | ANY | SOME) (query) | operator arithmetic
ExprPtr Parser::parseRelation(ExprPtr left, BinaryOp op)
{
    const bool all = at(Keyword::All);
    const bool any = at(Keyword::Any) || at(Keyword::Some);
    if ((all || any) && ahead().is(Symbol::LeftParen)) {
        take();
        take();
        QueryPtr query = parseSubquery();
        const Range range = left->range.to(query->range);
        return make(range, Quantified{op, std::move(left), all, std::move(query)});
    }
    ExprPtr right = parseArithmetic(0);
    const Range range = left->range.to(right->range);
    return make(range, Binary{op, std::move(left), std::move(right)});
}

// BETWEEN arithmetic AND arithmetic. The bounds are below AND in precedence, so that AND ends the first one.
ExprPtr Parser::parseBetween(ExprPtr left, bool negated)
{
    ExprPtr low = parseArithmetic(0);
    if (!accept(Keyword::And))
        failExpression(u"Between operator without And"_s);
    ExprPtr high = parseArithmetic(0);
    const Range range = left->range.to(high->range);
    return make(range, Between{std::move(left), std::move(low), std::move(high), negated});
}

// IN (query) | IN (expression, ...)
ExprPtr Parser::parseIn(ExprPtr left, bool negated)
{
    if (!at(Symbol::LeftParen))
        failExpression(u"In operator without ()"_s);
    const Token &open = take();
    if (at(Keyword::Select) || at(Keyword::Transform) || (at(Symbol::LeftParen) && ahead().is(Keyword::Select))) {
        QueryPtr query = parseSubquery();
        const Range range = {left->range.start, since(open).end() - left->range.start};
        return make(range, InQuery{std::move(left), std::move(query), negated});
    }
    std::vector<ExprPtr> items = parseExpressionList();
    closeParenthesis();
    const Range range = {left->range.start, since(open).end() - left->range.start};
    return make(range, InList{std::move(left), std::move(items), negated});
}

// expression { , expression }
std::vector<ExprPtr> Parser::parseExpressionList()
{
    std::vector<ExprPtr> items;
    do {
        if (at(Symbol::Comma) || at(Symbol::RightParen))
            failExpression(u"Syntax error (comma)"_s);
        items.push_back(parseExpression());
    } while (accept(Symbol::Comma));
    return items;
}

// Levels, lowest precedence first: & | + - | MOD | \ | * /. All operators are left-associative. Takes the operators
// from that level on.
ExprPtr Parser::parseArithmetic(int lowest)
{
    ExprPtr left = parseUnary();
    while (const ArithmeticOperator *found = arithmeticOperator(current())) {
        if (found->level < lowest)
            break;
        take();
        ExprPtr right = parseArithmetic(found->level + 1);
        const Range range = left->range.to(right->range);
        left = make(range, Binary{found->op, std::move(left), std::move(right)});
    }
    return left;
}

// A single operand of a rule means equality with the field.
ExprPtr Parser::withImpliedField(ExprPtr expr)
{
    if (auto *chain = std::get_if<Chain>(&expr->node)) {
        for (ExprPtr &term : chain->terms)
            term = withImpliedField(std::move(term));
        return expr;
    }
    auto *unary = std::get_if<Unary>(&expr->node);
    if (unary && unary->op == UnaryOp::Not) {
        unary->operand = withImpliedField(std::move(unary->operand));
        return expr;
    }
    const auto *binary = expr->as<Binary>();
    const bool isArithmetic = binary && binary->op <= BinaryOp::Concatenate;
    const bool isOperand = expr->as<Literal>() || expr->as<Name>() || unary || isArithmetic;
    if (!isOperand)
        return expr;
    const Range range = expr->range;
    return make(range, Binary{BinaryOp::Equal, make({range.start, 0}, ImpliedField{}), std::move(expr)});
}

} // namespace dao::sql::ast
