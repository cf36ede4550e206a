#pragma once
#include <dao/values/Progress.h>
#include <functional>
#include <QByteArrayView>
#include <QString>

namespace dao::store {

/// Gives the bytes of a database file, as it was last committed, from its beginning to its end. The file is read
/// through a connection of the inner engine, since closing any other descriptor of it would drop the locks that this
/// process holds on the file. Throws the engine's exceptions, what take throws, and DaoCancelled when progress (may be
/// null) says so.
void readFile(const QString &path, const std::function<void(QByteArrayView)> &take, Progress *progress);

} // namespace dao::store
