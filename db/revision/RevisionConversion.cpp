#include "RevisionConversion.h"

#include "AliasTables.h"
#include "Messages.h"
#include "OldPlans.h"
#include "TableSteps.h"

#include <db/Schema.h>
#include <db/Views.h>
#include <utility>

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

/// A file without any project table is not converted, since it may be any database.
bool isProjectDatabase(const dao::Database &database)
{
    const std::span<const TableSpec> specs = tableSpecs();
    return std::any_of(specs.begin(), specs.end(),
                       [&](const TableSpec &spec) { return database.hasTable(QStringView(spec.name)); });
}

bool areLabelsCurrent(DatabaseSession &session, const brannock::Project *project)
{
    return areViewsCurrent(session.database()) &&
           (!project || areAliasesCurrent(session.database(), project->steamGen));
}

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
    // Requested before the views are created (views need no question), since the backup must show the file before any
    // change.
    const QList<const AliasSpec *> aliasTables = requestAliasTables(pass);
    if (!pass.isChanging() && areLabelsCurrent(pass.session(), project))
        return;
    pass.beginChanges();
    if (!refreshViews(pass.session()))
        throw ConversionPass::Aborted();
    createAliasTables(pass, aliasTables);
    pass.enterStep(entered++, kSteps);
    if (project && !refreshAliases(pass.session(), project->steamGen))
        throw ConversionPass::Aborted();
}

} // namespace

void listRevisionSteps(DatabaseSession &session, ConversionRequest &request)
{
    if (!isProjectDatabase(session.database()))
        return;
    ConversionPass pass(session, request, nullptr);
    for (const TableStep &step : kTableSteps) {
        try {
            step.run(pass);
        } catch (const dao::DaoException &) {
            // A missing table has no steps to list, and the user has not asked to change it.
        }
    }
    requestAliasTables(pass);
}

bool reviseDatabase(DatabaseSession &session, ConversionRequest &request, const brannock::Project *project,
                    tarnwick::Progress *progress)
{
    if (!checkConnected(session) || !session.isUpdatable())
        return false;
    if (!isProjectDatabase(session.database()))
        return true;
    bool isCancelled = false;
    ConversionPass pass(session, request, progress);
    try {
        try {
            runSteps(pass, project);
        } catch (const ConversionPass::ChangedMeanwhile &) {
            pass.startAgain();
            runSteps(pass, project);
        }
        if (pass.commit())
            return true;
    } catch (const ConversionPass::Aborted &) {
        // Already reported.
    } catch (const tarnwick::Cancelled &) {
        isCancelled = true;
    }
    pass.rollback();
    const bool wasConverting = std::exchange(session.conversion.approved, false);
    session.conversion.cancelled = isCancelled && wasConverting;
    session.conversion.refreshCancelled = isCancelled && !wasConverting;
    if (wasConverting && !isCancelled)
        session.prompts().information(messages::kConversionUndone);
    return false;
}

void refreshLabels(DatabaseSession &session, const brannock::Project *project)
{
    if (isProjectDatabase(session.database()) && refreshViews(session) && project)
        refreshAliases(session, project->steamGen);
}

} // namespace db
