#pragma once
#include <ellery/TubeMark.h>

/// A tube's mark of a character and a colour, 0x00BBGGRR.
constexpr ellery::TubeMark markOf(char16_t symbol, quint32 colour)
{
    return {ellery::Symbol(symbol), tarnwick::ColourRef(colour)};
}
