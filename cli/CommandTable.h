#pragma once
#include "Arguments.h"

#include <QString>
#include <span>
#include <tarnwick/ProgramManual.h>

namespace cli {

/// One command of arvo-cli: the data used by parsing, help and execution.
struct Command
{
    const char16_t *name;
    const char16_t *usage;   ///< the arguments after the name
    const char16_t *summary; ///< one line
    const char16_t *details; ///< important information beyond the options
    std::span<const OptionSpec> options;
    int (*run)(const Arguments &arguments);
};

std::span<const Command> commands();
const Command *findCommand(QStringView name);

QString helpOverview();
QString helpOf(const Command &command);
/// All of it, for the manual page and completion.
tarnwick::ProgramManual programManual();

// The commands, each in its own source file.
int runCals(const Arguments &arguments);
int runCheck(const Arguments &arguments);
int runCompleteRepairs(const Arguments &arguments);
int runConnect(const Arguments &arguments);
int runConvert(const Arguments &arguments);
int runCreate(const Arguments &arguments);
int runDeleteCal(const Arguments &arguments);
int runDeletePlan(const Arguments &arguments);
int runDeleteQuery(const Arguments &arguments);
int runDeleteTubeSet(const Arguments &arguments);
int runDemo(const Arguments &arguments);
int runExplain(const Arguments &arguments);
int runFill(const Arguments &arguments);
int runFormats(const Arguments &arguments);
int runHistory(const Arguments &arguments);
int runImport(const Arguments &arguments);
int runLog(const Arguments &arguments);
int runMap(const Arguments &arguments);
int runNewProject(const Arguments &arguments);
int runParseList(const Arguments &arguments);
int runPlan(const Arguments &arguments);
int runPlans(const Arguments &arguments);
int runQueries(const Arguments &arguments);
int runQuery(const Arguments &arguments);
int runRepairs(const Arguments &arguments);
int runScheduleRepairs(const Arguments &arguments);
int runSchema(const Arguments &arguments);
int runSql(const Arguments &arguments);
int runStoreQuery(const Arguments &arguments);
int runTube(const Arguments &arguments);
int runTubeSet(const Arguments &arguments);
int runTubeSets(const Arguments &arguments);
int runUpload(const Arguments &arguments);
int runUploadComponent(const Arguments &arguments);
int runUploadPlan(const Arguments &arguments);
int runUploadTubeSet(const Arguments &arguments);
int runHelp(const Arguments &arguments);

} // namespace cli
