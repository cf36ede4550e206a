#include "LegendEditor.h"

#include "Messages.h"

#include <plans/MapLegend.h>

using namespace Qt::StringLiterals;

namespace app {

bool LegendEditor::has(int entry) const
{
    return entry >= 0 && entry < m_host.legend().count();
}

QString LegendEditor::name(int entry) const
{
    return m_host.legend().entry(entry).label.trimmed();
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
    m_host.prompts().status(shown ? messages::kEntryShown : messages::kEntryHidden, name(entry));
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
    m_host.prompts().status(messages::kOnlyEntryShown, name(entry));
}

void LegendEditor::showAll()
{
    setShown(QList<bool>(m_host.legend().count(), true), u"Show All Entries"_s);
    m_host.prompts().status(messages::kAllEntriesShown);
}

void LegendEditor::swapShown()
{
    QList<bool> shown;
    for (int i = 0; i < m_host.legend().count(); ++i)
        shown.append(!m_host.legend().entry(i).shown);
    setShown(shown, u"Swap Shown Entries"_s);
    m_host.prompts().status(messages::kShownSwapped);
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
    m_host.prompts().status(messages::kEntryMoved, name(to), to + 1, m_host.legend().count());
    return to;
}

void LegendEditor::remove(int entry)
{
    if (!has(entry))
        return;
    m_host.undoCheckpoint(u"Delete Entry"_s);
    const QString deleted = name(entry);
    m_host.legend().deleteEntry(entry);
    finish();
    m_host.prompts().status(messages::kEntryDeleted, deleted);
}

void LegendEditor::removeAll()
{
    if (m_host.legend().count() == 0 ||
        m_host.prompts().question(tarnwick::Buttons::YesNo, messages::kAskDeleteAllEntries) != tarnwick::Answer::Yes)
        return;
    m_host.undoCheckpoint(u"Delete All Entries"_s);
    const int deleted = m_host.legend().count();
    m_host.legend().clear();
    finish();
    m_host.prompts().status(messages::kEntriesDeleted, deleted);
}

void LegendEditor::setSymbol(int entry, char16_t symbol, quint32 colour)
{
    if (!has(entry))
        return;
    const plans::MapFill &fill = m_host.legend().entry(entry);
    if (fill.symbol == symbol && fill.colour == colour)
        return;
    m_host.undoCheckpoint(u"Change Symbol"_s);
    // Said first: that the symbol cannot be remembered must not be overwritten.
    m_host.prompts().status(messages::kEntrySymbol, name(entry), QString(QChar(symbol)));
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
    const QString before = name(entry);
    m_host.undoCheckpoint(u"Rename Entry"_s);
    m_host.legend().setLabel(entry, text);
    finish();
    m_host.prompts().status(messages::kEntryRenamed, before, name(entry));
}

void LegendEditor::setAllSections(int entry, bool allSections)
{
    if (!has(entry) || m_host.legend().entry(entry).allSections == allSections)
        return;
    m_host.undoCheckpoint(u"Ignore Section"_s);
    m_host.legend().setAllSections(entry, allSections);
    finish();
    m_host.prompts().status(allSections ? messages::kEntryAllSections : messages::kEntryOwnSections, name(entry));
}

void LegendEditor::selectTubes(int entry)
{
    if (!has(entry))
        return;
    const QList<qint32> tubes = m_host.legend().entry(entry).markedTubes(m_host.steamGen());
    m_host.undoCheckpoint(u"Select Tubes"_s);
    m_host.tubes().setSelection(tubes);
    m_host.redrawMap();
}

} // namespace app
