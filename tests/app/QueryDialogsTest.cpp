#include "DialogFixture.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/TubesheetMap.h>
#include <map/dialogs/QueryFillDlg.h>
#include <map/FillCommit.h>
#include <plans/QueryFill.h>

#include <query/dialogs/FormatInfoDlg.h>
#include <query/dialogs/JParamDlg.h>
#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/JSchemaInfoDlg.h>
#include <query/dialogs/QueryPage.h>
#include <query/dialogs/SQLOptionsDlg.h>
#include <query/dialogs/TubeDlg.h>
#include <query/QueryExecution.h>

#include <QLineEdit>
#include <QTabWidget>
#include <QVBoxLayout>
#include <tarnwick/gui/NumberField.h>

using namespace Qt::StringLiterals;
using query::ParameterGrid;
using tarnwick::Answer;

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
    table->result().setColours(2, {tarnwick::ColourRef(0xFF), tarnwick::ColourRef(0x80FFFF)}, u"Why"_s);
    EXPECT_EQ(table->grid().index(2, 0).data(Qt::AccessibleDescriptionRole), u"Why"_s) << "not by colour alone";
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

TEST_F(QueryDialogsTest, DisplayFormatsAreEditedImportedAndStored)
{
    using query::FormatEdit;
    FormatEdit edit(session().database(), context());
    ASSERT_TRUE(edit.open());
    EXPECT_TRUE(edit.isModified()) << "fields without a format have got the default";
    query::FormatInfoDlg dialog(edit, context(), said, dialogs, &window);
    edit.setTable(int(edit.tableNames().indexOf(u"report"_s)));
    auto *table = dialog.findChild<tarnwick::JTableWin *>(u"fields"_s);
    table->reload();
    picture(dialog, u"display-formats"_s);
    int pcnt = 0;
    while (edit.text(pcnt, FormatEdit::Name) != u"pcnt")
        ++pcnt;
    const auto set = [&](FormatEdit::Column column, const QString &text) {
        table->grid().setData(table->grid().index(pcnt, column), text);
        return edit.text(pcnt, column);
    };
    EXPECT_EQ(set(FormatEdit::Title, u"DEPTH OF WALL"_s), u"DEPTH OF WALL");
    EXPECT_EQ(set(FormatEdit::Align, u"l"_s), u"LEFT");
    EXPECT_EQ(set(FormatEdit::Align, u"best"_s), u"LEFT");
    EXPECT_EQ(set(FormatEdit::Width, u"5 or so"_s), u"5");
    EXPECT_EQ(set(FormatEdit::Width, u"-3"_s), u"5");
    EXPECT_EQ(said.lastStatus(), u"Not changed: the width -3 is out of range.");
    EXPECT_EQ(set(FormatEdit::Format, u"%s"_s), u"%d") << "a format that cannot show the type";
    EXPECT_EQ(set(FormatEdit::Format, u"%3d"_s), u"%3d");
    EXPECT_EQ(edit.tip(pcnt, FormatEdit::Format), u"Example:  12");

    QTemporaryDir folder;
    dialogs.next = folder.filePath(u"mine.opt"_s);
    choose(dialog, u"Export ..."_s);
    choose(dialog, u"Save"_s);
    EXPECT_EQ(said.lastStatus(), u"Stored formats.");
    EXPECT_FALSE(edit.isModified());
    EXPECT_EQ(context().formats.find(u"report", u"pcnt", dao::DataType::Integer)->title, u"DEPTH OF WALL");
    set(FormatEdit::Title, u"OTHER"_s);
    choose(dialog, u"Import ..."_s);
    EXPECT_EQ(edit.text(pcnt, FormatEdit::Title), u"DEPTH OF WALL");
    said.answerWith({Answer::Cancel, Answer::No});
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
    EXPECT_EQ(said.lastStatus(), u"No changes to display formats.");
}

