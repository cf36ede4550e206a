#include "Parser.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {

// query := part { UNION [ALL] part } [ORDER BY ...]
QueryPtr Parser::parseQuery()
{
    const DepthGuard guard(*this);
    const Token &first = current();
    const int deepestOutside = std::exchange(m_deepest, 0);
    auto query = std::make_unique<Query>();
    query->parts.push_back(parseQueryPart());
    while (accept(Keyword::Union)) {
        const bool all = accept(Keyword::All);
        query->parts.push_back(parseQueryPart());
        query->parts.back().all = all;
    }
    // ORDER BY after the last part of a union applies to the whole union.
    if (query->isUnion() && query->parts.back().select)
        query->orderBy = std::move(query->parts.back().select->orderBy);
    if (at(Keyword::Order) && !query->singleSelect()) {
        query->orderBy = parseOrderBy();
        parseOwnerAccess();
    }
    if (query->isUnion())
        refuseInto(*query);
    query->range = since(first);
    query->depth = m_deepest + 1;
    m_deepest = deepestOutside;
    limitDepth(query->depth, query->range);
    return query;
}

// INTO is allowed only in an outermost query with a single SELECT.
void Parser::refuseInto(const Query &query) const
{
    for (const QueryPart &part : query.parts) {
        if (part.select && part.select->into)
            failAt(part.select->into->range, error::SyntaxInSelect);
    }
}

// part := TABLE name | ( query ) | select
QueryPart Parser::parseQueryPart()
{
    QueryPart part;
    if (at(Keyword::Table)) {
        take();
        part.table = expectName(error::SyntaxInFrom);
    } else if (at(Symbol::LeftParen)) {
        take();
        part.nested = parseSubquery();
    } else if (at(Keyword::Select)) {
        part.select = parseSelect();
    } else {
        fail(error::SyntaxInSelect);
    }
    return part;
}

// select := SELECT [predicates] list [INTO name] clauses
std::unique_ptr<Select> Parser::parseSelect()
{
    const Token &first = take();
    auto select = std::make_unique<Select>();
    parsePredicates(*select);
    select->items = parseSelectList(error::SyntaxInSelect);
    if (accept(Keyword::Into)) {
        select->into = expectName(error::SyntaxInSelect);
        refuseOtherDatabase();
    }
    parseClauses(*select);
    select->range = since(first);
    return select;
}

// ALL | DISTINCT | DISTINCTROW | TOP n [PERCENT]. If a comma, FROM, AS or a dot follows, the word is a column.
void Parser::parsePredicates(Select &select)
{
    while (true) {
        const bool startsItem = ahead().is(Symbol::Comma) || ahead().is(Keyword::From) || ahead().is(Keyword::As) ||
                                ahead().is(Symbol::Dot) || ahead().kind == Token::Kind::End;
        if (startsItem)
            return;
        if (accept(Keyword::Distinct))
            select.duplicates = Duplicates::Distinct;
        else if (accept(Keyword::DistinctRow))
            select.duplicates = Duplicates::DistinctRow;
        else if (at(Keyword::Top))
            parseTop(select);
        else if (!accept(Keyword::All))
            return;
    }
}

// TOP n [PERCENT]
void Parser::parseTop(Select &select)
{
    take();
    const Token &number = current();
    if (number.kind != Token::Kind::Number || !number.whole || number.number < 0)
        fail(error::InvalidTop);
    take();
    Top top{number.number, accept(Keyword::Percent)};
    if (top.percent && top.count > 100)
        failAt(number.range, error::InvalidTop);
    select.top = top;
}

std::vector<SelectItem> Parser::parseSelectList(int error)
{
    std::vector<SelectItem> items;
    do {
        items.push_back(parseSelectItem(error));
    } while (accept(Symbol::Comma));
    return items;
}

