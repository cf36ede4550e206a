#include <tarnwick/GridCopy.h>
#include <tarnwick/gui/JTableWin.h>

#include <support/Printers.h>

#include <gtest/gtest.h>
#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Rows of texts; the second column is a number, the third a mark.
class Rows : public GridSource
{
public:
    QList<QStringList> cells{{u"pear"_s, u"10"_s, u""_s},
                             {u"Apple"_s, u"9"_s, u"x"_s},
                             {u"fig"_s, u""_s, u""_s},
                             {u"apple"_s, u"100"_s, u""_s}};
    bool refuses = false;
    int lineRow = -1; ///< a row without cells

    int rowCount() const override { return int(cells.size()); }
    int columnCount() const override { return 3; }
    GridColumn column(int column) const override
    {
        GridColumn result{.title = QStringList{u"NAME"_s, u"COUNT"_s, u"KEEP"_s}[column], .width = 12};
        if (column == 1)
            result.align = ColumnAlign::Right;
        if (column == 2)
            result.editor = GridColumn::Editor::Check;
        return result;
    }
    QString text(int row, int column) const override { return row == lineRow ? QString() : cells[row][column]; }
    QString lineText(int row) const override { return row == lineRow ? u"A line"_s : QString(); }
    QVariant value(int row, int column) const override
    {
        const QString &text = cells[row][column];
        return column == 1 ? (text.isEmpty() ? QVariant() : QVariant(text.toInt())) : QVariant(text);
    }
    QString whyNotEditable(int, int column) const override { return column == 0 ? u"Names are fixed."_s : QString(); }
    QString editText(int row, int column) const override
    {
        return column == 2 ? (cells[row][2].isEmpty() ? u"0"_s : u"1"_s) : cells[row][column];
    }
    bool setText(int row, int column, const QString &text) override
    {
        if (refuses)
            return false;
        cells[row][column] = column == 2 ? (text == u"1" ? u"x"_s : QString()) : text;
        return true;
    }
    QString whyNotInsertable() const override { return {}; }
    bool insertRow(int row) override
    {
        cells.insert(row, {u"new"_s, {}, {}});
        return true;
    }
    QString whyNotDeletable(int row) const override { return cells[row][0] == u"fig" ? u"Keep figs."_s : QString(); }
    bool deleteRow(int row) override
    {
        cells.removeAt(row);
        return true;
    }
};

/// Many rows that are computed; counts how many cells were read.
class Computed : public GridSource
{
public:
    explicit Computed(int count)
        : rows(count)
    {
    }
    int rows;
    mutable qint64 reads = 0;

    int rowCount() const override { return rows; }
    int columnCount() const override { return 15; }
    GridColumn column(int column) const override { return {.title = u"C%1"_s.arg(column), .width = 10}; }
    QString text(int row, int column) const override
    {
        ++reads;
        return QString::number(row) + u':' + QString::number(column);
    }
};

class CancelAtOnce : public Progress
{
public:
    void report(qint64, qint64, const QString &) override {}
    bool cancelled() override { return true; }
};

/// Does while rows are deleted what a view does that is painted or receives the focus.
class LooksAtRows : public Progress
{
public:
    explicit LooksAtRows(JTableWin &table)
        : m_table(table)
    {
    }
    bool cancelled() override
    {
        const QModelIndex current = m_table.currentIndex();
        EXPECT_EQ(m_table.grid().flags(current), Qt::NoItemFlags);
        EXPECT_EQ(m_table.currentSourceRow(), -1);
        return false;
    }

private:
    JTableWin &m_table;
};

QStringList shown(const GridModel &model, int column = 0)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

class GridTest : public ::testing::Test
{
protected:
    GridTest()
        : table(prompts)
    {
        table.setSource(&rows);
        table.setEntryColumn(u"ENTRY#"_s, 6);
        table.resize(600, 300);
        table.show();
        QApplication::processEvents();
    }
    GridModel &model() { return table.grid(); }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&table, Qt::Key(key), modifiers);
    }

    RecordingPrompts prompts;
    Rows rows;
    JTableWin table;
};

} // namespace

