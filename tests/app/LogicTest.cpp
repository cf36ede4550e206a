#include "AppFixture.h"

#include <app/DBaseApp.h>
#include <app/logic/DesktopShortcut.h>
#include <app/logic/PanelTexts.h>
#include <app/logic/RecentFiles.h>
#include <app/logic/SelectionCommands.h>
#include <app/logic/SiblingTools.h>
#include <app/logic/StartUp.h>
#include <app/logic/SystemMacros.h>
#include <app/logic/TubeNotes.h>
#include <app/logic/WindowCommandTable.h>
#include <db/SqlText.h>
#include <tarnwick/OptionPrompts.h>

#include <QDir>
#include <QFile>
#include <QTest>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace app {

TEST(FileDialogsTest, ADotWithinANameIsNoSuffix)
{
    const QStringList known{u"emf"_s, u"pdf"_s};
    EXPECT_EQ(tarnwick::FileDialogs::withSuffix(u"/a/R11.2"_s, u"emf"_s, known), u"/a/R11.2.emf"_s);
    EXPECT_EQ(tarnwick::FileDialogs::withSuffix(u"/a.b/name"_s, u"emf"_s, known), u"/a.b/name.emf"_s);
    EXPECT_EQ(tarnwick::FileDialogs::withSuffix(u"/a/name.PDF"_s, u"emf"_s, known), u"/a/name.PDF"_s);
}

TEST(AppOptionsTest, ReadTheCommandLine)
{
    const AppOptions plain = AppOptions::parse({u"/data/p"_s});
    EXPECT_EQ(plain.files, QStringList{u"/data/p"_s});
    EXPECT_TRUE(plain.picture.isEmpty());
    const AppOptions full =
        AppOptions::parse({u"--picture"_s, u"a.png"_s, u"--size"_s, u"800x600"_s, u"--scale"_s, u"2"_s, u"--dark"_s,
                           u"--query"_s, u"a.qry"_s, u"--query"_s, u"b.qry"_s, u"p"_s});
    EXPECT_EQ(full.error, QString());
    EXPECT_EQ(full.size, QSize(800, 600));
    EXPECT_EQ(full.scale, 2);
    EXPECT_TRUE(full.dark);
    EXPECT_EQ(full.queries, (QStringList{u"a.qry"_s, u"b.qry"_s}));
    EXPECT_EQ(full.files, QStringList{u"p"_s});
    EXPECT_TRUE(AppOptions::parse({u"a"_s, u"--version"_s}).answer.startsWith(u"arvo "_s));
    EXPECT_TRUE(AppOptions::parse({u"--help"_s}).answer.contains(u"--picture"_s));
    for (const QStringList &wrong : QList<QStringList>{{u"--size"_s, u"800"_s},
                                                       {u"--size"_s, u"0x10"_s},
                                                       {u"--scale"_s, u"-1"_s},
                                                       {u"--picture"_s},
                                                       {u"--unknown"_s}})
        EXPECT_FALSE(AppOptions::parse(wrong).error.isEmpty()) << qPrintable(wrong.join(u' '));
}

namespace {

/// Two sections of 2 x 3 tubes, pitch 1.
ellery::SteamGen smallSteamGen()
{
    QList<ellery::Tube> tubes;
    for (int sec = 0; sec < 2; ++sec) {
        for (int row = 1; row <= 2; ++row) {
            for (int col = 1; col <= 3; ++col)
                tubes.append({{qint16(sec), qint16(row), qint16(col)}, float(col + 10 * sec), float(row), col == 3});
        }
    }
    ellery::SteamGen sg;
    sg.setTubes(tubes);
    return sg;
}

} // namespace

