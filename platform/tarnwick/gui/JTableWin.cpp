// Parts of the table, its source and its columns. Beside this file: JTableWinGeometry.cpp (places of rows and cells,
// scrolling), JTableWinPaint.cpp, JTableWinInput.cpp (current row, keys, mouse) and JTableWinActions.cpp (sorting,
// filter, find, copying, changes).
#include "JTableWin.h"

#include "GridAccessible.h"
#include "GridDelegate.h"
#include "GridFilterRow.h"
#include "GridFindBar.h"
#include "GridHeader.h"
#include "TableText.h"

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int kDefaultCharacters = 8;
/// Initial maximum width of columns; the user can widen them.
constexpr int kMaxCharacters = 60;
/// Number of rows measured to fit a column: the visible ones and some more, never all of a million.
constexpr int kFittedRows = 500;

} // namespace

JTableWin::JTableWin(UserPrompts &prompts, QWidget *parent)
    : QAbstractItemView(parent)
    , m_prompts(prompts)
    , m_grid(this)
{
    installGridAccessibility();
    setItemDelegate(new GridDelegate(this));
    setSelectionMode(ExtendedSelection);
    setEditTriggers(EditKeyPressed | AnyKeyPressed | DoubleClicked);
    setTabKeyNavigation(false); // Tab leaves the table, so that the keyboard reaches all of a dialog
    setMouseTracking(true);
    makeParts();
    makeActions();
    setModel(&m_grid);
    TableText::follow(this);
    m_digitWidth = fontMetrics().horizontalAdvance(u'0');
    measureRows();
}

JTableWin::~JTableWin()
{
    const QSignalBlocker noRowsChanged(this); // listeners would see a table of a derived class that is gone
    // The base class would use the layout and the model, which are already destroyed.
    disconnect(&m_grid, nullptr, this, nullptr);
    QAbstractItemView::setModel(nullptr);
}

void JTableWin::makeParts()
{
    m_header = new GridHeader(m_layout, this);
    m_filterRow = new GridFilterRow(m_layout, this);
    m_filterRow->hide();
    m_findBar = new GridFindBar(this);
    m_findBar->hide();
    connect(m_header, &GridHeader::widthDragged, this, [this](int column, int width) {
        m_layout.setWidth(column, width);
        updateGeometries();
        m_header->update();
        viewport()->update();
    });
    connect(m_header, &GridHeader::fitRequested, this, &JTableWin::fitColumn);
    connect(m_header, &GridHeader::sortRequested, this, &JTableWin::sortByColumn);
    connect(m_filterRow, &GridFilterRow::filterTyped, this, &JTableWin::applyFilter);
    connect(m_filterRow, &GridFilterRow::closed, this, [this] { showFilter(false); });
    connect(m_findBar, &GridFindBar::findRequested, this, &JTableWin::findNext);
    connect(m_findBar, &GridFindBar::closed, this, [this] {
        m_findBar->hide();
        updateGeometries();
        setFocus();
    });
    m_selectionDelay.setSingleShot(true);
    m_selectionDelay.setInterval(0);
    connect(&m_selectionDelay, &QTimer::timeout, this, &JTableWin::selectionChangeEnded);
}

void JTableWin::setModel(QAbstractItemModel *model)
{
    Q_ASSERT(model == &m_grid);
    QAbstractItemView::setModel(model);
    m_header->setModel(&m_grid);
    connect(&m_grid, &QAbstractItemModel::rowsRemoved, this, [this] {
        updateGeometries();
        viewport()->update();
        Q_EMIT rowsChanged();
    });
}

void JTableWin::setSource(GridSource *source)
{
    m_grid.setSource(source);
    m_filterRow->clear();
    resetColumns();
    if (m_grid.rowCount() > 0 && m_grid.columnCount() > 0)
        setCurrentIndex(m_grid.index(0, 0));
    Q_EMIT rowsChanged();
}

void JTableWin::reload()
{
    const QStringList titles = m_grid.titles();
    const QList<int> widths = m_layout.widths();
    setSource(m_grid.source());
    if (m_grid.titles() == titles)
        setColumnWidths(widths);
}

