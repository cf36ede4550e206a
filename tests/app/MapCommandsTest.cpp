#include "AppFixture.h"

#include <app/logic/MapCommands.h>
#include <app/logic/SystemMacros.h>
#include <map/HeaderEditor.h>

#include <plans/PatternFill.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

#include <csignal>
#include <QFile>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace app {

namespace {

class MapCommandsTest : public AppTest
{
protected:
    MapCommandsTest()
    {
        EXPECT_TRUE(session.openProject(projectFolder()));
        commands.setFileChoice(&dialogs);
        said.clear();
    }
    void addFill(const QList<qint32> &tubes)
    {
        auto fill = std::make_unique<plans::PatternFill>();
        fill->tubes = tubes;
        session.map().change(u"Fill"_s, [&fill](map::MapEdit &edit) { edit.addEntry(std::move(fill), true); });
    }
    QString inFolder(const QString &name) const { return folder.path(name); }
    QString questions() const { return said.texts(Kind::Question).join(u'|'); }

    support::TemporaryFolder folder;
    ScriptedDialogs dialogs;
    ProjectSession session{said};
    map::HeaderEditor::Context context()
    {
        return {session.map(), said, dialogs, session.roots(), [this] { return session.printMacros(); }};
    }
    MapCommands commands{session};
};

const QString kAsk = u"Do you wish to save changes to the map?"_s;

} // namespace

TEST_F(MapCommandsTest, UnsavedChangesAreAskedAboutBeforeTheyWouldBeLost)
{
    commands.newMap();
    EXPECT_TRUE(said.texts(Kind::Question).isEmpty()) << "nothing to lose";

    addFill({1});
    said.answerWith({Answer::Cancel});
    commands.newMap();
    EXPECT_EQ(questions(), kAsk);
    EXPECT_EQ(session.map().count(), 1);

    // Yes, but no file was chosen: that is no way to lose the map either.
    said.answerWith({Answer::Yes});
    commands.newMap();
    EXPECT_EQ(session.map().count(), 1);

    dialogs.next = inFolder(u"kept.map"_s);
    said.answerWith({Answer::Yes});
    commands.newMap();
    EXPECT_EQ(session.map().count(), 0);
    EXPECT_TRUE(folder.has(u"kept.map"_s));

    addFill({2});
    said.clear();
    said.answerWith({Answer::No});
    commands.open(dialogs.next);
    EXPECT_EQ(questions(), kAsk);
    EXPECT_EQ(session.map().entry(0).tubes, QList<qint32>{1});
    EXPECT_EQ(said.lastStatus(), u"Opened map \"%1\"."_s.arg(session.map().file()));
}

