#include "JParamDlg.h"

#include <query/Messages.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/JTableWin.h>

#include <QApplication>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace query {

namespace {

enum Command : int { ClearQueryHistory, ClearAllHistory };

constexpr CommandRow kRows[] = {
    {ClearQueryHistory, u"Clear Query History", u"Forget the values that were used for this query"},
    {ClearAllHistory, u"Clear All History", u"Forget the values that were used for all queries"},
};
constexpr MenuItem kBar[] = {openMenu(u"&Edit"), menuItem(ClearQueryHistory), menuItem(ClearAllHistory), kCloseMenu,
                             kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

constexpr int kMostVisibleRows = 20;

} // namespace

JParamDlg::JParamDlg(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context,
                     UserPrompts &prompts, QWidget *parent)
    : JDialog(prompts, &kTable, u"paramDlg"_s, parent)
    , m_queryName(queryName)
    , m_result(entries)
    , m_entries(entries)
    , m_context(context)
    , m_grid(m_entries, queryName, context, prompts)
    , m_table(new JTableWin(prompts))
{
    commands().bind(ClearQueryHistory, [this] {
        m_context.history.forget(m_queryName);
        storeHistory(m_context, this->prompts());
        this->prompts().status(messages::kForgotValues, m_queryName);
    });
    commands().bind(ClearAllHistory, [this] {
        m_context.history.forgetAll();
        storeHistory(m_context, this->prompts());
        this->prompts().status(messages::kForgotAllValues);
    });
    m_table->setObjectName(u"parameters"_s);
    m_table->setAccessibleName(u"Parameters"_s);
    m_table->setEntryColumn(u"INDEX"_s, 5, u"%5d"_s);
    m_table->setVisibleRows(qBound(3, m_grid.rowCount(), kMostVisibleRows));
    m_table->setSource(&m_grid);
    const int first = m_grid.firstToAsk();
    m_table->setCurrentIndex(m_table->grid().index(first, ParameterGrid::Value));
    connect(m_table, &JTableWin::rowActivated, this, [this] {
        if (m_table->currentIndex().column() == ParameterGrid::Value)
            accept(); // Return; a double click would edit the cell
    });
    connect(m_table, &JTableWin::rowsChanged, this, &JParamDlg::showProblem);
    connect(&m_table->grid(), &QAbstractItemModel::dataChanged, this, &JParamDlg::showProblem);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, &JParamDlg::showProblem);
    body().addWidget(m_table, 1);
    const QSize hint = m_table->sizeHint();
    finish(m_table, {qMax(hint.width() + 40, 620), hint.height() + 110});
    showProblem();
}

JParamDlg::~JParamDlg()
{
    for (QObject *sender : std::initializer_list<QObject *>{m_table, &m_table->grid(), m_table->selectionModel()})
        sender->disconnect(this);
    m_table->setSource(nullptr);
}

QString JParamDlg::caption() const
{
    return tarnwick::format(u"%S Parameters", m_queryName).trimmed();
}

void JParamDlg::showProblem()
{
    const int row = m_table->currentSourceRow();
    showMessage(row < 0 ? QString() : m_grid.problem(row));
}

bool JParamDlg::store()
{
    m_result = m_entries;
    return true;
}

bool ParameterDialogs::confirm(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context)
{
    QWidget *modal = QApplication::activeModalWidget();
    const UsualCursor usual;
    return JParamDlg(queryName, entries, context, m_prompts, modal ? modal : m_parent).exec() == QDialog::Accepted;
}

} // namespace query
