#pragma once
#include "Arguments.h"

#include <QByteArray>
#include <QList>

namespace tarnwick {

/// A command of a program in words. Also describes a program without commands.
struct CommandText
{
    const char16_t *name;
    const char16_t *usage;   ///< the arguments after the name; FILE.map stands for a map file, DIR for a folder
    const char16_t *summary; ///< one line
    const char16_t *details; ///< important information beyond the options
    std::span<const OptionSpec> options;
};

/// What a program says about itself. Help, manual page and completion are made from it.
struct ProgramManual
{
    CommandText program;
    QList<CommandText> commands; ///< empty: the program has none
    /// Further sections of the manual page, such as FILES.
    struct Section
    {
        QString title;
        QString text; ///< paragraphs, separated by empty lines
    };
    QList<Section> sections;
};

/// Sections of all programs: ENVIRONMENT, and FILES that a user has.
ProgramManual::Section environmentSection();
ProgramManual::Section filesSection();

/// Lines of help on options: names in one column, explanations in the other.
QString optionLines(std::span<const OptionSpec> options);
/// Help on one command, or on a program without commands: usage, summary, details, options.
QString commandHelp(const QString &program, const CommandText &command);
/// Manual page in the man macros of roff.
QByteArray manualPage(const ProgramManual &manual);
/// Completion for bash, for use with the functions of the package bash-completion.
QByteArray bashCompletion(const ProgramManual &manual);

} // namespace tarnwick
