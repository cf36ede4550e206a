#include "LegendEditor.h"

#include "Messages.h"

#include <plans/MapLegend.h>

using namespace Qt::StringLiterals;

namespace app {

bool LegendEditor::has(int entry) const
{
    return entry >= 0 && entry < m_host.legend().count();
}

void LegendEditor::finish()
{
    m_host.redrawMap();
    m_host.refreshLegend();
}

void LegendEditor::setShown(int entry, bool shown)
{
    if (!has(entry) || m_host.legend().entry(entry).shown == shown)
        return;
    m_host.undoCheckpoint(shown ? u"Show Entry"_s : u"Hide Entry"_s);
    m_host.legend().setShown(entry, shown);
    finish();
}

void LegendEditor::setShown(const QList<bool> &shown, const QString &undoLabel)
{
    m_host.undoCheckpoint(undoLabel);
    m_host.legend().setShown(shown);
    finish();
}

void LegendEditor::showOnly(int entry)
{
    if (!has(entry))
        return;
    QList<bool> shown(m_host.legend().count(), false);
    shown[entry] = true;
    setShown(shown, u"Show Only One Entry"_s);
}

void LegendEditor::showAll()
{
    setShown(QList<bool>(m_host.legend().count(), true), u"Show All Entries"_s);
}

void LegendEditor::swapShown()
{
    QList<bool> shown;
    for (int i = 0; i < m_host.legend().count(); ++i)
        shown.append(!m_host.legend().entry(i).shown);
    setShown(shown, u"Swap Shown Entries"_s);
}

int LegendEditor::move(int from, int to)
{
    if (!has(from))
        return from;
    to = std::clamp(to, 0, m_host.legend().count() - 1);
    if (from == to)
        return from;
    m_host.undoCheckpoint(u"Move Entry"_s);
    m_host.legend().moveEntry(from, to);
    finish();
    return to;
}

void LegendEditor::remove(int entry)
{
    if (!has(entry))
        return;
    m_host.undoCheckpoint(u"Delete Entry"_s);
    m_host.legend().deleteEntry(entry);
    finish();
}

void LegendEditor::removeAll()
{
    if (m_host.legend().count() == 0 ||
        m_host.prompts().question(tarnwick::Buttons::YesNo, messages::kAskDeleteAllEntries) != tarnwick::Answer::Yes)
        return;
    m_host.undoCheckpoint(u"Delete All Entries"_s);
    m_host.legend().clear();
    finish();
}

void LegendEditor::setSymbol(int entry, char16_t symbol, quint32 colour)
{
    if (!has(entry))
        return;
    const plans::MapFill &fill = m_host.legend().entry(entry);
    if (fill.symbol == symbol && fill.colour == colour)
        return;
    m_host.undoCheckpoint(u"Change Symbol"_s);
    m_host.legend().setSymbol(entry, symbol, colour, m_host);
    finish();
}

void LegendEditor::rename(int entry, const QString &label)
{
    if (!has(entry))
        return;
    const plans::MapFill &fill = m_host.legend().entry(entry);
    const QString text = label.trimmed().isEmpty() ? fill.entryLabel() : label;
    // Labels may begin with blanks, which editing must not count as a change.
    if (text.trimmed() == fill.label.trimmed())
        return;
    m_host.undoCheckpoint(u"Rename Entry"_s);
    m_host.legend().setLabel(entry, text);
    finish();
}

void LegendEditor::setAllSections(int entry, bool allSections)
{
    if (!has(entry) || m_host.legend().entry(entry).allSections == allSections)
        return;
    m_host.undoCheckpoint(u"Ignore Section"_s);
    m_host.legend().setAllSections(entry, allSections);
    finish();
}

} // namespace app
