#include "JFormatSpec.h"

#include "FormatSpec.h"

namespace tarnwick {

JFormatSpec::JFormatSpec(const QString &format)
    : m_format(format)
{
    for (qsizetype i = m_format.indexOf(u'%'); i >= 0; i = m_format.indexOf(u'%', i)) {
        const auto spec = parseFormatSpec(m_format, i);
        if (!spec)
            return;
        if (spec->conversion != u'%') {
            m_conversion = spec->conversion;
            return;
        }
        i = spec->end;
    }
}

QString JFormatSpec::apply(const FormatArg &value) const
{
    // In a date format every letter is a part of the date; only "%t" and "%{...}t" are conversions of the formatter.
    const auto *time = std::get_if<JDateTime>(&value.value());
    if (time && m_conversion != u't')
        return time->toString(m_format);
    try {
        return formatArgs(m_format, std::span<const FormatArg>(&value, 1));
    } catch (const FormatError &) {
        return m_format;
    }
}

} // namespace tarnwick
