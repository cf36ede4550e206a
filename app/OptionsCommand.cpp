#include "OptionsCommand.h"

#include "MapPane.h"

#include <app/logic/ProjectSession.h>

#include <brannock/gui/ColourChooser.h>
#include <query/dialogs/ArvoOptionsDlg.h>
#include <tarnwick/gui/StateKeeper.h>

namespace app {

void editOptions(ProjectSession &session, MapPane &map, QWidget *parent)
{
    brannock::ColourChooser colours(session.roots(), session.prompts());
    query::ArvoOptionsDlg dialog(session.options(), session.systemMacros(), session.project().steamGen.hasSections(),
                                 session.prompts(), colours, parent);
    tarnwick::StateKeeper::keep(&dialog);
    QObject::connect(&dialog, &query::ArvoOptionsDlg::lookChanged, &map, &MapPane::setOptions);
    if (dialog.exec() == QDialog::Accepted)
        session.setOptions(dialog.options());
    map.setOptions(session.options().map);
}

} // namespace app
