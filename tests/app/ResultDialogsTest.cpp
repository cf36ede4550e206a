#include "DialogFixture.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/ReportProblemsDlg.h>
#include <brannock/ReportLog.h>
#include <results/dialogs/CalListDlg.h>
#include <results/dialogs/ReportImportDlg.h>
#include <results/dialogs/ReportLogDlg.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/gui/JTableWin.h>

#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

/// The upload dialog and the cal list over a project's database, and pictures of them (see DialogFixture).
class ResultDialogsTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        sql(u"DELETE FROM report"_s);
    }
    qint64 rowCount() { return number(u"SELECT COUNT(*) FROM report"_s); }

    static constexpr int kFaultyCal = 7;
    /// A report file of results for existing tubes, with a header line; its path. In the faulty cal one entry lacks its
    /// analyst.
    QString reportFile(const QString &name, int calNumber, int results = 40)
    {
        const brannock::Project &project = session().project();
        brannock::Report report;
        report.entries.emplaceBack().kind = brannock::ReportEntry::Kind::Header;
        report.entries.last().headerText = u"Analysis of cal %1, bobbin probe, second shift"_s.arg(calNumber);
        for (int i = 0; i < results; ++i) {
            brannock::ReportEntry &entry = report.entries.emplaceBack();
            const ellery::TubeAddress address = project.steamGen[i * 7 % project.steamGen.numTube()].address;
            entry.sec = address.sec;
            entry.row = address.row;
            entry.col = address.col;
            entry.site = project.site;
            entry.outage = u"R12"_s;
            entry.operType = u"PRI"_s;
            entry.calNumber = calNumber;
            entry.defect = i % 9 == 4 ? u"DNT"_s : u"NDD"_s;
            entry.analystId = i == 6 && calNumber == kFaultyCal ? QString() : u"AB1"_s;
            entry.operatorId = u"OP2"_s;
            entry.probe = {u"BOBBIN"_s, u"A-610"_s, 610, u"SN7"_s};
            if (!entry.isNdd()) {
                entry.meas = {u"Vpp"_s, 1.5 + i, 0, 170, 0};
                entry.location = {u"01H"_s, 0.25F, 0, 0};
            }
        }
        report.entries.emplaceBack().kind = brannock::ReportEntry::Kind::Standard;
        const QString path = reports() + u'/' + name;
        report.storeReport(path);
        return path;
    }

    /// Pictures show the path of a plant.
    QString reports() const
    {
        return qEnvironmentVariableIsSet("ARVO_PLANTS") ? projectFolder() + u"/reports"_s : m_reports.path();
    }
    results::ReportImportDlg::Setup setup()
    {
        return {session().database(), session().project(), dialogs, [this] { return session().printMacros(); },
                &window};
    }

private:
    QTemporaryDir m_reports;
};

} // namespace

TEST_F(ResultDialogsTest, FilesAreEditedAndUploadedOneByOneAndAllTogether)
{
    results::ReportImportDlg dialog(setup());
    press(dialog, u"uploadButton"_s);
    EXPECT_EQ(said.entries().last().text, u"Current file number=0 is not valid.");
    dialog.openFiles({reportFile(u"a.rep"_s, 7), reportFile(u"b.rep"_s, 8), reportFile(u"c.rep"_s, 9)});
    picture(dialog, u"report-import"_s);
    EXPECT_EQ(dialog.editor().problemCount(), 1);

    auto *analyst = dialog.findChild<QLineEdit *>(u"cal_analyst_id"_s);
    EXPECT_EQ(analyst->placeholderText(), u"(several)");
    analyst->setText(u"CD2"_s);
    analyst->setModified(true);
    Q_EMIT analyst->editingFinished();
    EXPECT_EQ(dialog.editor().problemCount(), 0);
    auto *files = dialog.findChild<tarnwick::JTableWin *>(u"files"_s);
    files->setCurrentSourceRow(1);
    EXPECT_EQ(said.lastStatus(), u"Selected file 2.");
    EXPECT_EQ(dialog.editor().report()[1].analystId, u"AB1");
    files->setCurrentSourceRow(0);
    EXPECT_EQ(dialog.editor().problemCount(), 0) << "what was edited stays with its file";

    auto *serial = dialog.findChild<QLineEdit *>(u"cal_probe_sn"_s);
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    serial->setFocus();
    serial->selectAll();
    QTest::keyClicks(serial, u"SN8"_s);
    press(dialog, u"uploadButton"_s); // as by its mnemonic, which does not move the focus
    EXPECT_EQ(dialog.editor().report()[1].probe.serialNumber, u"SN8");
    EXPECT_EQ(said.lastStatus(), u"Successfully uploaded 40 entries.");
    EXPECT_EQ(dialog.fileList().statusText(0), u"DONE");
    sql(u"UPDATE report SET cal_num = 9 WHERE recd_num = (SELECT MAX(recd_num) FROM report)"_s);
    said.answerWith({Answer::Cancel}); // cal 9 is there already: of the last file, so nothing is asked after it
    press(dialog, u"uploadAllButton"_s);
    EXPECT_EQ(dialog.fileList().statusText(1), u"DONE");
    EXPECT_EQ(dialog.fileList().statusText(2), u"");
    EXPECT_EQ(rowCount(), 80);
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ResultDialogsTest, ACheckListsTheProblemsAndStoresNothing)
{
    results::ReportImportDlg dialog(setup());
    dialog.openFiles({reportFile(u"a.rep"_s, 8), reportFile(u"b.rep"_s, kFaultyCal)});
    dialog.show();
    press(dialog, u"checkButton"_s);
    auto *problems = dialog.findChild<brannock::ReportProblemsDlg *>();
    ASSERT_TRUE(problems);
    picture(*problems, u"report-problems"_s);
    EXPECT_TRUE(problems->findChild<QLabel *>(u"summary"_s)->text().startsWith(u"79 of 80 entries would be stored."));
    EXPECT_EQ(rowCount(), 0);
    EXPECT_EQ(dialog.fileList().statusText(1), u"");
    ASSERT_EQ(problems->table().grid().totalRows(), 1);
    QTest::keyClick(&problems->table(), Qt::Key_Return);
    EXPECT_EQ(dialog.fileList().current(), 1) << "a problem leads to its file and entry";
    EXPECT_EQ(dialog.editor().currentEntry(), 7);
    said.answerWith({Answer::Yes});
    press(dialog, u"uploadAllButton"_s);
    EXPECT_EQ(rowCount(), 79) << "as the check has told";
    const auto log = brannock::ReportLog(session().project().folder).entries();
    ASSERT_GE(log.size(), 2);
    EXPECT_EQ(log.last().state, brannock::ReportLog::Entry::State::Stored);
    EXPECT_EQ(log.last().skipped, 1);

    results::ReportLogDlg logDialog(session().database(), session().project(), dialogs, &dialog);
    picture(logDialog, u"report-log"_s);
    EXPECT_EQ(logDialog.table().grid().totalRows(), log.size());
    dialogs.next = session().project().pathOf(u"temp\\log.csv"_s);
    press(logDialog, u"saveButton"_s);
    const QList<QByteArray> lines = tarnwick::readFile(dialogs.next).split('\n');
    EXPECT_EQ(lines.size(), log.size() + 2);
    EXPECT_TRUE(lines[1].contains(",upload,b.rep,stored,40,39,1,1,"))
        << lines[1].constData() << ": the newest is the first";
}

