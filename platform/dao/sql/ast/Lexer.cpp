#include "Token.h"

#include <algorithm>
#include <cmath>
#include <dao/values/OleDate.h>

namespace dao::sql::ast {
namespace {

constexpr double kLargestLong = 2147483647.0;

struct SymbolText
{
    char16_t first;
    char16_t second;
    Symbol symbol;
};

// Longer symbols first, so that "<=" is not read as "<".
constexpr SymbolText kSymbols[] = {
    {u'<', u'>', Symbol::NotEqual}, {u'<', u'=', Symbol::LessEqual}, {u'>', u'=', Symbol::GreaterEqual},
    {u'.', 0, Symbol::Dot},         {u'!', 0, Symbol::Bang},         {u',', 0, Symbol::Comma},
    {u'(', 0, Symbol::LeftParen},   {u')', 0, Symbol::RightParen},   {u';', 0, Symbol::Semicolon},
    {u'+', 0, Symbol::Plus},        {u'-', 0, Symbol::Minus},        {u'*', 0, Symbol::Star},
    {u'/', 0, Symbol::Slash},       {u'\\', 0, Symbol::Backslash},   {u'^', 0, Symbol::Caret},
    {u'&', 0, Symbol::Ampersand},   {u'=', 0, Symbol::Equal},        {u'<', 0, Symbol::Less},
    {u'>', 0, Symbol::Greater},
};

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// Nearly all characters are ASCII, for which QChar's tables are not needed.
bool isAscii(QChar c)
{
    return c.unicode() < 0x80;
}

bool startsWord(QChar c)
{
    if (isAscii(c))
        return isAsciiLetter(c) || c == u'_' || c == u'@';
    return c.isLetter() || c.isSurrogate();
}

bool continuesWord(QChar c)
{
    if (isAscii(c))
        return startsWord(c) || isDigit(c);
    return startsWord(c) || c.isLetterOrNumber() || c.isMark();
}

class Lexer
{
public:
    explicit Lexer(QStringView text)
        : m_text(text)
    {
    }

    QList<Token> run()
    {
        constexpr qsizetype kUsualLength = 4; // of a token with the space after it
        m_tokens.reserve(m_text.size() / kUsualLength + 1);
        while (true) {
            while (m_at < m_text.size() && m_text[m_at].isSpace())
                ++m_at;
            Token token = next();
            token.range = {int(m_start), int(m_at - m_start)};
            // Whether an operand precedes decides if "." starts a number and "&" a radix mark: "t.5" and "a&H1" against
            // ".5" and "&H1".
            const bool plainWord = token.kind == Token::Kind::Word && token.keyword == Keyword::None;
            m_afterOperand = plainWord || token.kind == Token::Kind::Quoted || token.kind == Token::Kind::Number ||
                             token.kind == Token::Kind::Text || token.kind == Token::Kind::Date ||
                             token.is(Symbol::RightParen);
            m_afterDot = token.is(Symbol::Dot) || token.is(Symbol::Bang);
            const bool ends = token.kind == Token::Kind::End;
            m_tokens.append(std::move(token));
            if (ends)
                return std::move(m_tokens);
        }
    }

private:
    QChar at(qsizetype offset = 0) const { return m_at + offset < m_text.size() ? m_text[m_at + offset] : QChar(); }

    Token next()
    {
        m_start = m_at;
        if (m_at >= m_text.size())
            return {};
        const QChar c = at();
        if (c == u'\'' || c == u'"')
            return text(c);
        if (c == u'[')
            return bracketed(u']');
        if (c == u'`')
            return bracketed(u'`');
        if (c == u'#')
            return date();
        if (isDigit(c) || (c == u'.' && isDigit(at(1)) && !m_afterOperand))
            return number();
        if (c == u'&' && !m_afterOperand && isRadixMark(at(1)))
            return radixNumber();
        if (startsWord(c))
            return word();
        if (isComment())
            return fault(Fault::Comment, 2);
        return symbol();
    }

    // "--" is two operators only before a number or a parenthesis. Otherwise it is a comment of other SQL dialects,
    // which this one does not have, and an error.
    bool isComment() const
    {
        if (at() == u'/' && at(1) == u'*')
            return true;
        return at() == u'-' && at(1) == u'-' && !isDigit(at(2)) && at(2) != u'.' && at(2) != u'(' && at(2) != u'[';
    }

    Token fault(Fault kind, qsizetype length)
    {
        m_at = std::min(m_at + length, m_text.size());
        Token token;
        token.kind = Token::Kind::Faulty;
        token.fault = kind;
        return token;
    }

