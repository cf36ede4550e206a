#pragma once
#include <QString>
#include <tarnwick/ColourRef.h>
#include <type_traits>

namespace tarnwick {
class JFile;
}

namespace ellery {

/// The character that marks a tube on the map; none for an open tube. Made of a char16_t only, so that neither a colour
/// nor a number is taken for a symbol.
class Symbol
{
public:
    constexpr Symbol() = default;
    template <typename Character, std::enable_if_t<std::is_same_v<Character, char16_t>, int> = 0>
    constexpr explicit Symbol(Character character)
        : m_character(character)
    {
    }

    constexpr bool isNone() const { return m_character == 0; }
    constexpr char16_t character() const { return m_character; }
    QString text() const { return isNone() ? QString() : QString(QChar(m_character)); }
    constexpr bool operator==(const Symbol &) const = default;

private:
    char16_t m_character = 0;
};

inline size_t qHash(Symbol symbol, size_t seed = 0)
{
    return size_t(symbol.character()) ^ seed;
}

/// How a tube is marked on the map. Without a symbol the tube is open, whatever the colour.
struct TubeMark
{
    Symbol symbol;
    tarnwick::ColourRef colour;
    bool isOpen() const { return symbol.isNone(); }
    bool operator==(const TubeMark &) const = default;

    /// The symbol as a character of 16 bits, then the colour.
    void serialize(tarnwick::JFile &file);
};

} // namespace ellery
