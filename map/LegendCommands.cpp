#include "LegendCommands.h"

#include "Messages.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace map {

QString LegendCommands::name(int place) const
{
    return m_document.entry(place).label.trimmed();
}

void LegendCommands::setShown(int place, bool shown)
{
    if (!has(place) || m_document.entry(place).shown == shown)
        return;
    m_document.change(shown ? u"Show Entry"_s : u"Hide Entry"_s,
                      [place, shown](MapEdit &edit) { edit.setShown(place, shown); });
    prompts().status(shown ? messages::kEntryShown : messages::kEntryHidden, name(place));
}

void LegendCommands::setShown(const QList<bool> &shown, const QString &undoLabel)
{
    m_document.change(undoLabel, [&shown](MapEdit &edit) {
        for (int i = 0; i < edit.count(); ++i)
            edit.setShown(i, shown[i]);
    });
}

void LegendCommands::showOnly(int place)
{
    if (!has(place))
        return;
    QList<bool> shown(m_document.count(), false);
    shown[place] = true;
    setShown(shown, u"Show Only One Entry"_s);
    prompts().status(messages::kOnlyEntryShown, name(place));
}

void LegendCommands::showAll()
{
    setShown(QList<bool>(m_document.count(), true), u"Show All Entries"_s);
    prompts().status(messages::kAllEntriesShown);
}

void LegendCommands::swapShown()
{
    QList<bool> shown;
    for (const Entry &entry : m_document.entries())
        shown.append(!entry->shown);
    setShown(shown, u"Swap Shown Entries"_s);
    prompts().status(messages::kShownSwapped);
}

int LegendCommands::move(int from, int to)
{
    if (!has(from))
        return from;
    to = std::clamp(to, 0, m_document.count() - 1);
    if (from == to)
        return from;
    m_document.change(u"Move Entry"_s, [from, to](MapEdit &edit) { edit.moveEntry(from, to); });
    prompts().status(messages::kEntryMoved, name(to), to + 1, m_document.count());
    return to;
}

void LegendCommands::remove(int place)
{
    if (!has(place))
        return;
    const QString removed = name(place);
    m_document.change(u"Delete Entry"_s, [place](MapEdit &edit) { edit.removeEntry(place); });
    prompts().status(messages::kEntryDeleted, removed);
}

void LegendCommands::removeAll()
{
    if (m_document.count() == 0 ||
        prompts().question(tarnwick::Buttons::YesNo, messages::kAskDeleteAllEntries) != tarnwick::Answer::Yes)
        return;
    const int removed = m_document.count();
    m_document.change(u"Delete All Entries"_s, [](MapEdit &edit) { edit.removeAll(); });
    prompts().status(messages::kEntriesDeleted, removed);
}

void LegendCommands::setMark(int place, const ellery::TubeMark &mark)
{
    if (!has(place) || m_document.entry(place).mark == mark)
        return;
    m_document.change(u"Change Symbol"_s, [place, &mark](MapEdit &edit) { edit.setMark(place, mark); });
    prompts().status(messages::kEntrySymbol, name(place), mark.symbol.text());
    // The last step, so that a failure to store the mark stays in the status line.
    if (const QString query = m_document.entry(place).queryName(); !query.isEmpty())
        m_runner.queries().rememberMark(query, mark);
}

void LegendCommands::rename(int place, const QString &label)
{
    if (!has(place))
        return;
    const plans::MapFill &fill = m_document.entry(place);
    const QString text = label.trimmed().isEmpty() ? fill.entryLabel() : label;
    // Labels may begin with blanks; this is not a change.
    if (text.trimmed() == fill.label.trimmed())
        return;
    const QString before = name(place);
    m_document.change(u"Rename Entry"_s, [place, &text](MapEdit &edit) { edit.setLabel(place, text); });
    prompts().status(messages::kEntryRenamed, before, name(place));
}

void LegendCommands::setAllSections(int place, bool allSections)
{
    if (!has(place) || m_document.entry(place).allSections == allSections)
        return;
    m_document.change(u"Ignore Section"_s,
                      [place, allSections](MapEdit &edit) { edit.setAllSections(place, allSections); });
    prompts().status(allSections ? messages::kEntryAllSections : messages::kEntryOwnSections, name(place));
}

void LegendCommands::selectTubes(int place)
{
    if (!has(place))
        return;
    const QList<qint32> tubes = m_document.entry(place).markedTubes(m_document.component());
    m_document.change(u"Select Tubes"_s, [&tubes](MapEdit &edit) { edit.setSelection(tubes); });
}

} // namespace map
