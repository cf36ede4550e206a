#include "AppFixture.h"

#include <app/logic/MapCommands.h>
#include <app/logic/SystemMacros.h>

#include <plans/PatternFill.h>
#include <support/TemporaryFolder.h>

#include <QDir>
#include <QFile>

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

    said.answerWith({Answer::Yes});
    commands.newMap();
    EXPECT_EQ(session.map().count(), 1) << "no file was chosen";

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
    EXPECT_EQ(said.lastStatus(), u"Opened map \"%1\"."_s.arg(tarnwick::SuitePath(session.map().file()).shown()));
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
    EXPECT_EQ(questions(), u"Do you wish to replace \"%1\" by a map of the current model?"_s.arg(
                               tarnwick::SuitePath(session.map().file()).shown()));
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

TEST_F(MapCommandsTest, AProjectStartsWithTheUnsavedWorkOfACrashedProgram)
{
    addFill({1});
    ASSERT_TRUE(session.saveMap(inFolder(u"mine.map"_s)));
    const map::HeaderDraft draft{session.map().header(), u"half a sen"_s};
    {
        map::MapRecovery crashed(said);
        crashed.begin(session.project().folder);
        addFill({2});
        crashed.update(session.map(), {true, {3}, draft});
    } // without end(): the copy remains
    said.answerWith({Answer::Yes});
    ProjectSession next(said);
    next.keepsRecoveryCopies = true;
    ASSERT_TRUE(next.openProject(projectFolder()));
    next.openMapAtStart();
    EXPECT_EQ(next.map().count(), 2);
    EXPECT_EQ(next.map().selection(), QList<qint32>{3});
    EXPECT_EQ(next.headerDraft, draft);
    ASSERT_TRUE(next.saveMap(inFolder(u"mine.map"_s)));
    next.headerDraft.reset();
    next.map().change(u"Select"_s, [](map::MapEdit &edit) { edit.setSelection({}); });
    next.updateRecoveryCopy();
    EXPECT_TRUE(QDir(tarnwick::RecoveryCopies::folder()).entryList({u"*.map"_s}, QDir::Files).isEmpty());
}

} // namespace app
