#include "Parser.h"

namespace dao::sql::ast {

// PARAMETERS name type [(size)], ... ;
void Parser::parseParameters(Statement &statement)
{
    take();
    do {
        statement.parameters.push_back(parseParameter());
    } while (accept(Symbol::Comma));
    expect(Symbol::Semicolon, error::SyntaxInParameter);
}

// PROCEDURE name [parameter type, ...] ; the name is ignored.
void Parser::parseProcedure(Statement &statement)
{
    take();
    expectName(error::SyntaxInParameter);
    if (!at(Symbol::Semicolon)) {
        do {
            statement.parameters.push_back(parseParameter());
        } while (accept(Symbol::Comma));
    }
    expect(Symbol::Semicolon, error::SyntaxInParameter);
}

ParameterDeclaration Parser::parseParameter()
{
    const Token &first = current();
    ParameterDeclaration declaration;
    declaration.name = expectName(error::SyntaxInParameter);
    while ((at(Symbol::Dot) || at(Symbol::Bang)) && ahead().isName()) {
        declaration.name.name += at(Symbol::Dot) ? u'.' : u'!';
        take();
        declaration.name.name += take().text;
    }
    declaration.name.range = since(first);
    const std::optional<TypeName> type =
        current().kind == Token::Kind::Word ? typeNameOf(current().text) : std::nullopt;
    if (!type)
        fail(error::SyntaxInParameter);
    take();
    declaration.type = type->type;
    declaration.variant = type->type == DataType::Unknown;
    if (accept(Symbol::LeftParen)) {
        if (current().kind != Token::Kind::Number)
            fail(error::SyntaxInParameter);
        take();
        expect(Symbol::RightParen, error::SyntaxInParameter);
    }
    return declaration;
}

// INSERT INTO table [(field, ...)] { VALUES (expression, ...) | query }
Insert Parser::parseInsert()
{
    Insert insert;
    take();
    expect(Keyword::Into, error::SyntaxInInsert);
    insert.table = expectName(error::SyntaxInInsert);
    refuseOtherDatabase();
    if (at(Symbol::LeftParen) && !ahead().is(Keyword::Select))
        insert.columns = nameList(error::SyntaxInInsert);
    refuseOtherDatabase();
    if (accept(Keyword::Values)) {
        expect(Symbol::LeftParen, error::SyntaxInInsert);
        const ExpressionScope scope(*this);
        insert.values = parseExpressionList();
        if (beginsOperand())
            failMissingOperator();
        expect(Symbol::RightParen, error::SyntaxInInsert);
    } else if (at(Keyword::Select) || at(Symbol::LeftParen) || at(Keyword::Table)) {
        insert.query = parseQuery();
        refuseInto(*insert.query);
    } else {
        fail(error::SyntaxInInsert);
    }
    return insert;
}

// UPDATE [DISTINCTROW] tables SET field = expression, ... [WHERE condition]
Update Parser::parseUpdate()
{
    Update update;
    take();
    if (at(Keyword::DistinctRow) && ahead().isName() && !ahead().is(Keyword::Set))
        take();
    update.from = parseFrom();
    expect(Keyword::Set, error::SyntaxInUpdate);
    do {
        if (!current().isName())
            fail(error::SyntaxInUpdate);
        Assignment assignment;
        assignment.target = parseName();
        if (!assignment.target->as<Name>())
            failAt(assignment.target->range, error::SyntaxInUpdate);
        expect(Symbol::Equal, error::SyntaxInUpdate);
        assignment.value = parseClauseExpression();
        update.assignments.push_back(std::move(assignment));
    } while (accept(Symbol::Comma));
    if (accept(Keyword::Where))
        update.where = parseClause(error::SyntaxInWhere);
    return update;
}

// DELETE [DISTINCTROW] [list] FROM tables [WHERE condition]
Delete Parser::parseDelete()
{
    Delete statement;
    take();
    if (at(Keyword::Top) && ahead().kind == Token::Kind::Number)
        fail(error::TopInDelete);
    if (at(Keyword::DistinctRow) && !ahead().is(Symbol::Dot))
        take();
    // "DELETE FORM report" is a misspelled FROM: a list never has two adjacent words.
    if (current().kind == Token::Kind::Word && !at(Keyword::From) && ahead().kind == Token::Kind::Word &&
        !endsExpression(ahead().keyword))
        fail(error::SyntaxInDelete);
    if (!at(Keyword::From))
        statement.items = parseSelectList(error::SyntaxInDelete);
    expect(Keyword::From, error::SyntaxInDelete);
    statement.from = parseFrom();
    if (accept(Keyword::Where))
        statement.where = parseClause(error::SyntaxInWhere);
    return statement;
}

// EXECUTE query [expression, ...]
Execute Parser::parseExecute()
{
    Execute execute;
    take();
    execute.query = expectName(error::UnknownStatement);
    const bool parenthesised = accept(Symbol::LeftParen);
    if (current().kind != Token::Kind::End && !at(Symbol::Semicolon) && !at(Symbol::RightParen)) {
        const ExpressionScope scope(*this);
        execute.arguments = parseExpressionList();
    }
    if (parenthesised)
        expect(Symbol::RightParen, error::MissingSemicolon);
    return execute;
}

// ... IN 'path': other databases are not supported.
void Parser::refuseOtherDatabase()
{
    if (!at(Keyword::In))
        return;
    take();
    const Token &path = current();
    if (path.kind != Token::Kind::Text && path.kind != Token::Kind::Quoted)
        fail(error::SyntaxInFrom);
    fail(error::FileNotFound, {path.string()});
}

} // namespace dao::sql::ast
