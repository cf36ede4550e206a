#pragma once
#include "base/Error.h"
#include "JDateTime.h"

#include <QString>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

namespace tarnwick {

/// A format text and its arguments do not match: unknown conversion, wrong type, too few or too many arguments.
class FormatError : public Error
{
public:
    using Error::Error;
};

/// One argument of a format, of one of the types that the conversions support.
class FormatArg
{
public:
    template <typename T>
    requires std::is_integral_v<T> FormatArg(T value)
        : m_value(qint64(value))
        , m_unsigned(std::is_unsigned_v<T>)
        , m_bits(int(sizeof(T) * 8))
    {
    }
    FormatArg(double value)
        : m_value(value)
    {
    }
    FormatArg(const QString &value)
        : m_value(value)
    {
    }
    FormatArg(QStringView value)
        : m_value(value.toString())
    {
    }
    FormatArg(const char16_t *value)
        : m_value(QString::fromUtf16(value))
    {
    }
    FormatArg(QChar value)
        : m_value(value)
    {
    }
    FormatArg(const JDateTime &value)
        : m_value(value)
    {
    }

    const auto &value() const { return m_value; }
    bool isUnsigned() const { return m_unsigned; }
    int bits() const { return m_bits; }

private:
    std::variant<qint64, double, QString, QChar, JDateTime> m_value;
    bool m_unsigned = false;
    int m_bits = 64;
};

/// Fills a message format. Conversions, each with printf's flags, width ("*" too) and precision:
///   %S %U %s   text (precision cuts)             %d %i %u %x %X %o   integers
///   %D         integer with comma groups         %f %e %g %E %G      numbers
///   %t         date-time "mm/dd/yyyy hh:mm:ss"    %{...}t             date-time by strftime's rules
///   %c %C      one character (%C: a blank-or-mark character)       %%   a per cent sign
/// A null date-time prints as nothing. Width pads in characters.
/// Throws FormatError when an argument does not fit its conversion or the counts differ.
QString formatArgs(QStringView format, std::span<const FormatArg> args);

template <typename... Args>
QString format(QStringView text, const Args &...args)
{
    const FormatArg list[] = {FormatArg(args)..., FormatArg(0)};
    return formatArgs(text, std::span<const FormatArg>(list, sizeof...(Args)));
}

} // namespace tarnwick
