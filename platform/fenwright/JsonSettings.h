#pragma once
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace fenwright {

/// A settings file in JSON read with care: a wrong type or a number out of range is a tarnwick::FileError that names
/// file and setting, and is never taken for the default. Settings that nobody asks for are ignored.
class JsonSettings
{
public:
    /// The file's object. Throws for a file that cannot be read, is no JSON (with the line), is another kind of file
    /// ("format"), or of a newer version.
    static JsonSettings read(const QString &path, const QString &format, int newestVersion);

    const QJsonObject &object() const { return m_object; }
    QString text(const QString &name, const QString &whenMissing = {}) const;
    QString requiredText(const QString &name) const;
    int integer(const QString &name, int minimum, int maximum, int whenMissing) const;
    double number(const QString &name, double whenMissing) const;
    QStringList texts(const QString &name) const;
    /// A nested object, empty when it is missing.
    JsonSettings section(const QString &name) const;
    /// A list of objects, empty when it is missing.
    QList<JsonSettings> list(const QString &name) const;
    [[noreturn]] void fail(const QString &name, const QString &reason) const;

private:
    JsonSettings(const QString &file, const QString &path, const QJsonObject &object);

    QString m_file;
    QString m_path; ///< of this section within the file, "pitch." for example
    QJsonObject m_object;
};

/// Writes the object with "format" and "version" added, the settings in alphabetical order.
void writeJsonSettings(const QString &path, const QString &format, int version, QJsonObject object);

/// The value whose shortest text is that of the single-precision number, so that 0.1f is written as 0.1.
double jsonNumber(float value);

} // namespace fenwright
