#include "CalListDlg.h"

#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QAction>
#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QSplitter>

using namespace Qt::StringLiterals;

namespace results {

namespace {

using CalKey = std::pair<QStringList, std::pair<int, int>>;

CalKey keyOf(const Cal &cal)
{
    return {{cal.siteCode, cal.comp, cal.operType, cal.outage}, {cal.sec, cal.calNum}};
}

} // namespace

int CalGrid::columnCount() const
{
    return int(CalList::columnTitles(m_steamGen).size()) - 1; // the entry number is the table's own
}

tarnwick::GridColumn CalGrid::column(int column) const
{
    constexpr int kNameWidth = 12;
    tarnwick::GridColumn result{.title = CalList::columnTitles(m_steamGen)[column + 1]};
    result.width = column < 2 ? kNameWidth : 0;
    const bool isNumber = value(0, column).typeId() == QMetaType::Int;
    result.align = isNumber ? tarnwick::ColumnAlign::Right : tarnwick::ColumnAlign::Left;
    return result;
}

QString CalGrid::text(int row, int column) const
{
    return CalList::cells(m_list.rows()[row], row, m_steamGen)[column + 1];
}

QVariant CalGrid::value(int row, int column) const
{
    constexpr int kCal = 3;
    if (column != kCal && column != columnCount() - 1)
        return row < rowCount() ? QVariant(text(row, column)) : QVariant();
    if (row >= rowCount())
        return 0;
    return column == kCal ? m_list.rows()[row].cal.calNum : m_list.rows()[row].count;
}

void DayCountGrid::show(const QList<int> &rows)
{
    m_rows.clear();
    QSet<CalKey> cals;
    for (const int row : rows)
        cals.insert(keyOf(m_list.rows()[row].cal));
    for (const CalList::DayCount &each : m_list.dayCounts()) {
        if (!cals.contains(keyOf(each.cal)))
            continue;
        if (m_rows.isEmpty() || m_rows.last().analyst != each.analyst || m_rows.last().day != each.day)
            m_rows.append({each.analyst, each.day});
        ++m_rows.last().cals;
        m_rows.last().count += each.count;
    }
}

tarnwick::GridColumn DayCountGrid::column(int column) const
{
    constexpr int kWidth = 12;
    static const QString kTitles[] = {u"ANALYST"_s, u"DATE"_s, u"CALS"_s, u"COUNT"_s};
    return {.title = kTitles[column],
            .width = kWidth,
            .align = column < 2 ? tarnwick::ColumnAlign::Left : tarnwick::ColumnAlign::Right};
}

QString DayCountGrid::text(int row, int column) const
{
    const Row &shown = m_rows[row];
    switch (column) {
    case 0:
        return shown.analyst;
    case 1:
        return shown.day.toString(u"%m/%d/%Y");
    default:
        return QString::number(column == 2 ? shown.cals : shown.count);
    }
}

QVariant DayCountGrid::value(int row, int column) const
{
    const Row &shown = m_rows[row];
    switch (column) {
    case 0:
        return shown.analyst;
    case 1:
        return shown.day.isNull() ? QVariant() : QDateTime::fromSecsSinceEpoch(shown.day.seconds());
    default:
        return column == 2 ? shown.cals : shown.count;
    }
}

void CalListDlg::show(db::DatabaseSession &session, const ellery::SteamGen &steamGen, QWidget *parent)
{
    tarnwick::ProgressDialog progress(parent, u"Cal List"_s);
    CalList list(session, &progress);
    if (list.open())
        CalListDlg(list, session.prompts(), steamGen, parent).exec();
}

CalListDlg::CalListDlg(CalList &list, tarnwick::UserPrompts &prompts, const ellery::SteamGen &steamGen, QWidget *parent)
    : JDialog(prompts, nullptr, u"calListDlg"_s, parent)
    , m_list(list)
    , m_grid(list, steamGen)
    , m_dayCounts(list)
    , m_table(new tarnwick::JTableWin(prompts))
    , m_dayTitle(new QLabel)
    , m_dayTable(new tarnwick::JTableWin(prompts))
{
    constexpr int kVisibleRows = 20;
    m_table->setObjectName(u"cals"_s);
    m_table->setAccessibleName(u"Cals"_s);
    m_table->setEntryColumn(u"ENTRY#"_s, 7);
    m_table->setVisibleRows(kVisibleRows);
    m_table->setSource(&m_grid);
    constexpr int kVisibleDays = 5;
    m_dayTable->setObjectName(u"dayCounts"_s);
    m_dayTable->setAccessibleName(u"Entries by analyst and date"_s);
    m_dayTable->setVisibleRows(kVisibleDays);
    m_dayTable->setSource(&m_dayCounts);
    auto *lower = new QWidget;
    auto *column = new QVBoxLayout(lower);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_dayTitle);
    column->addWidget(m_dayTable, 1);
    auto *splitter = new QSplitter(Qt::Vertical);
    splitter->setObjectName(u"splitter"_s);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_table);
    splitter->addWidget(lower);
    splitter->setStretchFactor(0, 1);
    body().addWidget(splitter, 1);
    connect(m_table, &tarnwick::JTableWin::selectionChangeEnded, this, [this] { run([this] { showDayCounts(); }); });
    showDayCounts();
    auto *row = new QHBoxLayout;
    addButton(*row, u"&DELETE"_s, u"deleteButton"_s, u"Delete the rows of the selected cals from the database"_s,
              [this] { deleteSelected(); });
    addButton(*row, u"&Filter"_s, u"filterButton"_s, u"Show only the cals with a text or number (Ctrl+L)"_s,
              [this] { m_table->action(u"filter"_s)->trigger(); });
    row->addStretch(1);
    body().addLayout(row);
    finish(m_table, {700, 700});
}

CalListDlg::~CalListDlg()
{
    m_table->setSource(nullptr);
    m_dayTable->setSource(nullptr);
}

QList<int> CalListDlg::selectedRows() const
{
    const QList<int> rows = m_table->selectedSourceRows();
    return rows.isEmpty() ? QList<int>{m_table->currentSourceRow()} : rows;
}

void CalListDlg::deleteSelected()
{
    const QList<int> rows = selectedRows();
    const int current = rows.constFirst();
    m_list.deleteCals(rows);
    m_table->refreshRows(); // keeps a filter
    m_table->setCurrentSourceRow(std::min(current, m_grid.rowCount() - 1));
    showDayCounts();
}

void CalListDlg::showDayCounts()
{
    QList<int> rows = selectedRows();
    rows.removeIf([this](int row) { return row < 0 || row >= m_grid.rowCount(); });
    m_dayCounts.show(rows);
    m_dayTable->refreshRows();
    m_dayTitle->setText(rows.size() == 1 ? u"Entries of the selected cal by analyst and date"_s
                                         : u"Entries of %L1 selected cals by analyst and date"_s.arg(rows.size()));
}

bool CalListDlg::store()
{
    m_list.closeWithOk();
    return true;
}

bool CalListDlg::discard()
{
    return m_list.closeWithCancel();
}

} // namespace results
