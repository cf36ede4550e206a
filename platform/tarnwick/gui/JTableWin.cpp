// Geometry and painting of tables. Keys, sorting, find and changes are in JTableWinActions.cpp.
#include "JTableWin.h"

#include "GridAccessible.h"
#include "GridDelegate.h"
#include "GridFilterRow.h"
#include "GridFindBar.h"
#include "GridHeader.h"
#include "TableText.h"

#include <tarnwick/Format.h>

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int kDefaultCharacters = 8;
/// Initial maximum width of columns; the user can widen them.
constexpr int kMaxCharacters = 60;
/// Number of rows measured to fit a column: the visible ones and some more, never all of a million.
constexpr int kFittedRows = 500;
/// Characters of a cell that are measured, and shown in its tip.
constexpr qsizetype kLongestMeasured = 2000;

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

QSize JTableWin::sizeHint() const
{
    constexpr int kMaxWidth = 1000;
    const int frame = 2 * frameWidth();
    const int bars = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {std::min(m_layout.totalWidth(), kMaxWidth) + frame + bars,
            m_header->sizeHint().height() + m_visibleRows * m_rowHeight + frame + bars};
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
        const QString text = m_grid.index(row, column).data().toString().left(kLongestMeasured);
        width = std::max(width, metrics.horizontalAdvance(text) + 2 * GridDelegate::margin(metrics) + 2);
    }
    m_layout.setWidth(column, std::min(width, std::max(viewport()->width() - m_layout.entryWidth(), 1)));
    m_filterRow->place();
    updateGeometries();
    m_header->update();
    viewport()->update();
}

std::pair<int, int> JTableWin::rowsInSight() const
{
    return {firstRow(), std::min(pageRows(), m_grid.rowCount() - firstRow())};
}

int JTableWin::firstRow() const
{
    return verticalScrollBar()->value();
}

int JTableWin::verticalOffset() const
{
    return firstRow() * m_rowHeight;
}

int JTableWin::pageRows() const
{
    return std::max(1, viewport()->height() / m_rowHeight);
}

int JTableWin::rowAt(int y) const
{
    const int lines = y >= 0 ? y / m_rowHeight : -((-y + m_rowHeight - 1) / m_rowHeight);
    return firstRow() + lines;
}

QRect JTableWin::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.column() >= m_layout.count())
        return {};
    return {m_layout.x(index.column()), (index.row() - firstRow()) * m_rowHeight, m_layout.width(index.column()),
            m_rowHeight};
}

QModelIndex JTableWin::indexAt(const QPoint &point) const
{
    const int row = rowAt(point.y());
    // A click on the entry number selects its row.
    const int column = point.x() < m_layout.entryWidth() ? 0 : m_layout.columnAt(point.x());
    if (row < 0 || row >= m_grid.rowCount() || column < 0)
        return {};
    return m_grid.index(row, column);
}

void JTableWin::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid() || index.column() >= m_layout.count())
        return;
    const int row = index.row();
    const int page = pageRows();
    if (hint == PositionAtCenter)
        verticalScrollBar()->setValue(row - page / 2);
    else if (hint == PositionAtTop || row < firstRow())
        verticalScrollBar()->setValue(row);
    else if (hint == PositionAtBottom || row >= firstRow() + page)
        verticalScrollBar()->setValue(row - page + 1);
    if (m_layout.isFrozen(index.column()))
        return;
    const int left = m_layout.x(index.column());
    const int right = left + m_layout.width(index.column());
    QScrollBar *bar = horizontalScrollBar();
    if (left < m_layout.fixedWidth())
        bar->setValue(bar->value() - (m_layout.fixedWidth() - left));
    else if (right > viewport()->width())
        bar->setValue(bar->value() + std::min(right - viewport()->width(), left - m_layout.fixedWidth()));
}

