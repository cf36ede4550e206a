#pragma once
#include <cstddef>
#include <QtGlobal>
#include <type_traits>

namespace tarnwick {

/// A colour as files, options and tables keep it: 0x00BBGGRR, with red in the low byte. Black by default.
class ColourRef
{
public:
    constexpr ColourRef() = default;
    /// Numbers of 32 bits only, so that a character is not taken for a colour.
    template <typename Number,
              std::enable_if_t<std::is_integral_v<Number> && sizeof(Number) == sizeof(quint32), int> = 0>
    constexpr explicit ColourRef(Number value)
        : m_value(quint32(value))
    {
    }
    static constexpr ColourRef fromRgb(int red, int green, int blue)
    {
        return ColourRef(quint32(red) | quint32(green) << 8 | quint32(blue) << 16);
    }

    constexpr quint32 value() const { return m_value; }
    constexpr int red() const { return int(m_value & 0xFF); }
    constexpr int green() const { return int(m_value >> 8 & 0xFF); }
    constexpr int blue() const { return int(m_value >> 16 & 0xFF); }
    constexpr bool operator==(const ColourRef &) const = default;

private:
    quint32 m_value = 0;
};

inline size_t qHash(ColourRef colour, size_t seed = 0)
{
    return size_t(colour.value()) ^ seed;
}

/// Colours of one row of a table. Black on white means the colours of the theme.
struct RowColours
{
    ColourRef foreground = ColourRef(0x000000);
    ColourRef background = ColourRef(0xFFFFFF);
    bool operator==(const RowColours &) const = default;
};

} // namespace tarnwick
