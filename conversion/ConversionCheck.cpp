#include "ConversionCheck.h"

#include <brannock/ProblemCollector.h>
#include <QFileInfo>

namespace conversion {

using namespace Qt::StringLiterals;
using brannock::ReportProblem;

ConversionCheck::ConversionCheck(const brannock::Project &project)
    : m_project(project)
    , m_check(project.steamGen, project.defects)
{
}

void ConversionCheck::addUnreadable(const QString &path, const QString &reason)
{
    m_outcomes.append({path, 0, 0, 0, {{0, 0, {}, u"cannot be read"_s, reason}}});
}

void ConversionCheck::add(const ReportConversion &run, const brannock::Report &report)
{
    m_outcomes.append({run.text().path(), 0, 0, 0, {}});
    addTarget(run);
    addRemarks(run, report);
    addEntries(run, report);
    brannock::FileOutcome &outcome = m_outcomes.last();
    outcome.stored = outcome.entries;
    if (outcome.entries == 0)
        outcome.problems.append({0, 0, {}, u"no results"_s, u"The text contains no results."_s});
}

void ConversionCheck::addTarget(const ReportConversion &run)
{
    const tarnwick::SuitePath target = run.target();
    const QString key = target.text().toLower();
    if (m_targets.contains(key)) {
        m_outcomes.last().problems.append(
            {0, 0, {}, u"same report"_s, u"\"%1\" is also the report of another text."_s.arg(target.text())});
    } else if (QFileInfo::exists(target.machinePath(m_project.roots()))) {
        m_outcomes.last().problems.append(
            {0, 0, {}, u"report exists"_s, u"\"%1\" exists and would be replaced."_s.arg(target.text())});
    }
    m_targets.insert(key);
}

void ConversionCheck::addRemarks(const ReportConversion &run, const brannock::Report &report)
{
    QList<ReportProblem> &problems = m_outcomes.last().problems;
    for (const Remark &remark : run.remarks().kept()) {
        if (remark.kind == kUnknownTube || remark.kind == kNoLandmark)
            continue; // found in the entry itself, which may have been edited
        const int entry = ReportConversion::entryOfLine(report, remark.line);
        problems.append({remark.line, entry + 1, {}, remark.kind, remark.text});
    }
    const int more = run.remarks().count() - int(run.remarks().kept().size());
    if (more > 0)
        problems.append({0, 0, {}, u"further remarks"_s, u"There are %L1 more remarks on this text."_s.arg(more)});
}

void ConversionCheck::addEntries(const ReportConversion &run, const brannock::Report &report)
{
    brannock::FileOutcome &outcome = m_outcomes.last();
    brannock::ProblemCollector problems(m_check);
    constexpr int kPortion = 1000; // a copy of all entries of a large text would need too much memory
    QList<brannock::ReportEntry> filled;
    for (int i = 0; i < report.numEntry(); ++i) {
        if (i % kPortion == 0) {
            filled = report.entries.sliced(i, std::min(kPortion, report.numEntry() - i));
            run.fill(filled);
        }
        const brannock::ReportEntry &entry = filled.at(i % kPortion);
        outcome.entries += entry.isResult() ? 1 : 0;
        problems.add(entry, i + 1);
    }
    outcome.problems += problems.problems();
}

} // namespace conversion
