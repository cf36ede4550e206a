#include "StringToValue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace tarnwick {

// The text as ASCII characters; empty optional if it contains others, which are never part of a number.
static std::optional<std::string> plainText(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    std::string plain;
    plain.reserve(size_t(trimmed.size()));
    for (const QChar c : trimmed) {
        if (c.unicode() > 0x7e)
            return std::nullopt;
        plain.push_back(char(c.unicode()));
    }
    return plain;
}

template <typename T>
static std::optional<T> readInteger(std::string_view text, int radix)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    if (radix == 16 && (text.starts_with("0x") || text.starts_with("0X")))
        text.remove_prefix(2);
    T value{};
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, radix);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

// Reports contain millions of numbers, and this is several times as fast as QStringView::toDouble.
template <typename T>
static std::optional<T> readNumber(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    T value{};
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

template <typename T>
std::optional<T> string_to_value(QStringView text, int radix)
{
    const auto plain = plainText(text);
    if (!plain)
        return std::nullopt;
    if constexpr (std::is_floating_point_v<T>)
        return readNumber<T>(*plain);
    else
        return readInteger<T>(*plain, radix);
}

template std::optional<qint16> string_to_value<qint16>(QStringView, int);
template std::optional<quint16> string_to_value<quint16>(QStringView, int);
template std::optional<qint32> string_to_value<qint32>(QStringView, int);
template std::optional<quint32> string_to_value<quint32>(QStringView, int);
template std::optional<qint64> string_to_value<qint64>(QStringView, int);
template std::optional<float> string_to_value<float>(QStringView, int);
template std::optional<double> string_to_value<double>(QStringView, int);

int leadingInteger(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    const bool negative = i < text.size() && text[i] == u'-';
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        ++i;
    qint64 value = 0;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        value = value * 10 + (text[i].unicode() - u'0');
        if (value > qint64(std::numeric_limits<int>::max()) + 1)
            break;
    }
    value = negative ? -value : value;
    constexpr qint64 least = std::numeric_limits<int>::min();
    constexpr qint64 most = std::numeric_limits<int>::max();
    return int(std::clamp(value, least, most));
}

} // namespace tarnwick
