#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

namespace map {

/// Commands on the legend: each makes one change, which can be undone, and reports it in the status line. Entries are
/// given by their place; a place outside of the legend is ignored.
class LegendCommands
{
public:
    /// All must outlive this object.
    LegendCommands(MapDocument &document, const FillRunner &runner)
        : m_document(document)
        , m_runner(runner)
    {
    }

    void setShown(int place, bool shown);
    void showOnly(int place);
    void showAll();
    void swapShown();
    /// to is clamped to the legend. Returns the new place of the entry.
    int move(int from, int to);
    void remove(int place);
    /// Asks the user before deleting.
    void removeAll();
    /// Stores the mark of a query fill for its query.
    void setMark(int place, const ellery::TubeMark &mark);
    /// An empty text restores the fill's own description.
    void rename(int place, const QString &label);
    void setAllSections(int place, bool allSections);
    /// Selects the tubes that the entry marks.
    void selectTubes(int place);

private:
    bool has(int place) const { return place >= 0 && place < m_document.count(); }
    void setShown(const QList<bool> &shown, const QString &undoLabel);
    QString name(int place) const;
    tarnwick::UserPrompts &prompts() const { return m_runner.prompts(); }

    MapDocument &m_document;
    const FillRunner &m_runner;
};

} // namespace map
