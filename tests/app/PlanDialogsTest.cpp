#include "DialogFixture.h"

#include <app/PlanCommands.h>

#include <map/PlanOnMap.h>
#include <plans/dialogs/ListFillDlg.h>
#include <plans/dialogs/ListParseDlg.h>
#include <plans/dialogs/PlanOptionDlg.h>
#include <plans/dialogs/SavePlanDlg.h>
#include <plans/ListFill.h>
#include <support/Marks.h>
#include <tarnwick/gui/JTableWin.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

/// The dialogs of plans and lists over a project's database, and pictures of them (see DialogFixture).
class PlanDialogsTest : public DialogFixture
{
protected:
    plans::DialogSetup setup()
    {
        PlanCommands commands(session(), &window);
        commands.setFileDialogs(&dialogs);
        plans::DialogSetup setup = commands.setup();
        setup.chooseName = [this](auto &, const auto &, QWidget *) { return name; };
        setup.chooseSource = [this](const auto &, const QStringList &, QWidget *) { return name; };
        return setup;
    }
    void select(int count)
    {
        QList<qint32> tubes;
        for (int tube = 0; tube < count; ++tube)
            tubes.append(tube * 3);
        selectTubes(mapOf(window), tubes);
    }
    template <typename Widget>
    static Widget &part(QDialog &dialog, const QString &objectName)
    {
        return *dialog.findChild<Widget *>(objectName);
    }

    QString name; ///< what the user chooses in the list of names
};

} // namespace

TEST_F(PlanDialogsTest, PlanIsFilledStoredCheckedAndShown)
{
    select(30);
    const int before = mapOf(window).count();
    plans::SavePlanDlg dialog(setup(), [this](const brannock::InspPlan &plan, const QString &outage) {
        map::showPlan(mapOf(window), session().fillRunner(), plan, outage);
    });
    dialog.show();
    settle();
    choose(dialog, u"Load Selected"_s);
    EXPECT_EQ(part<QLabel>(dialog, u"summary"_s).text(), u"30 tubes: 0 acquired, 0 analyzed, 30 left (0% done)");
    EXPECT_TRUE(dialog.windowTitle().endsWith(u'*'));
    auto &table = part<tarnwick::JTableWin>(dialog, u"planEntries"_s);
    table.setCurrentSourceRow(4);
    choose(dialog, u"Move Up"_s);
    EXPECT_EQ(table.currentSourceRow(), 3);
    const ellery::TubeAddress moved = dialog.editor().plan().entries[3].address();
    QMimeData rows;
    rows.setData(u"application/x-arvo-rows"_s, {});
    QDragEnterEvent enter(QPoint(5, 2), Qt::MoveAction, &rows, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table.viewport(), &enter);
    QDropEvent drop(QPointF(5, 2), Qt::MoveAction, &rows, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(table.viewport(), &drop);
    EXPECT_EQ(dialog.editor().plan().entries[0].address(), moved) << "dragged to the beginning";
    part<QLineEdit>(dialog, u"probe"_s).setText(u"BOBBIN"_s);
    part<QPlainTextEdit>(dialog, u"description"_s).setPlainText(u"Every third tube"_s);

    name = u"Third"_s;
    choose(dialog, u"Upload Plan As..."_s);
    EXPECT_EQ(dialog.windowTitle(), u"ARVO Plan - Third");
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM plan_entry WHERE name = 'Third'"_s), 30);
    sql(u"DELETE FROM report"_s);
    choose(dialog, u"Is Plan Analyzed"_s);
    EXPECT_TRUE(said.lastStatus().startsWith(u"Successfully checked if plan is done in "_s));
    sql(u"UPDATE plan_entry SET is_done = TRUE WHERE name = 'Third' AND entry_num < 10"_s);
    choose(dialog, u"Fetch Plan ..."_s);
    picture(dialog, u"save-plan"_s);
    choose(dialog, u"Add To Map"_s);
    ASSERT_EQ(mapOf(window).count(), before + 3);
    EXPECT_EQ(mapOf(window).undoLabel(), u"Show Plan in Map");
    EXPECT_EQ(mapOf(window).entry(before).fillCount, 20);
    EXPECT_EQ(mapOf(window).entry(before + 1).label, u"Acquired Plan Entries");
    EXPECT_EQ(mapOf(window).entry(before + 2).mark, markOf(u'\u25CF', 0xFF00FF));
    mapOf(window).undo();
    EXPECT_EQ(mapOf(window).count(), before);
    sql(u"INSERT INTO report (row, col, sec, outage, site_code, comp, oper_type, analyst_id, oper_id, entry_time) "
        u"SELECT row, col, sec, 'R01', 'S', 'C', 'P', 'A', 'O', Now() FROM plan_entry WHERE name = 'Third' AND entry_num < 7"_s);
    name = u"R01"_s;
    choose(dialog, u"Add Outage To Map ..."_s);
    ASSERT_EQ(mapOf(window).count(), before + 2);
    EXPECT_EQ(mapOf(window).entry(before).fillCount, 23);
    EXPECT_EQ(mapOf(window).entry(before + 1).fillCount, 7);
    EXPECT_EQ(mapOf(window).entry(before + 1).label, u"Analyzed Plan Entries, R01");
    EXPECT_EQ(part<QLabel>(dialog, u"summary"_s).text(),
              u"30 tubes, BOBBIN: 10 acquired, 0 analyzed, 20 left (33% done)");

    table.grid().removeSourceRows({0, 2});
    said.answerWith({Answer::Cancel});
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible()) << "the user cancelled";
    said.answerWith({Answer::Yes, Answer::Ok});
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM plan_entry WHERE name = 'Third'"_s), 28);
}