TEST(PanelTextsTest, ProjectPanelNamesTheDatabaseFromTheArvoFolder)
{
    brannock::Project project;
    project.folder = u"/data/north"_s;
    project.site.siteCode = u"N1"_s;
    project.site.compCode = u"SGA"_s;
    project.steamGen.modelName = u"M51"_s;
    project.outages = {{u"R11"_s, {}}, {u"R12"_s, tarnwick::JDateTime::fromLocal(2024, 3, 9)}};
    EXPECT_EQ(projectPanelText(project, u"worn"_s, {}),
              u"Site Code: N1\nComponent: SGA\nModel    : M51\nOutage   : R12\nMap Name : worn\nDatabase : <none>"_s);
    EXPECT_EQ(databaseText(project, {u"/data/north/arvo/project.mdb"_s, true}), u"project.mdb"_s);
    EXPECT_EQ(databaseText(project, {u"/data/north/arvo/old/a.mdb"_s, false}), u"old\\a.mdb READ ONLY"_s);
    EXPECT_TRUE(projectInfoText(project, {}).contains(u"R12  03/09/2024 (current)"_s));

    map::MapDocument document;
    document.setProject(&project);
    map::MapFile content;
    content.description = u"what it is for"_s;
    fenwright::SiteInfo site = project.site;
    site.outage = u"R11"_s;
    document.setContent(content, u"maps\\worn.map"_s, {site, QDateTime::currentDateTime()});
    EXPECT_TRUE(mapInfoText(document).contains(u" for N1 SGA R11\nMap notes : what it is for"_s))
        << qPrintable(mapInfoText(document));
}

TEST(SystemMacrosTest, TellTheStateOfTheMap)
{
    brannock::Project project;
    project.folder = u"/data/north"_s;
    project.name = u"North"_s;
    project.outages = {{u"R12"_s, tarnwick::JDateTime::fromLocal(2024, 3, 9)}};
    project.steamGen = smallSteamGen();
    ellery::TubeStates tubes(project.steamGen.numTube());
    tubes.setMark(0, markOf(u'A', 0));
    const tarnwick::JMacro macros = systemMacros(project, tubes, u"maps\\worn.map"_s, {});
    EXPECT_EQ(
        macros.expand(u"[MAP NAME] [OUTAGE DATE] [MAP OPEN TUBES]/[MAP TUBE COUNT] [DATABASE NAME] [QUERY NAME]."_s),
        u"worn 03/09/2024 11/12 <No Database> ."_s);
    const tarnwick::JMacro printed = printMacros(macros, {});
    EXPECT_EQ(printed.value(u"[MAP NAME]"), u"worn"_s);
    EXPECT_FALSE(printed.value(u"[CUR DATETIME]").value_or(QString()).isEmpty());
}

TEST(SelectionCommandsTest, SelectAndDeselectByRule)
{
    const ellery::SteamGen sg = smallSteamGen();
    ellery::TubeStates tubes(sg.numTube());
    tubes.setMark(0, markOf(u'A', 1));
    tubes.setMark(7, markOf(u'A', 2));
    tubes.setMark(1, markOf(u'B', 1));
    const auto selectedAfter = [&](int command, int pointed = -1) {
        tubes.setSelection(selectionAfter(command, sg, tubes, pointed));
        return tubes.selection();
    };
    EXPECT_THAT(selectedAfter(37), ElementsAre(0, 1, 7));
    EXPECT_THAT(selectedAfter(46, 0), ElementsAre(1));
    EXPECT_THAT(selectedAfter(44), ElementsAre());
    EXPECT_THAT(selectedAfter(38, 7), ElementsAre(0, 7));
    EXPECT_THAT(selectedAfter(45), ElementsAre());
    EXPECT_THAT(selectedAfter(43), ElementsAre(2, 5, 8, 11));
    EXPECT_THAT(selectedAfter(40, 0), ElementsAre(0, 1, 2, 3, 4, 5, 8, 11));
    EXPECT_THAT(selectedAfter(51), ElementsAre(0, 1, 3, 4));
    EXPECT_THAT(selectedAfter(50, 3), ElementsAre(0, 1));
    EXPECT_THAT(selectedAfter(47), ElementsAre(0, 1));
    EXPECT_THAT(selectedAfter(42, 10), ElementsAre(0, 1, 9, 10, 11));
    EXPECT_THAT(selectedAfter(48, 6), ElementsAre(0, 1));
    EXPECT_EQ(selectedAfter(36).size(), 12);
    EXPECT_THAT(selectedAfter(44), ElementsAre());
    EXPECT_THAT(selectedAfter(42), ElementsAre()) << "nothing was pointed at";
    EXPECT_THAT(selectedAfter(38, 4), ElementsAre()) << "an open tube has no symbol";
}

