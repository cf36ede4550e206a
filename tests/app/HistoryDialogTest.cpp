#include "DialogFixture.h"

#include <brannock/History.h>
#include <db/ReportRows.h>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <results/dialogs/PalomineHistoryDlg.h>
#include <tarnwick/gui/JTableWin.h>

using namespace Qt::StringLiterals;
using results::PalomineHistoryDlg;
using tarnwick::Answer;
using tarnwick::JTableWin;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

namespace {

class HistoryDialogTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        sql(u"DELETE FROM report"_s);
        db::ReportWriter writer(session().database().database());
        const QStringList outages{u"R10"_s, u"R11"_s, u"R12"_s};
        const QStringList codes{u"DNT"_s, u"NDD"_s, u"VOL"_s};
        for (int i = 0; i < 90; ++i) {
            brannock::ReportEntry entry;
            const ellery::TubeAddress &address = session().project().steamGen[i / 4].address;
            entry.sec = address.sec;
            entry.row = address.row;
            entry.col = address.col;
            entry.site = session().project().site;
            entry.outage = outages[i % 3];
            entry.defect = codes[i % 7 % 3];
            entry.operType = u"PRI"_s;
            entry.analystId = entry.operatorId = u"AB1"_s;
            entry.calNumber = 1;
            entry.channel = u"1"_s;
            entry.beginTest = u"TEH"_s;
            entry.endTest = u"TEC"_s;
            entry.probe = {u"BOBBIN"_s, u"A-610"_s, 610, u"SN7"_s};
            entry.entryTime = tarnwick::JDateTime::fromLocal(2024, 3, 4, 5, 6);
            if (!entry.isNdd()) {
                entry.meas = {u"Vpp"_s, 0.5 + i % 11, 0, 170.0 - i, i % 5 * 10};
                entry.location = {u"01H"_s, 0.25F, 0, 0};
            }
            writer.add(entry);
        }
    }
    PalomineHistoryDlg::Setup setup()
    {
        return {.session = session().database(),
                .project = session().project(),
                .files = dialogs,
                .printMacros = [this] { return session().printMacros(); },
                .parent = &window};
    }
    static JTableWin &table(QDialog &dialog, const QString &name) { return *dialog.findChild<JTableWin *>(name); }
    /// Types into the cell of the first row below this title.
    static bool type(JTableWin &table, const QString &title, const QString &text)
    {
        tarnwick::GridModel &grid = table.grid();
        for (int column = 0; column < grid.columnCount(); ++column)
            if (grid.column(column).title == title)
                return grid.flags(grid.index(0, column)) & Qt::ItemIsEditable &&
                       grid.setData(grid.index(0, column), text);
        ADD_FAILURE() << "no column " << qPrintable(title);
        return false;
    }
    static QString shown(JTableWin &table, int column) { return table.grid().index(0, column).data().toString(); }
    static int kept(QDialog &dialog)
    {
        return dialog.findChild<QLabel *>(u"counter"_s)->text().section(u" of "_s, 0, 0).trimmed().toInt();
    }
    static void check(QDialog &dialog, const QString &box) { dialog.findChild<QCheckBox *>(box)->toggle(); }

    QTemporaryDir files;
};

} // namespace

TEST_F(HistoryDialogTest, FiltersSortsEditsAndStores)
{
    inNext<PalomineHistoryDlg>([](PalomineHistoryDlg &dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"History");
        dialog.reject();
    });
    run(CreateHistory);

    PalomineHistoryDlg dialog(setup());
    EXPECT_EQ(dialog.findChild<tarnwick::CommandActions *>()->faults(), QStringList());
    dialog.show();
    choose(dialog, u"Fetch History"_s);
    const int all = dialog.list().count();
    ASSERT_EQ(all, 90);
    EXPECT_TRUE(said.lastStatus().startsWith(u"Fetch time="_s));
    const fenwright::SiteInfo &site = session().project().site;
    EXPECT_EQ(dialog.windowTitle(), u"History ARVO - Site: %1 Comp: %2*"_s.arg(site.siteCode, site.compCode));
    JTableWin &entries = table(dialog, u"entries"_s);
    JTableWin &defects = table(dialog, u"defects"_s);
    const int latest = kept(dialog);
    EXPECT_TRUE(latest > 20 && latest < all);
    picture(dialog, u"history"_s);

    const auto setMode = [&](int mode) {
        auto *combo = dialog.findChild<QComboBox *>(u"mode"_s);
        combo->setCurrentIndex(mode);
        Q_EMIT combo->activated(mode);
    };
    setMode(1);
    EXPECT_EQ(kept(dialog), all);
    press(dialog, u"defectsNone"_s);
    EXPECT_EQ(kept(dialog), 0);
    EXPECT_TRUE(type(defects, u"KEEP"_s, u"1"_s));
    const int ofCode = defects.grid().index(0, 1).data().toInt();
    EXPECT_EQ(kept(dialog), ofCode) << "the count of the code";
    EXPECT_FALSE(type(defects, u"VOLTS"_s, u"much"_s));
    EXPECT_TRUE(type(defects, u"VOLTS"_s, u">= 1000"_s));
    EXPECT_EQ(kept(dialog), 0);
    EXPECT_EQ(shown(defects, 2), u">= 1000.00");
    EXPECT_TRUE(type(defects, u"VOLTS"_s, u""_s));
    press(dialog, u"outagesNone"_s);
    EXPECT_EQ(kept(dialog), 0);
    setMode(2);
    EXPECT_EQ(kept(dialog), ofCode);

    check(dialog, u"keptOnly"_s);
    EXPECT_EQ(entries.grid().rowCount(), ofCode);
    auto *sort = dialog.findChild<QComboBox *>(u"sort"_s);
    sort->setCurrentIndex(4);
    Q_EMIT sort->activated(4);
    EXPECT_TRUE(said.texts(Kind::Status).contains(u"Sort by volts."_s));
    EXPECT_FALSE(type(entries, u"VOLTS"_s, u"x"_s));
    EXPECT_TRUE(type(entries, u"VOLTS"_s, u"12.5"_s) && type(entries, u"LOCATION"_s, u"01H +1.5"_s) &&
                type(entries, u"EXTENT"_s, u"to 02H -2"_s) && type(entries, u"LEG"_s, u"UBEND"_s) &&
                type(entries, u"DATE"_s, u"05/06/2024 10:00"_s));
    EXPECT_TRUE(type(entries, u"VOLTS"_s, u"13"_s));
    choose(dialog, u"Undo"_s);
    picture(dialog, u"history-edited"_s);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    brannock::History stored;
    stored.load(session().project().pathOf(u"history\\palomine\\project.hst"_s));
    ASSERT_EQ(stored.entries.size(), ofCode);
    const brannock::HistoryEntry &entry = stored.entries[0];
    EXPECT_TRUE(entry.edited);
    EXPECT_EQ(entry.volts, 12.5);
    EXPECT_EQ(entry.location.landmark + entry.to.landmark, u"01H02H");
    EXPECT_EQ(entry.leg, 2);
    EXPECT_EQ(entry.entryTime.toIso(), u"2024-05-06T10:00:00");
}