    // 'text' or "text"; a doubled quote is one quote character.
    Token text(QChar quote)
    {
        Token token;
        token.kind = Token::Kind::Text;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (at() != quote)
                continue;
            if (at(1) != quote) {
                token.text = m_text.sliced(m_start + 1, m_at - m_start - 1);
                ++m_at;
                return token;
            }
            token.doubledQuote = quote;
            ++m_at;
        }
        return fault(Fault::Text, 0);
    }

    // [name] or `name`.
    Token bracketed(QChar closing)
    {
        const qsizetype end = m_text.indexOf(closing, m_at + 1);
        if (end < 0)
            return fault(Fault::Bracket, m_text.size());
        Token token;
        token.kind = Token::Kind::Quoted;
        token.text = m_text.sliced(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        return token;
    }

    // #date#, in US order or ISO form.
    Token date()
    {
        const qsizetype end = m_text.indexOf(u'#', m_at + 1);
        if (end < 0)
            return fault(Fault::Date, m_text.size());
        const std::optional<double> value = parseDate(m_text.sliced(m_at + 1, end - m_at - 1));
        if (!value)
            return fault(Fault::Date, end + 1 - m_at);
        Token token;
        token.kind = Token::Kind::Date;
        token.number = *value;
        m_at = end + 1;
        return token;
    }

    // 12, 1.5, .5, 1E-3. A number without point and exponent that fits a Long is an integer.
    Token number()
    {
        bool fraction = false;
        while (isDigit(at()))
            ++m_at;
        if (at() == u'.') {
            fraction = true;
            ++m_at;
            while (isDigit(at()))
                ++m_at;
        }
        const qsizetype exponentDigits = at(1) == u'+' || at(1) == u'-' ? 2 : 1;
        if ((at() == u'e' || at() == u'E') && isDigit(at(exponentDigits))) {
            fraction = true;
            m_at += exponentDigits;
            while (isDigit(at()))
                ++m_at;
        }
        Token token;
        token.kind = Token::Kind::Number;
        token.number = m_text.sliced(m_start, m_at - m_start).toDouble();
        token.whole = !fraction && token.number <= kLargestLong;
        if (!std::isfinite(token.number))
            return fault(Fault::Number, 0);
        return token;
    }

    static bool isRadixMark(QChar c) { return c == u'H' || c == u'h' || c == u'O' || c == u'o'; }

    // &HFF and &O17. Up to 16 bits are a signed 16-bit value, up to 32 bits a signed 32-bit value.
    Token radixNumber()
    {
        const bool hex = at(1).toUpper() == u'H';
        m_at += 2;
        const qsizetype start = m_at;
        while (isDigit(at()) || (hex && at().toUpper() >= u'A' && at().toUpper() <= u'F'))
            ++m_at;
        bool ok = false;
        const quint64 value = m_text.sliced(start, m_at - start).toULongLong(&ok, hex ? 16 : 8);
        if (!ok || value > 0xFFFFFFFFu)
            return fault(Fault::Number, 0);
        Token token;
        token.kind = Token::Kind::Number;
        token.whole = true;
        token.number = value <= 0xFFFF ? double(qint16(value)) : double(qint32(value));
        return token;
    }

    // A keyword or a name without brackets.
    Token word()
    {
        ++m_at;
        while (m_at < m_text.size() && continuesWord(at()))
            ++m_at;
        // Left$(...): the "$" belongs to the name of the function.
        if (at() == u'$' && at(1) == u'(')
            ++m_at;
        Token token;
        token.kind = Token::Kind::Word;
        token.text = m_text.sliced(m_start, m_at - m_start);
        // After a dot each word is a plain name.
        token.keyword = m_afterDot ? Keyword::None : keywordOf(token.text);
        return token;
    }

    Token symbol()
    {
        for (const SymbolText &entry : kSymbols) {
            if (at() != QChar(entry.first) || (entry.second != 0 && at(1) != QChar(entry.second)))
                continue;
            m_at += entry.second == 0 ? 1 : 2;
            Token token;
            token.kind = Token::Kind::Symbol;
            token.symbol = entry.symbol;
            return token;
        }
        return fault(Fault::Character, 1);
    }

    QStringView m_text;
    qsizetype m_at = 0;
    qsizetype m_start = 0;
    bool m_afterOperand = false;
    bool m_afterDot = false;
    QList<Token> m_tokens;
};

} // namespace

QString Token::string() const
{
    QString result = text.toString();
    if (!doubledQuote.isNull())
        result.replace(QString(2, doubledQuote), QString(doubledQuote));
    return result;
}

QList<Token> tokenize(QStringView text)
{
    return Lexer(text).run();
}

bool isPlainName(QStringView text)
{
    return !text.isEmpty() && startsWord(text.front()) && std::all_of(text.begin(), text.end(), continuesWord);
}

} // namespace dao::sql::ast
