#include "Parser.h"

#include "NearestName.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

// SQLite limits expressions to 1000 levels; an expression of the dialect needs up to two SQLite levels per level.
constexpr int kMaxTreeDepth = 480;
constexpr int kMaxNesting = 150;

// Ten times the length of a list of all tubes of a large steam generator.
constexpr qsizetype kLongestText = 4000000;
constexpr qsizetype kMaxTokens = 1500000;

constexpr size_t kUsualMemory = 4096; // 50 expressions

// Length of an unterminated name that a message shows.
constexpr qsizetype kLongestName = 64;

const QString kErrorSource = u"DAO.Database"_s;
const QString kFromExpected = u"FROM is expected here."_s;

} // namespace

Parser::DepthGuard::DepthGuard(Parser &parser)
    : m_parser(parser)
{
    if (m_parser.m_depth >= kMaxNesting)
        m_parser.fail(error::TooComplex);
    ++m_parser.m_depth;
}

Parser::Parser(const QString &text)
    : m_text(text)
    , m_tokens(tokenize(QStringView(m_text).first(std::min(m_text.size(), kLongestText + 1))))
    , m_memory(std::make_shared<ExprMemory>(kUsualMemory))
{
    if (m_text.size() > kLongestText || m_tokens.size() > kMaxTokens)
        fail(error::TooComplex);
}

Parser::Parser(const Parser &outer, QList<Token> tokens)
    : m_text(outer.m_text)
    , m_tokens(std::move(tokens))
    , m_memory(outer.m_memory)
    , m_depth(outer.m_depth)
{
}

Statement Parser::parseStatement()
{
    try {
        return parseWhole();
    } catch (DaoException &exception) {
        explain(exception);
        throw;
    }
}

// Adds hints for common mistakes, recognised by the words at which parsing stopped.
void Parser::explain(DaoException &exception) const
{
    const auto tokenAt = [this](qsizetype at) { return at >= 0 && at < m_tokens.size() ? m_tokens[at] : Token(); };
    const auto isWord = [](const Token &token) { return token.kind == Token::Kind::Word; };
    const auto hint = [&](const Token &token, const QString &text) {
        exception = DaoException(exception.number(), exception.source(), exception.description(),
                                 SourceRange::of(m_text, token.range.start, token.range.length))
                        .withHint(text);
    };
    if (!exception.hint().isEmpty())
        return;
    for (const qsizetype at : {m_at, m_at - 1}) {
        const Token number = tokenAt(at + 1);
        const bool isLimit = isWord(tokenAt(at)) && tokenAt(at).text.compare(u"LIMIT", Qt::CaseInsensitive) == 0;
        if (isLimit && number.kind == Token::Kind::Number)
            return hint(tokenAt(at), u"This SQL has no LIMIT; TOP asks for the first rows: SELECT TOP %1 ..."_s.arg(
                                         textOf(number.range)));
    }
    const Token &word = current();
    const bool hasFrom = std::ranges::any_of(m_tokens, [](const Token &token) { return token.is(Keyword::From); });
    if (!hasFrom && isWord(word) && !nearestName(word.string(), {u"FROM"_s}).isEmpty())
        hint(word, kFromExpected);
}

Statement Parser::parseWhole()
{
    Statement statement;
    statement.memory = m_memory;
    checkCurrent();
    if (at(Keyword::Parameters))
        parseParameters(statement);
    if (at(Keyword::Procedure))
        parseProcedure(statement);
    const Token &first = current();
    if (first.is(Keyword::Select) || first.is(Symbol::LeftParen) || (first.is(Keyword::Table) && ahead().isName()))
        statement.node = parseQuery();
    else if (first.is(Keyword::Transform))
        statement.node = parseTransform();
    else if (first.is(Keyword::Insert))
        statement.node = parseInsert();
    else if (first.is(Keyword::Update))
        statement.node = parseUpdate();
    else if (first.is(Keyword::Delete))
        statement.node = parseDelete();
    else if (first.is(Keyword::Create))
        parseCreate(statement);
    else if (first.is(Keyword::Alter))
        statement.node = parseAlterTable();
    else if (first.is(Keyword::Drop))
        parseDrop(statement);
    else if (first.is(Keyword::Execute) || first.is(Keyword::Exec))
        statement.node = parseExecute();
    else
        fail(error::UnknownStatement);
    expectEnd();
    return statement;
}

std::shared_ptr<const Expr> Parser::parseLoneExpression()
{
    accept(Symbol::Equal);
    ExprPtr expr = parseClauseExpression();
    if (current().kind != Token::Kind::End)
        failMissingOperator();
    return withMemory(std::move(expr));
}

std::shared_ptr<const Expr> Parser::parseCriterion()
{
    m_criterion = true;
    ExprPtr expr = parseClauseExpression();
    if (current().kind != Token::Kind::End)
        failMissingOperator();
    return withMemory(withImpliedField(std::move(expr)));
}

// The result can outlive the parser.
std::shared_ptr<const Expr> Parser::withMemory(ExprPtr expr) const
{
    const auto tree = std::make_shared<std::pair<std::shared_ptr<ExprMemory>, ExprPtr>>(m_memory, std::move(expr));
    return {tree, tree->second.get()};
}

