#pragma once
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace tarnwick {

/// What a user's windows remember between sessions: values by key, in one JSON file that every window and every running
/// program reads and writes.
class SessionFile
{
public:
    explicit SessionFile(const QString &path)
        : m_path(path)
    {
    }

    /// The values as they stand in the file now. None without a file, and none of one that cannot be read: what is kept
    /// here is worth no error.
    QJsonObject values() const;

    /// Puts these values in place of those with the same keys, and leaves the others as they are, also those that
    /// another window has stored meanwhile. The file is replaced in one step; when all values are there already it is
    /// not written. Throws FileError; the file is then as it was.
    void store(const QJsonObject &values) const;

    /// Bytes as a value and back.
    static QJsonValue fromBytes(const QByteArray &bytes);
    static QByteArray toBytes(const QJsonValue &value);

private:
    QString m_path;
};

} // namespace tarnwick
