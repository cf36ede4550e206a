#include "QueryVersions.h"

#include <QFileInfo>
#include <tarnwick/OptionPrompts.h>

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kFileVersion = 1;
constexpr int kEntryVersion = 1;
// Smallest records: byte counts of texts, a version, a count.
constexpr int kSmallestEntry = 12;
constexpr int kSmallestVersion = 8;

QString versionsPath(const QString &databasePath)
{
    const QFileInfo info(databasePath);
    return info.absolutePath() + u'/' + info.completeBaseName() + u".versions"_s;
}

} // namespace

QueryVersions::QueryVersions(const QString &databasePath)
    : OptionFile(versionsPath(databasePath), u"Query Versions"_s, kFileVersion)
{
}

void QueryVersions::read()
{
    load({});
}

void QueryVersions::keep(const QString &queryName, const QString &sql, const QDateTime &now)
{
    tarnwick::changeStoredOptions(*this, {}, [&] { add(queryName, {sql, now.toUTC().toString(Qt::ISODate)}); });
}

void QueryVersions::add(const QString &queryName, const Version &version)
{
    for (Entry &entry : m_entries) {
        if (entry.queryName.compare(queryName, Qt::CaseInsensitive) != 0)
            continue;
        if (entry.versions.isEmpty() || entry.versions.first().sql != version.sql)
            entry.versions.prepend(version);
        if (entry.versions.size() > kMostVersions)
            entry.versions.resize(kMostVersions);
        return;
    }
    m_entries.append({queryName, {version}});
}

QList<QueryVersions::Version> QueryVersions::versionsOf(QStringView queryName) const
{
    for (const Entry &entry : m_entries)
        if (queryName.compare(entry.queryName, Qt::CaseInsensitive) == 0)
            return entry.versions;
    return {};
}

QStringList QueryVersions::queryNames() const
{
    QStringList names;
    for (const Entry &entry : m_entries)
        names.append(entry.queryName);
    return names;
}

void QueryVersions::serializeBody(tarnwick::JFile &file, int)
{
    file.list(m_entries, kSmallestEntry, [](tarnwick::JFile &to, Entry &entry) {
        to.version(kEntryVersion);
        to.serialize(entry.queryName);
        to.list(entry.versions, kSmallestVersion, [](tarnwick::JFile &part, Version &version) {
            part.serialize(version.sql);
            part.serialize(version.time);
        });
    });
}

} // namespace query
