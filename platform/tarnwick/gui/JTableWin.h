#pragma once
#include "GridLayout.h"

#include <tarnwick/GridModel.h>
#include <tarnwick/Prompts.h>

#include <QAbstractItemView>
#include <QTimer>

namespace tarnwick {

class GridFilterRow;
class GridFindBar;
class GridHeader;

/// All tables of the program: the rows of a GridSource below their titles, with an entry column that numbers them,
/// frozen columns, sorting, a filter row, find, copying and editing. All rows have the same height, so the table itself
/// uses no memory per row, and a million rows open and scroll like ten.
///
/// Keys: arrows, Page Up and Down, Home and End (with Ctrl: first and last row), Shift extends the selection, F2 or
/// typing edits, Space sets or clears a check mark, Ctrl+A, Ctrl+C (with Shift: with titles), Ctrl+F, F3, Ctrl+L
/// filter, Ctrl+Shift+O sorts by the current column (again: descending, then the stored order), Alt+Shift+Left and
/// Right change its width, Insert and Ctrl+Del insert and delete rows.
class JTableWin : public QAbstractItemView
{
    Q_OBJECT
public:
    explicit JTableWin(UserPrompts &prompts, QWidget *parent = nullptr);
    ~JTableWin() override;

    /// The source must outlive the table or be replaced first.
    void setSource(GridSource *source);
    GridModel &grid() { return m_grid; }
    const GridModel &grid() const { return m_grid; }
    /// Call after the source was filled again: shows it from its first row in stored order, with its current columns.
    /// Widths are kept if the titles are the same.
    void reload();
    /// Call after rows were added to the source or removed, except by this table. Keeps widths, order, filter and, if
    /// possible, the current row.
    void refreshRows();

    /// width: in characters; 0 for no entry column. format: printf style, for the entry number.
    void setEntryColumn(const QString &title, int width, const QString &format = QStringLiteral("%5d"));
    /// The column of entry numbers; characters 0: there is none.
    struct EntryColumn
    {
        QString title;
        int characters = 0;
        QString format;
    };
    const EntryColumn &entryColumn() const { return m_entry; }
    /// First row and number of rows that are completely visible.
    std::pair<int, int> rowsInSight() const;
    /// Number of columns, from the first, that do not scroll.
    void setFrozenColumns(int columns);
    /// Number of rows used for the table's size hint.
    void setVisibleRows(int rows);

    /// Source row of the current cell; -1 if none.
    int currentSourceRow() const;
    void setCurrentSourceRow(int sourceRow);
    /// Source rows with a selected cell, in the order shown.
    QList<int> selectedSourceRows() const;

    /// Get and set the widths of all columns in pixels, to keep them between sessions. Ignored if the number of columns
    /// differs.
    QList<int> columnWidths() const { return m_layout.widths(); }
    void setColumnWidths(const QList<int> &widths);
    void fitColumn(int column);

    /// Actions for a context menu or a dialog's menu: "copy", "copyWithTitles", "find", "findNext", "filter",
    /// "sort", "sortFurther", "narrower", "wider", "fitColumns", "insertRow", "deleteRows".
    QAction *action(const QString &name) const;

    // QAbstractItemView
    void setModel(QAbstractItemModel *model) override;
    QRect visualRect(const QModelIndex &index) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    QModelIndex indexAt(const QPoint &point) const override;
    void reset() override;
    void keyboardSearch(const QString &) override {}
    QSize sizeHint() const override;
    QSize viewportSizeHint() const override { return sizeHint(); }

    int rowHeight() const { return m_rowHeight; }
    const GridLayout &gridLayout() const { return m_layout; }

Q_SIGNALS:
    /// Return or a double click on a row whose cell cannot be edited by it.
    void rowActivated(int sourceRow);
    /// The current row, the order or the number of rows has changed; for counts beside the table.
    void rowsChanged();
    /// The table has other columns or the default widths again.
    void columnsChanged();
    /// The selection has changed; emitted once per change, after a short delay.
    void selectionChangeEnded();

protected:
    /// Call after a reason of the source why rows cannot be inserted or deleted has changed.
    void refreshActions();
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override { return m_layout.scroll(); }
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &) const override { return false; }
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void makeActions();
    void makeParts();
    QAction *addTableAction(const QString &name, const QString &text, const QList<QKeySequence> &keys,
                            const std::function<void()> &work);
    void resetColumns();
    int defaultWidth(const GridColumn &column) const;
    void measureRows();
    int firstRow() const;
    /// Number of rows that fit completely into the viewport; at least 1.
    int pageRows() const;
    int rowAt(int y) const;
    bool isRowEditable(int row) const;
    void paintRow(QPainter &painter, int row, int firstColumn, int lastColumn);
    void paintLine(QPainter &painter, int row, const QString &text);
    void paintEntry(QPainter &painter, int row);
    QStyleOptionViewItem cellOption(const QModelIndex &index) const;
    /// Runs work with a progress dialog and reports failures. After Cancel everything is as before.
    void runLong(const QString &title, const std::function<void(Progress &)> &work);
    void sortByColumn(int column, bool isFurther);
    void widenColumn(int characters);
    void applyFilter();
    void showFilter(bool shown);
    void showFind();
    void findNext(bool forward);
    void copy(bool withTitles);
    void insertRow();
    void deleteRows();
    bool toggleMark(const QModelIndex &index);
    void keepCurrent(const std::function<void()> &work);

    UserPrompts &m_prompts;
    GridModel m_grid;
    GridLayout m_layout;
    GridHeader *m_header = nullptr;
    GridFilterRow *m_filterRow = nullptr;
    GridFindBar *m_findBar = nullptr;
    QTimer m_selectionDelay;
    EntryColumn m_entry;
    int m_visibleRows = 10;
    int m_rowHeight = 20;
    int m_digitWidth = 0;
};

} // namespace tarnwick
