#include "WindowFixture.h"

#include <app/LegendModel.h>
#include <app/LegendView.h>
#include <app/TextPanel.h>

#include <db/SqlText.h>
#include <plans/QueryFill.h>

#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <support/Files.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

namespace {

class WindowTest : public WindowFixture
{
protected:
    QStringList enabledMenus()
    {
        QStringList names;
        for (QAction *menu : window.menuBar()->actions()) {
            if (menu->isEnabled())
                names.append(QString(menu->text()).remove(u'&'));
        }
        return names;
    }
};

} // namespace

TEST_F(WindowTest, WithoutAProjectOnlyOpeningAboutAndLeavingAreOffered)
{
    EXPECT_EQ(window.windowTitle(), u"ARVO - No Project Loaded"_s);
    EXPECT_EQ(enabledMenus(), (QStringList{u"File"_s, u"Util"_s, u"Help"_s}));
    QList<int> enabled;
    for (int number = 0; number <= About; ++number) {
        if (command(number) && command(number)->isEnabled())
            enabled.append(number);
    }
    EXPECT_EQ(enabled, (QList<int>{Exit, OpenProject, About}));
    EXPECT_FALSE(find<QWidget>(u"mainBar"_s)->isEnabled());
    EXPECT_FALSE(find<QWidget>(u"sidePanel"_s)->isEnabled());
    EXPECT_TRUE(find<QMenu>(u"menuRecentProjects"_s)->isEnabled());
    EXPECT_FALSE(find<QMenu>(u"menuRecentDatabases"_s)->isEnabled());
}

TEST_F(WindowTest, AFolderWithoutAProjectIsSaidAndChangesNothing)
{
    open();
    const QString title = window.windowTitle();
    said.clear();
    const QTemporaryDir empty;
    EXPECT_FALSE(window.openProject(empty.path()));
    EXPECT_EQ(said.entries().size(), 1);
    EXPECT_EQ(window.windowTitle(), title);
    EXPECT_GT(window.map().scene().numTube(), 0);
}

TEST_F(WindowTest, ProjectEnablesMenusAndFillsTheRecentList)
{
    open();
    EXPECT_EQ(window.windowTitle(), u"ARVO - "_s + projectFolder());
    EXPECT_EQ(enabledMenus().size(), 8);
    EXPECT_TRUE(command(SelectAllTubes)->isEnabled());
    ASSERT_NE(command(FirstRecentProject), nullptr);
    EXPECT_TRUE(command(FirstRecentProject)->text().contains(projectFolder()));
    EXPECT_FALSE(command(NoRecentProject)->isVisible());
    EXPECT_FALSE(command(NoRecentMap)->isEnabled());
    EXPECT_TRUE(command(NoRecentMap)->isVisible());

    DBase other(&said);
    EXPECT_EQ(other.projectSession().recentProjects(), QStringList{projectFolder()});
    ASSERT_TRUE(other.commands().action(FirstRecentProject)->isEnabled());
    other.commands().action(FirstRecentProject)->trigger();
    EXPECT_EQ(other.windowTitle(), window.windowTitle());
    said.answerWith({Answer::No, Answer::Yes});
    run(ClearRecentProjects);
    EXPECT_EQ(window.projectSession().recentProjects().size(), 1);
    run(ClearRecentProjects);
    EXPECT_TRUE(command(NoRecentProject)->isVisible());
}

TEST_F(WindowTest, EveryCommandHasOneActionAndEveryActionOneCommand)
{
    EXPECT_EQ(window.commands().faults(), QStringList());
}

TEST_F(WindowTest, SelectionAndFlipsAreShownAndCanBeUndone)
{
    open();
    const int tubes = mapOf(window).component().numTube();
    run(SelectAllTubes);
    EXPECT_EQ(mapOf(window).tubes().selectedCount(), tubes);
    EXPECT_TRUE(find<TextPanel>(u"statusPanel"_s)->text().contains(u"Selected    : %1\n"_s.arg(tubes, 6)));
    EXPECT_EQ(find<QLabel>(u"selectionText"_s)->text(), u"%1 of %1 selected"_s.arg(tubes));
    EXPECT_EQ(command(Undo)->text(), u"Undo Select All Tubes"_s);
    EXPECT_EQ(command(Undo)->shortcut(), QKeySequence(u"Ctrl+Z"_s));
    run(DeselectAllTubes);
    EXPECT_EQ(mapOf(window).tubes().selectedCount(), 0);
    run(DeselectAllTubes);
    EXPECT_EQ(mapOf(window).history().count(), 2) << "deselecting nothing is no change";
    run(Undo);
    EXPECT_EQ(mapOf(window).tubes().selectedCount(), tubes);
    run(Undo);
    EXPECT_EQ(command(Undo)->text(), u"Undo"_s);
    EXPECT_FALSE(command(Undo)->isEnabled());
    run(FlipHorizontal);
    EXPECT_EQ(window.map().xOrientation(), -1);
    EXPECT_TRUE(command(FlipHorizontal)->isChecked());
    EXPECT_FALSE(command(FlipVertical)->isChecked());
    run(Undo);
    EXPECT_FALSE(command(FlipHorizontal)->isChecked());
    const bool tip = command(ShowFloatingId)->isChecked();
    run(ShowFloatingId);
    EXPECT_EQ(window.map().hasTubeTip(), !tip);
}

