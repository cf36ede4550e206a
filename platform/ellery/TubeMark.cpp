#include "TubeMark.h"

#include <tarnwick/JFile.h>

namespace ellery {

void TubeMark::serialize(tarnwick::JFile &file)
{
    char16_t character = symbol.character();
    file.serialize(character);
    symbol = Symbol(character);
    file.serialize(colour);
}

} // namespace ellery
