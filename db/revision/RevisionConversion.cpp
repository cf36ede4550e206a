#include "RevisionConversion.h"

#include "AliasTables.h"
#include "Messages.h"
#include "OldPlans.h"
#include "TableSteps.h"

#include <db/Views.h>

namespace db {

namespace {

struct TableStep
{
    void (*run)(ConversionPass &pass);
    const tarnwick::Message *failure;
};

constexpr TableStep kTableSteps[] = {
    {deleteDisplayFormat, &messages::kDeleteDisplayFormat},
    {createRepairs, &messages::kCreateRepairs},
    {convertReport, &messages::kModifyReport},
    {convertLandmarks, &messages::kModifyLandmarks},
    {convertTubeSetEntry, &messages::kModifyTubeSetEntry},
    {convertPlans, &messages::kModifyPlans},
    {convertTubes, &messages::kModifyTubes},
};

void runSteps(ConversionPass &pass, const brannock::Project *project)
{
    constexpr int kOtherSteps = 2;
    constexpr int kSteps = int(std::size(kTableSteps)) + kOtherSteps;
    int entered = 0;
    for (const TableStep &step : kTableSteps) {
        pass.enterStep(entered++, kSteps);
        pass.guarded([&] { step.run(pass); }, *step.failure);
    }
    pass.enterStep(entered++, kSteps);
    // Asked for before the views, which are made unasked: a backup is to show the file before any change.
    const QList<const AliasSpec *> aliasTables = requestAliasTables(pass);
    pass.beginChanges();
    refreshViews(pass.session());
    createAliasTables(pass, aliasTables);
    pass.enterStep(entered++, kSteps);
    if (project)
        refreshAliases(pass.session(), project->steamGen);
}

} // namespace

void reviseDatabase(DatabaseSession &session, ConversionRequest &request, const brannock::Project *project,
                    tarnwick::Progress *progress)
{
    if (!checkConnected(session) || !session.isUpdatable())
        return;
    const auto undone = [&session](const tarnwick::Message &message) {
        session.conversion.approved = false;
        session.prompts().status(message);
    };
    ConversionPass pass(session, request, progress);
    try {
        runSteps(pass, project);
        if (!pass.commit())
            undone(messages::kConversionUndone);
        return;
    } catch (const ConversionPass::Aborted &) {
        undone(messages::kConversionUndone);
    } catch (const dao::DaoCancelled &) {
        undone(messages::kConversionCancelled);
    } catch (const tarnwick::Cancelled &) {
        undone(messages::kConversionCancelled);
    }
    pass.rollback();
}

} // namespace db
