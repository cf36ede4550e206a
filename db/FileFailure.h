#pragma once
#include "Errors.h"

namespace db {

/// Returns true if the failure concerns the whole file or the disk, so every further operation on the database will
/// fail too.
bool isOfWholeFile(const dao::DaoException &exception);

enum class StepOutcome { Done, Failed, FileFailed };

/// Runs one of several steps that do not depend on each other and reports its failure. FileFailed: the following steps
/// would fail too.
template <typename Step, typename... Args>
StepOutcome attemptStep(tarnwick::UserPrompts &prompts, const Step &step, const tarnwick::Message &failure,
                        const Args &...args)
{
    try {
        step();
        return StepOutcome::Done;
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts, exception, failure, args...);
        return isOfWholeFile(exception) ? StepOutcome::FileFailed : StepOutcome::Failed;
    }
}

} // namespace db
