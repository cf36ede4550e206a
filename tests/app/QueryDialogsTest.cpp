#include "DialogFixture.h"

#include <query/dialogs/JParamDlg.h>
#include <query/dialogs/JQueryWin.h>
#include <query/QueryExecution.h>

#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using query::ParameterGrid;

namespace app {

namespace {

/// The dialogs of queries over a project's database, and pictures of them (see DialogFixture).
class QueryDialogsTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        sql(u"DELETE FROM report"_s);
        for (int i = 1; i <= kRows; ++i)
            sql(u"INSERT INTO report (file_name, outage, site_code, sec, cal_num, comp, row, col, pcnt, volts, defect, "
                u"oper_type, "
                u"meas_type, analyst_id, oper_id, entry_time) "
                u"VALUES ('cal%1.rep', 'R12', 'AB', 0, 7, 'SG1', %1, %2, %3, %4, 'ODI', 'PRI', 'Vpp', 'AB', 'CD', #1/2/2020#)"_s
                    .arg(i)
                    .arg(i % 5 + 1)
                    .arg(i * 4)
                    .arg(i * 0.75));
    }
    static constexpr int kRows = 20;
    query::QueryContext &context() { return session().queryContext(); }
    void run(query::JQueryWin &table, const QString &name, const QString &text)
    {
        query::executeStatement(session().database(), context(), name, text, table.result());
        table.rebuild();
        settle();
    }
    /// Types a text over the cell.
    static void type(QAbstractItemView &table, const QModelIndex &cell, const QString &text)
    {
        table.setCurrentIndex(cell);
        table.edit(cell);
        auto *editor = qobject_cast<QLineEdit *>(table.focusWidget());
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        settle();
    }
};

} // namespace

TEST_F(QueryDialogsTest, ResultsAreEditedAddedUpAndKeepTheirWidths)
{
    QDialog dialog(&window);
    auto *table = new query::JQueryWin(session().database(), context(), query::TableMode::Edit);
    (new QVBoxLayout(&dialog))->addWidget(table);
    dialog.resize(900, 400);
    run(*table, u"wear"_s, u"SELECT sec, row, col, pcnt, defect, file_name, 1 / (pcnt - 40) AS rate FROM report"_s);
    EXPECT_EQ(table->gridLayout().frozen(), 3);
    table->result().setColours(2, {tarnwick::ColourRef(0xFF), tarnwick::ColourRef(0x80FFFF)});
    table->selectionModel()->select(QItemSelection(table->grid().index(0, 1), table->grid().index(9, 2)),
                                    QItemSelectionModel::ClearAndSelect);
    dialog.activateWindow();
    picture(dialog, u"query-result"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->figures().startsWith(u"Count 20   Sum "); }));
    EXPECT_EQ(table->grid().index(0, 6).data(Qt::ToolTipRole).toString(), u"The values of this column are calculated.");

    type(*table, table->grid().index(0, 3), u"77"_s);
    EXPECT_EQ(table->result().cellText(0, 3).trimmed(), u"77");
    table->setCurrentIndex(table->grid().index(1, 3));
    table->edit(table->currentIndex());
    sql(u"UPDATE report SET pcnt = 11"_s);
    qobject_cast<QLineEdit *>(table->focusWidget())->setText(u"55"_s);
    QTest::keyClick(table->focusWidget(), Qt::Key_Return);
    settle();
    EXPECT_TRUE(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error).last().contains(u"[3197]"));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report WHERE pcnt = 55"_s), 0);

    QList<int> widths = table->columnWidths();
    widths[4] += 33;
    table->setColumnWidths(widths);
    run(*table, u"other"_s, u"SELECT defect FROM report WHERE FALSE"_s);
    EXPECT_EQ(table->grid().rowCount(), 0);
    run(*table, u"wear"_s, u"SELECT sec, row, col, defect FROM report"_s);
    EXPECT_EQ(table->columnWidths()[3], widths[4]);
}

TEST_F(QueryDialogsTest, ParametersAreAskedForInTheirTypes)
{
    context().history.remember(u"other"_s, u"least"_s, u"20"_s);
    context().history.remember(u"wear"_s, u"least"_s, u"40"_s);
    QList<query::ParameterEntry> entries(4);
    const std::pair<const char16_t *, dao::DataType> kParameters[] = {{u"least", dao::DataType::Integer},
                                                                      {u"since", dao::DataType::Date},
                                                                      {u"repaired", dao::DataType::Boolean},
                                                                      {u"pcnnt", dao::DataType::Integer}};
    for (size_t i = 0; i < 4; ++i) {
        entries[qsizetype(i)].name = QString::fromUtf16(kParameters[i].first);
        entries[qsizetype(i)].type = kParameters[i].second;
    }
    entries[0].setText(u"40"_s, said);
    entries[3].suggestion = u"pcnt"_s;
    const auto confirm = [&](const std::function<void(QDialog &, tarnwick::JTableWin &)> &work) {
        inNext<query::JParamDlg>([&](query::JParamDlg &dialog) {
            picture(dialog, u"parameters"_s);
            work(dialog, *dialog.findChild<tarnwick::JTableWin *>(u"parameters"_s));
        });
        return query::ParameterDialogs(said, &window).confirm(u"wear"_s, entries, context());
    };
    EXPECT_TRUE(confirm([&](QDialog &dialog, tarnwick::JTableWin &table) {
        EXPECT_EQ(dialog.windowTitle(), u"wear Parameters");
        EXPECT_EQ(table.currentSourceRow(), 1) << "the first without a value";
        const tarnwick::GridSource &grid = *table.grid().source();
        EXPECT_EQ(grid.cellEditor(0, ParameterGrid::Value).choices, (QStringList{u"40"_s, u"20"_s}));
        EXPECT_EQ(grid.cellEditor(1, ParameterGrid::Value).editor, tarnwick::GridColumn::Editor::Date);
        EXPECT_EQ(grid.tip(3, ParameterGrid::Value), u"[pcnnt] (perhaps a slip of pcnt)");
        type(table, table.grid().index(1, ParameterGrid::Value), u"02/03/2020"_s);
        table.grid().setData(table.grid().index(3, ParameterGrid::Value), u"many"_s);
        table.setCurrentIndex(table.grid().index(3, ParameterGrid::Value));
        EXPECT_EQ(dialog.findChild<QLabel *>(u"message"_s)->text(), u"[pcnnt] (\"many\" is no value of type Integer)");
        choose(dialog, u"Clear Query History"_s);
        QTest::keyClick(&table, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    }));
    EXPECT_EQ(entries[1].value.type(), dao::Value::Type::Date);
    EXPECT_TRUE(entries[3].value.isEmpty());
    EXPECT_EQ(context().history.valuesOf(u"wear"_s, u"least"_s), QStringList{u"20"_s});
    EXPECT_FALSE(confirm([&](QDialog &dialog, tarnwick::JTableWin &table) {
        type(table, table.grid().index(1, ParameterGrid::Value), u"03/03/2020"_s);
        dialog.reject();
    }));
    EXPECT_EQ(entries[1].text, u"02/03/2020");
}

} // namespace app