TEST(SelectionCommandsTest, AGroupHangsTogetherAndLooksAlike)
{
    const ellery::SteamGen sg = smallSteamGen();
    ellery::TubeStates tubes(sg.numTube());
    tubes.setMark(1, markOf(u'X', 1));
    tubes.setMark(4, markOf(u'X', 1));
    EXPECT_THAT(connectedGroup(sg, tubes, 0), ElementsAre(0, 3));
    EXPECT_THAT(connectedGroup(sg, tubes, 4), ElementsAre(1, 4));
    EXPECT_THAT(connectedGroup(sg, tubes, 6), ElementsAre(6, 7, 8, 9, 10, 11));
}

class RecentFilesTest : public AppTest
{
};

TEST_F(RecentFilesTest, EveryProjectHasItsOwnMostRecentFirst)
{
    RecentFiles files;
    for (int i = 0; i < 7; ++i)
        files.addDatabase(u"/data/a"_s, u"arvo\\%1.mdb"_s.arg(i));
    files.addDatabase(u"/data/a"_s, u"arvo\\4.mdb"_s);
    files.addMap(u"/data/b"_s, u"maps\\x.map"_s);
    const tarnwick::PathRoots roots = tarnwick::PathRoots::fromEnvironment();
    files.store(roots);
    RecentFiles read;
    ASSERT_TRUE(read.load(roots));
    EXPECT_EQ(read.lists(u"/data/a"_s).databases.join(u' '),
              u"arvo\\4.mdb arvo\\6.mdb arvo\\5.mdb arvo\\3.mdb arvo\\2.mdb"_s);
    EXPECT_TRUE(read.lists(u"/data/b"_s).databases.isEmpty());
    EXPECT_EQ(read.lists(u"/data/b"_s).maps, QStringList{u"maps\\x.map"_s});
    read.clearDatabases(u"/data/a"_s);
    EXPECT_TRUE(read.lists(u"/data/a"_s).databases.isEmpty());
}

TEST_F(RecentFilesTest, WindowsThatRunTogetherKeepWhatTheOthersOpened)
{
    const tarnwick::PathRoots roots = tarnwick::PathRoots::fromEnvironment();
    RecentFiles one;
    RecentFiles other;
    const auto open = [&](RecentFiles &files, const QString &name) {
        tarnwick::changeOptions(files, roots, said, [&] { files.addMap(u"/data/a"_s, name); });
    };
    open(one, u"1.map"_s);
    open(other, u"2.map"_s);
    open(one, u"3.map"_s);
    EXPECT_EQ(one.lists(u"/data/a"_s).maps.join(u' '), u"3.map 2.map 1.map"_s);
}

class ToolsTest : public AppTest
{
};

/// Cancelled at its first report.
class Impatient : public tarnwick::Progress
{
public:
    void report(qint64, qint64, const QString &text) override { what = text; }
    bool cancelled() override { return !what.isEmpty(); }
    QString what;
};

