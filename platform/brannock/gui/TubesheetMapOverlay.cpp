#include "TubesheetMap.h"

namespace brannock {

using namespace Qt::StringLiterals;

void TubesheetMap::setHovered(int tube)
{
    if (tube == m_marks.hovered)
        return;
    const QRegion before = m_marks.region();
    m_marks.hovered = tube;
    updateCard();
    update(before | m_marks.region());
    Q_EMIT hovered(tube);
}

void TubesheetMap::setTubeTip(bool on)
{
    m_tubeTip = on;
    const QRegion before = m_marks.region();
    updateCard();
    update(before | m_marks.region());
}

void TubesheetMap::setTipHidden(bool hidden)
{
    if (hidden)
        setHovered(-1); // the pointer may have moved
    const QRegion before = m_marks.region();
    m_tipHidden = hidden;
    updateCard();
    update(before | m_marks.region());
}

void TubesheetMap::followSelection()
{
    const bool isOwn = std::exchange(m_selectsAtCursor, false);
    if (m_marks.cursor < 0 || isOwn || m_tubes->isSelected(m_marks.cursor))
        return;
    m_marks.isCursorNamed = m_tubes->selectedCount() == 1;
    if (!m_marks.isCursorNamed)
        return;
    m_marks.cursor = m_tubes->selection().first();
    if (m_marks.hovered < 0)
        Q_EMIT hovered(m_marks.cursor);
}

QStringList TubesheetMap::tubeLines(int tube) const
{
    const ellery::TubeMark mark = m_scene.mark(tube);
    QString state = mark.isOpen() ? u"Open"_s : u"Symbol %1"_s.arg(mark.symbol.text());
    if (m_scene.isSelected(tube))
        state += u", selected"_s;
    QStringList lines{m_steamGen->tubeName(m_scene.tube(tube).address), state};
    if (m_tipText)
        lines += m_tipText(tube);
    return lines;
}

void TubesheetMap::updateCard()
{
    const int tube = m_marks.namedTube();
    m_marks.hideCard();
    if (!m_tubeTip || m_tipHidden || !m_steamGen || tube < 0 || tube >= m_scene.numTube() || m_tool)
        return;
    TubeTip card;
    card.mark = m_scene.mark(tube);
    card.selected = m_scene.isSelected(tube);
    card.lines = tubeLines(tube);
    card.name = card.lines.takeFirst();
    m_marks.showCard(card, font());
}

} // namespace brannock