void Parser::expectEnd()
{
    if (accept(Symbol::Semicolon)) {
        if (current().kind != Token::Kind::End)
            fail(error::TextAfterEnd);
    } else if (current().kind != Token::Kind::End) {
        fail(error::MissingSemicolon);
    }
}

const Token &Parser::take()
{
    const Token &token = current();
    pass();
    return token;
}

void Parser::pass()
{
    if (current().kind != Token::Kind::End)
        ++m_at;
    checkCurrent();
}

void Parser::checkCurrent() const
{
    if (current().kind == Token::Kind::Faulty)
        failFaulty();
}

bool Parser::accept(Keyword keyword)
{
    if (!at(keyword))
        return false;
    pass();
    return true;
}

bool Parser::accept(Symbol symbol)
{
    if (!at(symbol))
        return false;
    pass();
    return true;
}

void Parser::expect(Keyword keyword, int error)
{
    if (!accept(keyword))
        fail(error);
}

void Parser::expect(Symbol symbol, int error)
{
    if (!accept(symbol))
        fail(error);
}

NameAt Parser::expectName(int error)
{
    if (!current().isName())
        fail(error);
    const Token &token = takeName();
    return {token.string(), token.range};
}

const Token &Parser::takeName()
{
    const Token &token = current();
    if (token.text.isEmpty())
        fail(error::InvalidBracketing, {textOf(token.range)});
    return take();
}

std::vector<NameAt> Parser::nameList(int error)
{
    std::vector<NameAt> names;
    expect(Symbol::LeftParen, error);
    do {
        names.push_back(expectName(error));
        // "t.f" means "f" here.
        while (at(Symbol::Dot)) {
            take();
            names.back() = expectName(error);
        }
    } while (accept(Symbol::Comma));
    expect(Symbol::RightParen, error);
    return names;
}

Range Parser::since(const Token &first) const
{
    const Range last = m_at > 0 ? m_tokens[m_at - 1].range : first.range;
    return first.range.to(last);
}

QString Parser::textOf(Range range) const
{
    return m_text.sliced(range.start, range.length);
}

void Parser::fail(int number, const QStringList &arguments) const
{
    // At the end of the text the last token is marked.
    const bool atEnd = current().kind == Token::Kind::End && m_at > 0;
    failAt(atEnd ? m_tokens[m_at - 1].range : current().range, number, arguments);
}

void Parser::failAt(Range range, int number, const QStringList &arguments) const
{
    raise(number, kErrorSource, arguments, SourceRange::of(m_text, range.start, range.length));
}

void Parser::failExpression(const QString &what) const
{
    fail(error::SyntaxInExpression, {what, expressionText()});
}

void Parser::failFaulty() const
{
    const auto refuse = [this](const QString &what) { failExpression(what); };
    switch (current().fault) {
    case Fault::Text:
        refuse(u"Syntax error in string"_s);
        break;
    case Fault::Date:
        refuse(u"Syntax error in date"_s);
        break;
    case Fault::Number:
        refuse(u"Syntax error in number"_s);
        break;
    case Fault::Bracket:
        fail(error::InvalidBracketing, {textOf(current().range).section(u'\n', 0, 0).left(kLongestName).trimmed()});
    case Fault::Comment:
        try {
            refuse(u"Syntax error (missing operator)"_s);
        } catch (DaoException &exception) {
            exception.withHint(u"This SQL has no comments. A double minus is written \"- -\"."_s);
            throw;
        }
        break;
    default:
        refuse(u"Syntax error (missing operator)"_s);
        break;
    }
    Q_UNREACHABLE();
}

// The text of the expression around the current token, up to the end of its clause.
QString Parser::expressionText() const
{
    const qsizetype first = m_expressionStart >= 0 ? m_expressionStart : m_at;
    if (current().kind == Token::Kind::Faulty && m_expressionStart < 0)
        return textOf(current().range);
    int open = 0;
    qsizetype last = first;
    for (; last < m_tokens.size() - 1; ++last) {
        const Token &token = m_tokens[last];
        if (token.is(Symbol::LeftParen)) {
            ++open;
        } else if (token.is(Symbol::RightParen)) {
            if (open == 0 && last > m_at)
                break;
            --open;
        } else if (open <= 0 && last >= m_at && last > first) {
            const bool clause = token.is(Keyword::From) || token.is(Keyword::Where) || token.is(Keyword::Group) ||
                                token.is(Keyword::Having) || token.is(Keyword::Order) || token.is(Keyword::Union) ||
                                token.is(Keyword::Into) || token.is(Keyword::Pivot);
            if (clause || token.is(Symbol::Comma) || token.is(Symbol::Semicolon))
                break;
        }
    }
    return last == first ? textOf(m_tokens[first].range) : textOf(m_tokens[first].range.to(m_tokens[last - 1].range));
}

int Parser::depthOf(const std::vector<ExprPtr> &children) const
{
    int depth = 0;
    for (const ExprPtr &child : children)
        depth = std::max(depth, child->depth);
    return depth;
}

void Parser::limitDepth(int depth, Range range)
{
    m_deepest = std::max(m_deepest, depth);
    if (depth > kMaxTreeDepth)
        failAt(range, error::TooComplex);
}

} // namespace dao::sql::ast
