#include "CalListDlg.h"

#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/ProgressDialog.h>

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace results {

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
    , m_table(new tarnwick::JTableWin(prompts))
{
    constexpr int kVisibleRows = 20;
    m_table->setObjectName(u"cals"_s);
    m_table->setAccessibleName(u"Cals"_s);
    m_table->setEntryColumn(u"ENTRY#"_s, 7);
    m_table->setVisibleRows(kVisibleRows);
    m_table->setSource(&m_grid);
    body().addWidget(m_table, 1);
    auto *row = new QHBoxLayout;
    addButton(*row, u"&DELETE"_s, u"deleteButton"_s, u"Delete the rows of the selected cals from the database"_s,
              [this] { deleteSelected(); });
    row->addStretch(1);
    body().addLayout(row);
    finish(m_table, {640, 560});
}

CalListDlg::~CalListDlg()
{
    m_table->setSource(nullptr);
}

void CalListDlg::deleteSelected()
{
    QList<int> rows = m_table->selectedSourceRows();
    if (rows.isEmpty())
        rows = {m_table->currentSourceRow()};
    const int current = rows.constFirst();
    m_list.deleteCals(rows);
    m_table->reload();
    m_table->setCurrentSourceRow(std::min(current, m_grid.rowCount() - 1));
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
