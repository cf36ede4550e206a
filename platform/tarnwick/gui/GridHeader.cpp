#include "GridHeader.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <QToolTip>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr int kEdgeReach = 4; ///< distance in pixels within which the mouse grabs a column edge

} // namespace

GridHeader::GridHeader(const GridLayout &layout, QWidget *parent)
    : QWidget(parent)
    , m_layout(layout)
{
    setMouseTracking(true);
}

void GridHeader::setModel(const GridModel *model)
{
    m_model = model;
    update();
}

void GridHeader::setEntryTitle(const QString &title)
{
    m_entryTitle = title;
    update();
}

QSize GridHeader::sizeHint() const
{
    QStyleOptionHeader option;
    option.initFrom(this);
    option.text = QStringLiteral("Xg");
    option.section = 0;
    option.orientation = Qt::Horizontal;
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}

int GridHeader::titleWidth(const QString &title) const
{
    QStyleOptionHeader option;
    option.initFrom(this);
    option.text = title;
    option.section = 0;
    option.orientation = Qt::Horizontal;
    const int mark = style()->pixelMetric(QStyle::PM_HeaderMarkSize, &option, this);
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, &option, this);
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this).width() + mark + 2 * margin;
}

void GridHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    if (!m_model)
        return;
    const auto section = [&](int column) {
        paintSection(painter, QRect(m_layout.x(column), 0, m_layout.width(column), height()),
                     m_model->column(column).title, column);
    };
    const auto [first, last] = m_layout.scrolledInSight(width());
    painter.save();
    painter.setClipRect(QRect(m_layout.fixedWidth(), 0, width() - m_layout.fixedWidth(), height()));
    for (int column = first; column <= last; ++column)
        section(column);
    painter.restore();
    for (int column = 0; column < m_layout.frozen(); ++column)
        section(column);
    if (m_layout.entryWidth() > 0)
        paintSection(painter, QRect(0, 0, m_layout.entryWidth(), height()), m_entryTitle, -1);
}

void GridHeader::paintSection(QPainter &painter, const QRect &rect, const QString &title, int column)
{
    QStyleOptionHeader option;
    option.initFrom(this);
    option.state.setFlag(QStyle::State_MouseOver, false);
    option.rect = rect;
    option.orientation = Qt::Horizontal;
    option.section = std::max(column, 0);
    option.position = QStyleOptionHeader::Middle;
    option.textAlignment = Qt::AlignCenter;
    option.state |=
        QStyle::State_Horizontal | QStyle::State_Raised | (isEnabled() ? QStyle::State_Enabled : QStyle::State_None);
    if (column >= 0 && column == m_pressed)
        option.state |= QStyle::State_Sunken;
    const QList<GridModel::SortKey> &keys = m_model->sortKeys();
    const auto key = std::find_if(keys.begin(), keys.end(), [column](const auto &k) { return k.column == column; });
    int room = rect.width() - 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, &option, this);
    if (key != keys.end()) {
        option.sortIndicator =
            key->order == Qt::AscendingOrder ? QStyleOptionHeader::SortDown : QStyleOptionHeader::SortUp;
        room -= style()->pixelMetric(QStyle::PM_HeaderMarkSize, &option, this);
    }
    option.text = option.fontMetrics.elidedText(title, Qt::ElideRight, room);
    style()->drawControl(QStyle::CE_Header, &option, &painter, this);
}

int GridHeader::edgeAt(int x) const
{
    for (int column = 0; column < m_layout.count(); ++column) {
        const int edge = m_layout.x(column) + m_layout.width(column);
        const bool isInSight = m_layout.isFrozen(column) || edge >= m_layout.fixedWidth();
        if (isInSight && std::abs(edge - x) <= kEdgeReach)
            return column;
    }
    return -1;
}

void GridHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_model)
        return;
    const int x = event->position().toPoint().x();
    m_dragged = edgeAt(x);
    if (m_dragged >= 0)
        m_dragOffset = x - m_layout.x(m_dragged) - m_layout.width(m_dragged);
    else
        m_pressed = m_layout.columnAt(x);
    update();
}

void GridHeader::mouseMoveEvent(QMouseEvent *event)
{
    const int x = event->position().toPoint().x();
    if (m_dragged >= 0) {
        const int least = fontMetrics().averageCharWidth() * 2;
        Q_EMIT widthDragged(m_dragged, std::max(x - m_dragOffset - m_layout.x(m_dragged), least));
    } else if (m_pressed < 0) {
        setCursor(edgeAt(x) >= 0 ? Qt::SplitHCursor : Qt::ArrowCursor);
    }
}

void GridHeader::mouseReleaseEvent(QMouseEvent *event)
{
    const int pressed = std::exchange(m_pressed, -1);
    m_dragged = -1;
    if (pressed >= 0 && rect().contains(event->position().toPoint()) &&
        m_layout.columnAt(event->position().toPoint().x()) == pressed)
        Q_EMIT sortRequested(pressed, event->modifiers().testFlag(Qt::ShiftModifier));
    update();
}

void GridHeader::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (const int column = edgeAt(event->position().toPoint().x()); column >= 0)
        Q_EMIT fitRequested(column);
    else
        mousePressEvent(event);
}

bool GridHeader::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && m_model) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int column = m_layout.columnAt(help->x());
        if (column >= 0)
            QToolTip::showText(help->globalPos(),
                               tr("%1\nClick to sort, Shift+click to sort further, a third click restores the stored "
                                  "order.")
                                   .arg(m_model->column(column).title),
                               this);
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}

} // namespace tarnwick