void JTableWin::updateGeometries()
{
    const int header = m_header->sizeHint().height();
    const int filter = m_filterRow->isHidden() ? 0 : m_filterRow->sizeHint().height();
    const int find = m_findBar->isHidden() ? 0 : m_findBar->sizeHint().height();
    setViewportMargins(0, header + filter, 0, find);
    const QRect inside = viewport()->geometry();
    m_header->setGeometry(inside.left(), inside.top() - header - filter, inside.width(), header);
    m_filterRow->setGeometry(inside.left(), inside.top() - filter, inside.width(), filter);
    m_findBar->setGeometry(inside.left(), inside.bottom() + 1, inside.width(), find);
    m_layout.setRoom(inside.width());
    m_filterRow->place();

    QScrollBar *rows = verticalScrollBar();
    rows->setRange(0, std::max(0, m_grid.rowCount() - pageRows()));
    rows->setPageStep(pageRows());
    rows->setSingleStep(1);
    QScrollBar *pixels = horizontalScrollBar();
    pixels->setRange(0, std::max(0, m_layout.totalWidth() - viewport()->width()));
    pixels->setPageStep(viewport()->width());
    pixels->setSingleStep(fontMetrics().averageCharWidth() * 4);
    m_layout.setScroll(pixels->value());
    QAbstractItemView::updateGeometries();
}

void JTableWin::resizeEvent(QResizeEvent *event)
{
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void JTableWin::scrollContentsBy(int dx, int dy)
{
    m_layout.setScroll(horizontalScrollBar()->value());
    if (dx != 0) {
        m_header->update();
        m_filterRow->place();
        viewport()->update();
    } else {
        // Scrolling moves whole rows: the rows that stay visible are copied and only the new ones are painted.
        viewport()->scroll(0, dy * m_rowHeight);
    }
    updateEditorGeometries();
}

QStyleOptionViewItem JTableWin::cellOption(const QModelIndex &index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index).adjusted(0, 0, -1, -1);
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    return option;
}

void JTableWin::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    const int first = std::max(rowAt(event->rect().top()), 0);
    const int last = std::min(rowAt(event->rect().bottom()), m_grid.rowCount() - 1);
    const auto [left, right] = m_layout.scrolledInSight(viewport()->width());
    painter.setClipRect(QRect(m_layout.fixedWidth(), 0, viewport()->width(), viewport()->height()));
    for (int row = first; row <= last; ++row)
        paintRow(painter, row, left, right);
    painter.setClipping(false);
    for (int row = first; row <= last; ++row) {
        paintRow(painter, row, 0, m_layout.frozen() - 1);
        paintEntry(painter, row);
    }
    if (m_layout.frozen() > 0) {
        painter.setPen(palette().color(QPalette::Mid));
        const int x = m_layout.fixedWidth() - 1;
        painter.drawLine(x, 0, x, (last + 1 - firstRow()) * m_rowHeight - 1);
    }
}

void JTableWin::paintRow(QPainter &painter, int row, int firstColumn, int lastColumn)
{
    const QString line = m_grid.source()->lineText(m_grid.sourceRow(row));
    if (!line.isEmpty()) {
        paintLine(painter, row, line);
        return;
    }
    painter.setPen(palette().color(QPalette::Midlight));
    for (int column = firstColumn; column <= lastColumn; ++column) {
        const QModelIndex index = m_grid.index(row, column);
        const QRect rect = visualRect(index);
        itemDelegate()->paint(&painter, cellOption(index), index);
        painter.setPen(palette().color(QPalette::Midlight));
        painter.drawLine(rect.bottomLeft(), rect.bottomRight());
        painter.drawLine(rect.topRight(), rect.bottomRight());
    }
}

