#include "Parser.h"

#include "Printer.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

constexpr int kDefaultTextSize = 255;

/// The unqualified names in an expression, in lower case.
QSet<QString> namesIn(const Expr &expr)
{
    QSet<QString> names;
    const QString text = printExpression(expr);
    const QList<Token> tokens = tokenize(text);
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        const bool qualified = i > 0 && tokens[i - 1].is(Symbol::Dot);
        if (tokens[i].isName() && !qualified)
            names.insert(tokens[i].string().toLower());
    }
    return names;
}

/// Gives the columns of a view's query the names after the view's name. Returns false if the numbers differ, or if
/// another expression of the list would then take such a name, or the replaced one, for the column.
bool nameColumns(Statement &statement, const std::vector<NameAt> &names)
{
    const QueryPtr *query = std::get_if<QueryPtr>(&statement.node);
    Select *select = query ? (*query)->parts.front().select.get() : nullptr;
    if (!select || select->items.size() != names.size())
        return false;
    std::vector<QSet<QString>> used;
    QHash<QString, int> users;
    for (const SelectItem &item : select->items) {
        if (item.isStar())
            return false;
        used.push_back(namesIn(*item.expr));
        for (const QString &name : used.back())
            ++users[name];
    }
    for (size_t i = 0; i < names.size(); ++i) {
        for (const QString &name : {names[i].name.toLower(), select->items[i].alias.toLower()}) {
            if (users.value(name) > (used[i].contains(name) ? 1 : 0))
                return false;
        }
    }
    for (size_t i = 0; i < names.size(); ++i)
        select->items[i].alias = names[i].name;
    return true;
}

} // namespace

// CREATE [UNIQUE] INDEX | CREATE TABLE | CREATE VIEW | CREATE PROCEDURE
void Parser::parseCreate(Statement &statement)
{
    take();
    const bool unique = at(Keyword::Unique);
    if (unique)
        take();
    const bool isProcedure = at(Keyword::Procedure) || current().text.compare(u"PROC", Qt::CaseInsensitive) == 0;
    if (accept(Keyword::Index))
        statement.node = parseCreateIndex(unique);
    else if (!unique && accept(Keyword::Table))
        statement.node = parseCreateTable();
    else if (!unique && (at(Keyword::View) || isProcedure))
        statement.node = parseCreateQuery();
    else
        fail(error::SyntaxInCreateTable);
}

// TABLE name (field type ..., constraint, ...)
CreateTable Parser::parseCreateTable()
{
    CreateTable create;
    create.table = expectName(error::SyntaxInCreateTable);
    expect(Symbol::LeftParen, error::SyntaxInCreateTable);
    do {
        if (atConstraint(true))
            create.constraints.push_back(parseConstraint(true));
        else
            create.fields.push_back(parseFieldDefinition());
    } while (accept(Symbol::Comma));
    expect(Symbol::RightParen, error::SyntaxInCreateTable);
    return create;
}

// A field can have a constraint's first keyword as its name, so the next token decides.
bool Parser::atConstraint(bool ofTable) const
{
    if (at(Keyword::Constraint))
        return true;
    if (at(Keyword::Primary) || at(Keyword::Foreign))
        return ahead().is(Keyword::Key);
    if (at(Keyword::Check))
        return ahead().is(Symbol::LeftParen);
    if (at(Keyword::Unique))
        return !ofTable || ahead().is(Symbol::LeftParen);
    return !ofTable && (at(Keyword::References) || at(Keyword::Not) || at(Keyword::Null));
}

// field type { NOT NULL | NULL | DEFAULT value | WITH COMPRESSION | constraint }
FieldDefinition Parser::parseFieldDefinition()
{
    FieldDefinition field;
    field.name = expectName(error::SyntaxInFieldDefinition);
    parseFieldType(field);
    while (true) {
        if (at(Keyword::Not) && ahead().is(Keyword::Null)) {
            take();
            take();
            field.notNull = true;
        } else if (accept(Keyword::Null)) {
            field.notNull = false;
        } else if (accept(Keyword::Default)) {
            const Token &first = current();
            // Only the text of the default is stored; parsing it finds its end.
            parseArithmetic(0);
            field.defaultRange = since(first);
            field.defaultValue = textOf(field.defaultRange);
        } else if (at(Keyword::With)) {
            take();
            if (!accept(Keyword::Compression) && !accept(Keyword::Comp))
                fail(error::SyntaxInFieldDefinition);
        } else if (atConstraint(false)) {
            field.constraints.push_back(parseConstraint(false));
        } else {
            return field;
        }
    }
}

