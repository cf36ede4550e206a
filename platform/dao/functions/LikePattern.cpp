#include "LikePattern.h"

#include "Call.h"

#include <algorithm>
#include <dao/values/Errors.h>

namespace dao::functions {

namespace {

// Limits for patterns from data: a pattern can be a memo value, and longer matching takes more than about a second.
constexpr qsizetype kLongestPattern = 1000 * 1000;
constexpr qint64 kMaxSteps = 50 * 1000 * 1000;

// Characters outside A to Z whose fold is a letter of a to z (the Kelvin sign folds to k) are not folded. All matches
// of a plain pattern are then one range in SQLite's NOCASE order, so an index can be used.
char16_t folded(QChar c)
{
    constexpr char16_t kFirstBeyondAscii = 0x80;
    const char16_t folded = c.toCaseFolded().unicode();
    return c.unicode() >= kFirstBeyondAscii && folded < kFirstBeyondAscii ? c.unicode() : folded;
}

} // namespace

LikePattern::LikePattern(const QString &pattern, Form form)
{
    if (pattern.size() > kLongestPattern)
        throw FunctionFault{error::TooComplexExpression};
    const QChar run = form == Form::Star ? u'*' : u'%';
    const QChar any = form == Form::Star ? u'?' : u'_';
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == run) {
            if (m_elements.isEmpty() || m_elements.last().kind != Element::Kind::Run)
                m_elements.append({Element::Kind::Run, 0, false, {}});
        } else if (c == any) {
            m_elements.append({Element::Kind::Any, 0, false, {}});
        } else if (c == u'#' && form == Form::Star) {
            m_elements.append({Element::Kind::Digit, 0, false, {}});
        } else if (c == u'[') {
            const qsizetype end = pattern.indexOf(u']', i + 1);
            if (end < 0 || !addClass(QStringView(pattern).mid(i + 1, end - i - 1))) {
                m_valid = false;
                return;
            }
            i = end;
        } else {
            m_elements.append({Element::Kind::Character, folded(c), false, {}});
        }
    }
}

bool LikePattern::addClass(QStringView inside)
{
    if (inside.isEmpty())
        return true; // "[]" matches the empty text
    Element element{Element::Kind::Class, 0, false, {}};
    if (inside.size() > 1 && inside.startsWith(u'!')) {
        element.negated = true;
        inside = inside.mid(1);
    }
    for (qsizetype i = 0; i < inside.size(); ++i) {
        const char16_t first = folded(inside[i]);
        // A dash at the start or end of a class is a literal.
        if (i + 2 < inside.size() && inside[i + 1] == u'-') {
            const char16_t last = folded(inside[i + 2]);
            if (last < first)
                return false;
            element.ranges.append({first, last});
            i += 2;
        } else {
            element.ranges.append({first, first});
        }
    }
    m_elements.append(element);
    return true;
}

bool LikePattern::matchesOne(const Element &element, QChar c)
{
    switch (element.kind) {
    case Element::Kind::Any:
        return true;
    case Element::Kind::Digit:
        return c >= u'0' && c <= u'9';
    case Element::Kind::Character:
        return folded(c) == element.character;
    case Element::Kind::Class: {
        const char16_t letter = folded(c);
        const bool found = std::any_of(element.ranges.cbegin(), element.ranges.cend(),
                                       [letter](const Range &r) { return r.first <= letter && letter <= r.last; });
        return found != element.negated;
    }
    case Element::Kind::Run:
        break;
    }
    return false;
}

bool LikePattern::matches(QStringView text) const
{
    if (!m_valid)
        return false;
    // Only the last "*" needs backtracking: any text that an earlier one could consume, the last one can consume as
    // well.
    qsizetype element = 0;
    qsizetype at = 0;
    qsizetype runElement = -1;
    qsizetype runAt = 0;
    qint64 steps = 0;
    while (at < text.size()) {
        steps += element < m_elements.size() ? 1 + m_elements[element].ranges.size() : 1;
        if (steps > kMaxSteps)
            throw FunctionFault{error::TooComplexExpression};
        if (element < m_elements.size() && m_elements[element].kind == Element::Kind::Run) {
            runElement = element++;
            runAt = at;
        } else if (element < m_elements.size() && matchesOne(m_elements[element], text[at])) {
            ++element;
            ++at;
        } else if (runElement >= 0) {
            element = runElement + 1;
            at = ++runAt;
        } else {
            return false;
        }
    }
    while (element < m_elements.size() && m_elements[element].kind == Element::Kind::Run)
        ++element;
    return element == m_elements.size();
}

} // namespace dao::functions
