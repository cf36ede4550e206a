#pragma once
#include <QList>
#include <QString>

namespace query {

/// A part of a text, in UTF-16 units.
struct TextPart
{
    int start = 0;
    int length = 0;
    bool operator==(const TextPart &) const = default;
};

/// The statements of a text, separated by semicolons; the semicolon after a PARAMETERS clause separates nothing. Empty
/// statements are left out.
QList<TextPart> statementsIn(const QString &text);

/// A statement with blanks in place of the text before it, so that places in it are those of the whole text.
QString statementInPlace(const QString &text, const TextPart &part);

/// The statement in canonical form. Throws dao::DaoException if it has a syntax error, and tarnwick::Error if the form
/// would drop something: the engine knows no comments, so a text with one is a syntax error.
QString formattedStatement(const QString &statement);
/// Every statement of a text in canonical form.
QString formattedText(const QString &text);

} // namespace query
