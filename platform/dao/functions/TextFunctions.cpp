#include "Call.h"

using namespace Qt::StringLiterals;

namespace dao::functions {
namespace {

constexpr int BinaryCompare = 0;

// What codes 128 to 159 of the Western Windows page mean; 0 where it has no character.
constexpr char16_t westernHigh[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// No text of a query needs more; a slip in a number must not take all memory.
constexpr int MaxLength = 1 << 24;

Qt::CaseSensitivity sensitivity(const Call &call, int index)
{
    const int compare = call.wholeOr(index, 1);
    if (compare < 0 || compare > 2)
        fail(error::InvalidProcedureCall);
    return compare == BinaryCompare ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

int lengthAt(const Call &call, int index)
{
    const int length = call.whole(index);
    if (length < 0)
        fail(error::InvalidProcedureCall);
    return length;
}

void left(const Call &call)
{
    const int length = lengthAt(call, 1);
    call.give(call.text(0).left(length));
}

void right(const Call &call)
{
    const int length = lengthAt(call, 1);
    call.give(call.text(0).right(length));
}

void mid(const Call &call)
{
    const int start = call.whole(1);
    if (start < 1)
        fail(error::InvalidProcedureCall);
    call.give(call.has(2) ? call.text(0).mid(start - 1, lengthAt(call, 2)) : call.text(0).mid(start - 1));
}

void length(const Call &call)
{
    call.give(qint64(call.text(0).size()));
}

// InStr(text, part) and InStr(start, text, part, compare)
void inStr(const Call &call)
{
    const int first = call.count() > 2 ? 1 : 0;
    const int start = first == 1 ? call.whole(0) : 1;
    if (start < 1)
        fail(error::InvalidProcedureCall);
    const QString text = call.text(first);
    const QString part = call.text(first + 1);
    if (text.isEmpty() || start > text.size())
        return call.give(0);
    if (part.isEmpty())
        return call.give(start);
    call.give(qint64(text.indexOf(part, start - 1, sensitivity(call, 3)) + 1));
}

// The part must end at or before the start.
void inStrRev(const Call &call)
{
    const QString text = call.text(0);
    const QString part = call.text(1);
    int start = call.wholeOr(2, -1);
    if (start == 0 || start < -1)
        fail(error::InvalidProcedureCall);
    if (start == -1)
        start = int(text.size());
    if (text.isEmpty() || start > text.size())
        return call.give(0);
    if (part.isEmpty())
        return call.give(start);
    if (part.size() > start)
        return call.give(0);
    call.give(qint64(text.lastIndexOf(part, start - part.size(), sensitivity(call, 3)) + 1));
}

void lower(const Call &call)
{
    call.give(call.text(0).toLower());
}

void upper(const Call &call)
{
    call.give(call.text(0).toUpper());
}

// Only blanks count, not tabs.
template <bool Start, bool End>
void trim(const Call &call)
{
    const QString text = call.text(0);
    qsizetype from = 0;
    qsizetype to = text.size();
    while (Start && from < to && text[from] == u' ')
        ++from;
    while (End && to > from && text[to - 1] == u' ')
        --to;
    call.give(text.sliced(from, to - from));
}

int repeatCount(const Call &call)
{
    const int count = lengthAt(call, 0);
    if (count > MaxLength)
        fail(error::Overflow);
    return count;
}

void space(const Call &call)
{
    call.give(QString(repeatCount(call), u' '));
}

void string(const Call &call)
{
    QChar character;
    if (call.isText(1)) {
        const QString text = call.text(1);
        if (text.isEmpty())
            fail(error::InvalidProcedureCall);
        character = text.front();
    } else {
        const int code = ((call.whole(1) % 256) + 256) % 256;
        character = code >= 128 && code < 160 && westernHigh[code - 128] ? QChar(westernHigh[code - 128]) : QChar(code);
    }
    call.give(QString(repeatCount(call), character));
}

void reverse(const Call &call)
{
    QString text = call.text(0);
    std::reverse(text.begin(), text.end());
    call.give(text);
}

void replace(const Call &call)
{
    if (call.isNull(0) || call.isNull(1) || call.isNull(2))
        fail(error::InvalidUseOfNull);
    const int start = call.wholeOr(3, 1);
    const int count = call.wholeOr(4, -1);
    if (start < 1 || count < -1)
        fail(error::InvalidProcedureCall);
    QString text = call.text(0).mid(start - 1);
    const QString find = call.text(1);
    const QString with = call.text(2);
    const Qt::CaseSensitivity cs = sensitivity(call, 5);
    if (find.isEmpty())
        return call.give(text);
    QString result;
    qsizetype from = 0;
    for (int done = 0; count < 0 || done < count; ++done) {
        const qsizetype at = text.indexOf(find, from, cs);
        if (at < 0)
            break;
        result += QStringView(text).sliced(from, at - from);
        result += with;
        if (result.size() > MaxLength)
            fail(error::Overflow);
        from = at + find.size();
    }
    call.give(result + QStringView(text).sliced(from));
}

void compareTexts(const Call &call)
{
    const int order = call.text(0).compare(call.text(1), sensitivity(call, 2));
    call.give(order < 0 ? -1 : order > 0 ? 1 : 0);
}

QString properCase(const QString &text)
{
    QString result = text.toLower();
    bool atStart = true;
    for (QChar &c : result) {
        if (atStart)
            c = c.toUpper();
        atStart = c.isNull() || (c >= u'\t' && c <= u'\r') || c == u' ';
    }
    return result;
}

void convertText(const Call &call)
{
    const QString text = call.text(0);
    switch (call.whole(1)) {
    case 1:
        return call.give(text.toUpper());
    case 2:
        return call.give(text.toLower());
    case 3:
        return call.give(properCase(text));
    case 64:
    case 128:
        return call.give(text);
    default:
        fail(error::InvalidProcedureCall);
    }
}

void character(const Call &call)
{
    const int code = call.whole(0);
    if (code < 0 || code > 255)
        fail(error::InvalidProcedureCall);
    const bool high = code >= 128 && code < 160 && westernHigh[code - 128];
    call.give(QString(high ? QChar(westernHigh[code - 128]) : QChar(code)));
}

void unicodeCharacter(const Call &call)
{
    const int code = call.whole(0);
    if (code < -32768 || code > 65535)
        fail(error::InvalidProcedureCall);
    call.give(QString(QChar(char16_t(code))));
}

void characterCode(const Call &call)
{
    const QString text = call.text(0);
    if (text.isEmpty())
        fail(error::InvalidProcedureCall);
    const char16_t c = text.front().unicode();
    const auto found = std::find(std::begin(westernHigh), std::end(westernHigh), c);
    if (c >= 0x100 && found != std::end(westernHigh))
        return call.give(int(found - std::begin(westernHigh)) + 128);
    call.give(c < 0x100 ? int(c) : int(u'?'));
}

void unicodeCode(const Call &call)
{
    const QString text = call.text(0);
    if (text.isEmpty())
        fail(error::InvalidProcedureCall);
    call.give(int(text.front().unicode()));
}

constexpr Entry entries[] = {
    {"left", 2, left},
    {"right", 2, right},
    {"mid", -1, mid},
    {"len", 1, length},
    {"instr", -1, inStr},
    {"instrrev", -1, inStrRev},
    {"lcase", 1, lower},
    {"ucase", 1, upper},
    {"trim", 1, trim<true, true>},
    {"ltrim", 1, trim<true, false>},
    {"rtrim", 1, trim<false, true>},
    {"space", 1, space},
    {"string", 2, string},
    {"strreverse", 1, reverse},
    {"replace", -1, replace, Entry::NullIn},
    {"strcomp", -1, compareTexts},
    {"strconv", 2, convertText},
    {"chr", 1, character},
    {"chrw", 1, unicodeCharacter},
    {"asc", 1, characterCode},
    {"ascw", 1, unicodeCode},
};

} // namespace

std::span<const Entry> textEntries()
{
    return entries;
}

} // namespace dao::functions
