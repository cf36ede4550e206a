#pragma once
#include <optional>
#include <tarnwick/OptionFile.h>

namespace query {

/// What is remembered of each query: the values last given to its parameters, and the symbol and colour that the query
/// fill last gave it. Names of queries and parameters are matched without regard to case.
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

    const QList<Entry> &entries() const { return m_entries; }
    const Entry *find(QStringView queryName) const;

    std::optional<QString> value(QStringView queryName, QStringView parameter) const;
    /// An empty name of query or parameter remembers nothing.
    void remember(const QString &queryName, const QString &parameter, const QString &value);
    void forget(QStringView queryName);
    void forgetAll();
    /// The symbol memory of the query fill. An empty name remembers nothing.
    void setSymbol(const QString &queryName, char16_t symbol, quint32 colour);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override { m_entries.clear(); }

private:
    Entry *findOrAppend(const QString &queryName);

    QList<Entry> m_entries;
};

} // namespace query