void JTableWin::refreshRows()
{
    const int top = firstRow();
    keepCurrent([this] { m_grid.refreshRows(); });
    verticalScrollBar()->setValue(top);
    scrollTo(currentIndex());
}

void JTableWin::reset()
{
    QAbstractItemView::reset();
    if (m_layout.count() != m_grid.columnCount())
        resetColumns();
    updateGeometries();
    m_header->update();
    refreshActions();
    Q_EMIT rowsChanged();
}

void JTableWin::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QAbstractItemView::rowsInserted(parent, start, end);
    updateGeometries();
    viewport()->update();
    Q_EMIT rowsChanged();
}

void JTableWin::resetColumns()
{
    QList<int> widths;
    for (int i = 0; i < m_grid.columnCount(); ++i)
        widths.append(defaultWidth(m_grid.column(i)));
    m_layout.setColumns(widths);
    m_filterRow->setColumns(m_grid);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    updateGeometries();
    viewport()->update();
    Q_EMIT columnsChanged();
}

int JTableWin::defaultWidth(const GridColumn &column) const
{
    const QFontMetrics metrics = fontMetrics();
    const int characters = column.width > 0 ? std::min(column.width, kMaxCharacters) : kDefaultCharacters;
    const int text = characters * metrics.horizontalAdvance(u'0') + 2 * GridDelegate::margin(metrics) + 1;
    return std::max(text, m_header->titleWidth(column.title));
}

void JTableWin::setEntryColumn(const QString &title, int width, const QString &format)
{
    m_entry.title = title;
    m_entry.format = format;
    m_entry.characters = width;
    m_header->setEntryTitle(title);
    measureRows();
}

void JTableWin::measureRows()
{
    const QFontMetrics metrics = fontMetrics();
    m_rowHeight = metrics.height() + std::max(4, metrics.height() / 3);
    int entry = 0;
    if (m_entry.characters > 0) {
        const int text = m_entry.characters * metrics.horizontalAdvance(u'0') + 2 * GridDelegate::margin(metrics) + 1;
        entry = std::max(text, m_header->titleWidth(m_entry.title));
    }
    m_layout.setEntryWidth(entry);
    updateGeometries();
    viewport()->update();
}

void JTableWin::setFrozenColumns(int columns)
{
    m_layout.setFrozen(columns);
    m_filterRow->place();
    updateGeometries();
    viewport()->update();
}

void JTableWin::setVisibleRows(int rows)
{
    m_visibleRows = rows;
    updateGeometry();
}

void JTableWin::setColumnWidths(const QList<int> &widths)
{
    if (widths.size() != m_layout.count())
        return;
    m_layout.setColumns(widths);
    m_filterRow->place();
    updateGeometries();
    viewport()->update();
}

void JTableWin::fitColumn(int column)
{
    const QFontMetrics metrics = fontMetrics();
    int width = m_header->titleWidth(m_grid.column(column).title);
    const int first = std::max(0, firstRow() - kFittedRows / 2);
    const int last = std::min(m_grid.rowCount(), first + kFittedRows);
    for (int row = first; row < last; ++row) {
        if (!m_grid.lineText(row).isEmpty())
            continue;
        const QString text = m_grid.index(row, column).data().toString().left(GridDelegate::kLongestMeasured);
        width = std::max(width, metrics.horizontalAdvance(text) + 2 * GridDelegate::margin(metrics) + 2);
    }
    m_layout.setWidth(column, std::min(width, std::max(viewport()->width() - m_layout.entryWidth(), 1)));
    m_filterRow->place();
    updateGeometries();
    m_header->update();
    viewport()->update();
}

void JTableWin::changeEvent(QEvent *event)
{
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        // Columns keep their room in characters.
        const int size = fontMetrics().horizontalAdvance(u'0');
        const int before = std::exchange(m_digitWidth, size);
        QList<int> widths = m_layout.widths();
        for (int &width : widths)
            width = width * size / std::max(before, 1);
        if (before > 0 && before != size)
            m_layout.setColumns(widths);
        measureRows();
    }
}

} // namespace tarnwick
