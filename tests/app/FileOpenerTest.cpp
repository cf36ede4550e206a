#include "DialogFixture.h"

#include <app/logic/FileOpener.h>

#include <QMimeData>
#include <results/dialogs/ReportImportDlg.h>
#include <tarnwick/FileWriter.h>

namespace app {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

using FileOpenerTest = AppTest;

TEST_F(FileOpenerTest, EachKindGoesToItsWindowInItsProject)
{
    const QString project = projectFolder();
    const QTemporaryDir outside;
    const auto file = [&](const QString &name, const QByteArray &bytes = "a") {
        tarnwick::writeFileAtomically(outside.filePath(name), bytes);
        return outside.filePath(name);
    };
    QStringList done;
    const auto note = [&done](const QString &what) {
        return [&done, what](const QString &path) { done.append(what + u' ' + QFileInfo(path).fileName()); };
    };
    const auto noteAll = [&done](const QString &what) {
        return [&done, what](const QStringList &paths) { done.append(u"%1 %2"_s.arg(what).arg(paths.size())); };
    };
    ProjectSession session(said);
    FileOpener opener(session, {.openProject =
                                    [&](const QString &folder) {
                                        note(u"project"_s)(folder);
                                        return session.openProject(folder);
                                    },
                                .connectDatabase = note(u"database"_s),
                                .openMap = note(u"map"_s),
                                .openQuery = note(u"query"_s),
                                .openPlan = note(u"plan"_s),
                                .openList = note(u"list"_s),
                                .uploadReports = noteAll(u"reports"_s),
                                .convertTexts = noteAll(u"texts"_s)});
    // No project is open and none was opened before.
    EXPECT_FALSE(opener.open({file(u"alone.lst"_s)}));
    EXPECT_TRUE(said.entries().last().text.contains(u"Open a project first."_s));

    const QString reports = project + u"/temp/"_s;
    for (const QString &name : {u"a.rep"_s, u"b.REP"_s})
        tarnwick::writeFileAtomically(reports + name, "a");
    EXPECT_TRUE(opener.open({reports + u"a.rep"_s, reports + u"b.REP"_s, file(u"foreign.txt"_s)}));
    EXPECT_THAT(done, ElementsAre(u"project unit-1"_s, u"reports 2"_s, u"texts 1"_s));
    done.clear();
    // Record files and databases are known by their content, whatever they are called.
    EXPECT_TRUE(opener.open({project + u"/queries/wear.qry"_s, project + u"/arvo/project.mdb"_s,
                             project + u"/tube_lists/periphery.txt"_s, project + u"/plans/Rotating probe.pln"_s,
                             file(u"b"_s, QByteArray("\x78\x56\x34\x12\x07\0\0\0MapFile\1", 16)),
                             project + u"/project.json"_s}));
    EXPECT_THAT(done, ElementsAre(u"query wear.qry"_s, u"database project.mdb"_s, u"list periphery.txt"_s,
                                  u"plan Rotating probe.pln"_s, u"map b"_s, u"project unit-1"_s));
    done.clear();
    // All or none.
    EXPECT_FALSE(opener.open({project + u"/queries/wear.qry"_s, outside.filePath(u"none.map"_s), file(u"c.xyz"_s)}));
    EXPECT_THAT(done, ElementsAre());
    const QString told = said.entries().last().text;
    EXPECT_TRUE(told.contains(u"none.map"_s) && told.contains(u"c.xyz"_s)) << qPrintable(told);
}

class DropTest : public DialogFixture
{
};

TEST_F(DropTest, TitlesNameTheFilesThatWereOpened)
{
    for (const auto &[file, title] : {std::pair(u"/queries/wear.qry"_s, u"Query File - wear.qry"_s),
                                      std::pair(u"/plans/Rotating probe.pln"_s, u"File Plan - Rotating probe.pln"_s),
                                      std::pair(u"/tube_lists/wear.lst"_s, u"File List - wear.lst"_s)}) {
        QString shown;
        inNext<tarnwick::JDialog>([&shown](tarnwick::JDialog &dialog) {
            shown = dialog.windowTitle();
            dialog.reject();
        });
        EXPECT_TRUE(window.openFiles({projectFolder() + file}));
        EXPECT_EQ(shown, title);
    }
}

TEST_F(DropTest, DroppedFilesOpenAsArgumentsDo)
{
    const QString report = projectFolder() + u"/temp/dropped.rep"_s;
    tarnwick::writeFileAtomically(report, "a");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(report)});
    QDragEnterEvent enters({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enters);
    EXPECT_TRUE(enters.isAccepted());
    QString shown;
    QTimer::singleShot(200, &window, [&shown] {
        if (auto *dialog = qobject_cast<results::ReportImportDlg *>(QApplication::activeModalWidget())) {
            shown = dialog->fileList().files().value(0).path;
            dialog->done(QDialog::Rejected);
        }
    });
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    QTest::qWait(300);
    EXPECT_EQ(shown, report);
}

} // namespace app