TEST_F(PlanDialogsTest, OptionsOfPlans)
{
    plans::PlanOptions options;
    options.incompleteCodes = {u"INC"_s, u"RST"_s};
    plans::PlanOptionDlg dialog(options, said, &window);
    picture(dialog, u"plan-options"_s);
    part<QCheckBox>(dialog, u"probeRequired"_s).setChecked(true);
    dialog.accept();
    EXPECT_TRUE(options.probeRequired);
    EXPECT_EQ(options.incompleteCodes, (QStringList{u"INC"_s, u"RST"_s}));
}

TEST_F(PlanDialogsTest, ListIsFilledStoredAndTakenIntoTheLegend)
{
    select(12);
    plans::ListFillDlg dialog(setup(), nullptr);
    choose(dialog, u"Add Selected"_s);
    const ellery::TubeAddress other = session().project().steamGen[1].address;
    QGuiApplication::clipboard()->setText(u"%1\t%2\nnothing\nR%1 C%2\n"_s.arg(other.row).arg(other.col));
    part<tarnwick::JTableWin>(dialog, u"listEntries"_s).setFocus();
    choose(dialog, u"Paste Tubes"_s);
    EXPECT_TRUE(said.entries().last().text.startsWith(u"Added 2 tubes. 1 lines were not understood:\n\tline 2: "_s));
    EXPECT_EQ(part<QLabel>(dialog, u"summary"_s).text(), u"14 entries, 13 different tubes");
    inNext<QInputDialog>([&other](QInputDialog &line) {
        line.setTextValue(u"%1 %2"_s.arg(other.row).arg(other.col));
        line.accept();
    });
    dialog.show();
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    part<tarnwick::JTableWin>(dialog, u"listEntries"_s).setFocus();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Insert);
    EXPECT_EQ(part<QLabel>(dialog, u"summary"_s).text(), u"15 entries, 13 different tubes");
    part<QPlainTextEdit>(dialog, u"notes"_s).setPlainText(u"For the second shift"_s);
    name = u"Selected tubes"_s;
    choose(dialog, u"Keep Only Tubes Of ..."_s);
    EXPECT_EQ(said.lastStatus(), u"15 tubes before, 12 now.");
    dialogs.next = session().project().pathOf(u"tube_lists\\mine.txt"_s);
    choose(dialog, u"Save As..."_s);
    EXPECT_EQ(dialog.windowTitle(), u"File List - mine.txt");
    picture(dialog, u"list-fill"_s);

    // A ".txt" file is read without entry numbers, although the program wrote them.
    choose(dialog, u"Open ..."_s);
    EXPECT_TRUE(said.entries().last().text.startsWith(u"Could not parse "_s));
    plans::ListParseDlg parse(
        dialog.editor(), [&dialog] { dialog.editor().open(dialog.editor().file()); }, &dialog);
    picture(parse, u"list-parse"_s);
    part<QCheckBox>(parse, u"hasEntryNumbers"_s).setChecked(true);
    EXPECT_EQ(dialog.list().entries.size(), 12);
    parse.reject();

    name = u"Mine"_s;
    choose(dialog, u"Upload List"_s);
    EXPECT_EQ(dialog.windowTitle(), u"ARVO List - Mine");
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tube_set_entry WHERE name = 'Mine'"_s), 12);
    said.answerWith({Answer::Yes});
    choose(dialog, u"Delete List ..."_s);
    EXPECT_EQ(said.lastStatus(), u"List deleted.");
    dialog.accept();
    EXPECT_EQ(dialog.list().description, u"For the second shift\n");
}

} // namespace app
