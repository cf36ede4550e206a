#pragma once
#include <QtGlobal>

namespace jet::confine {

/// Limits this process before it opens a file of that size: processor time, memory, open files; no core file, no file
/// output, no child processes. If a limit is exceeded, the system ends the process and the parent is informed.
void setLimits(qint64 fileSize);

} // namespace jet::confine
