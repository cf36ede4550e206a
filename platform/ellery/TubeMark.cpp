#include "TubeMark.h"

#include <tarnwick/JFile.h>

namespace ellery {

// Maps hold a mark for each tube, and painting compares them: the types must cost nothing.
static_assert(sizeof(TubeMark) == 8 && std::is_trivially_copyable_v<TubeMark>);

void TubeMark::serialize(tarnwick::JFile &file)
{
    char16_t character = symbol.character();
    file.serialize(character);
    symbol = Symbol(character);
    file.serialize(colour);
}

} // namespace ellery
