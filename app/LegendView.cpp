#include "LegendView.h"

#include "HintText.h"
#include "LegendModel.h"
#include "SymbolDelegate.h"

#include <tarnwick/gui/TableText.h>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Delegate that edits descriptions. A refresh of the legend does not change text that is being typed.
class DescriptionDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        const auto *line = qobject_cast<const QLineEdit *>(editor);
        // Setting the same text again would clear its selection.
        if (!line || (!line->isModified() && line->text() != index.data(Qt::EditRole).toString()))
            QStyledItemDelegate::setEditorData(editor, index);
    }
};

} // namespace

LegendView::LegendView(LegendModel *model, QWidget *parent)
    : QTableView(parent)
{
    setObjectName(u"legend"_s);
    setAccessibleName(u"Legend"_s);
    setAccessibleDescription(u"The entries of the map; entries further down are painted over those above"_s);
    setModel(model);
    setItemDelegateForColumn(LegendModel::Symbol, new SymbolDelegate(this));
    setItemDelegateForColumn(LegendModel::Description, new DescriptionDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(InternalMove);
    setDropIndicatorShown(true);
    setDragDropOverwriteMode(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionResizeMode(LegendModel::Description, QHeaderView::Stretch);
    for (const int column : {LegendModel::Symbol, LegendModel::Type, LegendModel::Tubes, LegendModel::Hits})
        horizontalHeader()->setSectionResizeMode(column, QHeaderView::Fixed);
    tarnwick::TableText::follow(this);
    fitRows();
    connect(model, &QAbstractItemModel::dataChanged, this, &LegendView::fitColumns);
    connect(model, &QAbstractItemModel::modelReset, this, &LegendView::fitColumns);
    // New and redone entries become current, because the buttons above act on the current entry.
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex &, int, int last) {
        if (!currentIndex().isValid())
            setCurrentEntry(last);
    });
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &LegendView::dropRename);
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex &index) {
        if (index.column() != LegendModel::Symbol)
            Q_EMIT entryActivated(index.row());
    });
}

int LegendView::currentEntry() const
{
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void LegendView::setCurrentEntry(int entry)
{
    const int last = model()->rowCount() - 1;
    if (last < 0)
        return;
    const QModelIndex index = model()->index(std::clamp(entry, 0, last), LegendModel::Description);
    setCurrentIndex(index);
    scrollTo(index);
}

void LegendView::fitRows()
{
    const int height = fontMetrics().height() + 8;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    fitColumns();
}

void LegendView::fitColumns()
{
    const int gap = 2 * fontMetrics().horizontalAdvance(u'0');
    const auto width = [this, gap](int column, const QString &sample) {
        const QString title = model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        return gap + std::max({sizeHintForColumn(column) - gap / 2, fontMetrics().horizontalAdvance(sample),
                               fontMetrics().horizontalAdvance(title)});
    };
    setColumnWidth(LegendModel::Symbol, fontMetrics().height() * 3);
    setColumnWidth(LegendModel::Type, width(LegendModel::Type, u"RAND FILL"_s));
    setColumnWidth(LegendModel::Tubes, width(LegendModel::Tubes, u"00,000"_s));
    setColumnWidth(LegendModel::Hits, width(LegendModel::Hits, u"00,000"_s));
}

void LegendView::contextMenuEvent(QContextMenuEvent *event)
{
    QModelIndex index = currentIndex();
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse)
        index = indexAt(event->pos());
    else if (index.isValid())
        place = viewport()->mapToGlobal(visualRect(index).center());
    if (index.isValid())
        Q_EMIT contextMenuRequested(place, index.row());
}

int LegendView::symbolAt(const QPoint &place) const
{
    const QModelIndex index = indexAt(place);
    if (!index.isValid() || index.column() != LegendModel::Symbol)
        return -1;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    const auto *delegate = static_cast<const SymbolDelegate *>(itemDelegateForColumn(LegendModel::Symbol));
    return delegate->isOnSymbol(option, index, place) ? index.row() : -1;
}

void LegendView::mousePressEvent(QMouseEvent *event)
{
    m_pressedSymbol = event->button() == Qt::LeftButton ? symbolAt(event->position().toPoint()) : -1;
    QTableView::mousePressEvent(event);
}

void LegendView::mouseReleaseEvent(QMouseEvent *event)
{
    const int pressed = std::exchange(m_pressedSymbol, -1);
    const bool isDragged = state() == DraggingState;
    QTableView::mouseReleaseEvent(event);
    if (pressed >= 0 && !isDragged && symbolAt(event->position().toPoint()) == pressed)
        Q_EMIT symbolRequested(pressed);
}

void LegendView::renameCurrent()
{
    if (currentIndex().isValid())
        edit(currentIndex().siblingAtColumn(LegendModel::Description));
}

void LegendView::endRename()
{
    if (state() != EditingState)
        return;
    const QPointer<QWidget> editor = openEditor();
    if (!editor)
        return;
    commitData(editor);
    if (editor && editor == openEditor())
        closeEditor(editor, QAbstractItemDelegate::NoHint);
}

// QAbstractItemView removes its record of an editor before it hides the editor. The editor then loses the focus, and
// the view warns that it does not know the editor.
void LegendView::dropRename()
{
    if (QWidget *editor = openEditor())
        closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

void LegendView::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    dropRename();
    QTableView::rowsAboutToBeRemoved(parent, first, last);
}

// The children of the viewport may include editors of earlier descriptions that are not deleted yet.
QWidget *LegendView::openEditor() const
{
    for (int row = 0; row < model()->rowCount(); ++row) {
        if (QWidget *editor = indexWidget(model()->index(row, LegendModel::Description)))
            return editor;
    }
    return nullptr;
}

void LegendView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex current = currentIndex();
    // Return that ends editing a description also arrives here.
    if (current.isValid() && event->modifiers() == Qt::NoModifier && state() != EditingState) {
        if (event->key() == Qt::Key_Space) {
            const QModelIndex symbol = current.siblingAtColumn(LegendModel::Symbol);
            const bool shown = symbol.data(Qt::CheckStateRole).toInt() == Qt::Checked;
            model()->setData(symbol, shown ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
            return;
        }
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            Q_EMIT entryActivated(current.row());
            return;
        }
    }
    QTableView::keyPressEvent(event);
}

void LegendView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!isEnabled() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(hintColour(palette()));
    const int margin = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     u"No entries yet. Fills made with the buttons of the tool bar are listed here."_s);
}

void LegendView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitRows();
}

void LegendView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    fitColumns();
}

} // namespace app