TEST(GridFilterTest, ConditionsAreReadAsTyped)
{
    struct Case
    {
        QString typed;
        QVariant value;
        bool matches;
    };
    const QList<Case> cases{
        {u"PLU"_s, u"Tube plug"_s, true},
        {u"PLU"_s, u"sleeve"_s, false},
        {u"1r*2"_s, u"1R12"_s, true},
        {u"1r?2"_s, u"1R112"_s, false},
        {u"= 40"_s, 40, true},
        {u"=40"_s, 40.5, false},
        {u"="_s, u""_s, true},
        {u"<>"_s, u""_s, false},
        {u"<> ndd"_s, u"NDD"_s, false},
        {u">= 40"_s, 100, true},
        {u">9"_s, u"10"_s, true},
        {u"<40"_s, QVariant(), false},
        {u"20..40"_s, 40, true},
        {u"20..40"_s, 40.1, false},
        {u"a..b"_s, u"xa..by"_s, true},
        {u"> m"_s, u"north"_s, true},
        {u" "_s, u"any"_s, true},
        {u"*a*a*a*b"_s, u"aaaaaaaaaaaac"_s, false},
    };
    for (const Case &each : cases)
        EXPECT_EQ(GridFilter(each.typed).matches(each.value, each.value.toString()), each.matches)
            << each.typed.toStdString() << " on " << each.value.toString().toStdString();
}

TEST_F(GridTest, ModelKeepsItsContractThroughEveryChange)
{
    QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    model().sortBy({{0, Qt::AscendingOrder}, {1, Qt::DescendingOrder}});
    EXPECT_EQ(shown(model(), 1), (QStringList{u"100"_s, u"9"_s, u""_s, u"10"_s}));
    ASSERT_TRUE(model().insertRows(1, 1));
    EXPECT_EQ(shown(model()), (QStringList{u"apple"_s, u"new"_s, u"Apple"_s, u"fig"_s, u"pear"_s}));
    ASSERT_TRUE(model().removeRows(0, 1));
    EXPECT_FALSE(model().removeRows(2, 1)) << "the source refuses";
    model().sortBy({{1, Qt::AscendingOrder}});
    EXPECT_EQ(shown(model(), 1), (QStringList{u""_s, u""_s, u"9"_s, u"10"_s}))
        << "empty cells first, numbers as numbers";
    model().filterBy({u""_s, u">=10"_s});
    EXPECT_EQ(shown(model()), QStringList{u"pear"_s});
    model().filterBy({});
    model().sortBy({});
    EXPECT_EQ(shown(model()), (QStringList{u"pear"_s, u"new"_s, u"Apple"_s, u"fig"_s})) << "stored order again";
    rows.cells.append({u"late"_s, u"1"_s, u""_s});
    model().noteAppended();
    EXPECT_EQ(model().rowCount(), 5);
    model().sortBy({{0, Qt::DescendingOrder}});
    table.setCurrentIndex(model().index(1, 0));
    LooksAtRows looks(table);
    EXPECT_TRUE(model().removeSourceRows({4, 0}, &looks));
    EXPECT_EQ(shown(model()), (QStringList{u"new"_s, u"fig"_s, u"Apple"_s}));
    EXPECT_FALSE(model().removeSourceRows({0, 1, 2})) << "stops at the first row that is refused";
    CancelAtOnce cancel;
    Computed many(100'000);
    GridModel big;
    big.setSource(&many);
    EXPECT_ANY_THROW(big.sortBy({{0, Qt::DescendingOrder}}, &cancel));
    EXPECT_EQ(big.index(0, 0).data().toString(), u"0:0"_s) << "a sort that was cancelled changes nothing";
}

TEST_F(GridTest, KeysMoveEditMarkInsertAndDelete)
{
    key(Qt::Key_Down);
    key(Qt::Key_End);
    EXPECT_EQ(table.currentIndex(), model().index(1, 2));
    key(Qt::Key_Space);
    EXPECT_EQ(rows.cells[1][2], u""_s) << "Space clears the mark";
    key(Qt::Key_Left);
    key(Qt::Key_F2);
    auto *editor = table.viewport()->findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, u"77"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents(); // editors are closed by a queued call
    EXPECT_EQ(rows.cells[1][1], u"77"_s);
    rows.refuses = true;
    EXPECT_FALSE(model().setData(model().index(1, 1), u"bad"_s));
    EXPECT_EQ(rows.cells[1][1], u"77"_s);
    key(Qt::Key_Insert);
    EXPECT_EQ(rows.cells[1][0], u"new"_s);
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(rows.cells[1][0], u"Apple"_s);
    EXPECT_FALSE(model().flags(model().index(0, 0)).testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(model().index(0, 0).data(Qt::ToolTipRole).toString(), u"Names are fixed."_s);
    int activated = -1;
    QObject::connect(&table, &JTableWin::rowActivated, [&](int row) { activated = row; });
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_EQ(activated, 1);
    const QList<int> before = table.columnWidths();
    table.action(u"wider"_s)->trigger();
    EXPECT_GT(table.columnWidths()[0], before[0]);
    table.reload();
    EXPECT_GT(table.columnWidths()[0], before[0]) << "the same columns";
    table.setCurrentSourceRow(1);
    table.action(u"sort"_s)->trigger();
    EXPECT_EQ(model().sortKeys(), (QList<GridModel::SortKey>{{0, Qt::AscendingOrder}}));
    EXPECT_EQ(table.currentSourceRow(), 1) << "the current row stays";
    table.selectAll();
    table.action(u"deleteRows"_s)->trigger();
    EXPECT_EQ(rows.cells.size(), 4) << "none, because one is refused";
    EXPECT_EQ(prompts.texts(RecordingPrompts::Entry::Kind::Status), QStringList{u"Keep figs."_s});
}

TEST_F(GridTest, CopyAndFiguresTakeTheMarkedCells)
{
    rows.cells[0][0] = u"a\tb"_s;
    table.selectionModel()->select(QItemSelection(model().index(0, 0), model().index(1, 1)),
                                   QItemSelectionModel::Select);
    table.selectionModel()->select(model().index(3, 1), QItemSelectionModel::Select);
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), u"NAME\tCOUNT\n\"a\tb\"\t10\nApple\t9\n\t100\n"_s);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->html().contains(u"<td align=\"right\">100</td>"_s));
    EXPECT_EQ(cellStatistics(model(), table.selectionModel()->selection()).text(),
              u"Count 3   Sum 119   Mean 39.66666667   Min 9   Max 100"_s);
    rows.lineRow = 2;
    table.selectAll();
    EXPECT_TRUE(copyCells(model(), table.selectionModel()->selection(), false).text.contains(u"\nA line\t\t\n"_s));
    EXPECT_EQ(model().find(u"a line"_s, {}, true), model().index(2, 0));
}

