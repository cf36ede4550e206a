#include "PlanCommands.h"

#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>

#include <map/FillCommit.h>
#include <map/Messages.h>
#include <map/PlanOnMap.h>
#include <plans/dialogs/ListFillDlg.h>
#include <plans/dialogs/SavePlanDlg.h>
#include <plans/ListFill.h>
#include <tarnwick/gui/FileDialogs.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// The tubes of the map that a plan or list can be combined with.
QList<plans::NamedTubes> tubesOf(const map::MapDocument &map)
{
    const ellery::SteamGen &component = map.component();
    const auto addresses = [&component](const QList<qint32> &tubes) {
        QList<ellery::TubeAddress> list;
        list.reserve(tubes.size());
        for (const qint32 tube : tubes)
            list.append(component[tube].address);
        return list;
    };
    QList<qint32> marked;
    for (int tube = 0; tube < component.numTube(); ++tube)
        if (!map.tubes().isOpen(tube))
            marked.append(tube);
    QList<plans::NamedTubes> named{{u"Selected tubes"_s, addresses(map.selection())},
                                   {u"Tubes with symbols"_s, addresses(marked)}};
    for (int place = 0; place < map.count(); ++place) {
        const plans::MapFill &fill = map.entry(place);
        named.append({tarnwick::format(u"Legend entry %d: %S %S", place + 1, fill.mark.symbol.text(), fill.label),
                      addresses(fill.markedTubes(component))});
    }
    return named;
}

} // namespace

void PlanCommands::bind(tarnwick::CommandHandlers &handlers)
{
    handlers.bind(OpenPlans, [this] { showPlans(); });
}

plans::DialogSetup PlanCommands::setup() const
{
    return {.session = m_session.database(),
            .project = m_session.project(),
            .tubes = m_session.map().tubes(),
            .files = *m_dialogs,
            .printMacros = [this] { return m_session.printMacros(); },
            .ofMap = tubesOf(m_session.map()),
            .parent = m_parent};
}

void PlanCommands::showPlans(const QString &file)
{
    plans::SavePlanDlg dialog(setup(), [this](const brannock::InspPlan &plan, const QString &outage) {
        map::showPlan(m_session.map(), m_session.fillRunner(), plan, outage);
    });
    if (!file.isEmpty())
        dialog.openFile(file);
    dialog.exec();
}

bool PlanCommands::makeList(const QString &file)
{
    plans::ListFillDlg dialog(setup(), nullptr);
    if (!file.isEmpty())
        dialog.openFile(file);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    plans::ListFill fill;
    fill.mark.colour = map::paletteColour(m_session.map().count());
    fill.parameters = dialog.list();
    map::addNewFill(m_session.map(), m_session.fillRunner(), fill);
    return true;
}

bool PlanCommands::editList(int place)
{
    plans::ListFill fill = static_cast<const plans::ListFill &>(m_session.map().entry(place));
    plans::ListFillDlg dialog(setup(), &fill.parameters);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    fill.parameters = dialog.list();
    map::changeFill(m_session.map(), m_session.fillRunner(), place, fill);
    return true;
}

} // namespace app
