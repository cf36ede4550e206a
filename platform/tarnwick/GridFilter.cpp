#include "GridFilter.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// "*" matches any text, "?" one character; case is ignored. No recursion; linear in the text for each star.
bool matchesPattern(QStringView text, QStringView pattern)
{
    qsizetype t = 0;
    qsizetype p = 0;
    qsizetype star = -1;
    qsizetype retry = 0;
    while (t < text.size()) {
        if (p < pattern.size() && (pattern[p] == u'?' || pattern[p].toCaseFolded() == text[t].toCaseFolded()) &&
            pattern[p] != u'*') {
            ++p;
            ++t;
        } else if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            retry = t;
        } else if (star >= 0) {
            p = star + 1;
            t = ++retry;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

bool parseNumber(const QString &text, double &number)
{
    bool ok = false;
    number = text.trimmed().toDouble(&ok);
    return ok;
}

} // namespace

bool numberOf(const QVariant &value, double &number)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Bool:
        number = value.toDouble();
        return true;
    case QMetaType::QString:
        return parseNumber(value.toString(), number);
    default:
        return false;
    }
}

GridFilter::GridFilter(const QString &typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return;
    static constexpr std::array<std::pair<const char16_t *, Kind>, 6> kOperators{{{u"<>", Kind::NotEqual},
                                                                                  {u"<=", Kind::LessEqual},
                                                                                  {u">=", Kind::GreaterEqual},
                                                                                  {u"<", Kind::Less},
                                                                                  {u">", Kind::Greater},
                                                                                  {u"=", Kind::Equal}}};
    for (const auto &[sign, kind] : kOperators) {
        const QStringView prefix(sign);
        if (!text.startsWith(prefix))
            continue;
        m_kind = kind;
        setOperand(text.mid(prefix.size()).trimmed());
        return;
    }
    if (const qsizetype dots = text.indexOf(u".."_s); dots > 0) {
        if (parseNumber(text.left(dots), m_number) && parseNumber(text.mid(dots + 2), m_upper)) {
            m_kind = Kind::Between;
            return;
        }
    }
    m_kind = text.contains(u'*') || text.contains(u'?') ? Kind::Pattern : Kind::Contains;
    setOperand(text);
}

void GridFilter::setOperand(const QString &text)
{
    m_text = text;
    m_isNumber = parseNumber(text, m_number);
}

int GridFilter::compare(const QVariant &value, const QString &text) const
{
    double number = 0;
    if (m_isNumber && numberOf(value, number))
        return number < m_number ? -1 : number > m_number ? 1 : 0;
    return text.trimmed().compare(m_text, Qt::CaseInsensitive);
}

bool GridFilter::matches(const QVariant &value, const QString &text) const
{
    // An empty cell is neither less nor greater than anything, so comparisons exclude it.
    const bool isEmptyCell = text.trimmed().isEmpty();
    switch (m_kind) {
    case Kind::None:
        return true;
    case Kind::Contains:
        return text.contains(m_text, Qt::CaseInsensitive);
    case Kind::Pattern:
        return matchesPattern(QStringView(text).trimmed(), m_text);
    case Kind::Equal:
        return m_text.isEmpty() ? isEmptyCell : compare(value, text) == 0;
    case Kind::NotEqual:
        return m_text.isEmpty() ? !isEmptyCell : compare(value, text) != 0;
    case Kind::Less:
        return !isEmptyCell && compare(value, text) < 0;
    case Kind::LessEqual:
        return !isEmptyCell && compare(value, text) <= 0;
    case Kind::Greater:
        return !isEmptyCell && compare(value, text) > 0;
    case Kind::GreaterEqual:
        return !isEmptyCell && compare(value, text) >= 0;
    case Kind::Between: {
        double number = 0;
        return numberOf(value, number) && number >= m_number && number <= m_upper;
    }
    }
    return true;
}

} // namespace tarnwick
