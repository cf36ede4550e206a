#include "DialogFixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <results/dialogs/CompleteRepairsDlg.h>
#include <results/dialogs/RepairDlg.h>
#include <results/dialogs/RepairInfoDlg.h>
#include <tarnwick/gui/JTableWin.h>

using namespace Qt::StringLiterals;
using results::CompleteRepairsDlg;
using results::RepairDlg;
using results::RepairInfoDlg;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

namespace {

class RepairDialogTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        sql(u"DELETE FROM repairs"_s);
        for (int i = 0; i < 12; ++i)
            store(tube(i * 9), i % 3 == 2 ? u"Sleeve"_s : u"Plug"_s, i % 2 == 0);
    }
    const ellery::TubeAddress &tube(int index) { return session().project().steamGen[index].address; }
    void store(const ellery::TubeAddress &at, const QString &type, bool isDone)
    {
        sql(u"INSERT INTO repairs (sec, row, col, repair_type, type, outage, date_scheduled, date_completed) "
            u"VALUES (%1, %2, %3, '%4', 'Solid Rod', '%5', #3/4/2024 10:00#, %6)"_s.arg(at.sec)
                .arg(at.row)
                .arg(at.col)
                .arg(type, isDone ? u"R11"_s : u"R12"_s, isDone ? u"#4/5/2024#"_s : u"Null"_s));
    }
    RepairDlg::Setup setup()
    {
        return {.session = session().database(),
                .project = session().project(),
                .tubes = mapOf(window).tubes(),
                .showInMap =
                    [this](const QString &label, const QList<qint32> &tubes) {
                        shown = {label, tubes};
                    },
                .printMacros = [this] { return session().printMacros(); },
                .parent = &window};
    }
    static QString counts(RepairDlg &dialog) { return dialog.findChild<QLabel *>(u"counts"_s)->text().simplified(); }
    static void filter(RepairDlg &dialog, const QString &name, const QString &choice)
    {
        auto *combo = dialog.findChild<QComboBox *>(name);
        const int index = combo->findText(choice);
        combo->setCurrentIndex(index);
        Q_EMIT combo->activated(index);
    }
    static void type(QDialog &dialog, const QString &field, const QString &text)
    {
        dialog.findChild<QLineEdit *>(field)->setText(text);
    }

    std::pair<QString, QList<qint32>> shown;
};

} // namespace

TEST_F(RepairDialogTest, FiltersSelectsAndShowsInTheMap)
{
    selectTubes(mapOf(window), {9, 18});
    RepairDlg dialog(setup());
    ASSERT_TRUE(dialog.isOpen());
    EXPECT_EQ(dialog.findChild<tarnwick::CommandActions *>()->faults(), QStringList());
    EXPECT_EQ(counts(dialog), u"Total 12 Selected 2 Scheduled 6 New 0 Visible 12");
    picture(dialog, u"repairs"_s);
    choose(dialog, u"Select Duplicates"_s);
    EXPECT_EQ(said.lastStatus(), u"No duplicates.");
    filter(dialog, u"typeFilter"_s, u"Sleeve"_s);
    EXPECT_EQ(said.lastStatus(), u"Limit to Sleeve.");
    EXPECT_EQ(counts(dialog), u"Total 12 Selected 2 Scheduled 6 New 0 Visible 4");
    choose(dialog, u"Clear Selections"_s);
    choose(dialog, u"Select All"_s);
    filter(dialog, u"typeFilter"_s, u"All"_s);
    filter(dialog, u"viewFilter"_s, u"Selected"_s);
    EXPECT_EQ(counts(dialog), u"Total 12 Selected 4 Scheduled 6 New 0 Visible 4");
    choose(dialog, u"Selected Repairs"_s);
    EXPECT_EQ(shown.first, u"Repairs");
    EXPECT_EQ(shown.second, (QList<qint32>{18, 45, 72, 99}));
    choose(dialog, u"All Scheduled Repairs"_s);
    EXPECT_EQ(shown.first, u"Scheduled Repairs");
    EXPECT_EQ(shown.second.size(), 6);

    auto *table = dialog.findChild<tarnwick::JTableWin *>(u"repairs"_s);
    table->selectionModel()->select({table->grid().index(0, 1), table->grid().index(1, 1)},
                                    QItemSelectionModel::ClearAndSelect);
    choose(dialog, u"Select or Deselect Rows"_s);
    EXPECT_EQ(counts(dialog), u"Total 12 Selected 2 Scheduled 6 New 0 Visible 2");
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(RepairDlg(setup()).findChild<QComboBox *>(u"viewFilter"_s)->currentText(), u"Selected");
}

