// The window's way into the dialogs of fills, and to the symbol of an entry.
#include "DBase.h"
#include "LegendView.h"
#include "SidePanel.h"

#include <app/logic/Messages.h>

#include <brannock/gui/ChooseSymbolDlg.h>
#include <plans/dialogs/FillDialogs.h>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace app {

static plans::FillDialogContext dialogContext(DBase &window)
{
    const brannock::TubesheetMap &map = window.map();
    return {window, window.projectSession().roots(), map.options(), map.xOrientation(), map.yOrientation(), &window};
}

void DBase::makeFill(const QString &key)
{
    if (!plans::openNewFill(dialogContext(*this), key))
        return;
    refreshLegend();
    m_side->legendView().setCurrentEntry(legend().count() - 1);
}

void DBase::editEntry(int entry)
{
    if (entry < 0 || entry >= legend().count())
        return;
    const plans::MapFill &fill = legend().entry(entry);
    if (plans::hasFillDialog(fill.typeKey))
        plans::openFill(dialogContext(*this), entry);
    else
        m_prompts->status(messages::kNoFillDialog, fill.label.trimmed());
}

void DBase::chooseSymbol(int entry)
{
    if (entry < 0 || entry >= legend().count())
        return;
    plans::MapFill &fill = legend().entry(entry);
    const brannock::TubeMark before{fill.symbol, fill.colour};
    // What was done before is a change by itself, and a try is none.
    m_session->undo().finish();
    const QScopedValueRollback trying(m_isTryingOut, true);
    // The map shows each choice at once; whether it is to stay is decided with OK.
    const auto tryOut = [this, &fill](const brannock::TubeMark &mark) {
        fill.symbol = mark.symbol;
        fill.colour = mark.colour;
        legend().repaint();
        redrawMap();
    };
    brannock::ColourChooser colours(m_session->roots(), *m_prompts);
    brannock::ChooseSymbolDlg dialog(before, m_map->options(), colours, this);
    connect(&dialog, &brannock::ChooseSymbolDlg::markChanged, this, tryOut);
    const bool isChosen = dialog.exec() == QDialog::Accepted;
    tryOut(before);
    if (isChosen)
        LegendEditor(*this).setSymbol(entry, dialog.mark().symbol, dialog.mark().colour);
}

} // namespace app
