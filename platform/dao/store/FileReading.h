#pragma once
#include <functional>
#include <QByteArrayView>
#include <QString>
#include <tarnwick/base/Progress.h>

namespace dao::store {

/// Passes the bytes of a database file, as last committed, to take in consecutive pieces. Uses an SQLite connection,
/// because closing any other file descriptor of the file would release the POSIX locks of this process. Throws the
/// engine's exceptions, those of take, and tarnwick::Cancelled if progress (may be null) cancels.
void readFile(const QString &path, const std::function<void(QByteArrayView)> &take, tarnwick::Progress *progress);

} // namespace dao::store
