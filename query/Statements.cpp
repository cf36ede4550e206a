#include "Statements.h"

#include <dao/sql/ast/Printer.h>
#include <dao/sql/ast/Token.h>
#include <dao/sql/Compiler.h>
#include <QStringList>

namespace query {

namespace ast = dao::sql::ast;

QList<TextPart> statementsIn(const QString &text)
{
    QList<TextPart> parts;
    ast::Range current;
    bool isEmpty = true;
    bool hasParameters = false;
    const auto finish = [&] {
        if (!isEmpty)
            parts.append({current.start, current.length});
        isEmpty = true;
    };
    for (const ast::Token &token : ast::tokenize(text)) {
        if (token.kind == ast::Token::Kind::End)
            break;
        const bool isSemicolon = token.is(ast::Symbol::Semicolon);
        if (isSemicolon && !(hasParameters && !isEmpty)) {
            finish();
            continue;
        }
        if (isEmpty)
            hasParameters = token.is(ast::Keyword::Parameters);
        else if (isSemicolon)
            hasParameters = false;
        current = isEmpty ? token.range : current.to(token.range);
        isEmpty = false;
    }
    finish();
    return parts;
}

QString statementInPlace(const QString &text, const TextPart &part)
{
    QString result = text.left(part.start);
    for (QChar &c : result) {
        if (c != u'\n' && c != u'\r')
            c = u' ';
    }
    return result + text.mid(part.start, part.length);
}

QString formattedStatement(const QString &statement)
{
    return ast::printStatement(*dao::sql::checkSyntax(statement));
}

QString formattedText(const QString &text)
{
    QStringList formatted;
    for (const TextPart &part : statementsIn(text))
        formatted.append(formattedStatement(statementInPlace(text, part)).trimmed());
    return formatted.join(u"\n\n");
}

} // namespace query
