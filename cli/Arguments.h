#pragma once
#include <tarnwick/Arguments.h>

namespace cli {

using tarnwick::Arguments;
using tarnwick::OptionSpec;
using tarnwick::UsageError;

} // namespace cli
