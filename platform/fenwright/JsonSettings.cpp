#include "JsonSettings.h"

#include "CellText.h"

#include <cmath>
#include <QJsonDocument>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using tarnwick::FileError;

namespace fenwright {

namespace {
constexpr qint64 kLargestSettingsFile = 16 << 20;
}

JsonSettings::JsonSettings(const QString &file, const QString &path, const QJsonObject &object)
    : m_file(file)
    , m_path(path)
    , m_object(object)
{
}

JsonSettings JsonSettings::read(const QString &path, const QString &format, int newestVersion)
{
    QByteArray content = tarnwick::readFile(path, kLargestSettingsFile);
    if (content.startsWith("\xEF\xBB\xBF"))
        content = content.sliced(3);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    if (error.error != QJsonParseError::NoError) {
        const int line = 1 + int(content.left(error.offset).count('\n'));
        throw FileError(path, line, u"The file is not valid JSON: %1."_s.arg(error.errorString()));
    }
    const JsonSettings settings(path, QString(), document.object());
    if (settings.text(u"format"_s) != format)
        throw FileError(path, 0, u"The file is not of the kind \"%1\"."_s.arg(format));
    const int version = settings.integer(u"version"_s, 1, 1 << 30, 1);
    if (version > newestVersion)
        throw FileError(
            path, 0,
            u"The file is of version %1; this program reads versions up to %2."_s.arg(version).arg(newestVersion));
    return settings;
}

QString JsonSettings::text(const QString &name, const QString &whenMissing) const
{
    const QJsonValue value = m_object.value(name);
    if (value.isUndefined() || value.isNull())
        return whenMissing;
    if (!value.isString())
        fail(name, u"a text is needed"_s);
    return value.toString();
}

QString JsonSettings::requiredText(const QString &name) const
{
    const QString value = text(name);
    if (value.isEmpty())
        fail(name, u"the setting is missing or empty"_s);
    return value;
}

int JsonSettings::integer(const QString &name, int minimum, int maximum, int whenMissing) const
{
    const double value = number(name, whenMissing);
    if (value != std::floor(value) || value < minimum || value > maximum)
        fail(name, u"a whole number from %1 to %2 is needed"_s.arg(minimum).arg(maximum));
    return int(value);
}

double JsonSettings::number(const QString &name, double whenMissing) const
{
    const QJsonValue value = m_object.value(name);
    if (value.isUndefined() || value.isNull())
        return whenMissing;
    if (!value.isDouble())
        fail(name, u"a number is needed"_s);
    return value.toDouble();
}

QStringList JsonSettings::texts(const QString &name) const
{
    const QJsonValue value = m_object.value(name);
    if (value.isUndefined() || value.isNull())
        return {};
    if (!value.isArray())
        fail(name, u"a list of texts is needed"_s);
    QStringList list;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &element : array) {
        if (!element.isString())
            fail(name, u"a list of texts is needed"_s);
        list.append(element.toString());
    }
    return list;
}

JsonSettings JsonSettings::section(const QString &name) const
{
    const QJsonValue value = m_object.value(name);
    if (!value.isUndefined() && !value.isObject())
        fail(name, u"an object is needed"_s);
    return JsonSettings(m_file, m_path + name + u'.', value.toObject());
}

QList<JsonSettings> JsonSettings::list(const QString &name) const
{
    const QJsonValue value = m_object.value(name);
    if (!value.isUndefined() && !value.isArray())
        fail(name, u"a list is needed"_s);
    QList<JsonSettings> sections;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &element : array) {
        if (!element.isObject())
            fail(name, u"a list of objects is needed"_s);
        sections.append(JsonSettings(m_file, m_path + u"%1[%2]."_s.arg(name).arg(sections.size()), element.toObject()));
    }
    return sections;
}

void JsonSettings::fail(const QString &name, const QString &reason) const
{
    throw FileError(m_file, 0, u"Setting '%1': %2."_s.arg(QString(m_path + name), reason));
}

void writeJsonSettings(const QString &path, const QString &format, int version, QJsonObject object)
{
    object.insert(u"format"_s, format);
    object.insert(u"version"_s, version);
    tarnwick::writeFileAtomically(path, QJsonDocument(object).toJson());
}

double jsonNumber(float value)
{
    QByteArray text;
    appendCell(text, value);
    return text.toDouble();
}

} // namespace fenwright
