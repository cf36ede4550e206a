#pragma once
#include <brannock/MapOptions.h>
#include <tarnwick/paint/Colours.h>

namespace brannock {

using tarnwick::contrast;
using tarnwick::fromColourRef;
using tarnwick::inkOn;
using tarnwick::mixed;
using tarnwick::readable;
using tarnwick::toColourRef;

} // namespace brannock