TEST_F(ResultDialogsTest, AFileThatChangedSinceItWasReadIsAskedAbout)
{
    results::ReportImportDlg dialog(setup());
    dialog.openFiles({reportFile(u"a.rep"_s, 8)});
    reportFile(u"a.rep"_s, 8, 10);
    said.answerWith({Answer::Cancel, Answer::Yes});
    press(dialog, u"uploadButton"_s);
    EXPECT_EQ(dialog.editor().report().numEntry(), 42);
    press(dialog, u"uploadButton"_s);
    EXPECT_EQ(dialog.editor().report().numEntry(), 12) << "it was read again";
    EXPECT_EQ(rowCount(), 0);
    press(dialog, u"uploadButton"_s);
    EXPECT_EQ(rowCount(), 10);
    EXPECT_FALSE(said.unusedAnswers());
}

TEST_F(ResultDialogsTest, EditedEntriesAreNotLostInSilenceAndUnreadableFilesNotUploaded)
{
    results::ReportImportDlg dialog(setup());
    dialog.show();
    const QString good = reportFile(u"a.rep"_s, 7);
    dialog.openFiles({good, good + u".none"_s});
    dialog.editor().document().remove(u"Delete"_s, {1});
    auto *files = dialog.findChild<tarnwick::JTableWin *>(u"files"_s);
    files->setCurrentSourceRow(1);
    EXPECT_EQ(dialog.editor().report().numEntry(), 0);
    press(dialog, u"uploadButton"_s);
    EXPECT_EQ(dialog.fileList().statusText(1), u"");
    EXPECT_EQ(rowCount(), 0);
    said.answerWith({Answer::No, Answer::Yes});
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ResultDialogsTest, SeveralCalsAreDeletedWithOneQuestionAndCancelUndoesIt)
{
    {
        results::ReportImportDlg dialog(setup());
        dialog.openFiles({reportFile(u"a.rep"_s, 6), reportFile(u"b.rep"_s, 8, 10), reportFile(u"c.rep"_s, 9)});
        press(dialog, u"uploadAllButton"_s);
    }
    const auto deleteTwo = [this](std::initializer_list<Answer> answers, bool isAccepted) {
        results::CalList list(session().database());
        ASSERT_TRUE(list.open());
        results::CalListDlg dialog(list, said, session().project().steamGen, &window);
        picture(dialog, u"cal-list"_s);
        auto *table = dialog.findChild<tarnwick::JTableWin *>(u"cals"_s);
        ASSERT_EQ(table->grid().rowCount(), 3);
        const auto *days = dialog.findChild<tarnwick::JTableWin *>(u"dayCounts"_s);
        EXPECT_EQ(days->grid().index(0, 3).data(), u"40"_s);
        table->selectionModel()->select({table->grid().index(0, 0), table->grid().index(1, 0)},
                                        QItemSelectionModel::ClearAndSelect);
        said.answerWith(answers);
        press(dialog, u"deleteButton"_s);
        EXPECT_EQ(table->grid().rowCount(), 1);
        EXPECT_EQ(dialog.windowTitle().back(), u'*');
        isAccepted ? dialog.accept() : dialog.reject();
        EXPECT_FALSE(dialog.isVisible());
    };
    deleteTwo({Answer::Yes, Answer::No}, false);
    EXPECT_EQ(rowCount(), 90);
    deleteTwo({Answer::Yes}, true);
    EXPECT_EQ(rowCount(), 40);
}

} // namespace app