// * | name.* | expression [AS alias]
SelectItem Parser::parseSelectItem(int error)
{
    const Token &first = current();
    SelectItem item;
    const bool endsHere = first.kind == Token::Kind::End || first.is(Symbol::Semicolon) || first.is(Symbol::Comma) ||
                          first.is(Symbol::RightParen) || (endsExpression(first.keyword) && !first.is(Keyword::On));
    if (endsHere && !ahead().is(Symbol::Dot))
        fail(error);
    if (accept(Symbol::Star)) {
        item.range = first.range;
        return item;
    }
    if (first.isName() && ahead().is(Symbol::Dot) && ahead(2).is(Symbol::Star)) {
        item.starQualifier = first.string();
        takeName();
        take();
        take();
        item.range = since(first);
        return item;
    }
    item.expr = parseClauseExpression();
    if (accept(Keyword::As))
        item.alias = expectName(error).name;
    item.range = since(first);
    return item;
}

// [FROM tables] [WHERE condition] [GROUP BY expressions] [HAVING condition] [ORDER BY expressions]
void Parser::parseClauses(Select &select)
{
    if (accept(Keyword::From))
        select.from = parseFrom();
    else if (current().isName() && !endsExpression(current().keyword))
        throw DaoException(error::SyntaxInSelect, u"DAO.Database"_s, errorText(error::SyntaxInSelect),
                           SourceRange::of(m_text, current().range.start, current().range.length))
            .withHint(u"FROM is expected here."_s);
    if (accept(Keyword::Where))
        select.where = parseClause(error::SyntaxInWhere);
    if (accept(Keyword::Group)) {
        expect(Keyword::By, error::SyntaxInGroupBy);
        do {
            select.groupBy.push_back(parseClause(error::SyntaxInGroupBy));
        } while (accept(Symbol::Comma));
    }
    if (accept(Keyword::Having))
        select.having = parseClause(error::SyntaxInHaving);
    if (at(Keyword::Order))
        select.orderBy = parseOrderBy();
    parseOwnerAccess();
}

// WITH OWNERACCESS OPTION is accepted and ignored: the engine has no user accounts.
void Parser::parseOwnerAccess()
{
    if (!at(Keyword::With) || !ahead().is(Keyword::OwnerAccess))
        return;
    take();
    take();
    expect(Keyword::Option, error::SyntaxInSelect);
}

// ORDER BY expression [ASC | DESC], ...
std::vector<OrderItem> Parser::parseOrderBy()
{
    take();
    expect(Keyword::By, error::SyntaxInOrderBy);
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expr = parseClause(error::SyntaxInOrderBy);
        item.descending = at(Keyword::Desc);
        if (at(Keyword::Desc) || at(Keyword::Asc))
            take();
        items.push_back(std::move(item));
    } while (accept(Symbol::Comma));
    return items;
}

// joins { , joins }. A word after the last table that starts no clause is an error here, where its place is known.
std::vector<TableRefPtr> Parser::parseFrom()
{
    std::vector<TableRefPtr> tables;
    do {
        tables.push_back(parseJoins());
    } while (accept(Symbol::Comma));
    refuseOtherDatabase();
    const bool garbage = current().isName() && !endsExpression(current().keyword) && !at(Keyword::Set);
    if (garbage || current().kind == Token::Kind::Number || current().kind == Token::Kind::Text)
        fail(error::SyntaxInFrom);
    return tables;
}

// LEFT and RIGHT are also functions and possible names, so the next word decides.
bool Parser::atJoin() const
{
    if (at(Keyword::Inner))
        return true;
    return (at(Keyword::Left) || at(Keyword::Right)) && (ahead().is(Keyword::Join) || ahead().is(Keyword::Outer));
}

// INNER JOIN | (LEFT | RIGHT) [OUTER] JOIN
JoinKind Parser::parseJoinKind()
{
    const Token &word = take();
    if (!word.is(Keyword::Inner))
        accept(Keyword::Outer);
    expect(Keyword::Join, error::SyntaxInJoin);
    return word.is(Keyword::Inner) ? JoinKind::Inner : word.is(Keyword::Left) ? JoinKind::Left : JoinKind::Right;
}