TEST_F(WindowTest, ACommandThatFailsIsReportedAndChangesNothing)
{
    open();
    addEntry(window, FailingFill());
    addEntry(window, FailingFill());
    auto *model = find<LegendView>(u"legend"_s)->model();
    const auto rename = [model] {
        model->setData(model->index(0, LegendModel::Description), u"name"_s);
        settle();
    };
    const map::Entries before = mapOf(window).entries();
    FailingFill::fails = true;
    rename();
    EXPECT_EQ(said.texts(Kind::Error), QStringList{u"There is not enough memory."_s});
    EXPECT_EQ(mapOf(window).entries(), before);
    EXPECT_EQ(mapOf(window).undoLabel(), u"Fill"_s);
    rename();
    EXPECT_NE(mapOf(window).entries(), before) << "works the second time";

    // A part of the window that fails does not keep the others from following the change.
    bool fails = true;
    const map::Subscription failing = mapOf(window).subscribe([&fails](const map::MapEvent &) {
        if (std::exchange(fails, false))
            throw std::bad_alloc();
    });
    std::vector<int> later;
    const map::Subscription last = mapOf(window).subscribe(
        [&later](const map::MapEvent &event) { later.push_back(event.has(map::MapEvent::Orientation)); });
    said.clear();
    run(FlipHorizontal);
    EXPECT_EQ(said.texts(Kind::Error), QStringList{u"There is not enough memory."_s});
    EXPECT_EQ(later, std::vector<int>{1});
    EXPECT_EQ(window.map().xOrientation(), -1);
}

TEST_F(WindowTest, MapMenuSelectsFromTheTubePointedAt)
{
    open();
    Q_EMIT window.map().contextMenuRequested(QPoint(10, 10), -1);
    auto *menu = find<QMenu>(u"mapMenu"_s);
    QAction *row = window.findChild<QAction *>(u"popup42"_s);
    EXPECT_FALSE(row->isEnabled());
    menu->hide();
    Q_EMIT window.map().contextMenuRequested(QPoint(10, 10), 5);
    EXPECT_TRUE(row->isEnabled());
    EXPECT_FALSE(window.findChild<QAction *>(u"popup38"_s)->isEnabled()) << "the tube is open";
    row->trigger();
    settle();
    const int inRow = mapOf(window).component()[5].address.row;
    for (const qint32 tube : mapOf(window).tubes().selection())
        EXPECT_EQ(mapOf(window).component()[tube].address.row, inRow);
    EXPECT_GT(mapOf(window).tubes().selectedCount(), 0);
    menu->hide();
}

TEST_F(WindowTest, ConnectsTheProjectsDatabaseAndMakesItWhenItIsMissing)
{
    open();
    const QString path = window.projectSession().project().databasePath();
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_TRUE(find<TextPanel>(u"projectPanel"_s)->text().endsWith(u"\nDatabase : project.mdb"_s));
    EXPECT_TRUE(command(FirstRecentDatabase)->text().contains(u"arvo\\project.mdb"_s));

    run(CloseDatabase);
    EXPECT_TRUE(find<TextPanel>(u"projectPanel"_s)->text().endsWith(u"\nDatabase : <none>"_s));
    said.clear();
    run(UploadComponent);
    run(CloseDatabase);
    ASSERT_EQ(said.entries().size(), 2);
    EXPECT_EQ(said.entries()[0].number, 1053);
    EXPECT_EQ(said.entries()[1].number, 1053);
    run(FirstRecentDatabase);
    EXPECT_EQ(said.lastStatus(), u"Connected to \"project.mdb\"."_s);
    EXPECT_TRUE(window.projectSession().database().isOpen());
}

TEST_F(WindowTest, NewAndOpenDatabaseGoThroughTheChooser)
{
    open();
    window.setFileDialogs(&dialogs);
    run(NewDatabase);
    EXPECT_EQ(said.lastStatus(), u"Create database ..."_s);
    const QTemporaryDir folder;
    dialogs.next = folder.filePath(u"other.mdb"_s);
    run(NewDatabase);
    EXPECT_EQ(window.projectSession().database().path(), dialogs.next);
    EXPECT_TRUE(find<TextPanel>(u"projectPanel"_s)->text().contains(u"other.mdb"_s));
    dialogs.next = window.projectSession().project().databasePath();
    run(OpenDatabase);
    EXPECT_EQ(window.projectSession().database().path(), window.projectSession().project().databasePath());
    EXPECT_EQ(dialogs.asked, QStringList(3, u"Accesss (*.mdb)"_s));
}

TEST_F(WindowTest, MarksTheTubesOfAQueryFile)
{
    open();
    said.answerWith({Answer::Yes});
    run(UploadComponent);
    const QTemporaryDir folder;
    const QString file =
        support::writeFile(folder.filePath(u"edge.qry"_s), "SELECT sec, row, col FROM tubes WHERE row <= 2");
    ASSERT_TRUE(window.addQueryFile(file));
    settle();
    EXPECT_EQ(mapOf(window).entry(0).label, u"edge.qry"_s);
    EXPECT_EQ(find<LegendView>(u"legend"_s)->model()->index(0, LegendModel::Type).data().toString(), u"QUERY"_s);
    EXPECT_GT(mapOf(window).tubes().symbolCount(), 0);
    for (int i = 0; i < mapOf(window).component().numTube(); ++i)
        EXPECT_EQ(mapOf(window).tubes().isOpen(i), mapOf(window).component()[i].address.row > 2);
    said.clear();
    EXPECT_FALSE(window.addQueryFile(folder.filePath(u"missing.qry"_s)));
    EXPECT_EQ(said.entries().size(), 1);
}

} // namespace app
