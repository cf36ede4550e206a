#pragma once
#include <plans/MapHost.h>

namespace app {

/// Changes of the legend as the user makes them: each can be undone by its name, and one that changes nothing is none.
/// Entries are given by their place; places that the legend does not have are passed over.
class LegendEditor
{
public:
    explicit LegendEditor(plans::MapHost &host)
        : m_host(host)
    {
    }

    void setShown(int entry, bool shown);
    void showOnly(int entry);
    void showAll();
    void swapShown();
    /// to is held within the legend. Returns where the entry stands then.
    int move(int from, int to);
    void remove(int entry);
    /// Asks first.
    void removeAll();
    void setSymbol(int entry, char16_t symbol, quint32 colour);
    /// An empty text brings the fill's own description back.
    void rename(int entry, const QString &label);
    void setAllSections(int entry, bool allSections);
    /// The tubes that the entry marks become the selection.
    void selectTubes(int entry);

private:
    bool has(int entry) const;
    void setShown(const QList<bool> &shown, const QString &undoLabel);
    QString name(int entry) const;
    void finish();

    plans::MapHost &m_host;
};

} // namespace app