TEST_F(QueryDialogsTest, OptionsOfTheEditorAndItsButtonsAreEdited)
{
    query::SQLOptions options;
    options.queryButtons = {u"queries\\wear.qry"_s, u"[PALOMINE_DIR]\\user\\all.qry"_s};
    options.recentQueries = {u"queries\\last.qry"_s};
    query::SQLOptionsDlg dialog(options, session().roots(), said, dialogs, &window);
    picture(dialog, u"sql-options"_s);
    EXPECT_EQ(dialog.windowTitle(), u"SQL Options");
    dialog.findChild<QTabWidget *>(u"optionTabs"_s)->setCurrentIndex(2);
    picture(dialog, u"sql-options-queries"_s);
    auto *table = dialog.findChild<tarnwick::JTableWin *>(u"queryButtons"_s);
    const tarnwick::GridSource &rows = *table->grid().source();
    EXPECT_EQ(rows.text(0, 0) + u'|' + rows.text(1, 0), u"wear.qry|[PALOMINE_DIR]\\user\\all.qry");
    EXPECT_EQ(rows.colours(1).background, tarnwick::ColourRef(0x80FFFF));
    EXPECT_EQ(rows.colours(5).background, tarnwick::ColourRef(0xE9E9E9));
    table->setCurrentSourceRow(1);
    press(dialog, u"upButton"_s);
    table->grid().setData(table->grid().index(3, 0), u"plugs.qry"_s);
    dialog.findChild<tarnwick::NumberField *>(u"resultLines"_s)->setValue(22);
    EXPECT_EQ(dialog.windowTitle(), u"SQL Options*");
    dialog.accept();
    EXPECT_EQ(options.queryButtons, (QStringList{u"[PALOMINE_DIR]\\user\\all.qry"_s, u"queries\\wear.qry"_s, QString(),
                                                 u"queries\\plugs.qry"_s}));
    EXPECT_EQ(options.resultLines, 22);
    EXPECT_EQ(options.recentQueries.size(), 1);
}

TEST_F(QueryDialogsTest, TheSchemaIsShownAndNamesAreTaken)
{
    sql(u"CREATE TABLE [my notes] ([the text] TEXT(20), n LONG)"_s);
    sql(u"CREATE INDEX two ON [my notes] (n, [the text] DESC)"_s);
    sql(u"CREATE INDEX one ON [my notes] (n)"_s);
    query::SchemaInfo info(session().database());
    ASSERT_TRUE(info.open());
    QStringList taken;
    query::JSchemaInfoDlg::Setup setup{
        session().roots(), {}, [&](const QString &name) { taken.append(name); }, &window};
    query::JSchemaInfoDlg dialog(info, said, setup);
    picture(dialog, u"schema"_s);
    EXPECT_EQ(dialog.windowTitle(), u"Schema - project.mdb");
    EXPECT_EQ(info.table(), u"report");
    EXPECT_GT(info.rows(query::SchemaInfo::Indexes).rowCount(), 3);
    info.setTable(u"plan_entry"_s);
    EXPECT_EQ(info.rows(query::SchemaInfo::Relations).text(0, 0), u"plans_rel");

    info.setTable(u"my notes"_s);
    auto *indexes = dialog.findChild<tarnwick::JTableWin *>(u"indexes"_s);
    indexes->reload();
    const query::TextRows &rows = info.rows(query::SchemaInfo::Indexes);
    EXPECT_EQ(rows.text(1, 3), u"the text (descending)");
    EXPECT_EQ(rows.colours(0), rows.colours(1)) << "rows of one index";
    EXPECT_NE(rows.colours(1), rows.colours(2));
    Q_EMIT indexes->rowActivated(1);
    Q_EMIT indexes->rowActivated(0);
    EXPECT_EQ(taken, (QStringList{u"[the text]"_s, u"n"_s}));
    sql(u"DROP TABLE [my notes]"_s);
    EXPECT_FALSE(info.setTable(u"my notes"_s));
    EXPECT_EQ(said.entries().last().number, 1067);
}

