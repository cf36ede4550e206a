#pragma once
#include <ellery/TubeStates.h>
#include <functional>
#include <optional>
#include <tarnwick/OptionFile.h>
#include <vector>

namespace query {

/// Remembers for each query the last values of its parameters, and the symbol and colour last used by its query fill.
/// Names of queries and parameters are compared ignoring case. Several running programs share one file: each adds its
/// own changes to the file's current content.
class QueryHistoryList : public tarnwick::OptionFile
{
public:
    struct Parameter
    {
        QString name;
        QString value;
        bool operator==(const Parameter &) const = default;
    };

    struct Entry
    {
        QString queryName;
        ellery::TubeMark mark; ///< open: none is remembered
        QList<Parameter> parameters;
        bool operator==(const Entry &) const = default;
    };

    QueryHistoryList();

    /// Reads what other programs have stored since. Changes made here and not stored yet are kept. If the file cannot
    /// be read, nothing changes.
    void refresh(const tarnwick::PathRoots &roots);
    /// Adds the changes made here since the last call to the file, if there are any. Throws FileError; the changes are
    /// then still pending.
    void storeChanges(const tarnwick::PathRoots &roots);

    const QList<Entry> &entries() const { return m_entries; }
    const Entry *find(QStringView queryName) const;

    std::optional<QString> value(QStringView queryName, QStringView parameter) const;
    /// Different values of a parameter of this name, that of the query first, then those of other queries.
    QStringList valuesOf(QStringView queryName, QStringView parameter) const;
    /// Does nothing if the name of the query or parameter is empty.
    void remember(const QString &queryName, const QString &parameter, const QString &value);
    void forget(const QString &queryName);
    void forgetAll();
    /// Last symbol and colour of the query's fill. Does nothing if the name is empty.
    void setMark(const QString &queryName, const ellery::TubeMark &mark);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override { m_entries.clear(); }

private:
    using Change = std::function<void(QueryHistoryList &)>;

    void make(const Change &change);
    void repeatChanges();
    Entry *findOrAppend(const QString &queryName);
    void setValue(const QString &queryName, const QString &parameter, const QString &value);

    QList<Entry> m_entries;
    std::vector<Change> m_changes; ///< pending changes, in order
};

} // namespace query
