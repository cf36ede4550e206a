#include "GridDelegate.h"

#include "Calendar.h"

#include <tarnwick/GridModel.h>
#include <tarnwick/paint/Colours.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Text and background colour of a cell. Black on white means the theme's colours. Any other text colour is moved
/// towards black or white until its contrast with the background is sufficient.
std::pair<QColor, QColor> cellColours(const RowColours &colours, const QPalette &palette, QPalette::ColorGroup group)
{
    constexpr RowColours kTheme;
    constexpr double kTextContrast = 4.5;
    const bool hasBackground = colours.background != kTheme.background;
    const QColor background = hasBackground ? fromColourRef(colours.background) : palette.color(group, QPalette::Base);
    if (colours.foreground != kTheme.foreground)
        return {readable(fromColourRef(colours.foreground), background, kTextContrast), background};
    return {hasBackground ? inkOn(background) : palette.color(group, QPalette::Text), background};
}

const GridColumn *columnOf(const QModelIndex &index)
{
    const auto *model = qobject_cast<const GridModel *>(index.model());
    return model ? &model->column(index.column()) : nullptr;
}

} // namespace

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const auto group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    const auto colours = index.data(GridModel::ColoursRole).value<RowColours>();
    auto [text, background] = cellColours(colours, option.palette, group);
    if (option.state & QStyle::State_Selected) {
        text = option.palette.color(group, QPalette::HighlightedText);
        background = option.palette.color(group, QPalette::Highlight);
    }
    painter->fillRect(option.rect, background);
    const GridColumn *column = columnOf(index);
    const QString shown = index.data().toString();
    if (column && column->editor == GridColumn::Editor::Check) {
        QStyleOptionButton box;
        box.palette = option.palette;
        const int side = option.widget->style()->pixelMetric(QStyle::PM_IndicatorWidth, &box, option.widget);
        box.rect = QRect(0, 0, side, side);
        box.rect.moveCenter(option.rect.center());
        box.state = QStyle::State_Enabled | (shown.isEmpty() ? QStyle::State_Off : QStyle::State_On);
        option.widget->style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, option.widget);
        // The frame of some styles cannot be seen on a dark or coloured row.
        QColor frame = text;
        frame.setAlphaF(0.5F);
        painter->setPen(frame);
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(box.rect.adjusted(0, 0, -1, -1));
    } else if (!shown.isEmpty()) {
        const int around = margin(option.fontMetrics);
        const QRect room = option.rect.adjusted(around, 0, -around, 0);
        // A cell shows one line; an ellipsis indicates further lines.
        const qsizetype end = shown.indexOf(u'\n');
        QString line = end < 0 ? shown : QString(shown.left(end) + u"…"_s);
        // Measuring a text of many megabytes takes seconds; no more than a character a pixel can be seen.
        if (line.size() > room.width())
            line = line.left(qMax(room.width(), 1)) + u"…"_s;
        if (option.fontMetrics.horizontalAdvance(line) > room.width())
            line = option.fontMetrics.elidedText(line, Qt::ElideRight, room.width());
        painter->setPen(text);
        painter->drawText(room, index.data(Qt::TextAlignmentRole).toInt() | Qt::TextSingleLine, line);
    }
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(QPen(text, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    const auto *model = qobject_cast<const GridModel *>(index.model());
    const GridColumn column = model ? model->cellEditor(index) : GridColumn();
    if (column.editor == GridColumn::Editor::Choice) {
        auto *combo = new QComboBox(parent);
        combo->setEditable(column.hasFreeText);
        combo->addItems(column.choices);
        combo->setAccessibleName(column.title);
        return combo;
    }
    auto *line = new QLineEdit(parent);
    line->setFrame(false);
    line->setAutoFillBackground(true);
    line->setAccessibleName(column.title);
    if (column.editor == GridColumn::Editor::Date)
        addCalendar(line);
    return line;
}

void GridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString text = index.data(Qt::EditRole).toString();
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        const int found = combo->findText(text, Qt::MatchFixedString);
        if (combo->isEditable())
            combo->setEditText(text);
        else
            combo->setCurrentIndex(found);
        return;
    }
    auto *line = qobject_cast<QLineEdit *>(editor);
    line->setText(text);
    line->selectAll();
}

void GridDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    if (const auto *combo = qobject_cast<QComboBox *>(editor)) {
        if (combo->isEditable() || combo->currentIndex() >= 0)
            model->setData(index, combo->currentText());
        return;
    }
    model->setData(index, qobject_cast<QLineEdit *>(editor)->text());
}

} // namespace tarnwick
