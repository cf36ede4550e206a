// Painting of tables, and the tips of their cells.
#include "GridDelegate.h"
#include "JTableWin.h"

#include <tarnwick/Format.h>

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

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
        const QString text = index.data().toString().left(GridDelegate::kLongestMeasured);
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
