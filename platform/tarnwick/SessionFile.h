#pragma once
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace tarnwick {

/// Window settings that a user keeps between sessions: values by key, in one JSON file that all windows and all running
/// programs read and write.
class SessionFile
{
public:
    explicit SessionFile(const QString &path)
        : m_path(path)
    {
    }

    /// The current values in the file. Empty if there is no file or it cannot be read, since losing these values needs
    /// no error message.
    QJsonObject values() const;

    /// Replaces the values of these keys and keeps all others, including those that another window has stored
    /// meanwhile. The file is replaced in one step; if all values are already in it, it is not written. Throws
    /// FileError; the file is then unchanged.
    void store(const QJsonObject &values) const;

    /// Convert bytes to a value and back.
    static QJsonValue fromBytes(const QByteArray &bytes);
    static QByteArray toBytes(const QJsonValue &value);

private:
    QString m_path;
};

} // namespace tarnwick
