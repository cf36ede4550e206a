#include "ComponentReload.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

namespace app {

QByteArray componentStamp(const QString &componentFolder)
{
    const QFileInfoList files = QDir(componentFolder).entryInfoList(QDir::Files, QDir::Name);
    if (files.isEmpty())
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QFileInfo &info : files) {
        hash.addData(info.fileName().toUtf8());
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            hash.addData(&file);
    }
    return hash.result();
}

} // namespace app
