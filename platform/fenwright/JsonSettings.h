#pragma once
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace fenwright {

/// A JSON settings file with strict checks: a wrong type or a number out of range throws a tarnwick::FileError that
/// names file and setting; it is never replaced by the default. Settings that are not requested are ignored.
class JsonSettings
{
public:
    /// Reads the file's object. Throws if the file cannot be read, is not JSON (with the line), is of another kind
    /// ("format"), or of a newer version.
    static JsonSettings read(const QString &path, const QString &format, int newestVersion);

    const QJsonObject &object() const { return m_object; }
    QString text(const QString &name, const QString &whenMissing = {}) const;
    QString requiredText(const QString &name) const;
    int integer(const QString &name, int minimum, int maximum, int whenMissing) const;
    double number(const QString &name, double whenMissing) const;
    QStringList texts(const QString &name) const;
    /// A nested object; empty if it is missing.
    JsonSettings section(const QString &name) const;
    /// A list of objects; empty if it is missing.
    QList<JsonSettings> list(const QString &name) const;
    [[noreturn]] void fail(const QString &name, const QString &reason) const;

private:
    JsonSettings(const QString &file, const QString &path, const QJsonObject &object);

    QString m_file;
    QString m_path; ///< path of this section within the file, for example "pitch."
    QJsonObject m_object;
};

/// Writes the object, with "format" and "version" added and the settings in alphabetical order.
void writeJsonSettings(const QString &path, const QString &format, int version, QJsonObject object);

/// The double whose shortest text equals that of the float, so that 0.1f is written as 0.1.
double jsonNumber(float value);

} // namespace fenwright
