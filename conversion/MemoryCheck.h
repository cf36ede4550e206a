#pragma once
#include <QString>

namespace conversion {

/// Memory that programs can still get, in bytes; empty if the system does not tell.
std::optional<qint64> freeMemory();

/// Throws tarnwick::FileError if so many bytes are more than the free memory. Without this check the system would end
/// the program, and all unsaved work with it. work: what needs the memory ("Reading it").
void requireMemory(const QString &file, qint64 bytes, const QString &work);

} // namespace conversion
