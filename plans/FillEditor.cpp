#include "FillEditor.h"

#include "FillCommit.h"
#include "MapLegend.h"
#include "Messages.h"

using namespace Qt::StringLiterals;

namespace plans {

FillEditor::FillEditor(MapHost &host, const tarnwick::PathRoots &roots, int entry)
    : m_host(host)
    , m_roots(roots)
    , m_entry(entry)
    , m_preview(host.steamGen(), host.legend(), entry)
{
}

char16_t FillEditor::symbol() const
{
    return m_host.legend().nextSymbol(fill(), isNew() && !m_hasChosenSymbol);
}

void FillEditor::setMark(char16_t symbol, quint32 colour)
{
    if (symbol != this->symbol()) {
        m_hasChosenSymbol = true;
        working().symbol = symbol;
    }
    working().colour = colour;
    refresh();
}

void FillEditor::refresh()
{
    const auto shown = fill().clone();
    shown->symbol = symbol();
    shown->shown = true; // what is being edited must be seen
    makeExample(*shown);
    m_preview.show(*shown);
    if (changed)
        changed();
}

void FillEditor::accept()
{
    settle();
    if (isNew())
        addNewFill(m_host, fill(), !m_hasChosenSymbol);
    else
        changeFill(m_host, m_entry, fill());
    const MapLegend &legend = m_host.legend();
    const MapFill &done = legend.entry(isNew() ? legend.count() - 1 : m_entry);
    m_host.prompts().status(messages::kFillDone, done.label.trimmed(), done.fillCount);
    if (isNew())
        rememberOptions();
}

QString FillEditor::tubeCount(int count)
{
    return count == 1 ? u"1 tube"_s : tarnwick::format(u"%D tubes", count);
}

} // namespace plans
