#pragma once
#include <ellery/SteamGen.h>
#include <tarnwick/Prompts.h>

#include <vector>

namespace plans {

/// A set of tube addresses.
class TubeGroup
{
public:
    explicit TubeGroup(const QList<ellery::TubeAddress> &addresses);
    bool contains(const ellery::TubeAddress &address) const;
    qsizetype count() const { return qsizetype(m_addresses.size()); }

private:
    std::vector<ellery::TubeAddress> m_addresses; ///< sorted, each once
};

/// How a list or plan takes the tubes of another one.
enum class Combine {
    Add,      ///< appends those that it does not have
    Remove,   ///< removes them
    Intersect ///< keeps only them
};

/// The addresses of entries of a plan or a list, in their order.
template <typename Entry>
QList<ellery::TubeAddress> addressesOf(const QList<Entry> &entries)
{
    QList<ellery::TubeAddress> addresses;
    addresses.reserve(entries.size());
    for (const Entry &entry : entries)
        addresses.append(entry.address());
    return addresses;
}

/// The addresses of others that are not among those of own, each once, in their order.
QList<ellery::TubeAddress> missingFrom(const QList<ellery::TubeAddress> &own, const QList<ellery::TubeAddress> &others);
/// Removes the entries whose tube is in the group, or is not in it. Returns their number.
template <typename Entry>
qsizetype removeTubes(QList<Entry> &entries, const TubeGroup &group, bool isInGroup)
{
    return entries.removeIf([&](const Entry &entry) { return group.contains(entry.address()) == isInGroup; });
}

/// Tubes read from a text such as the cells of a spreadsheet: one tube a line, as numbers or labels of the component,
/// in the order section (may be missing), row, column, or with the names of the axes. Blank lines are skipped.
struct AddressText
{
    QList<ellery::TubeAddress> tubes;
    struct Line
    {
        int line = 0; ///< from 1
        QString text;
    };
    QList<Line> notUnderstood; ///< lines that name no tube, or several

    /// Tells how many tubes were added, how many were there already, and the lines that were not understood.
    void report(tarnwick::UserPrompts &prompts, int added) const;

private:
    /// The first lines that were not understood, one a line.
    QString problems() const;
};
AddressText parseAddresses(const QString &text, const ellery::SteamGen &component);

} // namespace plans
