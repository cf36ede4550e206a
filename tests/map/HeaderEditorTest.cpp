#include "TestMap.h"

#include <map/HeaderEditor.h>

#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace map {

namespace {

/// Answers file dialogs from a script.
class ScriptedChoice : public tarnwick::FileChoice
{
public:
    QString next;
    QStringList asked; ///< filters

    QString openFile(const tarnwick::FileChooserInfo &chooser, const QString &, const tarnwick::PathRoots &) override
    {
        asked.append(QString::fromUtf16(chooser.filter));
        return next;
    }
    QStringList openFiles(const tarnwick::FileChooserInfo &chooser, const QString &title,
                          const tarnwick::PathRoots &roots) override
    {
        return {openFile(chooser, title, roots)};
    }
    QString saveFile(const tarnwick::FileChooserInfo &chooser, const QString &, const tarnwick::PathRoots &,
                     const QString &) override
    {
        asked.append(QString::fromUtf16(chooser.filter));
        return next;
    }
};

class HeaderEditorTest : public testing::Test
{
protected:
    HeaderEditorTest()
    {
        for (const QString &path : {project.path(u"map_headers"_s), installation.path(u"user/map_headers"_s)})
            EXPECT_TRUE(QDir().mkpath(path));
        macros.set(u"[SITE CODE]"_s, u"S7"_s);
    }
    HeaderEditor::Context context()
    {
        return {host.document, host.said, choice, {installation.path(), project.path()}, [this] { return macros; }};
    }
    QString questions() const { return host.said.texts(Kind::Question).join(u'|'); }

    support::TemporaryFolder project;
    support::TemporaryFolder installation;
    TestMap host{1, 4};
    ScriptedChoice choice;
    tarnwick::JMacro macros;
};

} // namespace

TEST_F(HeaderEditorTest, HeaderIsEditedApartFromTheMapAndSetWithUndo)
{
    HeaderEditor editor(context());
    EXPECT_EQ(editor.title(), u"Map Header -  "_s) << "no name, no mark";
    EXPECT_TRUE(editor.mayClose());
    EXPECT_EQ(host.said.lastStatus(), u"Header unchanged."_s);
    editor.header.name = u"plant"_s;
    EXPECT_EQ(editor.title(), u"Map Header - plant*"_s);
    host.said.answerWith({Answer::Cancel, Answer::No, Answer::Yes});
    EXPECT_FALSE(editor.mayClose());
    EXPECT_TRUE(editor.mayClose());
    EXPECT_TRUE(host.document.header().name.isEmpty());
    EXPECT_TRUE(editor.mayClose());
    EXPECT_EQ(questions(), QStringList(3, u"Do you wish to save changes?"_s).join(u'|'));
    EXPECT_EQ(host.said.lastStatus(), u"Set new map header."_s);
    EXPECT_EQ(host.document.header().name, u"plant"_s);
    EXPECT_EQ(host.document.undoLabel(), u"Set Map Header"_s);
    EXPECT_EQ(editor.title(), u"Map Header - plant "_s);
    host.document.undo();
    EXPECT_TRUE(host.document.header().name.isEmpty());
}

TEST_F(HeaderEditorTest, EditedHeadersAreAskedAboutBeforeTheyAreReplaced)
{
    HeaderEditor editor(context());
    choice.next = project.path(u"first.hdr"_s);
    editor.header.upperText = u"first"_s;
    editor.header.preparedBy = u"A. Alder"_s;
    ASSERT_TRUE(editor.saveAs());
    EXPECT_TRUE(editor.open()) << "stored, so nothing is lost";
    EXPECT_EQ(editor.header.preparedBy, u"A. Alder"_s) << "signatures belong to the map";
    editor.setMapHeader();

    editor.header.upperText = u"second"_s;
    host.said.clear();
    host.said.answerWith({Answer::Cancel, Answer::Cancel, Answer::Yes, Answer::No});
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

TEST_F(HeaderEditorTest, HeadersAreStoredOpenedImportedAndExported)
{
    HeaderEditor editor(context());
    editor.header.upperText = u"Site [site code], [NO SUCH]"_s;
    EXPECT_EQ(editor.header.expanded(editor.macros()).upperText, u"Site S7, [NO SUCH]"_s);
    EXPECT_EQ(editor.unknownKeywords(), QStringList{u"[NO SUCH]"_s});

    choice.next = project.path(u"map_headers/wear.hdr"_s);
    ASSERT_TRUE(editor.save());
    EXPECT_EQ(choice.asked, QStringList{u"Map Header (*.hdr)"_s});
    EXPECT_EQ(editor.header.name, u"wear"_s);
    choice.next = installation.path(u"user/map_headers/all.hdr"_s);
    editor.exportHeader();
    EXPECT_EQ(host.said.lastStatus(), u"Exported \"[PALOMINE_DIR]\\user\\map_headers\\all.hdr\"."_s);
    EXPECT_EQ(editor.header.name, u"wear"_s);

    HeaderEditor other(context());
    ASSERT_TRUE(other.importHeader());
    EXPECT_EQ(host.said.lastStatus(), u"Imported \"map_headers\\all.hdr\"."_s);
    EXPECT_EQ(other.header.name, u"all"_s);
    EXPECT_EQ(other.header.upperText, editor.header.upperText);
    const QByteArray stored = project.read(u"map_headers/all.hdr"_s);
    EXPECT_FALSE(stored.isEmpty());

    choice.next = project.write(u"bad.hdr"_s, "bad");
    host.said.clear();
    EXPECT_FALSE(other.open());
    EXPECT_EQ(host.said.entries()[0].number, 1037);
    EXPECT_TRUE(host.said.entries()[0].text.startsWith(u"Could not load map header.\n\n"_s));
    EXPECT_EQ(other.header.name, u"all"_s);

    // A failure while storing or importing keeps header and file.
    other.header.lowerText = u"new"_s;
    host.said.clear();
    tarnwick::failWritesAfter(0);
    EXPECT_FALSE(other.save());
    EXPECT_EQ(host.said.entries()[0].number, 1038);
    choice.next = installation.path(u"user/map_headers/all.hdr"_s);
    host.said.answerWith({Answer::No, Answer::Yes});
    EXPECT_FALSE(other.importHeader());
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(other.header.lowerText, u"new"_s);
    EXPECT_EQ(project.read(u"map_headers/all.hdr"_s), stored);
}

} // namespace map