TEST_F(HistoryDialogTest, EditsOfADeadProgramAreOfferedAgain)
{
    {
        PalomineHistoryDlg dialog(setup()); // destroyed without having been closed, as by a kill
        dialog.show();
        choose(dialog, u"Fetch History"_s);
        EXPECT_TRUE(type(table(dialog, u"entries"_s), u"VOLTS"_s, u"12.5"_s));
        EXPECT_TRUE(QTest::qWaitFor([] { return copiesOf(u"history"_s) == 1; }));
    }
    said.answerWith({Answer::Yes, Answer::No});
    PalomineHistoryDlg dialog(setup());
    dialog.show();
    ASSERT_EQ(dialog.list().count(), 90);
    EXPECT_EQ(dialog.list().entryAt(0).volts, 12.5);
    EXPECT_EQ(said.lastStatus(), u"Restored the history; it has not been saved yet.");
    EXPECT_TRUE(dialog.windowTitle().endsWith(u'*'));
    dialog.reject();
    EXPECT_EQ(copiesOf(u"history"_s), 0);
}

TEST_F(HistoryDialogTest, FilesAreOpenedAfterAQuestionAndEditedWithoutADatabase)
{
    const QString path = files.filePath(u"a.hst"_s);
    {
        PalomineHistoryDlg dialog(setup());
        dialog.show();
        choose(dialog, u"Fetch History"_s);
        dialogs.next = path;
        choose(dialog, u"Save As ..."_s);
        EXPECT_EQ(said.lastStatus(), QString(u"History stored to \"" + path + u"\"."));
        EXPECT_TRUE(type(table(dialog, u"entries"_s), u"CODE"_s, u"WAR"_s));
        said.answerWith({Answer::Cancel, Answer::Cancel, Answer::No});
        choose(dialog, u"Open ..."_s);
        EXPECT_TRUE(dialog.list().isEdited(0));
        choose(dialog, u"Fetch History"_s);
        EXPECT_TRUE(dialog.list().isEdited(0));
        choose(dialog, u"Open ..."_s);
        EXPECT_FALSE(dialog.list().isEdited(0));
        EXPECT_EQ(dialog.windowTitle(), QString(u"History File - " + path));
        dialog.reject();
        EXPECT_FALSE(dialog.isVisible());
    }
    session().database().close();
    PalomineHistoryDlg dialog(setup());
    dialog.show();
    choose(dialog, u"Open ..."_s);
    EXPECT_EQ(said.lastStatus(), u"Loaded history file.");
    EXPECT_TRUE(type(table(dialog, u"entries"_s), u"KEEP"_s, u"0"_s));
    choose(dialog, u"Save"_s);
    EXPECT_TRUE(said.texts(Kind::Error).isEmpty());
    choose(dialog, u"Fetch History"_s);
    EXPECT_TRUE(said.texts(Kind::Error).last().startsWith(u"Connect to a database first."_s));
    said.answerWith({Answer::No, Answer::Yes});
    const int count = dialog.list().count();
    choose(dialog, u"Clear History ..."_s);
    EXPECT_EQ(dialog.list().count(), count);
    choose(dialog, u"Clear History ..."_s);
    EXPECT_EQ(dialog.findChild<QLabel *>(u"counter"_s)->text(), u"      0 of 0");
    said.answerWith({Answer::No});
    dialog.reject();
    brannock::History stored;
    stored.load(path);
    EXPECT_EQ(stored.entries.size(), count - 1);
}

} // namespace app
