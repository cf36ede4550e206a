#include "Parser.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

const QString kMissingParenthesis = u"Missing ), ], or Item"_s;

struct ConstantWord
{
    Keyword keyword;
    int value;
};

constexpr ConstantWord kConstantWords[] = {{Keyword::True, -1}, {Keyword::Yes, -1}, {Keyword::On, -1},
                                           {Keyword::False, 0}, {Keyword::No, 0},   {Keyword::Off, 0}};

} // namespace

void Parser::failMissingOperator() const
{
    failExpression(u"Syntax error (missing operator)"_s);
}

// The parenthesis after an expression: an operand in its place lacks the operator before it.
void Parser::closeParenthesis()
{
    if (accept(Symbol::RightParen))
        return;
    if (beginsOperand())
        failMissingOperator();
    failExpression(kMissingParenthesis);
}

// True if the current token can start an operand: used to report the right error.
bool Parser::beginsOperand() const
{
    const Token &token = current();
    switch (token.kind) {
    case Token::Kind::Quoted:
    case Token::Kind::Text:
    case Token::Kind::Number:
    case Token::Kind::Date:
        return true;
    case Token::Kind::Word:
        if (token.is(Keyword::Asc) || token.is(Keyword::Desc) || token.is(Keyword::Set) || atJoin())
            return false;
        return !endsExpression(token.keyword);
    case Token::Kind::Symbol:
        return token.is(Symbol::LeftParen) || token.is(Symbol::Bang) || token.is(Symbol::Dot);
    default:
        return false;
    }
}

// unary := (- | +) unary | power
ExprPtr Parser::parseUnary()
{
    const Token &first = current();
    if (!first.is(Symbol::Minus) && !first.is(Symbol::Plus))
        return parsePower();
    const DepthGuard guard(*this);
    take();
    ExprPtr operand = parseUnary();
    return make(since(first), Unary{first.is(Symbol::Minus) ? UnaryOp::Minus : UnaryOp::Plus, std::move(operand)});
}

// power := primary { ^ [- | +] primary }. Left-associative: 2 ^ 3 ^ 2 is 64. "-2 ^ 2" is -4.
ExprPtr Parser::parsePower()
{
    ExprPtr left = parsePrimary();
    while (accept(Symbol::Caret)) {
        // 2 ^ -1: the exponent may have a sign, although a sign binds less tightly than "^".
        const Token &sign = current();
        const bool hasSign = accept(Symbol::Minus) || accept(Symbol::Plus);
        ExprPtr right = parsePrimary();
        if (hasSign)
            right = make(since(sign), Unary{sign.is(Symbol::Minus) ? UnaryOp::Minus : UnaryOp::Plus, std::move(right)});
        const Range range = left->range.to(right->range);
        left = make(range, Binary{BinaryOp::Power, std::move(left), std::move(right)});
    }
    return left;
}

// primary := literal | name | call | ( expression ) | ( query )
ExprPtr Parser::parsePrimary()
{
    const Token &token = current();
    switch (token.kind) {
    case Token::Kind::Number:
        take();
        return make(token.range,
                    Literal{token.whole ? Value::fromLong(qint32(token.number)) : Value::fromDouble(token.number)});
    case Token::Kind::Text:
        take();
        return make(token.range, Literal{Value::fromText(token.string())});
    case Token::Kind::Date:
        take();
        return make(token.range, Literal{Value::fromDate(token.number)});
    case Token::Kind::Quoted:
        return parseName();
    case Token::Kind::Word:
        return parseWord();
    case Token::Kind::Symbol:
        if (token.is(Symbol::LeftParen))
            return parseParenthesis();
        break;
    default:
        break;
    }
    if (token.is(Symbol::Comma))
        failExpression(u"Syntax error (comma)"_s);
    failMissingOperator();
}

// A word as an operand: NULL, TRUE, FALSE and the like, NOT, EXISTS (query), else a name.
ExprPtr Parser::parseWord()
{
    const Token &token = current();
    const bool isQualifier = ahead().is(Symbol::Dot) || ahead().is(Symbol::Bang);
    if (token.keyword == Keyword::None || isQualifier)
        return parseName();
    if (token.is(Keyword::Null)) {
        take();
        return make(token.range, Literal{Value::null()});
    }
    for (const ConstantWord &constant : kConstantWords) {
        if (!token.is(constant.keyword))
            continue;
        take();
        return make(token.range, Literal{Value::fromBoolean(constant.value != 0)});
    }
    if (token.is(Keyword::Not))
        return parseNot();
    if (token.is(Keyword::Exists) && ahead().is(Symbol::LeftParen)) {
        take();
        take();
        QueryPtr query = parseSubquery();
        return make(since(token), Exists{std::move(query)});
    }
    const bool wantsQuery =
        token.is(Keyword::Exists) || token.is(Keyword::All) || token.is(Keyword::Any) || token.is(Keyword::Some);
    if (endsExpression(token.keyword) || (wantsQuery && ahead().is(Keyword::Select)))
        failMissingOperator();
    return parseName();
}

// name := part { (. | !) part }. Form references such as Forms!Main!Field are parameters.
ExprPtr Parser::parseName()
{
    const Token &first = current();
    if (ahead().is(Symbol::LeftParen) && first.kind == Token::Kind::Word)
        return parseCall();
    Name name;
    name.text = first.string();
    takeName();
    while ((at(Symbol::Dot) || at(Symbol::Bang)) && ahead().isName()) {
        if (name.parts.isEmpty())
            name.parts.append(name.text);
        name.text += at(Symbol::Dot) ? u'.' : u'!';
        take();
        name.parts.append(current().string());
        name.text += name.parts.constLast();
        takeName();
    }
    if (at(Symbol::Dot) || at(Symbol::Bang) || (at(Symbol::LeftParen) && name.parts.size() > 1))
        failExpression(u"Invalid use of '.', '!', or '()'."_s);
    return make(since(first), std::move(name));
}

// call := word ( [ * | expression { , expression } ] )
ExprPtr Parser::parseCall()
{
    const DepthGuard guard(*this);
    const Token &first = take();
    take();
    Call call{first.string(), {}, false};
    if (at(Symbol::Star) && ahead().is(Symbol::RightParen)) {
        call.star = true;
        take();
    } else if (!at(Symbol::RightParen)) {
        call.arguments = parseExpressionList();
    }
    closeParenthesis();
    return make(since(first), std::move(call));
}

// ( query ) is a scalar subquery; ( expression ) only groups and has no node.
ExprPtr Parser::parseParenthesis()
{
    const Token &open = take();
    if (at(Keyword::Select)) {
        QueryPtr query = parseSubquery();
        return make(since(open), ScalarQuery{std::move(query)});
    }
    ExprPtr inner = parseExpression();
    closeParenthesis();
    return inner;
}

// Called after the opening parenthesis; consumes the closing one.
QueryPtr Parser::parseSubquery()
{
    const DepthGuard guard(*this);
    ++m_open;
    QueryPtr query;
    {
        const ExpressionScope scope(*this);
        query = parseQuery();
    }
    --m_open;
    if (!accept(Symbol::RightParen))
        failExpression(kMissingParenthesis);
    refuseInto(*query);
    return query;
}

} // namespace dao::sql::ast
