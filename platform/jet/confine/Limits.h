#pragma once
#include <QtGlobal>

namespace jet::reader {

/// Bounds this process before it touches a file of that many bytes: processor time, memory, no core file. What loops or
/// grows without end is killed by the system, and the program that started it learns so.
void setLimits(qint64 fileSize);

} // namespace jet::reader
