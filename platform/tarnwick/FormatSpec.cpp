#include "FormatSpec.h"

namespace tarnwick {

// Reads digits at i; -1 if there are none. Numbers above kMostWidth are limited to a value above it.
static int digits(QStringView text, qsizetype &i)
{
    int number = -1;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i)
        number = qMin(qMax(number, 0) * 10 + (text[i].unicode() - u'0'), kMostWidth + 1);
    return number;
}

static bool takeFlag(FormatSpec &spec, QChar c)
{
    switch (c.unicode()) {
    case u'-':
        spec.left = true;
        return true;
    case u'+':
        spec.plus = true;
        return true;
    case u' ':
        spec.blank = true;
        return true;
    case u'0':
        spec.zero = true;
        return true;
    case u'#':
        spec.sharp = true;
        return true;
    default:
        return false;
    }
}

std::optional<FormatSpec> parseFormatSpec(QStringView format, qsizetype start)
{
    FormatSpec spec;
    qsizetype i = start + 1;
    const auto at = [&format](qsizetype place) { return place < format.size() ? format[place] : QChar(); };

    while (i < format.size() && takeFlag(spec, format[i]))
        ++i;
    if (at(i) == u'*') {
        spec.widthFromArgument = true;
        ++i;
    } else {
        spec.width = digits(format, i);
    }
    if (at(i) == u'.') {
        ++i;
        if (at(i) == u'*') {
            spec.precisionFromArgument = true;
            ++i;
        } else {
            spec.precision = qMax(0, digits(format, i));
        }
    }
    if (at(i) == u'{') {
        const qsizetype close = format.indexOf(u'}', i);
        if (close < 0)
            return std::nullopt;
        spec.dateFormat = format.sliced(i + 1, close - i - 1);
        i = close + 1;
    }
    // The size modifiers of C are ignored: an argument knows its own size.
    while (at(i) == u'l' || at(i) == u'h' || at(i) == u'L')
        ++i;
    if (i >= format.size() || spec.width > kMostWidth || spec.precision > kMostWidth)
        return std::nullopt;
    spec.conversion = format[i];
    spec.end = i + 1;
    return spec;
}

} // namespace tarnwick
