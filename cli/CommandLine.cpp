#include "CommandLine.h"

#include "CommandTable.h"
#include "Console.h"

#include <dao/values/DaoException.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/base/Installation.h>
#include <tarnwick/FailureLog.h>

namespace cli {

using namespace Qt::StringLiterals;

int runHelp(const Arguments &arguments)
{
    arguments.atMost(1);
    if (arguments.positional().isEmpty()) {
        print(helpOverview());
        return Done;
    }
    const QString name = arguments.positional().first();
    const Command *command = findCommand(name);
    if (!command)
        throw UsageError(u"There is no command \""_s + name + u"\"."_s);
    print(helpOf(*command));
    return Done;
}

namespace {

void showFailure(const QString &text)
{
    ConsolePrompts console;
    tarnwick::LoggedPrompts(console, programName()).showError(tarnwick::kErrorSeverity, 0, text);
}

int runGuarded(const Command &command, const QStringList &arguments)
{
    try {
        const int status = command.run(Arguments(arguments, command.options));
        flushOutput();
        return status;
    } catch (const UsageError &error) {
        printError(error.text() + u"\nUsage: arvo-cli "_s + QStringView(command.name) + u' ' +
                   QStringView(command.usage) + u'\n');
        return WrongUsage;
    } catch (const dao::DaoException &error) {
        showFailure(u"[%1] %2 %3"_s.arg(error.number()).arg(error.source(), error.description()));
    } catch (const tarnwick::Error &error) {
        showFailure(error.text());
    } catch (const std::bad_alloc &) {
        showFailure(u"The memory of this computer is not enough for that."_s);
    } catch (const tarnwick::Cancelled &) {
        printError(u"Cancelled; nothing was changed.\n");
    }
    return Failed;
}

} // namespace

int runCommandLine(const QStringList &arguments)
{
    if (arguments.isEmpty()) {
        printError(helpOverview());
        return WrongUsage;
    }
    QString name = arguments.first();
    QStringList rest = arguments.mid(1);
    if (name == "--help"_L1 || name == "-h"_L1)
        name = u"help"_s;
    const Command *command = findCommand(name);
    // One command has an option of that name.
    const bool hasOwn = command && Arguments({}, command->options).knows(u"version");
    if (name == "--version"_L1 || (command && !hasOwn && tarnwick::asksFor(rest, u"version"))) {
        print(u"arvo-cli "_s + tarnwick::programVersion() + u'\n');
        return Done;
    }
    if (!command) {
        printError(u"There is no command \""_s + name + u"\". \"arvo-cli help\" lists them.\n"_s);
        return WrongUsage;
    }
    if (tarnwick::asksFor(rest, u"help"))
        rest = {name}, command = findCommand(u"help");
    return runGuarded(*command, rest);
}

} // namespace cli
