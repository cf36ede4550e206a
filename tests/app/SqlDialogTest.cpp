#include "DialogFixture.h"

#include <query/dialogs/ExplainDlg.h>
#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/QueryPage.h>
#include <query/dialogs/SqlCommands.h>
#include <query/dialogs/SQLDlg.h>
#include <query/gui/SqlFindBar.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

/// The SQL editor over a project's database, and pictures of it (see DialogFixture).
class SqlDialogTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        sql(u"DELETE FROM report"_s);
        for (int i = 0; i < 40; ++i)
            addResult({{u"sec"_s, u"0"_s},
                       {u"row"_s, QString::number(i / 8 + 1)},
                       {u"col"_s, QString::number(i % 8 + 1)},
                       {u"defect"_s, i % 4 ? u"'NDD'"_s : u"'ODI'"_s},
                       {u"volts"_s, QString::number(0.4 * i)},
                       {u"pcnt"_s, QString::number(i)}});
    }
    /// A row of table report; required fields that are not given get some value.
    void addResult(QMap<QString, QString> values)
    {
        for (const dao::FieldInfo &field : session().database().database().table(u"report"_s).fields) {
            if (field.required && !field.isAutoIncrement() && !values.contains(field.name))
                values[field.name] = dao::isTextType(field.type) ? u"'A'"_s : u"1"_s;
        }
        sql(u"INSERT INTO report (%1) VALUES (%2)"_s.arg(values.keys().join(u','), values.values().join(u',')));
    }
    query::SQLDlg::Setup setup()
    {
        return {.editor = {.session = session().database(),
                           .context = session().queryContext(),
                           .steamGen = session().project().steamGen,
                           .files = dialogs,
                           .optionsName = u"sql"_s,
                           .hasTransaction = true},
                .mode = query::TableMode::Edit,
                .isFull = true,
                .parent = &window};
    }
};

} // namespace

TEST_F(SqlDialogTest, RunsAndShowsErrorsInTheText)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    settle();
    EXPECT_EQ(dialog.findChild<tarnwick::CommandActions *>()->faults(), QStringList());
    query::SqlEditor &sql = dialog.page().sql();
    sql.setSql(u"SELECT row, col, cal_num, defect, volts, Left(analyst_id, 2) AS who\nFROM report\n"
               u"WHERE volts > 1.5 AND defect <> 'NDD'\nORDER BY row, col"_s);
    dialog.findChild<QPushButton *>(u"executeButton"_s)->click();
    settle();
    picture(dialog, u"sql-editor"_s);
    EXPECT_GT(dialog.page().table().grid().rowCount(), 0);
    const auto *shown = dialog.findChild<QLabel *>(u"shownRows"_s);
    EXPECT_EQ(shown->text(), u"");
    dialog.page().table().findChild<QAction *>(u"filter"_s)->trigger();
    QTest::keyClicks(dialog.page().table().findChild<QLineEdit *>(u"filter0"_s), u"3"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown->text() == u"2 shown,"; })) << qPrintable(shown->text());
    sql.setSql(u"SELECT row, col\nFROM repor\nWHERE pcnt > 40"_s);
    dialog.execute();
    EXPECT_EQ(sql.cursorPlace(), 21);
    picture(dialog, u"sql-editor-error"_s);
    for (int tab = 1; tab < 3; ++tab) {
        dialog.findChild<QTabWidget *>(u"tabs"_s)->setCurrentIndex(tab);
        picture(dialog, u"sql-editor-sections-%1"_s.arg(tab));
    }
    EXPECT_TRUE(dialog.findChild<QLabel *>(u"problem"_s)->text().contains(u"repor"_s));
    sql.setSql({});
    said.answerWith({Answer::No});
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(SqlDialogTest, TheTableHasItsOwnSearchAndItsRowsAreCounted)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    dialog.page().sql().setSql(u"SELECT * FROM report"_s);
    dialog.execute();
    query::JQueryWin &table = dialog.page().table();
    const auto *entries = dialog.findChild<QLabel *>(u"entries"_s);
    EXPECT_EQ(entries->text(), u"40 Entries");
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget()->window(), &dialog);
    EXPECT_TRUE(table.isAncestorOf(QApplication::focusWidget())) << "its find bar";
    EXPECT_FALSE(dialog.page().findBar().isVisible());
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    table.findChild<QAction *>(u"deleteRows"_s)->trigger();
    EXPECT_EQ(entries->text(), u"38 Entries");
    EXPECT_EQ(dialog.editor().transaction().changeCount(), 2);
    EXPECT_TRUE(dialog.findChild<QLabel *>(u"waiting"_s)->isVisible());
    dialog.page().sql().setFocus();
    QTest::keyClick(&dialog.page().sql(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(dialog.page().findBar().isVisible());
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
}

TEST_F(SqlDialogTest, ATextThatHasRunIsNotCheckedAgain)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    query::SqlEditor &sql = dialog.page().sql();
    const auto *problem = dialog.findChild<QLabel *>(u"problem"_s);
    sql.setSql(u"SELECT row FROM report WHERE row ="_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !problem->text().isEmpty(); }));
    sql.setSql(u"CREATE TABLE made (a INTEGER)"_s);
    dialog.execute();
    QTest::qWait(1000); // longer than the pause after which a typed text is checked
    EXPECT_EQ(problem->text(), u"") << "the table exists because of the text";
    EXPECT_FALSE(sql.hasError());
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
}

