#include "SqlWords.h"

#include <dao/Database.h>
#include <dao/sql/ast/Token.h>
#include <dao/sql/bind/FunctionTable.h>
#include <db/StoredQueries.h>

namespace query {

namespace ast = dao::sql::ast;
using Kind = ast::Token::Kind;

namespace {

/// Columns of a stored query as far as its text tells them.
QList<dao::FieldInfo> columnsOf(const QString &sql)
{
    QList<dao::FieldInfo> fields;
    const QList<ast::Token> tokens = ast::tokenize(sql);
    int depth = 0;
    for (int i = 1; i < tokens.size() && !(depth == 0 && tokens[i].is(ast::Keyword::From)); ++i) {
        depth += tokens[i].is(ast::Symbol::LeftParen) ? 1 : tokens[i].is(ast::Symbol::RightParen) ? -1 : 0;
        const ast::Token &next = tokens[std::min(i + 1, int(tokens.size()) - 1)];
        if (depth == 0 && tokens[i].isName() && (next.is(ast::Symbol::Comma) || next.is(ast::Keyword::From))) {
            dao::FieldInfo field;
            field.name = tokens[i].string();
            fields.append(field);
        }
    }
    return fields;
}

/// A keyword that also is the name of a field is a keyword only where no name can stand.
bool isReserved(ast::Keyword keyword)
{
    using enum ast::Keyword;
    switch (keyword) {
    case Select:
    case From:
    case Where:
    case Group:
    case Order:
    case By:
    case Having:
    case And:
    case Or:
    case Not:
    case As:
    case On:
    case Union:
    case Update:
    case Set:
        return true;
    default:
        return false;
    }
}

} // namespace

SqlNames SqlNames::of(const dao::Database &database)
{
    SqlNames names;
    for (const QString &name : database.schema().sourceNames()) {
        if (const dao::TableInfo *table = database.schema().findTable(name))
            names.sources.append({table->name, table->fields, false});
    }
    for (const QString &name : db::storedQueryNames(database))
        names.sources.append({name, columnsOf(database.query(name).sql), true});
    return names;
}

const SqlNames::Source *SqlNames::source(QStringView name) const
{
    for (const Source &source : sources) {
        if (name.compare(source.name, Qt::CaseInsensitive) == 0)
            return &source;
    }
    return nullptr;
}

SqlWords::SqlWords(const SqlNames &names)
{
    for (const SqlNames::Source &source : names.sources) {
        m_tables.insert(source.name.toLower());
        for (const dao::FieldInfo &field : source.fields)
            m_fields.insert(field.name.toLower());
    }
    for (const tarnwick::JMacro::Entry &entry : names.macros.entries())
        m_macros.insert(entry.name.mid(1, entry.name.size() - 2).toLower());
}

QList<StyledWord> SqlWords::words(const QString &text) const
{
    QList<StyledWord> words;
    const QList<ast::Token> tokens = ast::tokenize(text);
    for (int i = 0; i + 1 < tokens.size(); ++i) {
        const ast::Token &token = tokens[i];
        WordKind kind = WordKind::Other;
        const QString name = token.string().toLower();
        const bool isField = m_fields.contains(name);
        switch (token.kind) {
        case Kind::Word:
            if (tokens[i + 1].is(ast::Symbol::LeftParen) && !dao::sql::bound::functionsNamed(token.text).empty())
                kind = WordKind::Function;
            else if (token.keyword != ast::Keyword::None && (!isField || isReserved(token.keyword)))
                kind = WordKind::Keyword;
            else
                kind = isField ? WordKind::Field : m_tables.contains(name) ? WordKind::Table : WordKind::Other;
            break;
        case Kind::Quoted:
            kind = m_macros.contains(name)   ? WordKind::Macro
                   : isField                 ? WordKind::Field
                   : m_tables.contains(name) ? WordKind::Table
                                             : WordKind::Parameter;
            break;
        case Kind::Text:
            kind = WordKind::Text;
            break;
        case Kind::Number:
            kind = WordKind::Number;
            break;
        case Kind::Date:
            kind = WordKind::Date;
            break;
        case Kind::Faulty:
            kind = WordKind::Fault;
            break;
        default:
            continue;
        }
        words.append({{token.range.start, token.range.length}, kind});
    }
    return words;
}

} // namespace query
