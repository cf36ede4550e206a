#pragma once
#include <dao/values/Value.h>
#include <jet/wire/WireReader.h>

namespace jet {

/// The next value of a row, for a field of that type. wire::ProtocolError when it is none of that type.
dao::Value takeValue(wire::WireReader &reader, dao::DataType type);

} // namespace jet
