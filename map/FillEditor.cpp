#include "FillEditor.h"

#include "FillCommit.h"
#include "Messages.h"

using namespace Qt::StringLiterals;

namespace map {

FillEditor::FillEditor(const FillEditorContext &context, int place)
    : m_context(context)
    , m_place(place)
    , m_preview(context.document, place)
{
}

ellery::TubeMark FillEditor::mark() const
{
    return {nextSymbol(document().count(), fill(), isNew() && !m_hasChosenSymbol), fill().mark.colour};
}

void FillEditor::setMark(const ellery::TubeMark &mark)
{
    if (mark.symbol != this->mark().symbol) {
        m_hasChosenSymbol = true;
        working().mark.symbol = mark.symbol;
    }
    working().mark.colour = mark.colour;
    refresh();
}

void FillEditor::refresh()
{
    const auto shown = fill().clone();
    shown->mark = mark();
    shown->shown = true; // the edited entry is always visible
    makeExample(*shown);
    m_preview.show(*shown);
    if (changed)
        changed();
}

void FillEditor::accept()
{
    correctParameters();
    const FillRunner &runner = m_context.runner;
    if (isNew())
        addNewFill(m_context.document, runner, fill(), !m_hasChosenSymbol);
    else
        changeFill(m_context.document, runner, m_place, fill());
    const plans::MapFill &done = document().entry(isNew() ? document().count() - 1 : m_place);
    runner.prompts().status(messages::kFillDone, done.label.trimmed(), done.fillCount);
    if (isNew())
        rememberOptions();
}

QString FillEditor::tubeCount(int count)
{
    return count == 1 ? u"1 tube"_s : tarnwick::format(u"%D tubes", count);
}

} // namespace map