TEST_F(GridTest, FilterRowAndFindWorkByKeysAndGiveTheFocusBack)
{
    key(Qt::Key_L, Qt::ControlModifier);
    auto *field = table.findChild<QLineEdit *>(u"filter0"_s);
    ASSERT_TRUE(field && field->isVisible());
    QTest::keyClicks(field, u"app"_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(shown(model()), (QStringList{u"Apple"_s, u"apple"_s}));
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(model().rowCount(), 4) << "closing the row shows everything again";
    key(Qt::Key_F, Qt::ControlModifier);
    auto *find = table.findChild<QLineEdit *>(u"findText"_s);
    ASSERT_TRUE(find && find->isVisible());
    QTest::keyClicks(find, u"APPLE"_s);
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(table.currentIndex().row(), 3) << "from the row that the filter made current";
    key(Qt::Key_F3);
    EXPECT_EQ(table.currentIndex().row(), 1) << "goes round";
    find->nextInFocusChain()->setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&table));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(find->isVisible()) << "Esc on a button closes the bar, too";
}

TEST_F(GridTest, AMillionRowsReadOnlyWhatIsInSight)
{
    Computed many(5'000'000);
    table.setSource(&many);
    table.setFrozenColumns(2);
    QApplication::processEvents();
    many.reads = 0;
    key(Qt::Key_End, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_EQ(table.currentIndex(), model().index(4'999'999, 14));
    table.grab();
    EXPECT_LT(many.reads, 2000);
    EXPECT_EQ(table.visualRect(model().index(4'999'999, 0)).left(), table.gridLayout().entryWidth())
        << "frozen columns stay where they are";
    EXPECT_EQ(table.indexAt(table.visualRect(table.currentIndex()).center()), table.currentIndex());
    key(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(table.selectionModel()->selection().size(), 1) << "one range, whatever its size";
    table.setSource(&rows);
}

TEST_F(GridTest, ScreenReadersGetRowColumnAndValue)
{
    QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(&table);
    ASSERT_TRUE(grid && grid->tableInterface());
    EXPECT_EQ(grid->role(), QAccessible::Table);
    EXPECT_EQ(grid->tableInterface()->rowCount(), 4);
    QAccessibleInterface *cell = grid->tableInterface()->cellAt(1, 1);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell->text(QAccessible::Name), u"9"_s);
    EXPECT_EQ(cell->text(QAccessible::Description), u"COUNT, row 2"_s);
    EXPECT_TRUE(cell->state().editable);
    EXPECT_EQ(grid->tableInterface()->columnDescription(1), u"COUNT"_s);
    model().sortBy({{0, Qt::AscendingOrder}});
    table.selectionModel()->select(model().index(2, 1), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(grid->tableInterface()->selectedRows(), QList<int>{2}) << "as shown, like all its rows";
}

} // namespace tarnwick
