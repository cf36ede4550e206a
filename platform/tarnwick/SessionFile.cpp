#include "SessionFile.h"

#include "FileWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>

namespace tarnwick {

using namespace Qt::StringLiterals;

static QJsonObject read(const QString &path)
{
    constexpr qint64 kLargest = qint64(1) << 24;
    return QFileInfo::exists(path) ? QJsonDocument::fromJson(readFile(path, kLargest)).object() : QJsonObject();
}

QJsonObject SessionFile::values() const
{
    try {
        return read(m_path);
    } catch (const FileError &) {
        return {};
    }
}

void SessionFile::store(const QJsonObject &values) const
{
    constexpr int kLockTimeout = 1000; // milliseconds; others hold the lock for the time of one write
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QLockFile lock(m_path + u".lock"_s);
    // Without a lock the last one who writes wins, as in a folder that knows none.
    lock.tryLock(kLockTimeout);
    const QJsonObject before = read(m_path);
    QJsonObject merged = before;
    for (auto value = values.begin(); value != values.end(); ++value)
        merged[value.key()] = value.value();
    if (merged != before)
        writeFileAtomically(m_path, QJsonDocument(merged).toJson());
}

QJsonValue SessionFile::fromBytes(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray SessionFile::toBytes(const QJsonValue &value)
{
    return QByteArray::fromBase64(value.toString().toLatin1());
}

} // namespace tarnwick
