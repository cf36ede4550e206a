#include "OutcomeOutput.h"

#include "Console.h"
#include "TextOrJson.h"

#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;
using brannock::FileOutcome;
using brannock::ReportProblem;

void printChecked(const FileOutcome &outcome)
{
    constexpr qsizetype kMostShown = 20;
    print(u"%1: %2 of %3 entries would be stored, %4 problems\n"_s.arg(outcome.file)
              .arg(outcome.stored)
              .arg(outcome.entries)
              .arg(outcome.problems.size()));
    for (const ReportProblem &problem : outcome.problems.first(std::min(kMostShown, outcome.problems.size()))) {
        QString place;
        if (problem.line > 0)
            place += u"line %1, "_s.arg(problem.line);
        if (problem.entry > 0)
            place += u"entry %1, "_s.arg(problem.entry);
        if (!problem.field.isEmpty())
            place += problem.field + u", "_s;
        print(u"  %1%2: %3\n"_s.arg(place, problem.kind, problem.text));
    }
    if (outcome.problems.size() > kMostShown)
        print(u"  ... and %1 more\n"_s.arg(outcome.problems.size() - kMostShown));
}

void finishOutcomes(Target &target, const Arguments &arguments, const QList<FileOutcome> &outcomes)
{
    if (arguments.has(u"problems"))
        tarnwick::writeFileAtomically(target.pathOf(arguments.value(u"problems")), problemsAsCsv(outcomes));
    if (wantsJson(arguments))
        printData(outcomesAsJson(outcomes));
}

} // namespace cli