TEST_F(SqlDialogTest, EscStopsAStatementAndNothingElse)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    query::SqlEditor &sql = dialog.page().sql();
    sql.setSql(u"UPDATE report SET pcnt = 50; SELECT row, col FROM report"_s);
    dialog.execute();
    EXPECT_EQ(dialog.editor().transaction().changeCount(), 40);
    const QString endless =
        u"SELECT COUNT(*) FROM report a, report b, report c, report d, report e, report f, report g"_s;
    sql.setSql(endless);
    QElapsedTimer sinceEsc;
    QTimer::singleShot(300, &dialog, [&] {
        sinceEsc.start();
        QTest::keyClick(dialog.findChild<QPushButton *>(u"executeButton"_s), Qt::Key_Return);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        static_cast<QWidget &>(dialog).close();
    });
    dialog.execute();
    EXPECT_LT(sinceEsc.elapsed(), 1000);
    settle();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(said.lastStatus(), u"Cancelled.");
    EXPECT_EQ(sql.sql(), endless);
    EXPECT_EQ(dialog.page().table().grid().rowCount(), 40);
    EXPECT_EQ(dialog.editor().transaction().changeCount(), 40);
    QTest::keyClick(&dialog, Qt::Key_Escape); // too late for the statement
    EXPECT_TRUE(dialog.isVisible());
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(session().database().workspace().transactionDepth());
}

TEST_F(SqlDialogTest, ACellThatIsBeingTypedIsStoredBeforeACommand)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    dialog.page().sql().setSql(u"SELECT row, pcnt FROM report ORDER BY recd_num"_s);
    dialog.execute();
    query::JQueryWin &table = dialog.page().table();
    table.setCurrentIndex(table.grid().index(2, 1));
    table.edit(table.currentIndex());
    auto *cell = qobject_cast<QLineEdit *>(table.focusWidget());
    ASSERT_NE(cell, nullptr);
    cell->setText(u"61"_s);
    QTest::keyClick(cell, Qt::Key_F5);
    settle();
    EXPECT_EQ(table.result().cellText(2, 1).trimmed(), u"61");
    EXPECT_EQ(dialog.editor().transaction().changeCount(), 1);
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
}

TEST_F(SqlDialogTest, AnIndexIsMadeFromTheWordsInTheTransaction)
{
    sql(u"CREATE TABLE calls (a LONG, b LONG)"_s);
    sql(u"INSERT INTO calls (a, b) SELECT x.row, y.pcnt FROM report AS x, report AS y"_s);
    query::SQLDlg dialog(setup());
    dialog.show();
    const QString text = u"SELECT * FROM calls WHERE a = 3; SELECT * FROM report WHERE volts > 1"_s;
    dialog.page().sql().setSql(text);
    inNext<query::ExplainDlg>([&](query::ExplainDlg &opened) {
        picture(opened, u"sql-explain"_s);
        EXPECT_TRUE(opened.findChild<QPlainTextEdit *>(u"words"_s)->toPlainText().contains(u"Statement 2\n\n1. "_s));
        press(opened, u"makeIndex1"_s);
    });
    choose(dialog, u"Explain ..."_s);
    EXPECT_EQ(dialog.editor().transaction().changes(), QStringList{u"CREATE INDEX by_a ON calls (a)"_s});
    EXPECT_EQ(dialog.page().sql().sql(), text);
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
    EXPECT_TRUE(session().database().database().table(u"calls"_s).indexes.isEmpty());
}

