// Actions of tables: sorting, filter, find, copying and changes of tables.
#include "GridFilterRow.h"
#include "GridFindBar.h"
#include "Guarded.h"
#include "JTableWin.h"
#include "ProgressDialog.h"

#include <tarnwick/GridCopy.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

QAction *JTableWin::addTableAction(const QString &name, const QString &text, const QList<QKeySequence> &keys,
                                   const std::function<void()> &work)
{
    auto *action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, work);
    addAction(action);
    return action;
}

void JTableWin::makeActions()
{
    using Keys = QList<QKeySequence>;
    addTableAction(u"copy"_s, u"&Copy"_s, QKeySequence::keyBindings(QKeySequence::Copy), [this] { copy(false); });
    addTableAction(u"copyWithTitles"_s, u"Copy with &Titles"_s, Keys{Qt::CTRL | Qt::SHIFT | Qt::Key_C},
                   [this] { copy(true); });
    addTableAction(u"find"_s, u"&Find ..."_s, QKeySequence::keyBindings(QKeySequence::Find), [this] { showFind(); });
    addTableAction(u"findNext"_s, u"Find &Next"_s, Keys{Qt::Key_F3}, [this] { findNext(true); });
    addTableAction(u"findPrevious"_s, u"Find &Previous"_s, Keys{Qt::SHIFT | Qt::Key_F3}, [this] { findNext(false); });
    QAction *filter = addTableAction(u"filter"_s, u"Fi&lter Row"_s, Keys{Qt::CTRL | Qt::Key_L},
                                     [this] { showFilter(m_filterRow->isHidden()); });
    filter->setCheckable(true);
    addTableAction(u"sort"_s, u"&Sort by Column"_s, Keys{Qt::CTRL | Qt::SHIFT | Qt::Key_O},
                   [this] { sortByColumn(currentIndex().column(), false); });
    addTableAction(u"sortFurther"_s, u"Sort &Also by Column"_s, {},
                   [this] { sortByColumn(currentIndex().column(), true); });
    addTableAction(u"narrower"_s, u"Na&rrower Column"_s, Keys{Qt::ALT | Qt::SHIFT | Qt::Key_Left},
                   [this] { widenColumn(-1); });
    addTableAction(u"wider"_s, u"&Wider Column"_s, Keys{Qt::ALT | Qt::SHIFT | Qt::Key_Right},
                   [this] { widenColumn(1); });
    addTableAction(u"fitColumns"_s, u"Fit Col&umn Widths"_s, {}, [this] {
        for (int i = 0; i < m_layout.count(); ++i)
            fitColumn(i);
    });
    addTableAction(u"insertRow"_s, u"&Insert Row"_s, Keys{Qt::Key_Insert}, [this] { insertRow(); });
    addTableAction(u"deleteRows"_s, u"&Delete Rows"_s, Keys{Qt::CTRL | Qt::Key_Delete}, [this] { deleteRows(); });
}

QAction *JTableWin::action(const QString &name) const
{
    return findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
}

void JTableWin::refreshActions()
{
    const auto offer = [this](const QString &name, const QString &whyNot) {
        QAction *each = action(name);
        each->setEnabled(whyNot.isEmpty());
        each->setToolTip(whyNot.isEmpty() ? QString(each->text()).remove(u'&') : whyNot);
    };
    GridSource *source = m_grid.source();
    offer(u"insertRow"_s, source ? source->whyNotInsertable() : u"There is no table."_s);
    const int row = currentSourceRow();
    offer(u"deleteRows"_s, row >= 0 ? source->whyNotDeletable(row) : u"No row is current."_s);
    for (const char16_t *name : {u"sort", u"sortFurther", u"narrower", u"wider"})
        offer(QString::fromUtf16(name), currentIndex().isValid() ? QString() : u"No cell is current."_s);
    action(u"filter"_s)->setChecked(!m_filterRow->isHidden());
}

void JTableWin::runLong(const QString &title, const std::function<void(Progress &)> &work)
{
    guarded(m_prompts, [&] {
        ProgressDialog progress(this, title);
        work(progress);
    });
}

void JTableWin::keepCurrent(const std::function<void()> &work)
{
    const int source = currentSourceRow();
    const int column = std::max(0, currentIndex().column());
    work();
    const int shown = source >= 0 ? m_grid.shownRow(source) : -1;
    if (m_grid.rowCount() > 0 && m_grid.columnCount() > 0)
        setCurrentIndex(m_grid.index(std::max(0, shown), column));
}