TEST_F(QueryDialogsTest, ATubeShowsItsEntriesQueriesAndPastOutages)
{
    const ellery::SteamGen &steamGen = session().project().steamGen;
    const ellery::TubeAddress tube = steamGen[3].address;
    sql(u"UPDATE report SET sec = %1, row = %2, col = %3 WHERE pcnt > 40"_s.arg(tube.sec).arg(tube.row).arg(tube.col));
    query::ArvoOptions options = session().options();
    options.tubeInfoTabs = {
        {u"Deep"_s, u"SELECT row, col, pcnt FROM report WHERE row = [ROW] AND col = [COL] AND pcnt > 60"_s},
        {u"Wrong"_s, u"SELECT nothing FROM nowhere"_s}};
    query::TubeDlg::Setup setup{session().database(), context(), options, steamGen, tube};
    setup.repairs = {u"Plug, R12, scheduled 05/06/2024"_s};
    brannock::TubeIndication past;
    past.outage = u"R11"_s;
    past.defect = u"WAR"_s;
    past.percent = 30;
    past.percentGrowth = 5;
    past.landmark = u"AV2"_s;
    past.offset = 0.5F;
    setup.indications = {past};
    query::TubeDlg dialog(setup);
    picture(dialog, u"tube"_s);
    EXPECT_EQ(dialog.windowTitle(), u"Tube - " + steamGen.tubeName(tube));
    EXPECT_EQ(dialog.findChild<brannock::ReportEditor *>()->report().numEntry(), 10);
    choose(dialog, u"Report Query ..."_s);
    EXPECT_TRUE(said.entries().last().text.startsWith(u"Report Query\n\nSELECT *\nFROM report\nWHERE sec="));
    auto *tabs = dialog.findChild<QTabWidget *>(u"tabs"_s);
    tabs->setCurrentIndex(1);
    EXPECT_EQ(qobject_cast<query::JQueryWin *>(tabs->widget(1))->grid().rowCount(), 5);
    EXPECT_EQ(dialog.findChild<QLabel *>(u"message"_s)->text(), u"5 Entries");
    choose(dialog, u"Deep Query ..."_s);
    EXPECT_TRUE(
        said.entries().last().text.endsWith(u"row = %1 AND col = %2 AND pcnt > 60"_s.arg(tube.row).arg(tube.col)));
    tabs->setCurrentIndex(2);
    EXPECT_EQ(said.entries().last().number, 1062);
    tabs->setCurrentIndex(3);
    const tarnwick::GridSource &history = *dialog.findChild<tarnwick::JTableWin *>(u"history"_s)->grid().source();
    EXPECT_EQ(history.text(0, 4) + history.text(0, 5) + history.text(0, 6), u"30+5AV2 +0.50");
    EXPECT_NE(query::tubePrintLayout({u"Deep"_s, u"SELECT"_s}, false).sections[1].text, u"");

    bool isShown = false;
    inNext<query::TubeDlg>([&](query::TubeDlg &opened) {
        isShown = opened.windowTitle().endsWith(steamGen.tubeName(tube));
        opened.reject();
    });
    Q_EMIT window.map().tubeActivated(3);
    EXPECT_TRUE(isShown);
}

TEST_F(QueryDialogsTest, AResultIsMarkedOnTheMapAsItStands)
{
    query::QueryDocument document;
    document.name = u"queries\\deep.qry"_s;
    document.sql = u"SELECT sec, row, col FROM report ORDER BY pcnt"_s;
    query::QueryResult result(session().database(), context());
    map::MapDocument &map = session().map();
    const auto commit = [&](int place) {
        return map::commitQueryFill(map, session().fillRunner(), place, document, result);
    };
    EXPECT_FALSE(commit(-1));
    EXPECT_EQ(said.entries().last().number, 1092);
    const ellery::TubeAddress tube = session().project().steamGen[3].address;
    sql(u"UPDATE report SET sec = %1, row = %2, col = %3"_s.arg(tube.sec).arg(tube.row).arg(tube.col));
    sql(u"UPDATE report SET row = 999 WHERE pcnt = 4"_s);
    ASSERT_TRUE(result.run(document.name, document.sql));
    said.answerWith({Answer::Cancel, Answer::Ok});
    EXPECT_FALSE(commit(-1));
    EXPECT_EQ(result.colours(0), plans::QueryFill::kInvalidColours);
    EXPECT_EQ(result.colours(1), tarnwick::RowColours());
    EXPECT_EQ(result.colourReason(0), u"This tube does not exist in the component.");
    sql(u"UPDATE report SET row = %1"_s.arg(tube.row));
    ASSERT_TRUE(result.run(document.name, document.sql));
    const int before = map.count();
    EXPECT_TRUE(commit(-1));
    ASSERT_EQ(map.count(), before + 1);
    EXPECT_EQ(map.entry(before).label.trimmed(), u"deep.qry");
    EXPECT_EQ(map.entry(before).tubes, QList<qint32>{3});
    document.name = u"queries\\other.qry"_s;
    EXPECT_TRUE(commit(before));
    EXPECT_EQ(map.count(), before + 1);
    EXPECT_EQ(map.entry(before).label.trimmed(), u"other.qry");
}

