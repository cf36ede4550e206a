#pragma once
#include <QtGlobal>

namespace jet::confine {

/// Bounds this process before it touches a file of that many bytes: processor time, memory, open files; no core file,
/// no byte written to a file, no further process. What loops or grows without end is killed by the system, and the
/// program that started it learns so.
void setLimits(qint64 fileSize);

} // namespace jet::confine