// type [ ( number { , number } ) ]
void Parser::parseFieldType(FieldDefinition &field)
{
    const std::optional<TypeName> type =
        current().kind == Token::Kind::Word ? typeNameOf(current().text) : std::nullopt;
    if (!type || type->type == DataType::Unknown)
        fail(error::SyntaxInFieldDefinition);
    take();
    field.type = *type;
    field.size = type->type == DataType::Text || type->type == DataType::Binary ? kDefaultTextSize : 0;
    if (!accept(Symbol::LeftParen))
        return;
    // The size of a Text field. Seed and increment of a counter and the digits of a decimal are parsed and ignored.
    int numbers = 0;
    do {
        accept(Symbol::Minus);
        const Token &number = current();
        if (number.kind != Token::Kind::Number || !number.whole)
            fail(error::SyntaxInFieldDefinition);
        take();
        const bool sized = field.type.type == DataType::Text || field.type.type == DataType::Binary;
        if (numbers++ == 0 && sized) {
            if (number.number < 1 || number.number > kDefaultTextSize)
                failAt(number.range, error::SyntaxInFieldDefinition);
            field.size = int(number.number);
        }
    } while (accept(Symbol::Comma));
    expect(Symbol::RightParen, error::SyntaxInFieldDefinition);
}

// [CONSTRAINT name] body. A constraint of a table lists its fields; that of a field applies to the field.
Constraint Parser::parseConstraint(bool ofTable)
{
    const Token &first = current();
    Constraint constraint;
    if (accept(Keyword::Constraint))
        constraint.name = expectName(error::SyntaxInConstraint).name;
    parseConstraintBody(constraint, ofTable);
    constraint.range = since(first);
    return constraint;
}

// PRIMARY KEY | UNIQUE | NOT NULL | CHECK (condition) | [FOREIGN KEY] REFERENCES ...
void Parser::parseConstraintBody(Constraint &constraint, bool ofTable)
{
    bool listed = ofTable;
    if (accept(Keyword::Primary)) {
        expect(Keyword::Key, error::SyntaxInConstraint);
        constraint.kind = Constraint::Kind::PrimaryKey;
    } else if (accept(Keyword::Unique)) {
        constraint.kind = Constraint::Kind::Unique;
    } else if (accept(Keyword::Not)) {
        expect(Keyword::Null, error::SyntaxInConstraint);
        constraint.kind = Constraint::Kind::NotNull;
    } else if (at(Keyword::Check)) {
        take();
        constraint.kind = Constraint::Kind::Check;
        constraint.checkRange = parseCheck();
        constraint.check = textOf(constraint.checkRange);
        listed = false;
    } else if (ofTable ? at(Keyword::Foreign) : at(Keyword::References)) {
        if (accept(Keyword::Foreign))
            expect(Keyword::Key, error::SyntaxInConstraint);
        constraint.kind = Constraint::Kind::ForeignKey;
        if (ofTable && at(Keyword::No)) { // FOREIGN KEY NO INDEX
            take();
            expect(Keyword::Index, error::SyntaxInConstraint);
        }
    } else {
        fail(error::SyntaxInConstraint);
    }
    if (listed)
        constraint.fields = nameList(error::SyntaxInConstraint);
    if (constraint.kind == Constraint::Kind::ForeignKey)
        parseReferences(constraint);
}

// ( condition ). The text is stored and bound when the table is created.
Range Parser::parseCheck()
{
    expect(Symbol::LeftParen, error::SyntaxInConstraint);
    const Token &first = current();
    {
        const ExpressionScope scope(*this);
        parseExpression();
    }
    const Range condition = since(first);
    expect(Symbol::RightParen, error::SyntaxInConstraint);
    return condition;
}

// REFERENCES table [(fields)] { ON (UPDATE | DELETE) (CASCADE | NO ACTION) }
void Parser::parseReferences(Constraint &constraint)
{
    expect(Keyword::References, error::SyntaxInConstraint);
    constraint.referencedTable = expectName(error::SyntaxInConstraint);
    if (at(Symbol::LeftParen))
        constraint.referencedFields = nameList(error::SyntaxInConstraint);
    while (accept(Keyword::On)) {
        const bool isUpdate = at(Keyword::Update);
        if (!accept(Keyword::Update))
            expect(Keyword::Delete, error::SyntaxInConstraint);
        if (accept(Keyword::No)) {
            expect(Keyword::Action, error::SyntaxInConstraint);
            continue;
        }
        expect(Keyword::Cascade, error::SyntaxInConstraint);
        (isUpdate ? constraint.cascadeUpdate : constraint.cascadeDelete) = true;
    }
}

// ALTER TABLE name (ADD [COLUMN] field | ADD constraint | ALTER [COLUMN] field | DROP [COLUMN] name | DROP CONSTRAINT
// name)
AlterTable Parser::parseAlterTable()
{
    AlterTable alter;
    take();
    expect(Keyword::Table, error::SyntaxInAlterTable);
    alter.table = expectName(error::SyntaxInAlterTable);
    if (accept(Keyword::Add)) {
        if (atConstraint(true)) {
            alter.change = parseConstraint(true);
        } else {
            accept(Keyword::Column);
            alter.change = AlterTable::AddField{parseFieldDefinition()};
        }
    } else if (accept(Keyword::Alter)) {
        accept(Keyword::Column);
        AlterTable::AlterField change{parseFieldDefinition()};
        refuseConstraints(change.field);
        alter.change = std::move(change);
    } else if (accept(Keyword::Drop)) {
        if (at(Keyword::Constraint) && ahead().isName()) {
            take();
            alter.change = AlterTable::DropConstraint{expectName(error::SyntaxInAlterTable)};
        } else {
            if (at(Keyword::Column) && ahead().isName())
                take();
            alter.change = AlterTable::DropField{expectName(error::SyntaxInAlterTable)};
        }
    } else {
        fail(error::SyntaxInAlterTable);
    }
    return alter;
}

