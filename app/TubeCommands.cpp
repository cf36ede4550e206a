#include "TubeCommands.h"

#include <app/logic/TubeNotes.h>

#include <query/dialogs/TubeDlg.h>

namespace app {

void TubeCommands::show(int tube, QWidget *parent)
{
    const ellery::SteamGen &steamGen = m_session.project().steamGen;
    if (tube < 0 || tube >= steamGen.numTube())
        return;
    query::TubeDlg::Setup setup{.session = m_session.database(),
                                .context = m_session.queryContext(),
                                .options = m_session.options(),
                                .steamGen = steamGen,
                                .tube = steamGen[tube].address};
    if (m_session.database().isOpen())
        setup.repairs = m_notes.repairs(tube);
    setup.indications = m_notes.indications(tube);
    setup.parent = parent ? parent : m_parent;
    query::TubeDlg(setup).exec();
}

} // namespace app
