#include "JQueryWin.h"

#include <query/ResultExport.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/gui/StateKeeper.h>

#include <QJsonObject>

using namespace Qt::StringLiterals;
using tarnwick::TablePrinting;

namespace query {

namespace {

constexpr int kEntryCharacters = 9;
/// Time for reading marked cells before the window reacts to the user again.
constexpr int kFiguresSlice = 15;

const QString kReportTitle = u"Report"_s;

} // namespace

JQueryWin::JQueryWin(db::DatabaseSession &session, QueryContext &context, TableMode mode, QWidget *parent,
                     QueryResult *result)
    : JTableWin(session.prompts(), parent)
    , m_prompts(session.prompts())
    , m_own(result ? nullptr : std::make_unique<QueryResult>(session, context))
    , m_result(result ? result : m_own.get())
    , m_rows(*m_result, mode, session.prompts())
    , m_printing(session.prompts(), this)
{
    setAccessibleName(u"Results"_s);
    setEntryColumn(u"ENTRY"_s, kEntryCharacters, u"%d"_s);
    m_figuresTimer.setInterval(0);
    connect(&m_figuresTimer, &QTimer::timeout, this, &JQueryWin::readFigures);
    connect(this, &JTableWin::selectionChangeEnded, this, &JQueryWin::beginFigures);
    connect(&grid(), &QAbstractItemModel::dataChanged, this, &JQueryWin::beginFigures);
    connect(&grid(), &QAbstractItemModel::rowsRemoved, this, &JQueryWin::beginFigures);
    connect(&grid(), &QAbstractItemModel::modelReset, this, &JQueryWin::beginFigures);
    rebuild();
}

JQueryWin::~JQueryWin()
{
    tarnwick::guarded(m_prompts, [this] { keepWidths(); });
    setSource(nullptr);
}

void JQueryWin::rebuild()
{
    keepWidths();
    m_rows.forgetShown();
    setSource(&m_rows);
    setFrozenColumns(m_rows.addressColumns());
    m_shownRun = m_result->runNumber();
    m_shownName = m_result->name();
    m_shownColumns.clear();
    for (int i = 0; i < m_result->columnCount(); ++i)
        m_shownColumns.append(m_result->column(i).name);
    restoreWidths();
    m_shownWidths = columnWidths();
    showFigures({});
}

void JQueryWin::refresh()
{
    if (m_result->runNumber() != m_shownRun) {
        rebuild();
        return;
    }
    grid().noteAppended();
    refreshActions();
    // A statement can also have changed the rows that are shown.
    if (m_rows.takeBlanks() || !m_result->isPaused())
        viewport()->update();
}

bool JQueryWin::exportTo(const QString &machinePath)
{
    tarnwick::ProgressDialog progress(this, u"Export Results"_s);
    const ExportOrder order{grid().rowCount(), [this](qint64 place) { return grid().sourceRow(int(place)); }};
    return exportResult(*m_result, machinePath, m_prompts, &progress, order);
}

TablePrinting::Job JQueryWin::job(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros,
                                  const QString &name) const
{
    TablePrinting::Job job{*this, layout, macros, name};
    job.layout.title = kReportTitle;
    return job;
}

bool JQueryWin::print(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros, const QString &name,
                      TablePrinting::Rows rows)
{
    return m_printing.print(job(layout, macros, name), rows);
}

bool JQueryWin::preview(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros, const QString &name,
                        TablePrinting::Rows rows)
{
    return m_printing.preview(job(layout, macros, name), rows);
}

bool JQueryWin::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool wasEditing = state() == EditingState;
    const bool isEditing = JTableWin::edit(index, trigger, event);
    if (isEditing && !wasEditing && state() == EditingState)
        m_rows.beginEdit(grid().sourceRow(index.row()));
    return isEditing;
}

void JQueryWin::beginFigures()
{
    m_marked.reset();
    m_figuresTimer.start();
}

void JQueryWin::readFigures()
{
    if (m_result->isPaused())
        return;
    try {
        if (!m_marked) {
            std::vector<MarkedCells::Block> blocks;
            for (const QItemSelectionRange &range : selectionModel()->selection())
                blocks.push_back({range.top(), range.left(), range.bottom(), range.right()});
            m_marked.emplace(*m_result, std::move(blocks), [this](int row) { return grid().sourceRow(row); });
        }
        m_marked->readOn(kFiguresSlice);
        showFigures(m_marked->text());
        if (!m_marked->isDone())
            return;
    } catch (const tarnwick::Error &error) {
        showFigures(error.text());
    }
    m_figuresTimer.stop();
}

void JQueryWin::showFigures(const QString &text)
{
    if (text == m_figures)
        return;
    m_figures = text;
    Q_EMIT figuresChanged(text);
}

QString JQueryWin::widthsKey() const
{
    return u"results/"_s + m_shownName.toLower();
}

void JQueryWin::keepWidths()
{
    const QList<int> widths = columnWidths();
    if (m_shownName.isEmpty() || widths == m_shownWidths || widths.size() != m_shownColumns.size())
        return;
    QJsonObject kept = tarnwick::StateKeeper::sessionFile().values()[widthsKey()].toObject();
    for (qsizetype i = 0; i < widths.size(); ++i) {
        if (widths[i] != m_shownWidths[i])
            kept[m_shownColumns[i]] = widths[i];
    }
    tarnwick::StateKeeper::sessionFile().store({{widthsKey(), kept}});
}

void JQueryWin::restoreWidths()
{
    if (m_shownName.isEmpty())
        return;
    const QJsonObject kept = tarnwick::StateKeeper::sessionFile().values()[widthsKey()].toObject();
    QList<int> widths = columnWidths();
    for (qsizetype i = 0; i < widths.size(); ++i)
        widths[i] = qMax(1, kept[m_shownColumns[i]].toInt(widths[i]));
    setColumnWidths(widths);
}

} // namespace query
