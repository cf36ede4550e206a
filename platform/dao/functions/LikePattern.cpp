#include "LikePattern.h"

#include <optional>
#include <QChar>
#include <QList>
#include <QString>

namespace dao::functions {
namespace {

struct Element
{
    enum class Kind { Char, Any, Run, Digit, Class };
    Kind kind = Kind::Char;
    QChar character;
    bool negated = false;
    QList<std::pair<char16_t, char16_t>> ranges;

    bool matches(QChar c) const
    {
        switch (kind) {
        case Kind::Char:
            return c == character;
        case Kind::Any:
            return true;
        case Kind::Digit:
            return c >= u'0' && c <= u'9';
        case Kind::Class: {
            const bool inside = std::any_of(ranges.begin(), ranges.end(), [c](const auto &range) {
                return c.unicode() >= range.first && c.unicode() <= range.second;
            });
            return inside != negated;
        }
        case Kind::Run:
            break;
        }
        return false;
    }
};

/// The class that begins behind "[" at `at`; leaves `at` behind "]". Nothing for a bad one.
std::optional<Element> readClass(QStringView pattern, qsizetype &at)
{
    Element element;
    element.kind = Element::Kind::Class;
    if (at < pattern.size() && pattern[at] == u'!') {
        element.negated = true;
        ++at;
    }
    while (at < pattern.size() && pattern[at] != u']') {
        const char16_t first = pattern[at].unicode();
        const bool isRange = at + 2 < pattern.size() && pattern[at + 1] == u'-' && pattern[at + 2] != u']';
        const char16_t last = isRange ? pattern[at + 2].unicode() : first;
        if (last < first)
            return {};
        element.ranges.append({first, last});
        at += isRange ? 3 : 1;
    }
    if (at >= pattern.size())
        return {};
    ++at;
    // "[!]" is the exclamation mark itself.
    if (element.negated && element.ranges.isEmpty()) {
        element.negated = false;
        element.ranges.append({u'!', u'!'});
    }
    return element;
}

std::optional<QList<Element>> compile(QStringView pattern, bool ansi)
{
    const QChar run = ansi ? u'%' : u'*';
    const QChar any = ansi ? u'_' : u'?';
    QList<Element> elements;
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar c = pattern[at++];
        Element element;
        if (c == run) {
            element.kind = Element::Kind::Run;
        } else if (c == any) {
            element.kind = Element::Kind::Any;
        } else if (c == u'#' && !ansi) {
            element.kind = Element::Kind::Digit;
        } else if (c == u'[') {
            const std::optional<Element> read = readClass(pattern, at);
            if (!read)
                return {};
            if (read->ranges.isEmpty())
                continue; // "[]" is nothing
            element = *read;
        } else {
            element.character = c;
        }
        elements.append(element);
    }
    return elements;
}

} // namespace

bool matchesLike(QStringView text, QStringView pattern, bool ansi)
{
    const QString folded = text.toString().toLower();
    const std::optional<QList<Element>> compiled = compile(pattern.toString().toLower(), ansi);
    if (!compiled)
        return false;
    // Greedy with one place to come back to: the last run. Bounded by text times pattern.
    const QList<Element> &elements = *compiled;
    qsizetype t = 0;
    qsizetype p = 0;
    qsizetype runAt = -1;
    qsizetype runText = 0;
    while (t < folded.size()) {
        if (p < elements.size() && elements[p].kind == Element::Kind::Run) {
            runAt = p++;
            runText = t;
        } else if (p < elements.size() && elements[p].matches(folded[t])) {
            ++p;
            ++t;
        } else if (runAt >= 0) {
            p = runAt + 1;
            t = ++runText;
        } else {
            return false;
        }
    }
    while (p < elements.size() && elements[p].kind == Element::Kind::Run)
        ++p;
    return p == elements.size();
}

} // namespace dao::functions
