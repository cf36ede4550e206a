#pragma once
#include <QString>

namespace dao::store {

/// Copies a database file, as it was last committed, to target: byte for byte, beside the target first, which it then
/// replaces in one step. The file is read through a connection of the inner engine, since closing any other descriptor
/// of it would drop the locks that this process holds on the file. Throws the engine's exceptions; the target is then
/// as it was.
void backUpFile(const QString &path, const QString &target);

} // namespace dao::store
