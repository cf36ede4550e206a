#include "LocationRules.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace conversion {

namespace {

/// A location in the text that is scanned.
struct Place
{
    QStringView landmark;
    float offset = 0;

    void giveTo(brannock::TubeLoc &location) const
    {
        location.landmark = landmark.toString();
        location.offset = offset;
    }
};

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}
bool isLandmarkCharacter(QChar c)
{
    return isDigit(c) || (c >= u'A' && c <= u'Z');
}

// Reads a text like scanf does: each step consumes matching characters and returns whether there were any.
class Scanner
{
public:
    explicit Scanner(QStringView text)
        : m_text(text)
    {
    }

    // %[A-Z0-9]
    bool landmark(QStringView &name)
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && isLandmarkCharacter(m_text[m_at]))
            ++m_at;
        name = m_text.sliced(start, m_at - start);
        return m_at > start;
    }
    // %[0-9]
    bool digits()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && isDigit(m_text[m_at]))
            ++m_at;
        return m_at > start;
    }
    // %*[ ]
    bool blanks()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && m_text[m_at] == u' ')
            ++m_at;
        return m_at > start;
    }
    // %[+-]: a run of signs; only a single minus negates
    bool sign(bool &negative)
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && (m_text[m_at] == u'+' || m_text[m_at] == u'-'))
            ++m_at;
        negative = m_at - start == 1 && m_text[start] == u'-';
        return m_at > start;
    }
    bool literal(QChar c)
    {
        if (m_at >= m_text.size() || m_text[m_at] != c)
            return false;
        ++m_at;
        return true;
    }
    // a blank in the format: any amount of white space, or none
    void space()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
    }
    // %f
    bool number(float &value)
    {
        qsizetype length = 0;
        value = float(leadingNumber(m_text.sliced(m_at), &length));
        m_at += length;
        return length > 0 && std::isfinite(value);
    }

    bool signedPlace(Place &place)
    {
        bool negative = false;
        if (!landmark(place.landmark) || !blanks() || !sign(negative) || !number(place.offset))
            return false;
        if (negative)
            place.offset = -place.offset;
        return true;
    }
    bool place(Place &place)
    {
        if (!landmark(place.landmark))
            return false;
        space();
        return number(place.offset);
    }

private:
    QStringView m_text;
    qsizetype m_at = 0;
};

} // namespace

// The value of a text that has the form of a number; infinite if it is too large.
static double numberOf(QStringView text)
{
    constexpr qsizetype kUsual = 32;
    if (text.startsWith(u'+'))
        text = text.sliced(1);
    if (text.size() <= kUsual) {
        char plain[kUsual];
        std::transform(text.begin(), text.end(), plain, [](QChar c) { return char(c.unicode()); });
        double value = 0;
        if (std::from_chars(plain, plain + text.size(), value).ec == std::errc())
            return value;
    }
    return text.toDouble();
}

double leadingNumber(QStringView text, qsizetype *length)
{
    qsizetype i = 0;
    const auto skipDigits = [&] {
        const qsizetype start = i;
        while (i < text.size() && isDigit(text[i]))
            ++i;
        return i - start;
    };
    while (i < text.size() && text[i].isSpace())
        ++i;
    const qsizetype start = i;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
        ++i;
    qsizetype digits = skipDigits();
    if (i < text.size() && text[i] == u'.') {
        ++i;
        digits += skipDigits();
    }
    if (length)
        *length = digits > 0 ? i : 0;
    if (digits == 0)
        return 0;
    const qsizetype mantissaEnd = i;
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        ++i;
        if (i < text.size() && (text[i] == u'+' || text[i] == u'-'))
            ++i;
        if (skipDigits() == 0)
            i = mantissaEnd; // "1E": the number 1 and a letter
    }
    if (length)
        *length = i;
    return numberOf(text.sliced(start, i - start));
}

LocationText parseLocation(QStringView text)
{
    text = text.trimmed();
    LocationText result;
    if (text.isEmpty())
        return result;
    Place from;
    Place to;

    Scanner signedStretch(text);
    Scanner stretch(text);
    const bool isSignedStretch =
        signedStretch.signedPlace(from) && signedStretch.blanks() && signedStretch.signedPlace(to);
    const auto isStretch = [&] {
        if (!stretch.place(from))
            return false;
        stretch.space();
        return stretch.place(to);
    };
    if (isSignedStretch || isStretch()) {
        from.giveTo(result.from);
        to.giveTo(result.to);
        return result;
    }

    Scanner signedPlace(text);
    Scanner range(text);
    Scanner place(text);
    Place found;
    if (signedPlace.signedPlace(found)) {
        found.giveTo(result.location);
        return result;
    }
    const bool isRange = range.digits() && range.literal(u'-') && range.digits();
    if (!isRange && place.place(found))
        found.giveTo(result.location);
    else
        result.location.landmark = text.toString();
    return result;
}

ExtentText parseExtent(QStringView text)
{
    qsizetype i = 0;
    const auto word = [&] {
        while (i < text.size() && text[i].isSpace())
            ++i;
        const qsizetype start = i;
        while (i < text.size() && !text[i].isSpace())
            ++i;
        return text.sliced(start, i - start).toString();
    };
    const QString begin = word();
    return {begin, word()};
}

} // namespace conversion
