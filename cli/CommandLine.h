#pragma once
#include <QStringList>

namespace cli {

/// Exit statuses of arvo-cli.
enum ExitStatus { Done = 0, Failed = 1, WrongUsage = 2 };

/// Runs one command of arvo-cli. arguments: those after the program's name. Results go to standard output, the message
/// of a failure to standard error. Never waits for input.
int runCommandLine(const QStringList &arguments);

} // namespace cli
