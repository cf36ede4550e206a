#include "ReportGrid.h"

#include "Messages.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace brannock {

ReportGrid::ReportGrid(ReportDocument &document, const EntryCheck *check, tarnwick::UserPrompts &prompts)
    : m_document(document)
    , m_check(check)
    , m_prompts(prompts)
{
    noteChanged(ReportDocument::kNewNumber);
}

int ReportGrid::columnOf(QStringView field)
{
    const QList<ReportColumn> &columns = reportColumns();
    for (int i = 0; i < columns.size(); ++i) {
        if (field == columns[i].field)
            return i + 1;
    }
    return -1;
}

ReportGrid::Problems ReportGrid::problemsOf(const Report &report, tarnwick::Progress *progress) const
{
    Problems problems;
    problems.isOne.resize(size_t(report.numEntry()));
    tarnwick::ProgressLoop loop(progress, report.numEntry(), u"Checking entries"_s);
    for (int i = 0; i < report.numEntry(); ++i) {
        loop.tick(i);
        if (!hasProblem(report[i]))
            continue;
        problems.isOne[size_t(i)] = true;
        ++problems.count;
    }
    return problems;
}

void ReportGrid::checkAhead(const Report &report, tarnwick::Progress *progress)
{
    m_ahead = problemsOf(report, progress);
}

void ReportGrid::noteChanged(int entry)
{
    if (entry >= 0 && m_problems.isOne.size() == size_t(m_document.count())) {
        auto isOne = m_problems.isOne[size_t(entry)];
        m_problems.count -= isOne ? 1 : 0;
        isOne = hasProblem(m_document.entry(entry));
        m_problems.count += isOne ? 1 : 0;
        return;
    }
    m_problems = m_ahead ? *std::exchange(m_ahead, {}) : problemsOf(m_document.report(), nullptr);
}

int ReportGrid::nextProblem(int entry, bool isForward) const
{
    const int count = int(m_problems.isOne.size());
    for (int step = 1; step <= count; ++step) {
        const int at = ((entry + (isForward ? step : -step)) % count + count) % count;
        if (m_problems.isOne[size_t(at)])
            return at;
    }
    return -1;
}

tarnwick::GridColumn ReportGrid::column(int column) const
{
    if (column == kMark)
        return {.title = u"!"_s, .width = 2, .align = tarnwick::ColumnAlign::Center};
    const ReportColumn &info = reportColumns()[column - 1];
    return {.title = QString::fromUtf16(info.title), .width = info.width, .align = info.align};
}

QString ReportGrid::text(int row, int column) const
{
    if (column == kMark)
        return m_problems.isOne[size_t(row)] ? u"!"_s : QString();
    const ReportEntry &entry = m_document.entry(row);
    return entry.isHeader() ? QString() : reportColumns()[column - 1].text(entry);
}

QVariant ReportGrid::value(int row, int column) const
{
    const ReportEntry &entry = m_document.entry(row);
    return column == kMark || entry.isHeader() ? QVariant(text(row, column)) : reportColumns()[column - 1].value(entry);
}

QString ReportGrid::lineText(int row) const
{
    const ReportEntry &entry = m_document.entry(row);
    // An empty header line is a row without cells, too.
    return !entry.isHeader() ? QString() : entry.headerText.isEmpty() ? u" "_s : entry.headerText;
}

tarnwick::RowColours ReportGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kStandard(0x808080);
    constexpr tarnwick::ColourRef kProblem(0x0000C0);
    if (m_document.entry(row).isStd())
        return {.foreground = kStandard};
    return m_problems.isOne[size_t(row)] ? tarnwick::RowColours{.foreground = kProblem} : tarnwick::RowColours{};
}

QString ReportGrid::tip(int row, int column) const
{
    if (m_document.entry(row).isStd())
        return u"Calibration standard: not uploaded."_s;
    if (!m_check || !m_problems.isOne[size_t(row)])
        return {};
    QStringList lines;
    for (const EntryProblem &problem : m_check->problems(m_document.entry(row))) {
        if (column == kMark || columnOf(problem.field) == column)
            lines.append(problem.text);
    }
    return lines.join(u'\n');
}

QString ReportGrid::whyNotEditable(int row, int column) const
{
    if (m_isReadOnly)
        return u"This report cannot be edited."_s;
    if (m_document.entry(row).isHeader())
        return u"A header line cannot be edited."_s;
    return column == kMark ? u"This column marks problems."_s : QString();
}

bool ReportGrid::setText(int row, int column, const QString &text)
{
    const ReportColumn &info = reportColumns()[column - 1];
    ReportEntry changed = m_document.entry(row);
    const QString reason = info.set(changed, text);
    if (!reason.isEmpty()) {
        m_prompts.error(messages::kValueRefused, reason);
        return false;
    }
    const QScopedValueRollback changing(m_isChanging, true);
    m_document.change(u"Edit %1"_s.arg(QString::fromUtf16(info.title)), {row},
                      [&changed](ReportEntry &entry) { entry = changed; });
    return true;
}

QString ReportGrid::whyNotInsertable() const
{
    return m_isReadOnly ? u"This report cannot be edited."_s : QString();
}

bool ReportGrid::insertRow(int row)
{
    // A new entry belongs to the cal of its neighbour; its result is left to the user.
    ReportEntry entry;
    for (const int neighbour : {row - 1, row}) {
        if (neighbour < 0 || neighbour >= m_document.count() || !m_document.entry(neighbour).isResult())
            continue;
        const ReportEntry &model = m_document.entry(neighbour);
        entry.site = model.site;
        entry.outage = model.outage;
        entry.operType = model.operType;
        entry.calNumber = model.calNumber;
        entry.leg = model.leg;
        entry.probe = model.probe;
        entry.analystId = model.analystId;
        entry.operatorId = model.operatorId;
        entry.entryTime = model.entryTime;
        break;
    }
    const QScopedValueRollback changing(m_isChanging, true);
    m_document.insert(u"Insert Entry"_s, row, {entry});
    return true;
}

QString ReportGrid::whyNotDeletable(int) const
{
    return m_isReadOnly ? u"This report cannot be edited."_s : QString();
}

bool ReportGrid::deleteRow(int row)
{
    const QScopedValueRollback changing(m_isChanging, true);
    m_document.remove(u"Delete Entry"_s, {row});
    return true;
}

bool ReportGrid::deleteRows(const QList<int> &rows)
{
    if (m_isReadOnly)
        return false;
    const QScopedValueRollback changing(m_isChanging, true);
    m_document.remove(u"Delete Entries"_s, rows);
    return true;
}

} // namespace brannock