TEST_F(QueryDialogsTest, TheDialogOfAQueryFillMapsItsResult)
{
    const ellery::TubeAddress tube = session().project().steamGen[3].address;
    sql(u"UPDATE report SET sec = %1, row = %2, col = %3"_s.arg(tube.sec).arg(tube.row).arg(tube.col));
    const int before = session().map().count();
    const auto open = [&](int place) {
        return std::make_unique<map::QueryFillDlg>(
            map::FillEditorContext{session().map(), session().fillRunner(), session().roots()}, place,
            map::QueryFillDlg::editorSetup(session().database(), context(), session().project().steamGen, dialogs,
                                           &window));
    };
    {
        const auto dialog = open(-1);
        dialog->show();
        dialog->accept();
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(said.entries().last().number, 1092);
        dialog->page().sql().setSql(u"SELECT sec, row, col FROM report"_s);
        dialog->execute();
        said.answerWith({Answer::No}); // the text is not stored as a query
        dialog->accept();
        EXPECT_FALSE(dialog->isVisible());
    }
    ASSERT_EQ(session().map().count(), before + 1);
    EXPECT_EQ(session().map().entry(before).tubes, QList<qint32>{3});
    query::SQLDlg::Setup setup =
        map::QueryFillDlg::editorSetup(session().database(), context(), session().project().steamGen, dialogs, &window);
    setup.markOnMap = [&](const query::QueryDocument &document, query::QueryResult &result) {
        return map::commitQueryFill(session().map(), session().fillRunner(), -1, document, result);
    };
    setup.selectOnMap = [&](const QList<qint32> &tubes) { selectTubes(session().map(), tubes); };
    setup.selectedOnMap = [&] { return session().map().selection(); };
    query::SQLDlg sqlDialog(setup);
    sqlDialog.page().sql().setSql(u"SELECT sec, row, col FROM report"_s);
    sqlDialog.execute();
    choose(sqlDialog, u"Mark on map"_s);
    EXPECT_EQ(session().map().count(), before + 2);
    query::JQueryWin &table = sqlDialog.page().table();
    table.setCurrentSourceRow(1);
    choose(sqlDialog, u"Select Tubes on Map"_s);
    ASSERT_EQ(session().map().selection().size(), 1);
    table.selectAll();
    choose(sqlDialog, u"Find Map's Selection"_s);
    ASSERT_FALSE(table.selectedSourceRows().isEmpty());
    EXPECT_TRUE(table.selectedSourceRows().contains(1));
    selectTubes(session().map(), {});
    choose(sqlDialog, u"Find Map's Selection"_s);
    EXPECT_TRUE(table.selectedSourceRows().isEmpty());
    const auto dialog = open(before);
    EXPECT_EQ(dialog->page().sql().sql(), u"SELECT sec, row, col FROM report");
    dialog->execute();
    picture(*dialog, u"query-fill"_s);
    dialog->page().sql().setSql(u"SELECT sec, row, col FROM report WHERE FALSE"_s);
    said.answerWith({Answer::No});
    dialog->accept();
    EXPECT_TRUE(session().map().entry(before).tubes.isEmpty()) << "the text that was edited since counts";
}

} // namespace app
