#pragma once
#include <functional>
#include <optional>
#include <tarnwick/OptionFile.h>
#include <vector>

namespace query {

/// What is remembered of each query: the values last given to its parameters, and the symbol and colour that the query
/// fill last gave it. Names of queries and parameters are matched without regard to case. Several running programs keep
/// theirs in one file: what each changes is put into what the file then holds.
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
        char16_t symbol = 0; ///< 0: none
        quint32 colour = 0;  ///< 0x00BBGGRR
        QList<Parameter> parameters;
        bool operator==(const Entry &) const = default;
    };

    QueryHistoryList();

    /// Takes over what another program has stored since; what was changed here and is not stored yet stays. A file that
    /// cannot be read changes nothing.
    void refresh(const tarnwick::PathRoots &roots);
    /// Puts what was changed here since the last call into the file, if anything was. Throws FileError; the changes
    /// are then still to be stored.
    void storeChanges(const tarnwick::PathRoots &roots);

    const QList<Entry> &entries() const { return m_entries; }
    const Entry *find(QStringView queryName) const;

    std::optional<QString> value(QStringView queryName, QStringView parameter) const;
    /// An empty name of query or parameter remembers nothing.
    void remember(const QString &queryName, const QString &parameter, const QString &value);
    void forget(const QString &queryName);
    void forgetAll();
    /// The symbol memory of the query fill. An empty name remembers nothing.
    void setSymbol(const QString &queryName, char16_t symbol, quint32 colour);

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
    std::vector<Change> m_changes; ///< not stored yet, in order
};

} // namespace query
