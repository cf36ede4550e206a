#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

namespace map {

/// Changes of the legend as the user makes them: each says what it did, and can be undone by its name. Entries are
/// given by their place; places that the legend does not have are ignored.
class LegendCommands
{
public:
    /// All must live as long as this object.
    LegendCommands(MapDocument &document, const FillRunner &runner)
        : m_document(document)
        , m_runner(runner)
    {
    }

    void setShown(int place, bool shown);
    void showOnly(int place);
    void showAll();
    void swapShown();
    /// to is clamped to the legend. Returns where the entry stands then.
    int move(int from, int to);
    void remove(int place);
    /// Asks first.
    void removeAll();
    /// A query fill's mark is remembered for its query.
    void setMark(int place, const ellery::TubeMark &mark);
    /// An empty text brings the fill's own description back.
    void rename(int place, const QString &label);
    void setAllSections(int place, bool allSections);
    /// The tubes that the entry marks become the selection.
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
