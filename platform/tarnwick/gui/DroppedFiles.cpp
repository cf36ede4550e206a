#include "DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

namespace tarnwick {

QStringList droppedFiles(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    return paths;
}

} // namespace tarnwick
