#pragma once
#include <optional>
#include <QStringList>

namespace query {

/// The texts that were executed in an SQL editor since the last query was opened, for its commands Back and Forward.
class EditorVersions
{
public:
    /// Makes text the only entry.
    void reset(const QString &text) { m_texts = {text}; }
    /// Appends a text that is not in the list yet.
    void enter(const QString &text);
    /// Replaces the list.
    void restore(const QStringList &texts) { m_texts = texts; }
    const QStringList &texts() const { return m_texts; }
    bool canMove() const { return m_texts.size() >= 2; }
    /// Index of the entry by steps (1 or -1) from the one that equals present; from a text that is not in the list, the
    /// first. Empty past the ends.
    std::optional<int> move(const QString &present, int steps) const;

private:
    QStringList m_texts;
};

} // namespace query
