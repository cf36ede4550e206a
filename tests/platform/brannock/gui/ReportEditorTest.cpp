#include <brannock/gui/ReportEditor.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/StateKeeper.h>

#include <gtest/gtest.h>
#include <QAction>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace brannock;

TEST(ReportEditorTest, DeletionOfManyIsOneStepAndLeavesOrderAndWidths)
{
    tarnwick::RecordingPrompts prompts;
    ReportEditor editor(prompts, nullptr, {.isImport = true, .isReadOnly = false});
    Report report;
    for (int row : {3, 1, 4, 2}) {
        ReportEntry entry;
        entry.row = row;
        report.entries.append(entry);
    }
    editor.setReport(report);
    tarnwick::JTableWin &table = editor.table();
    const int kRow = ReportGrid::columnOf(u"row");
    const auto shown = [&] {
        QList<int> rows;
        for (int i = 0; i < table.grid().rowCount(); ++i)
            rows.append(table.grid().index(i, kRow).data().toInt());
        return rows;
    };
    table.grid().sortBy({{kRow, Qt::AscendingOrder}});
    table.setColumnWidths(QList<int>(table.grid().columnCount(), 33));
    table.setCurrentIndex(table.grid().index(1, 0));
    table.selectionModel()->select(QItemSelection(table.grid().index(1, 0), table.grid().index(2, 0)),
                                   QItemSelectionModel::ClearAndSelect);
    table.action(u"deleteRows"_s)->trigger();
    EXPECT_EQ(shown(), (QList<int>{1, 4}));
    editor.document().undo();
    EXPECT_EQ(shown(), (QList<int>{1, 2, 3, 4}));
    EXPECT_EQ(table.columnWidths().constFirst(), 33);
    EXPECT_FALSE(editor.document().canUndo());

    auto *site = editor.findChild<QLineEdit *>(u"cal_site_code"_s);
    QTest::keyClicks(site, u"AB"_s);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    EXPECT_TRUE(QCoreApplication::sendEvent(site, &press)) << "it must not reach the button OK of the dialog";
    EXPECT_EQ(editor.report().entries[3].site.siteCode, u"AB");
}

TEST(ReportEditorTest, ACancelledCheckKeepsTheFormerReport)
{
    struct StopSoon : tarnwick::Progress
    {
        bool cancelled() override { return true; }
    } stop;
    tarnwick::RecordingPrompts prompts;
    const ellery::SteamGen steamGen;
    const DefectList defects = DefectList::standard();
    const EntryCheck check(steamGen, defects);
    ReportEditor editor(prompts, &check, {.isImport = false, .isReadOnly = false});
    Report former;
    former.entries.resize(3);
    editor.setReport(former);
    Report longer;
    longer.entries.resize(100'000);
    EXPECT_THROW(editor.setReport(longer, &stop), tarnwick::Cancelled);
    EXPECT_EQ(editor.report().numEntry(), 3);
    EXPECT_EQ(editor.problemCount(), 3) << "without cal and code";
    editor.setReport(longer);
    EXPECT_EQ(editor.problemCount(), 100'000);
    editor.document().remove(u"Delete"_s, {0, 1});
    EXPECT_EQ(editor.problemCount(), 99'998);
}

TEST(ReportEditorTest, WidthsComeBackAndStay)
{
    const support::TemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    tarnwick::RecordingPrompts prompts;
    for (const int width : {40, 50, 60}) {
        ReportEditor editor(prompts, nullptr, {.isImport = false, .isReadOnly = false});
        tarnwick::StateKeeper::keep(&editor);
        editor.show();
        editor.setReport({});
        if (width > 40) {
            EXPECT_EQ(editor.table().columnWidths().constFirst(), width - 10) << "as they were left";
        }
        editor.table().setColumnWidths(QList<int>(editor.table().grid().columnCount(), width));
        editor.table().grid().sortBy({{0, Qt::AscendingOrder}});
        EXPECT_EQ(editor.table().columnWidths().constFirst(), width);
        editor.hide();
    }
    qunsetenv("XDG_CONFIG_HOME");
}