void JTableWin::sortByColumn(int column, bool isFurther)
{
    QList<GridModel::SortKey> keys = m_grid.sortKeys();
    const auto known =
        std::find_if(keys.begin(), keys.end(), [column](const auto &key) { return key.column == column; });
    // Cycles through ascending, descending and stored order.
    std::optional<Qt::SortOrder> order = Qt::AscendingOrder;
    if (known != keys.end())
        order = known->order == Qt::AscendingOrder ? std::optional(Qt::DescendingOrder) : std::nullopt;
    if (!isFurther)
        keys = known != keys.end() ? QList{*known} : QList<GridModel::SortKey>();
    const qsizetype place =
        std::find_if(keys.begin(), keys.end(), [column](const auto &key) { return key.column == column; }) -
        keys.begin();
    if (!order)
        keys.removeAt(place);
    else if (place < keys.size())
        keys[place].order = *order;
    else
        keys.append({column, *order});
    runLong(u"Sort"_s, [&](Progress &progress) { keepCurrent([&] { m_grid.sortBy(keys, &progress); }); });
}

void JTableWin::widenColumn(int characters)
{
    const int column = currentIndex().column();
    QList<int> widths = m_layout.widths();
    if (column < 0 || column >= widths.size())
        return;
    const int step = fontMetrics().horizontalAdvance(u'0');
    widths[column] = std::max(2 * step, widths[column] + characters * step);
    setColumnWidths(widths);
    scrollTo(currentIndex());
}

void JTableWin::applyFilter()
{
    bool isDone = false;
    runLong(u"Filter"_s, [&](Progress &progress) {
        keepCurrent([&] { m_grid.filterBy(m_filterRow->texts(), &progress); });
        isDone = true;
    });
    if (!isDone) // the fields show the conditions that hold
        m_filterRow->setTexts(m_grid.filters());
}

void JTableWin::showFilter(bool shown)
{
    m_filterRow->setVisible(shown);
    updateGeometries();
    if (shown) {
        m_filterRow->focusColumn(std::max(0, currentIndex().column()));
    } else {
        m_filterRow->clear();
        if (m_grid.isFiltered())
            applyFilter();
        m_filterRow->setVisible(m_grid.isFiltered()); // after Cancel
        updateGeometries();
        setFocus();
    }
    refreshActions();
}

void JTableWin::showFind()
{
    m_findBar->show();
    updateGeometries();
    m_findBar->begin();
}

void JTableWin::findNext(bool forward)
{
    const QString text = m_findBar->text();
    if (text.isEmpty()) {
        showFind();
        return;
    }
    runLong(u"Find"_s, [&](Progress &progress) {
        const QModelIndex from = currentIndex();
        const QModelIndex found = m_grid.find(text, from, forward, &progress);
        if (!found.isValid()) {
            m_findBar->showNote(u"Not found"_s);
            return;
        }
        const bool isRound = from.isValid() && (forward ? found.row() < from.row() : found.row() > from.row());
        m_findBar->showNote(isRound ? u"Continued from the other end"_s : QString());
        selectionModel()->setCurrentIndex(found, QItemSelectionModel::ClearAndSelect);
        scrollTo(found);
        viewport()->update();
    });
}

void JTableWin::copy(bool withTitles)
{
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty())
        return;
    runLong(u"Copy"_s, [&](Progress &progress) {
        GridClip clip = copyCells(m_grid, selection, withTitles, &progress);
        auto content = std::make_unique<QMimeData>();
        content->setText(clip.text);
        if (!clip.html.isEmpty())
            content->setHtml(clip.html);
        QApplication::clipboard()->setMimeData(content.release());
    });
}

void JTableWin::insertRow()
{
    const int row = currentIndex().isValid() ? currentIndex().row() : m_grid.rowCount();
    guarded(m_prompts, [&] {
        if (m_grid.insertRows(row, 1))
            setCurrentIndex(m_grid.index(row, std::max(0, currentIndex().column())));
    });
}

void JTableWin::deleteRows()
{
    GridSource *source = m_grid.source();
    QList<int> rows = selectedSourceRows();
    if (rows.isEmpty() && currentSourceRow() >= 0)
        rows = {currentSourceRow()};
    if (!source || rows.isEmpty())
        return;
    for (const int row : std::as_const(rows)) {
        if (const QString whyNot = source->whyNotDeletable(row); !whyNot.isEmpty()) {
            m_prompts.showStatus(whyNot); // all or none
            return;
        }
    }
    const int column = std::max(0, currentIndex().column());
    const int next = m_grid.shownRow(rows.first());
    runLong(u"Delete Rows"_s, [&](Progress &progress) {
        source->asOneChange([&] {
            if (rows.size() == 1)
                m_grid.removeRows(next, 1);
            else
                m_grid.removeSourceRows(rows, &progress);
        });
    });
    if (m_grid.rowCount() > 0)
        setCurrentIndex(m_grid.index(std::min(next, m_grid.rowCount() - 1), column));
    viewport()->update();
}

} // namespace tarnwick
