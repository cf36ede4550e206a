#pragma once
#include <QtGlobal>

namespace bench {

/// Resident memory of this process in bytes, and its maximum since resetPeak().
qint64 residentBytes();
qint64 peakBytes();
void resetPeak();

} // namespace bench