TEST_F(RepairDialogTest, SchedulesEditsCompletesAndStoresTogether)
{
    selectTubes(mapOf(window), {1, 2, 3});
    RepairDlg dialog(setup());
    dialog.show();
    inNext<RepairInfoDlg>([&](RepairInfoDlg &info) {
        EXPECT_EQ(info.windowTitle(), u"Repair of 3 tubes");
        info.accept();
        EXPECT_EQ(said.texts(Kind::Information).last(), u"Please select a repair type.");
        EXPECT_TRUE(info.isVisible());
        type(info, u"repair_type"_s, u"Tube Pull And Plug"_s);
        picture(info, u"repair-info"_s);
        info.accept();
    });
    choose(dialog, u"Selected Tubes"_s);
    EXPECT_EQ(said.lastStatus(), u"Added 3 new repairs.");
    EXPECT_EQ(counts(dialog), u"Total 15 Selected 0 Scheduled 9 New 3 Visible 15");
    EXPECT_EQ(dialog.findChild<tarnwick::JTableWin *>(u"repairs"_s)->currentSourceRow(), 12) << "the first new one";

    filter(dialog, u"typeFilter"_s, u"Tube Pull And Plug"_s);
    choose(dialog, u"Select All"_s);
    QGuiApplication::clipboard()->setText(u"H1\tH2\n\tH4\nH5"_s);
    choose(dialog, u"Paste Heat Numbers"_s);
    EXPECT_EQ(said.lastStatus(), u"Set heat numbers of 3 repairs.");
    inNext<RepairInfoDlg>([&](RepairInfoDlg &info) {
        EXPECT_EQ(info.findChild<QLineEdit *>(u"heat2"_s)->text(), u"H2");
        type(info, u"loc_off"_s, u"two"_s);
        press(info, u"nextRepair"_s);
        EXPECT_EQ(said.texts(Kind::Error).last(), u"\"two\" is no value for loc_off.");
        type(info, u"loc_off"_s, u"-1.5"_s);
        press(info, u"nextRepair"_s);
        EXPECT_EQ(info.findChild<QLabel *>(u"repairNumber"_s)->text(), u"    2 of     3");
        info.accept();
    });
    choose(dialog, u"Edit Repairs"_s);
    inNext<CompleteRepairsDlg>([&](CompleteRepairsDlg &when) {
        type(when, u"date_completed"_s, u"31.31.2024"_s);
        when.accept();
        EXPECT_TRUE(when.isVisible());
        type(when, u"date_completed"_s, u"05/06/2024 10:00"_s);
        picture(when, u"repair-complete"_s);
        when.accept();
    });
    choose(dialog, u"Complete"_s);
    EXPECT_EQ(said.lastStatus(), u"Completed 3 repairs.");
    EXPECT_EQ(dialog.findChild<QLabel *>(u"changes"_s)->text(), u"3 changes not stored");
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM repairs"_s), 12);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM repairs WHERE repair_type = 'Tube Pull And Plug' AND "
                     u"date_completed = #5/6/2024 10:00# AND (loc_off = -1.5 OR heat2 = 'H4' OR heat1 = 'H5')"_s),
              3);
}

TEST_F(RepairDialogTest, CancelAsksAndAReadOnlyDatabaseIsOnlyShown)
{
    {
        RepairDlg crashed(setup()); // destroyed without having been closed, as by a kill
        crashed.show();
        choose(crashed, u"Select All"_s);
        said.answerWith({Answer::Yes, Answer::Yes, Answer::Cancel, Answer::No});
        choose(crashed, u"Delete Selected Repairs"_s);
        EXPECT_TRUE(QTest::qWaitFor([] { return copiesOf(u"repairs"_s) == 1; }));
    }
    {
        RepairDlg dialog(setup());
        dialog.show();
        EXPECT_EQ(said.lastStatus(), u"Restored the list of repairs; it has not been saved yet.");
        EXPECT_EQ(counts(dialog), u"Total 0 Selected 0 Scheduled 0 New 0 Visible 0");
        choose(dialog, u"Edit Repairs"_s);
        EXPECT_EQ(said.texts(Kind::Information).last(), u"No repairs to edit.");
        dialog.reject();
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
        EXPECT_FALSE(dialog.isVisible());
        EXPECT_EQ(copiesOf(u"repairs"_s), 0);
    }
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM repairs"_s), 12);
    const QString path = session().project().databasePath();
    session().database().close();
    session().database().open(path, dao::OpenMode::ReadOnly);
    RepairDlg dialog(setup());
    dialog.show();
    choose(dialog, u"Select All"_s);
    for (const QAction *action : dialog.findChildren<QAction *>())
        if (action->text() == u"Delete Selected Repairs" || action->text() == u"&Selected Tubes") {
            EXPECT_TRUE(!action->isEnabled() && action->toolTip().contains(u"The database is read-only."));
        }
    inNext<RepairInfoDlg>([](RepairInfoDlg &info) {
        EXPECT_TRUE(info.findChild<QLineEdit *>(u"vendor"_s)->isReadOnly());
        info.accept();
    });
    choose(dialog, u"Edit Repairs"_s);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(RepairDialogTest, TheCommandShowsTheRepairsOfTheMapInOneChange)
{
    inNext<RepairDlg>([](RepairDlg &dialog) {
        choose(dialog, u"All Scheduled Repairs"_s);
        dialog.reject();
    });
    run(Repairs);
    const map::MapDocument &map = mapOf(window);
    ASSERT_EQ(map.count(), 1);
    EXPECT_EQ(map.entry(0).label, u"Scheduled Repairs");
    EXPECT_EQ(map.hits(0), 6);
    EXPECT_EQ(map.undoLabel(), u"Show Repairs In Map");
    run(Undo);
    EXPECT_EQ(map.count(), 0);
    EXPECT_FALSE(map.canUndo());
}

} // namespace app