void JTableWin::paintLine(QPainter &painter, int row, const QString &text)
{
    const int left = m_layout.entryWidth();
    const QRect rect(left, (row - firstRow()) * m_rowHeight, m_layout.totalWidth() - left, m_rowHeight);
    const bool isSelected = selectionModel()->isRowSelected(row);
    painter.fillRect(rect, palette().color(isSelected ? QPalette::Highlight : QPalette::AlternateBase));
    painter.setPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText));
    const int around = GridDelegate::margin(fontMetrics());
    painter.drawText(rect.adjusted(around, 0, 0, 0), int(Qt::AlignVCenter) | Qt::TextSingleLine, text);
    painter.setPen(palette().color(QPalette::Midlight));
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
}

void JTableWin::paintEntry(QPainter &painter, int row)
{
    if (m_layout.entryWidth() <= 0)
        return;
    const QRect rect(0, (row - firstRow()) * m_rowHeight, m_layout.entryWidth(), m_rowHeight);
    const bool isCurrent = row == currentIndex().row();
    painter.fillRect(rect.adjusted(0, 0, -1, -1), palette().color(isCurrent ? QPalette::Mid : QPalette::Button));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    painter.drawLine(rect.topRight(), rect.bottomRight());
    painter.setPen(palette().color(QPalette::ButtonText));
    const int around = GridDelegate::margin(fontMetrics());
    painter.drawText(rect.adjusted(around, 0, -around, 0), Qt::AlignRight | Qt::AlignVCenter,
                     format(m_entry.format, row + 1).trimmed());
}

void JTableWin::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags)
{
    const int rows = m_grid.rowCount();
    const int columns = m_layout.count();
    if (rows == 0 || columns == 0)
        return;
    const auto column = [this, columns](int x) {
        const int found = m_layout.columnAt(x);
        return found >= 0 ? found : x < m_layout.fixedWidth() ? 0 : columns - 1;
    };
    const int top = std::clamp(rowAt(rect.top()), 0, rows - 1);
    const int bottom = std::clamp(rowAt(rect.bottom()), 0, rows - 1);
    // Dragging along the entry numbers selects whole rows.
    const bool isEntry = rect.left() < m_layout.entryWidth();
    const int left = isEntry ? 0 : column(rect.left());
    const int right = isEntry ? columns - 1 : column(rect.right());
    selectionModel()->select(
        QItemSelection(m_grid.index(top, std::min(left, right)), m_grid.index(bottom, std::max(left, right))), flags);
}

QRegion JTableWin::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const int first = firstRow();
    const int last = first + pageRows() + 1;
    for (const QItemSelectionRange &range : selection) {
        const int top = std::max(range.top(), first);
        const int bottom = std::min(range.bottom(), last);
        if (top <= bottom)
            region += QRect(0, (top - first) * m_rowHeight, viewport()->width(), (bottom - top + 1) * m_rowHeight);
    }
    return region;
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

bool JTableWin::isRowEditable(int row) const
{
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        if (m_grid.flags(m_grid.index(row, column)) & Qt::ItemIsEditable)
            return true;
    }
    return false;
}

bool JTableWin::viewportEvent(QEvent *event)
{
    // The reason why a cell cannot be edited is shown only if other cells of the row can be edited. F2 always shows it.
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QModelIndex index = indexAt(help->pos());
        const QString text = index.data().toString().left(kLongestMeasured);
        const int room = visualRect(index).width() - 2 * GridDelegate::margin(fontMetrics());
        const bool isCut = fontMetrics().horizontalAdvance(text) > room || text.contains(u'\n');
        QString tip = index.data(Qt::ToolTipRole).toString();
        if (tip == index.data(GridModel::WhyNotEditableRole).toString() && !isRowEditable(index.row()))
            tip.clear();
        if (isCut)
            tip = tip.isEmpty() ? text : text + u"\n\n"_s + tip;
        if (index.isValid() && !tip.isEmpty())
            QToolTip::showText(help->globalPos(), tip, viewport());
        else
            QToolTip::hideText();
        return true;
    }
    return QAbstractItemView::viewportEvent(event);
}

} // namespace tarnwick