// ALTER COLUMN accepts only NOT NULL: keys, references and checks are added and dropped as separate constraints.
void Parser::refuseConstraints(const FieldDefinition &field) const
{
    for (const Constraint &constraint : field.constraints) {
        if (constraint.kind != Constraint::Kind::NotNull)
            failAt(constraint.range, error::SyntaxInAlterTable);
    }
}

// INDEX name ON table (field [ASC | DESC], ...) [WITH (PRIMARY | DISALLOW NULL | IGNORE NULL)]
CreateIndex Parser::parseCreateIndex(bool unique)
{
    CreateIndex create;
    create.unique = unique;
    create.index = expectName(error::SyntaxInCreateIndex);
    expect(Keyword::On, error::SyntaxInCreateIndex);
    create.table = expectName(error::SyntaxInCreateIndex);
    expect(Symbol::LeftParen, error::SyntaxInCreateIndex);
    do {
        CreateIndex::Field field{expectName(error::SyntaxInCreateIndex)};
        field.descending = at(Keyword::Desc);
        if (at(Keyword::Desc) || at(Keyword::Asc))
            take();
        create.fields.push_back(std::move(field));
    } while (accept(Symbol::Comma));
    expect(Symbol::RightParen, error::SyntaxInCreateIndex);
    if (!accept(Keyword::With))
        return create;
    if (accept(Keyword::Primary)) {
        create.primary = true;
    } else if (accept(Keyword::Disallow)) {
        expect(Keyword::Null, error::SyntaxInCreateIndex);
        create.disallowNull = true;
    } else {
        expect(Keyword::Ignore, error::SyntaxInCreateIndex);
        expect(Keyword::Null, error::SyntaxInCreateIndex);
        create.ignoreNull = true;
    }
    return create;
}

// CREATE VIEW name [(column, ...)] AS query, CREATE PROCEDURE name [(parameter type, ...)] AS statement. The text after
// AS is stored as the query; the parameters become its PARAMETERS clause.
CreateQuery Parser::parseCreateQuery()
{
    const bool isView = take().is(Keyword::View);
    CreateQuery create;
    create.query = expectName(error::SyntaxInCreateTable);
    QStringList parameters;
    std::vector<NameAt> columns;
    if (isView && at(Symbol::LeftParen)) {
        columns = nameList(error::SyntaxInCreateTable);
    } else if (!at(Keyword::As)) {
        const bool parenthesised = accept(Symbol::LeftParen);
        do {
            const Token &first = current();
            parseParameter();
            parameters.append(textOf(since(first)));
        } while (accept(Symbol::Comma));
        if (parenthesised)
            expect(Symbol::RightParen, error::SyntaxInParameter);
    }
    expect(Keyword::As, error::SyntaxInCreateTable);
    const Token &first = current();
    const DepthGuard guard(*this);
    Statement stored = parseStatement();
    if (isView)
        refuseAction(stored, first.range);
    create.sql = textOf(since(first));
    if (!columns.empty()) {
        if (!nameColumns(stored, columns))
            failAt(columns.front().range.to(columns.back().range), error::SyntaxInCreateTable);
        create.sql = printStatement(stored);
    }
    if (!parameters.isEmpty())
        create.sql.prepend(u"PARAMETERS "_s + parameters.join(u", ") + u";\n"_s);
    return create;
}

// A view must return rows; a statement that changes data can only be a procedure.
void Parser::refuseAction(const Statement &stored, Range place) const
{
    const QueryPtr *query = std::get_if<QueryPtr>(&stored.node);
    if (!query && !std::holds_alternative<Transform>(stored.node))
        failAt(place, error::SyntaxInCreateTable);
    const Select *select = query ? (*query)->singleSelect() : nullptr;
    if (select && select->into)
        failAt(select->into->range, error::SyntaxInCreateTable);
}

void Parser::parseDrop(Statement &statement)
{
    take();
    if (accept(Keyword::Table)) {
        statement.node = DropTable{expectName(error::SyntaxInDrop)};
    } else if (accept(Keyword::Index)) {
        DropIndex drop;
        drop.index = expectName(error::SyntaxInDrop);
        expect(Keyword::On, error::SyntaxInDrop);
        drop.table = expectName(error::SyntaxInDrop);
        statement.node = std::move(drop);
    } else if (accept(Keyword::View) || accept(Keyword::Procedure)) {
        statement.node = DropQuery{expectName(error::SyntaxInDrop)};
    } else {
        fail(error::SyntaxInDrop);
    }
}

} // namespace dao::sql::ast