// Joins without parentheses are parsed from left to right, although the original dialect requires parentheses.
TableRefPtr Parser::parseJoins()
{
    const Token &first = current();
    int joins = 0;
    TableRefPtr left = parseTable();
    while (atJoin()) {
        // Limits the recursion over the tree; SQLite joins at most 64 tables in any case.
        constexpr int kMaxJoins = 100;
        if (++joins > kMaxJoins)
            fail(error::TooComplex);
        Join join{parseJoinKind(), std::move(left), nullptr, nullptr};
        join.right = parseTable();
        expect(Keyword::On, error::SyntaxInJoin);
        join.on = parseClauseExpression();
        left = std::make_unique<TableRef>();
        left->depth = std::max(join.left->depth, join.right->depth) + 1;
        left->node = std::move(join);
        left->range = since(first);
        limitDepth(left->depth, left->range);
    }
    if (at(Keyword::Join))
        fail(error::SyntaxInFrom);
    return left;
}

// table := name [[AS] alias] | ( joins ) | ( query ) [AS] alias | [query]. AS alias
TableRefPtr Parser::parseTable()
{
    const DepthGuard guard(*this);
    if (at(Symbol::LeftParen))
        return parseParenthesisedTable();
    const Token &first = current();
    if (!first.isName() || (first.kind == Token::Kind::Word && endsTableName(first.keyword)))
        fail(error::SyntaxInFrom);
    const bool isOldDerived = first.kind == Token::Kind::Quoted && ahead().is(Symbol::Dot) &&
                              first.text.trimmed().startsWith(u"SELECT", Qt::CaseInsensitive);
    if (isOldDerived)
        return parseBracketedQuery();
    auto table = std::make_unique<TableRef>();
    takeName();
    table->node = NamedTable{first.string()};
    table->range = since(first);
    parseTableAlias(*table);
    return table;
}

// ( joins ) only groups; ( query ) is a derived table.
TableRefPtr Parser::parseParenthesisedTable()
{
    const Token &open = take();
    const bool isQuery = at(Keyword::Select) || at(Keyword::Table);
    if (!isQuery) {
        ++m_open;
        TableRefPtr inner = parseJoins();
        --m_open;
        expect(Symbol::RightParen, error::SyntaxInFrom);
        return inner;
    }
    QueryPtr query = parseSubquery();
    return makeTable(since(open), {std::move(query)});
}

// [SELECT ...]. AS alias: the old syntax of a derived table. The text in brackets is tokenised again and inserted in
// place.
TableRefPtr Parser::parseBracketedQuery()
{
    const Token &first = take();
    take();
    // The lexer treats each word after a dot as a name, so keywords are restored here.
    if (current().kind == Token::Kind::Word)
        m_tokens[m_at].keyword = keywordOf(current().text);
    const int offset = first.range.start + 1;
    QList<Token> tokens = tokenize(first.text);
    for (Token &token : tokens)
        token.range.start += offset;
    Parser inner(*this, std::move(tokens));
    inner.checkCurrent();
    QueryPtr query = inner.parseQuery();
    inner.expectEnd();
    return makeTable(first.range, {std::move(query)});
}

TableRefPtr Parser::makeTable(Range range, DerivedTable node)
{
    auto table = std::make_unique<TableRef>();
    table->range = range;
    refuseInto(*node.query);
    table->depth = node.query->depth + 1;
    table->node = std::move(node);
    limitDepth(table->depth, range);
    parseTableAlias(*table);
    return table;
}

void Parser::parseTableAlias(TableRef &table)
{
    if (accept(Keyword::As))
        table.alias = expectName(error::SyntaxInFrom).name;
    else if (current().kind == Token::Kind::Quoted ||
             (current().kind == Token::Kind::Word && !endsTableName(current().keyword)))
        table.alias = takeName().string();
}

Transform Parser::parseTransform()
{
    Transform transform;
    take();
    transform.value = parseClauseExpression();
    if (accept(Keyword::As))
        transform.valueAlias = expectName(error::SyntaxInTransform).name;
    if (!at(Keyword::Select))
        fail(error::SyntaxInTransform);
    transform.select = std::move(*parseSelect());
    expect(Keyword::Pivot, error::SyntaxInTransform);
    const ExpressionScope scope(*this);
    transform.pivot = parsePivot();
    if (accept(Keyword::In)) {
        expect(Symbol::LeftParen, error::SyntaxInTransform);
        transform.headings = parseExpressionList();
        expect(Symbol::RightParen, error::SyntaxInTransform);
    }
    return transform;
}

} // namespace dao::sql::ast
