#pragma once
#include <dao/values/Value.h>
#include <jet/wire/WireReader.h>

namespace jet {

/// Reads the next value of a row, for a field of that type. Throws wire::ProtocolError if its type differs.
dao::Value takeValue(wire::WireReader &reader, dao::DataType type);

} // namespace jet
