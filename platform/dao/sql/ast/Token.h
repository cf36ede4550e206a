#pragma once
#include "Keywords.h"

#include <QList>
#include <QString>

namespace dao::sql::ast {

/// A place in the text, in UTF-16 units.
struct Range
{
    int start = 0;
    int length = 0;
    int end() const { return start + length; }
    /// The range from the start of this one to the end of last.
    Range to(Range last) const { return {start, std::max(last.end() - start, 0)}; }
};

enum class Symbol : quint8 {
    None,
    Dot,
    Bang,
    Comma,
    LeftParen,
    RightParen,
    Semicolon,
    Plus,
    Minus,
    Star,
    Slash,
    Backslash,
    Caret,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual
};

/// The reason why a piece of text is not a token.
enum class Fault : quint8 { None, Text, Date, Bracket, Character, Comment, Number };

/// A token refers to the text that it was read from and does not own it.
struct Token
{
    enum class Kind : quint8 { End, Word, Quoted, Text, Number, Date, Symbol, Faulty };

    Kind kind = Kind::End;
    Keyword keyword = Keyword::None; ///< of a Word
    Symbol symbol = Symbol::None;
    Fault fault = Fault::None;
    bool whole = false; ///< a Number that fits a Long
    QChar doubledQuote; ///< of a Text that contains its quote character: that character
    double number = 0;  ///< of a Number, or a Date in days
    QStringView text;   ///< name without brackets; text between its quotes, where a quote character stands doubled
    Range range;

    bool is(Keyword wanted) const { return kind == Kind::Word && keyword == wanted; }
    bool is(Symbol wanted) const { return kind == Kind::Symbol && symbol == wanted; }
    bool isName() const { return kind == Kind::Word || kind == Kind::Quoted; }
    /// A copy of the text, with single quote characters.
    QString string() const;
};

/// Splits a text into tokens. Text that is not a token becomes a Faulty token, which the parser reports when it reaches
/// it; the last token is End. The text must exist as long as the tokens.
QList<Token> tokenize(QStringView text);
QList<Token> tokenize(QString &&text) = delete;

/// True if the text is a single word that needs no brackets; it can be a keyword.
bool isPlainName(QStringView text);

} // namespace dao::sql::ast
