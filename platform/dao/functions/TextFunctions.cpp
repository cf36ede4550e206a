#include "Call.h"
#include "TextSearch.h"
#include "ValueText.h"

#include <algorithm>
#include <dao/values/Errors.h>
#include <QStringList>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

// A number of characters; negative numbers are an error.
int countArgument(const Call &call, int index)
{
    const int count = call.integer(index);
    if (count < 0)
        throw FunctionFault{error::InvalidProcedureCall};
    return count;
}

// The compare argument: 0 is case-sensitive; 1 (text) and 2 (database) are not.
Qt::CaseSensitivity compareArgument(const Call &call, int index)
{
    const int kind = call.integer(index, 2);
    if (kind < 0 || kind > 2)
        throw FunctionFault{error::InvalidProcedureCall};
    return kind == 0 ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

void left(Call &call)
{
    call.result(call.text(0).left(countArgument(call, 1)));
}

void right(Call &call)
{
    call.result(call.text(0).right(countArgument(call, 1)));
}

// Positions count from 1. A start beyond the end gives an empty text.
void mid(Call &call)
{
    const int start = call.integer(1);
    if (start < 1)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(call.text(0).mid(start - 1, call.has(2) ? countArgument(call, 2) : -1));
}

void length(Call &call)
{
    call.result(qint64(call.text(0).size()));
}

// InStr. Arguments: (text, part) or (start, text, part[, compare]).
void inString(Call &call)
{
    const int first = call.count() > 2 ? 1 : 0;
    const int start = first ? call.integer(0) : 1;
    if (start < 1)
        throw FunctionFault{error::InvalidProcedureCall};
    const QString text = call.text(first);
    const QString part = call.text(first + 1);
    if (start > text.size())
        return call.result(0);
    call.result(qint64(findText(text, part, start - 1, compareArgument(call, 3)) + 1));
}

// InStrRev: the match must end at or before the start position.
void inStringFromEnd(Call &call)
{
    const QString text = call.text(0);
    const QString part = call.text(1);
    int start = call.integer(2, -1);
    if (start == 0 || start < -1)
        throw FunctionFault{error::InvalidProcedureCall};
    if (start < 0)
        start = int(text.size());
    if (text.isEmpty() || start > text.size())
        return call.result(0);
    if (part.isEmpty())
        return call.result(start);
    const qsizetype from = start - part.size();
    call.result(from < 0 ? 0 : qint64(findLastText(text, part, from, compareArgument(call, 3)) + 1));
}

// See lowerCaseOf(): the length does not change.
void lowerCase(Call &call)
{
    call.result(lowerCaseOf(call.text(0)));
}

void upperCase(Call &call)
{
    call.result(upperCaseOf(call.text(0)));
}

// Trim, LTrim and RTrim remove blanks only, not tabs and line ends.
template <bool atStart, bool atEnd>
void trim(Call &call)
{
    const QString text = call.text(0);
    qsizetype first = 0;
    qsizetype end = text.size();
    while (atStart && first < end && text[first] == u' ')
        ++first;
    while (atEnd && end > first && text[end - 1] == u' ')
        --end;
    call.result(text.mid(first, end - first));
}

// Fails with an overflow instead of allocating gigabytes: see kLongestText.
QString repeated(int count, QChar character)
{
    if (count > kLongestText)
        throw FunctionFault{error::Overflow};
    return QString(count, character);
}

void space(Call &call)
{
    call.result(repeated(countArgument(call, 0), u' '));
}

QChar westernCharacter(int code);

// String(count, text or code) repeats the first character.
void string(Call &call)
{
    const int count = countArgument(call, 0);
    if (!call.isText(1))
        return call.result(repeated(count, westernCharacter(((call.integer(1) % 256) + 256) % 256)));
    const QString text = call.text(1);
    if (text.isEmpty())
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(repeated(count, text[0]));
}

void reverse(Call &call)
{
    QString text = call.text(0);
    std::reverse(text.begin(), text.end());
    call.result(text);
}

// Replace. Arguments: (text, find, with[, start[, count[, compare]]]). The result begins at start.
void replace(Call &call)
{
    for (int i = 0; i < 3; ++i)
        if (call.isNull(i))
            throw FunctionFault{error::InvalidUseOfNull};
    const int start = call.integer(3, 1);
    const int most = call.integer(4, -1);
    if (start < 1 || most < -1)
        throw FunctionFault{error::InvalidProcedureCall};
    const Qt::CaseSensitivity sensitivity = compareArgument(call, 5);
    const QString text = call.text(0).mid(start - 1);
    const QString find = call.text(1);
    const QString with = call.text(2);
    if (find.isEmpty())
        return call.result(text);

    QString result;
    qsizetype copied = 0;
    for (int done = 0; most < 0 || done < most; ++done) {
        const qsizetype found = findText(text, find, copied, sensitivity);
        if (found < 0)
            break;
        result += QStringView(text).mid(copied, found - copied);
        result += with;
        copied = found + find.size();
        if (result.size() > kLongestText)
            throw FunctionFault{error::Overflow};
    }
    call.result(result + QStringView(text).mid(copied));
}

// StrComp: -1, 0 or 1.
void compare(Call &call)
{
    const int order = call.text(0).compare(call.text(1), compareArgument(call, 2));
    call.result(order < 0 ? -1 : order > 0 ? 1 : 0);
}

// StrConv 3: a capital at the start of each word, all other letters small.
QString properCase(QString text)
{
    static constexpr QStringView kSeparators = u"\t\n\v\f\r ";
    bool atStart = true;
    for (QChar &c : text) {
        c = atStart ? c.toUpper() : c.toLower();
        atStart = c.isNull() || kSeparators.contains(c);
    }
    return text;
}

// StrConv. Conversions between Asian scripts (4 to 32) are not supported.
void convertCase(Call &call)
{
    const QString text = call.text(0);
    switch (call.integer(1)) {
    case 1:
        return call.result(upperCaseOf(text));
    case 2:
        return call.result(lowerCaseOf(text));
    case 3:
        return call.result(properCase(text));
    case 64:
    case 128: // conversion to and from Unicode: no effect, texts are Unicode
        return call.result(text);
    default:
        throw FunctionFault{error::InvalidProcedureCall};
    }
}

// Characters of code page 1252 for the codes 128 to 159; 0 where the code is not assigned.
constexpr char16_t kWestern[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                   0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

QChar westernCharacter(int code)
{
    const bool special = code >= 128 && code < 160 && kWestern[code - 128] != 0;
    return QChar(special ? kWestern[code - 128] : char16_t(code));
}

// A character outside of the code page is "?", as the conversion of the operating system gives it.
int westernCode(QChar character)
{
    for (int i = 0; i < 32; ++i)
        if (kWestern[i] == character.unicode())
            return 128 + i;
    return character.unicode() < 256 ? character.unicode() : u'?';
}

void character(Call &call)
{
    const int code = call.integer(0);
    if (code < 0 || code > 255)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(QString(westernCharacter(code)));
}

void wideCharacter(Call &call)
{
    const int code = call.integer(0);
    if (code < -32768 || code > 65535)
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(QString(QChar(char16_t(code))));
}

template <bool wide>
void codeOf(Call &call)
{
    const QString text = call.text(0);
    if (text.isEmpty())
        throw FunctionFault{error::InvalidProcedureCall};
    call.result(wide ? int(text[0].unicode()) : westernCode(text[0]));
}

constexpr Entry kEntries[] = {
    {"left", 2, 2, left},
    {"right", 2, 2, right},
    {"mid", 2, 3, mid},
    {"len", 1, 1, length},
    {"instr", 2, 4, inString},
    {"instrrev", 2, 4, inStringFromEnd},
    {"lcase", 1, 1, lowerCase},
    {"ucase", 1, 1, upperCase},
    {"trim", 1, 1, trim<true, true>},
    {"ltrim", 1, 1, trim<true, false>},
    {"rtrim", 1, 1, trim<false, true>},
    {"space", 1, 1, space},
    {"string", 2, 2, string},
    {"strreverse", 1, 1, reverse},
    {"replace", 3, 6, replace, 0},
    {"strcomp", 2, 3, compare},
    {"strconv", 2, 2, convertCase},
    {"chr", 1, 1, character},
    {"chrw", 1, 1, wideCharacter},
    {"asc", 1, 1, codeOf<false>},
    {"ascw", 1, 1, codeOf<true>},
};

} // namespace

std::span<const Entry> textFunctions()
{
    return kEntries;
}

} // namespace dao::functions
