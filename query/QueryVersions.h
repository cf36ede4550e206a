#pragma once
#include <QDateTime>
#include <tarnwick/OptionFile.h>

namespace query {

/// Former texts of the stored queries of one database, so that a query that was stored over or deleted can be brought
/// back. Kept in a file beside the database, with the extension ".versions". Names are compared ignoring case.
class QueryVersions : public tarnwick::OptionFile
{
public:
    /// Versions kept of each query; older ones are dropped.
    static constexpr int kMostVersions = 20;

    struct Version
    {
        QString sql;
        QString time; ///< when it was replaced, ISO 8601 in UTC
        bool operator==(const Version &) const = default;
    };

    explicit QueryVersions(const QString &databasePath);

    /// Throws tarnwick::FileError if there is a file that cannot be read. No file is no error.
    void read();
    /// Adds a text to what other programs have stored, and stores the file. A text equal to the newest version is not
    /// added again. Throws tarnwick::FileError.
    void keep(const QString &queryName, const QString &sql, const QDateTime &now);
    /// The newest first.
    QList<Version> versionsOf(QStringView queryName) const;
    /// All queries with versions, in the order in which they were first replaced.
    QStringList queryNames() const;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override { m_entries.clear(); }

private:
    struct Entry
    {
        QString queryName;
        QList<Version> versions; ///< the newest first
    };

    void add(const QString &queryName, const Version &version);

    QList<Entry> m_entries;
};

} // namespace query
