#pragma once
#include <QStringList>

class QMimeData;

namespace tarnwick {

/// The local files that were dropped, as machine paths.
QStringList droppedFiles(const QMimeData &data);

} // namespace tarnwick
