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

QList<qint32> followTubes(const QList<qint32> &tubes, const ellery::SteamGen &before, const ellery::SteamGen &after)
{
    QList<qint32> followed;
    followed.reserve(tubes.size());
    for (const qint32 tube : tubes) {
        const int place = tube >= 0 && tube < before.numTube() ? after.findTube(before[tube].address) : -1;
        if (place >= 0)
            followed.append(place);
    }
    return followed;
}

int followTubes(plans::MapLegend::Entries &entries, const ellery::SteamGen &before, const ellery::SteamGen &after)
{
    qsizetype dropped = 0;
    for (const auto &fill : entries) {
        const QList<qint32> followed = followTubes(fill->tubes, before, after);
        dropped += fill->tubes.size() - followed.size();
        fill->tubes = followed;
    }
    return int(dropped);
}

} // namespace app