TEST_F(SqlDialogTest, TheFirstPageIsShownWhileTheRestIsFound)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    settle();
    query::JQueryWin &table = dialog.page().table();
    query::SqlEditor &sql = dialog.page().sql();
    sql.setSql(u"SELECT row, col, pcnt FROM report"_s);
    dialog.execute();
    sql.setSql(u"SELECT a.pcnt, f.defect FROM report a, report b, report c, report d, report e, report f; SELECT 1"_s);
    QElapsedTimer sinceStop;
    QTimer::singleShot(400, &dialog, [&] {
        EXPECT_EQ(table.grid().columnCount(), 2);
        EXPECT_GT(table.grid().rowCount(), 256);
        QWheelEvent down({5, 5}, table.viewport()->mapToGlobal(QPoint(5, 5)), {}, {0, -1200}, Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(table.viewport(), &down);
        EXPECT_GT(table.rowsInSight().first, 0);
    });
    QTimer::singleShot(700, &dialog, [&] {
        EXPECT_EQ(table.rows().text(table.rowsInSight().first, 0), u"0");
        EXPECT_EQ(table.rows().whyNotInsertable(), u"A query is running.");
        sinceStop.start();
        dialog.page().stopButton().click();
    });
    dialog.execute();
    EXPECT_LT(sinceStop.elapsed(), 1000);
    EXPECT_EQ(table.grid().rowCount(), 40);
    EXPECT_EQ(table.grid().columnCount(), 3);
    EXPECT_TRUE(table.action(u"insertRow"_s)->isEnabled());
    const QString run = dialog.findChild<QLabel *>(u"run"_s)->text();
    EXPECT_TRUE(run.startsWith(u"Stopped; "_s) && run.endsWith(u"The rows of the last run are shown."_s))
        << qPrintable(run);
    const auto *statements = dialog.findChild<QProgressBar *>(u"statements"_s);
    EXPECT_TRUE(statements->isVisible());
    EXPECT_EQ(statements->text(), u"Statement 1 of 2.");
    picture(dialog, u"sql-editor-stopped"_s);
    sql.setSql({});
    said.answerWith({Answer::No});
    dialog.reject();
}

TEST_F(SqlDialogTest, TheSizeOfTheTextIsKept)
{
    for (const int size : {3, 0}) {
        query::SQLDlg(setup()).page().sql().zoomTo(size);
        EXPECT_EQ(query::SQLDlg(setup()).page().sql().zoom(), size);
    }
}

TEST_F(SqlDialogTest, ThePreviewKeepsUndoAndReturnIsNeverTakenByTheCompletions)
{
    session().queryContext().userMacros.set(u"[LEAST]"_s, u"40"_s);
    query::SQLDlg dialog(setup());
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    query::SqlEditor &sql = dialog.page().sql();
    sql.setFocus();
    sql.setSql(u"SELECT row FROM report WHERE pcnt > [LEAST]"_s);
    auto *button = dialog.findChild<QPushButton *>(u"expandButton"_s);
    Q_EMIT button->pressed();
    EXPECT_EQ(sql.text(), u"SELECT row FROM report WHERE pcnt > 40");
    EXPECT_EQ(said.lastStatus(), u"Expanded macros.");
    EXPECT_EQ(sql.sql(), u"SELECT row FROM report WHERE pcnt > [LEAST]");
    Q_EMIT button->released();
    EXPECT_EQ(said.lastStatus(), u"Template.");
    EXPECT_EQ(sql.text(), u"SELECT row FROM report WHERE pcnt > [LEAST]");
    sql.undo();
    EXPECT_EQ(sql.sql(), u"");

    QTest::keyClicks(&sql, u"SELECT * FROM rep"_s);
    auto *completions = dialog.findChild<QListWidget *>(u"completions"_s);
    ASSERT_TRUE(completions && completions->isVisible());
    picture(dialog, u"sql-editor-completion"_s);
    QTest::keyClick(&sql, Qt::Key_Return);
    EXPECT_EQ(sql.sql(), u"SELECT * FROM rep\n");
    QTest::keyClick(&sql, Qt::Key_Backspace);
    QTest::keyClicks(&sql, u"o"_s);
    QTest::keyClick(&sql, Qt::Key_Tab);
    EXPECT_EQ(sql.sql(), u"SELECT * FROM report");
    said.answerWith({Answer::No});
    dialog.reject();
}

} // namespace app