TEST_F(MapCommandsTest, SaveGoesToTheMapsOwnFileAndSaveAsToAnother)
{
    addFill({1});
    dialogs.next = inFolder(u"one.map"_s);
    EXPECT_TRUE(commands.save());
    EXPECT_EQ(dialogs.asked, QStringList{u"Maps (*.map)"_s});
    addFill({2});
    EXPECT_TRUE(commands.save());
    EXPECT_EQ(dialogs.asked.size(), 1) << "the file is known";
    const QByteArray one = folder.read(u"one.map"_s);
    addFill({3});
    dialogs.next = inFolder(u"two.map"_s);
    EXPECT_TRUE(commands.saveAs());
    EXPECT_EQ(session.map().name(), u"two"_s);
    EXPECT_EQ(folder.read(u"one.map"_s), one);
    EXPECT_EQ(session.systemMacros().value(u"[MAP NAME]"), u"two"_s);
    dialogs.next.clear();
    EXPECT_FALSE(commands.saveAs());

    // Somebody else has stored the map meanwhile.
    QFile file(inFolder(u"two.map"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();
    addFill({4});
    said.clear();
    said.answerWith({Answer::No, Answer::Yes});
    EXPECT_FALSE(commands.save());
    EXPECT_TRUE(questions().contains(u"was changed by another program"_s));
    EXPECT_TRUE(commands.save());
    EXPECT_TRUE(commands.save()) << "asked once";
}

TEST_F(MapCommandsTest, AMapOfAnotherModelIsReplacedOnlyWhenToldTo)
{
    const QString path = inFolder(u"other.map"_s);
    QString &model = session.project().steamGen.modelName;
    const QString own = std::exchange(model, u"Other"_s);
    addFill({1});
    ASSERT_TRUE(session.saveMap(path));
    model = own;
    ASSERT_TRUE(session.openMap(path));
    said.clear();
    said.answerWith({Answer::No, Answer::Yes});
    EXPECT_FALSE(commands.save());
    EXPECT_EQ(questions(), u"Do you wish to replace \"%1\" by a map of the current model?"_s.arg(session.map().file()));
    EXPECT_TRUE(commands.save());
    said.clear();
    EXPECT_TRUE(commands.save());
    EXPECT_EQ(questions(), QString()) << "it is of this model now";
}

TEST_F(MapCommandsTest, ExportLeavesTheMapItsFileAndImportOpensACopyInTheProject)
{
    addFill({4, 5});
    setHeaderText(session.map(), &map::MapHeader::upperText, u"from the template"_s);
    const QString user = session.roots().palomineDir + u"/user/map_templates/sample.map"_s;
    dialogs.next = user;
    commands.exportMap();
    EXPECT_EQ(said.lastStatus(), u"Exported \"[PALOMINE_DIR]\\user\\map_templates\\sample.map\"."_s);
    EXPECT_TRUE(session.map().file().isEmpty());
    EXPECT_TRUE(session.map().isModified());

    said.answerWith({Answer::No});
    commands.importMap();
    EXPECT_EQ(said.lastStatus(), u"Imported \"maps\\sample.map\"."_s);
    EXPECT_EQ(session.map().file(), u"maps\\sample.map"_s);
    EXPECT_EQ(session.map().entry(0).tubes, (QList<qint32>{4, 5}));
    EXPECT_EQ(session.map().header().upperText, u"from the template"_s);
    EXPECT_EQ(dialogs.asked, QStringList(2, u"Map Template (*.map)"_s));

    // The project has a map of that name now; it is not overwritten unasked.
    addFill({6});
    EXPECT_TRUE(commands.save());
    said.clear();
    said.answerWith({Answer::No});
    commands.importMap();
    EXPECT_EQ(questions(), u"\"maps\\sample.map\" already exists.\n\nDo you wish to replace it?"_s);
    EXPECT_EQ(session.map().count(), 2);

    // A template that is none changes neither map nor project.
    dialogs.next = folder.write(u"none.map"_s, "no map at all");
    said.clear();
    commands.importMap();
    EXPECT_EQ(said.entries()[0].number, 1039);
    EXPECT_EQ(session.map().count(), 2);
    EXPECT_FALSE(QFile::exists(projectFolder() + u"/maps/none.map"_s));
}

TEST_F(MapCommandsTest, TheMapOpenedLastIsOpenedAtTheStart)
{
    addFill({1});
    const QString path = inFolder(u"last.map"_s);
    ASSERT_TRUE(session.saveMap(path));
    {
        ProjectSession next(said);
        ASSERT_TRUE(next.openProject(projectFolder()));
        next.openMapAtStart();
        EXPECT_EQ(next.map().count(), 1);
        EXPECT_FALSE(next.map().isModified());
    }
    QFile::remove(path);
    said.clear();
    ProjectSession next(said);
    ASSERT_TRUE(next.openProject(projectFolder()));
    next.openMapAtStart();
    EXPECT_EQ(next.map().count(), 0);
    EXPECT_TRUE(said.lastStatus().endsWith(u"does not exist any more."_s));
    EXPECT_TRUE(said.texts(Kind::Error).isEmpty());
}

namespace {

const map::UnsavedWork kModified{true, {}, {}};

class RecoveryTest : public MapCommandsTest
{
protected:
    QString copies() const { return map::MapRecovery::folder(); }
    QStringList names() const { return QDir(copies()).entryList({u"*.map"_s}, QDir::Files); }

    /// Another program on this project is killed while its map has unsaved changes.
    void leaveCopyOfDeadProgram(const map::UnsavedWork &work = kModified)
    {
        const pid_t child = fork();
        if (child == 0) {
            map::MapRecovery dead(said);
            dead.begin(session.project().folder);
            dead.update(session.map(), work);
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    bool startAgain(ProjectSession &next)
    {
        next.keepsRecoveryCopies = true;
        if (!next.openProject(projectFolder()))
            return false;
        next.openMapAtStart();
        return true;
    }
};

} // namespace

TEST_F(RecoveryTest, ACopyIsKeptWhileSomethingIsUnsavedAndGoesWithTheCleanEnd)
{
    map::MapRecovery recovery(said);
    recovery.update(session.map(), kModified);
    EXPECT_TRUE(names().isEmpty()) << "not asked for";
    recovery.begin(session.project().folder);
    recovery.update(session.map(), {});
    EXPECT_TRUE(names().isEmpty());
    addFill({1});
    recovery.update(session.map(), kModified);
    EXPECT_EQ(names().size(), 1);
    recovery.update(session.map(), {});
    EXPECT_TRUE(names().isEmpty()) << "saved";
    recovery.update(session.map(), kModified);
    EXPECT_EQ(names().size(), 1);
    recovery.end();
    EXPECT_TRUE(QDir(copies()).entryList(QDir::Files).isEmpty());

    // A folder that cannot be written to is told once, in the status line, and stops nobody.
    recovery.begin(session.project().folder);
    said.clear();
    tarnwick::failWritesAfter(0);
    recovery.update(session.map(), kModified);
    recovery.update(session.map(), kModified);
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(said.entries().size(), 1);
    EXPECT_TRUE(said.lastStatus().startsWith(u"Unsaved changes of the map cannot be"_s));
    EXPECT_FALSE(recovery.problem().isEmpty());
    addFill({2});
    recovery.update(session.map(), kModified);
    EXPECT_TRUE(recovery.problem().isEmpty()) << "there is room again";
    recovery.end();

    const QByteArray home = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", "/proc");
    said.clear();
    recovery.begin(session.project().folder);
    qputenv("XDG_DATA_HOME", home);
    EXPECT_EQ(said.entries().size(), 1);
    EXPECT_FALSE(recovery.problem().isEmpty());
    recovery.update(session.map(), kModified); // does nothing
}

TEST_F(RecoveryTest, SelectionAndHeaderTextsBeingEditedComeBackOnAMachineOfAnotherName)
{
    addFill({1});
    ASSERT_TRUE(session.saveMap(inFolder(u"mine.map"_s)));
    map::HeaderDraft draft{session.map().header(), u"half a sen"_s};
    draft.header.upperText = u"Outage"_s;
    leaveCopyOfDeadProgram({false, {3, 5, 1'000'000}, draft});
    // What the machine was called is written nowhere, and nobody but the user may look.
    const QStringList locks = QDir(copies()).entryList({u"*.lock"_s}, QDir::Files);
    ASSERT_EQ(locks.size(), 1);
    EXPECT_EQ(QFileInfo(copies() + u'/' + locks[0]).size(), 0);
    EXPECT_EQ(int(QFile::permissions(copies()) & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther)), 0);

    said.answerWith({Answer::Yes});
    ProjectSession next(said);
    ASSERT_TRUE(startAgain(next));
    EXPECT_EQ(next.map().selection(), (QList<qint32>{3, 5}));
    EXPECT_EQ(next.headerDraft, draft);
    EXPECT_FALSE(next.map().isModified()) << "the map is as its file";
    EXPECT_EQ(next.map().count(), 1);
}

TEST_F(RecoveryTest, WhatADeadProgramLeftIsOfferedAndNeverTouchesTheFile)
{
    addFill({1});
    const QString path = inFolder(u"mine.map"_s);
    ASSERT_TRUE(session.saveMap(path));
    const QByteArray stored = folder.read(u"mine.map"_s);
    addFill({2});
    setHeaderText(session.map(), &map::MapHeader::upperText, u"unsaved"_s);
    leaveCopyOfDeadProgram();
    ASSERT_EQ(names().size(), 1);

    said.clear();
    ProjectSession later(said);
    said.answerWith({Answer::Cancel});
    ASSERT_TRUE(startAgain(later));
    EXPECT_TRUE(said.texts(Kind::Question)[0].contains(session.map().file()));
    EXPECT_EQ(later.map().count(), 1) << "the map opened last, as it was saved";
    later.endRecovery();
    EXPECT_EQ(names().size(), 1) << "not decided yet";

    ProjectSession next(said);
    said.answerWith({Answer::Yes});
    ASSERT_TRUE(startAgain(next));
    EXPECT_EQ(next.map().count(), 2);
    EXPECT_EQ(next.map().header().upperText, u"unsaved"_s);
    EXPECT_EQ(next.map().file(), session.map().file());
    EXPECT_TRUE(next.map().isModified());
    EXPECT_EQ(names().size(), 1) << "the copy stays until the map is saved";
    EXPECT_EQ(folder.read(u"mine.map"_s), stored);
    ASSERT_TRUE(next.saveMap(path));
    EXPECT_TRUE(names().isEmpty());
    EXPECT_NE(folder.read(u"mine.map"_s), stored);
}

TEST_F(RecoveryTest, ARestoredCopyKnowsItsFileAndModel)
{
    const QString path = inFolder(u"mine.map"_s);
    ASSERT_TRUE(session.saveMap(path));
    const fenwright::SiteInfo stored = session.map().stored().site;
    addFill({2});
    session.project().steamGen.modelName = u"Other"_s;
    leaveCopyOfDeadProgram();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFileDevice::FileModificationTime));
    file.close();

    said.clear();
    ProjectSession next(said);
    said.answerWith({Answer::Yes, Answer::No});
    ASSERT_TRUE(startAgain(next));
    ASSERT_EQ(said.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(said.texts(Kind::Error)[0].startsWith(u"Map was created using model 'Other.'"_s));
    EXPECT_EQ(next.map().stored().site, stored);
    EXPECT_FALSE(next.map().storedAt().isNull());
    MapCommands(next).save();
    EXPECT_TRUE(said.texts(Kind::Question).value(1).contains(u"was changed by another program"_s));
}

TEST_F(RecoveryTest, DeclinedAndDamagedCopiesGoAndLivingProgramsKeepTheirs)
{
    addFill({3});
    leaveCopyOfDeadProgram();
    {
        ProjectSession next(said);
        said.answerWith({Answer::No});
        ASSERT_TRUE(startAgain(next));
        EXPECT_EQ(next.map().count(), 0);
        EXPECT_TRUE(names().isEmpty());
        next.endRecovery();
    }
    leaveCopyOfDeadProgram();
    const QString path = copies() + u'/' + names().value(0);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(file.size() / 2));
    file.close();
    {
        said.clear();
        ProjectSession next(said);
        ASSERT_TRUE(startAgain(next));
        ASSERT_EQ(said.texts(Kind::Error).size(), 1);
        EXPECT_TRUE(said.texts(Kind::Error)[0].startsWith(u"Could not read map file."_s));
        EXPECT_TRUE(QFile::exists(path + u".bad"_s));
        next.endRecovery();
    }
    // Two programs on one project: neither is offered the other's copy.
    map::MapRecovery living(said);
    living.begin(session.project().folder);
    living.update(session.map(), kModified);
    said.clear();
    ProjectSession second(said);
    ASSERT_TRUE(startAgain(second));
    EXPECT_TRUE(said.texts(Kind::Question).isEmpty());
    second.map().change(u"Fill"_s,
                        [](map::MapEdit &edit) { edit.addEntry(std::make_unique<plans::PatternFill>(), true); });
    second.updateRecoveryCopy();
    EXPECT_EQ(names().size(), 2);
}

TEST_F(MapCommandsTest, HeaderIsEditedApartFromTheMapAndSetWithUndo)
{
    map::HeaderEditor editor(context());
    EXPECT_EQ(editor.title(), u"Map Header -  "_s) << "no name, no mark";
    EXPECT_TRUE(editor.mayClose());
    EXPECT_EQ(said.lastStatus(), u"Header unchanged."_s);
    editor.header.name = u"plant"_s;
    EXPECT_EQ(editor.title(), u"Map Header - plant*"_s);
    said.answerWith({Answer::Cancel, Answer::No, Answer::Yes});
    EXPECT_FALSE(editor.mayClose());
    EXPECT_TRUE(editor.mayClose());
    EXPECT_TRUE(session.map().header().name.isEmpty());
    EXPECT_TRUE(editor.mayClose());
    EXPECT_EQ(questions(), QStringList(3, u"Do you wish to save changes?"_s).join(u'|'));
    EXPECT_EQ(said.lastStatus(), u"Set new map header."_s);
    EXPECT_EQ(session.map().header().name, u"plant"_s);
    EXPECT_EQ(session.map().undoLabel(), u"Set Map Header"_s);
    EXPECT_EQ(editor.title(), u"Map Header - plant "_s);
    session.map().undo();
    EXPECT_TRUE(session.map().header().name.isEmpty());
}

TEST_F(MapCommandsTest, EditedHeadersAreAskedAboutBeforeAnotherTakesTheirPlace)
{
    map::HeaderEditor editor(context());
    dialogs.next = inFolder(u"first.hdr"_s);
    editor.header.upperText = u"first"_s;
    editor.header.preparedBy = u"A. Alder"_s;
    ASSERT_TRUE(editor.saveAs());
    EXPECT_TRUE(editor.open()) << "stored, so nothing is lost";
    EXPECT_EQ(editor.header.preparedBy, u"A. Alder"_s) << "signatures belong to the map";
    editor.setMapHeader();

    editor.header.upperText = u"second"_s;
    said.clear();
    said.answerWith({Answer::Cancel, Answer::Cancel, Answer::Yes, Answer::No});
    EXPECT_FALSE(editor.open());
    EXPECT_FALSE(editor.importHeader());
    EXPECT_EQ(editor.header.upperText, u"second"_s);
    EXPECT_TRUE(editor.open());
    EXPECT_EQ(editor.header.upperText, u"second"_s) << "saved, then opened";
    editor.header.upperText = u"third"_s;
    EXPECT_TRUE(editor.open());
    EXPECT_EQ(editor.header.upperText, u"second"_s);
    EXPECT_EQ(questions(), QStringList(4, u"Do you wish to save changes?"_s).join(u'|'));
}

TEST_F(MapCommandsTest, HeadersAreStoredOpenedImportedAndExported)
{
    map::HeaderEditor editor(context());
    editor.header.upperText = u"Site [SITE CODE], [map tube count] tubes, [NO SUCH]"_s;
    const QString tubes = QString::number(session.project().steamGen.numTube());
    EXPECT_EQ(editor.header.expanded(editor.macros()).upperText,
              u"Site %1, %2 tubes, [NO SUCH]"_s.arg(session.project().site.siteCode, tubes));
    EXPECT_FALSE(editor.macros().value(u"[CUR DATETIME]")->isEmpty());

    dialogs.next = projectFolder() + u"/map_headers/wear.hdr"_s;
    ASSERT_TRUE(editor.save());
    EXPECT_EQ(dialogs.asked, QStringList{u"Map Header (*.hdr)"_s});
    EXPECT_EQ(editor.header.name, u"wear"_s);
    dialogs.next = session.roots().palomineDir + u"/user/map_headers/all.hdr"_s;
    editor.exportHeader();
    EXPECT_EQ(said.lastStatus(), u"Exported \"[PALOMINE_DIR]\\user\\map_headers\\all.hdr\"."_s);
    EXPECT_EQ(editor.header.name, u"wear"_s);

    map::HeaderEditor other(context());
    ASSERT_TRUE(other.importHeader());
    EXPECT_EQ(said.lastStatus(), u"Imported \"map_headers\\all.hdr\"."_s);
    EXPECT_EQ(other.header.name, u"all"_s);
    EXPECT_EQ(other.header.upperText, editor.header.upperText);
    EXPECT_TRUE(QFile::exists(projectFolder() + u"/map_headers/all.hdr"_s));

    dialogs.next = folder.write(u"bad.hdr"_s, "bad");
    said.clear();
    EXPECT_FALSE(other.open());
    EXPECT_EQ(said.entries()[0].number, 1037);
    EXPECT_TRUE(said.entries()[0].text.startsWith(u"Could not load map header.\n\n"_s));
    EXPECT_EQ(other.header.name, u"all"_s);
    said.clear();
    tarnwick::failWritesAfter(0);
    EXPECT_FALSE(other.save());
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(said.entries()[0].number, 1038);
    for (const QString &name : {u"all"_s, u"wear"_s})
        QFile::remove(projectFolder() + u"/map_headers/"_s + name + u".hdr"_s);
}

} // namespace app
