#include "ProblemCollector.h"

namespace brannock {

using namespace Qt::StringLiterals;
using Kind = EntryProblem::Kind;

static bool isOftenCommon(const EntryProblem &problem)
{
    return problem.kind == Kind::MissingCal || problem.kind == Kind::MissingAnalyst ||
           (problem.kind == Kind::OutOfRange && (problem.field == u"cal_num" || problem.field == u"id"));
}

void ProblemCollector::add(const ReportEntry &entry, int position)
{
    for (const EntryProblem &problem : m_check.problems(entry)) {
        m_positions.insert(position);
        if (isOftenCommon(problem)) {
            Common &common = m_common[problem.field + u'\t' + problem.text];
            if (++common.entries > 1)
                continue;
            common.place = m_problems.size();
        }
        m_problems.append({entry.textLine, position, problem.field, problemName(problem.kind), problem.text});
    }
}

QList<ReportProblem> ProblemCollector::problems() const
{
    QList<ReportProblem> problems = m_problems;
    for (const Common &common : m_common) {
        if (common.entries > 1)
            problems[common.place].text += u" (%1 entries)"_s.arg(common.entries);
    }
    return problems;
}

} // namespace brannock