TEST_F(ToolsTest, ComponentMakerIsWaitedForUntilThatIsCancelled)
{
    const tarnwick::PathRoots roots = tarnwick::PathRoots::fromEnvironment();
    ASSERT_TRUE(QDir(roots.palomineDir).mkpath(u"bin"_s));
    const QString script = roots.palomineDir + u"/bin/ossory"_s;
    const QString trace = roots.palomineDir + u"/trace"_s;
    QFile file(script);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\nsleep 0.5\ntouch '" + trace.toLocal8Bit() + "'\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(runTool(kComponentMaker, roots, said, nullptr));
    EXPECT_TRUE(QFile::remove(trace));
    EXPECT_TRUE(said.entries().isEmpty());

    Impatient progress;
    EXPECT_FALSE(runTool(kComponentMaker, roots, said, &progress));
    EXPECT_EQ(progress.what, u"Waiting for \"ossory\" ..."_s);
    EXPECT_FALSE(QFile::exists(trace));
    EXPECT_TRUE(said.lastStatus().startsWith(u"\"ossory\" is still open."_s)) << qPrintable(said.lastStatus());
    EXPECT_TRUE(QTest::qWaitFor([&trace] { return QFile::exists(trace); })) << "the tool itself goes on";
}

TEST(DesktopShortcutTest, QuotesTheProgramsPathAndPassesTheInstallationOn)
{
    const QTemporaryDir folder;
    const auto shortcut = [&folder](const ShortcutTarget &target) {
        QFile file(createDesktopShortcut(folder.path(), target));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.fileName().endsWith(u"/ARVO.desktop"_s));
        EXPECT_TRUE(file.permissions() & QFile::ExeOwner);
        return QString::fromUtf8(file.readAll());
    };
    const QString plain = shortcut({u"/opt/a \"b\" $c 5%/arvo"_s, {}, {}});
    EXPECT_TRUE(plain.contains(u"\nName=ARVO\nComment=Palomine ARVO\n"_s));
    EXPECT_TRUE(plain.contains(u"\nExec=\"/opt/a \\\\\"b\\\\\" \\\\$c 5%%/arvo\"\n"_s)) << qPrintable(plain);
    EXPECT_FALSE(plain.contains(u"\nIcon="_s));
    const QString full = shortcut({u"/opt/arvo"_s, u"/data/the suite"_s, u"/data/arvo.png"_s});
    EXPECT_TRUE(full.contains(u"\nExec=env \"PALOMINE_DIR=/data/the suite\" \"/opt/arvo\"\nIcon=/data/arvo.png\n"_s))
        << qPrintable(full);
}

TEST_F(AppTest, TheTipTellsRepairsAndLastIndications)
{
    ProjectSession session(said);
    ASSERT_TRUE(session.openProject(projectFolder()));
    const ellery::TubeAddress tube = session.project().steamGen[0].address;
    db::executeSql(session.database().database(),
                   db::sqlText(u"INSERT INTO repairs (sec, row, col, repair_type, date_scheduled) "
                               u"VALUES (%d, %d, %d, 'Plug', #3/4/2024#)",
                               tube.sec, tube.row, tube.col));
    const QString file = session.project().pathOf(u"history\\palomine\\project.hst"_s);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    brannock::History history;
    history.entries = {{}};
    history.entries[0].sec = tube.sec;
    history.entries[0].row = tube.row;
    history.entries[0].col = tube.col;
    history.entries[0].outage = u"R9"_s;
    history.entries[0].defect = u"WAR"_s;
    history.store(file);
    TubeNotes notes(session);
    EXPECT_THAT(notes.lines(0), ElementsAre(u"Plug, scheduled 03/04/2024"_s));
    notes.refresh();
    EXPECT_THAT(notes.lines(0), ElementsAre(u"Plug, scheduled 03/04/2024"_s, u"R9 WAR"_s));
    EXPECT_TRUE(notes.lines(1).isEmpty());
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.close();
    notes.refresh();
    ASSERT_EQ(notes.lines(1).size(), 1);
    EXPECT_TRUE(notes.lines(1).first().contains(u"project.hst"_s));
    damaged.remove();
}

} // namespace app
