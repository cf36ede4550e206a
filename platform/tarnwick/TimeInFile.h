#pragma once
#include "JDateTime.h"
#include "JFile.h"

namespace tarnwick {

/// Reads or writes a time, which may be null, in the copies for recovery: a flag, then the seconds as a double, which
/// holds them exactly.
inline void serializeTime(JFile &file, JDateTime &time)
{
    bool isSet = !time.isNull();
    auto seconds = double(time.seconds());
    file.serialize(isSet);
    file.serialize(seconds);
    time = isSet ? JDateTime::fromSeconds(qint64(seconds)) : JDateTime();
}

} // namespace tarnwick
