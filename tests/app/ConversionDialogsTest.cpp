#include "DialogFixture.h"

#include <brannock/gui/ReportEditor.h>
#include <brannock/gui/ReportProblemsDlg.h>
#include <conversion/dialogs/ReportConvDlg.h>
#include <conversion/dialogs/ReportConvOptionsDlg.h>
#include <conversion/dialogs/ReportConvSpecDlg.h>
#include <conversion/dialogs/TextReport.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/NumberField.h>

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QScopeGuard>
#include <QTabWidget>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

/// The conversion of texts of the demo project, and pictures of its dialogs (see DialogFixture).
class ConversionDialogsTest : public DialogFixture
{
protected:
    void SetUp() override
    {
        DialogFixture::SetUp();
        QDir(session().project().pathOf(u"reports"_s)).removeRecursively();
        QDir().mkpath(session().project().pathOf(u"reports"_s));
        conversion::ReportConvSpec spec;
        spec.loadFrom(session().project().pathOf(u"report_formats\\default.fmt"_s));
        conversion::setDefaultColours(spec);
        spec.storeTo(session().project().pathOf(u"report_formats\\default.fmt"_s));
    }
    QString foreign(const QString &name) { return session().project().pathOf(u"foreign\\"_s + name); }
    QString target(const QString &name) { return session().project().pathOf(u"reports\\"_s + name); }
    conversion::ReportConvDlg::Setup setup()
    {
        return {said, session().project(), dialogs, [this] { return session().printMacros(); }, &window};
    }
};

} // namespace

TEST_F(ConversionDialogsTest, TextsAreConvertedFollowedAndStored)
{
    conversion::ReportConvDlg dialog(setup());
    press(dialog, u"storeButton"_s);
    EXPECT_EQ(said.entries().last().text, u"Current file number=0 is not valid.");
    dialogs.next = foreign(u"00001_primary.txt"_s);
    choose(dialog, u"Open ..."_s);
    EXPECT_EQ(dialogs.asked.last(), u"Text Reports (*.txt)");
    dialog.openFiles({foreign(u"00001_primary.txt"_s), foreign(u"00001_secondary.txt"_s), foreign(u"none.txt"_s),
                      foreign(u"00001_resolution.txt"_s)});
    EXPECT_EQ(dialog.windowTitle(), u"Convert default Report - 00001_primary.txt");
    picture(dialog, u"report-convert"_s);

    brannock::ReportEditor &editor = dialog.editor();
    dialog.text().setCurrentLine(9);
    const int entry = editor.currentEntry();
    EXPECT_EQ(editor.report()[entry].textLine, 9);
    editor.document().remove(u"Delete"_s, {entry - 1});
    EXPECT_EQ(editor.currentEntry(), entry); // the row stays, which now has the next line
    editor.setCurrentEntry(entry + 3);
    EXPECT_EQ(dialog.text().currentLine(), editor.report()[entry + 3].textLine);
    editor.document().undo();

    press(dialog, u"checkButton"_s);
    auto *problems = dialog.findChild<brannock::ReportProblemsDlg *>();
    ASSERT_NE(problems, nullptr);
    picture(*problems, u"report-convert-problems"_s);
    EXPECT_TRUE(problems->findChild<QLabel *>(u"summary"_s)->text().contains(u"cannot be read: 1"));
    Q_EMIT problems->problemChosen(1, 12, 0);
    EXPECT_EQ(dialog.fileList().current(), 1);
    EXPECT_EQ(editor.report()[editor.currentEntry()].textLine, 12);
    Q_EMIT problems->problemChosen(0, 0, 1);
    EXPECT_EQ(dialog.text().currentLine(), 1);
    problems->reject();

    dialog.findChild<QComboBox *>(u"promptAnalyst"_s)->setEditText(u"QX1"_s);
    press(dialog, u"storeButton"_s);
    EXPECT_EQ(said.lastStatus(), u"Stored \"reports\\00001_PRI.rep\"'");
    EXPECT_TRUE(QFile::exists(target(u"00001_PRI.rep"_s)));
    EXPECT_EQ(dialog.fileList().statusText(0), u"DONE");

    said.answerWith({Answer::Yes}); // go on after the text that does not exist
    press(dialog, u"storeAllButton"_s);
    EXPECT_FALSE(said.unusedAnswers());
    EXPECT_EQ(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error).size(), 2);
    EXPECT_TRUE(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error)
                    .last()
                    .startsWith(u"Could not load text report.\n\n"));
    EXPECT_EQ(dialog.fileList().statusText(2), QString());
    EXPECT_TRUE(QFile::exists(target(u"00001_SEC.rep"_s)) && QFile::exists(target(u"00001_RES.rep"_s)));
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());

    conversion::ReportConvOptions options;
    EXPECT_TRUE(options.load(session().project().roots()));
    EXPECT_EQ(options.prompts.operType, u"RES");
    EXPECT_EQ(options.reportsFolder, u"foreign");
}

TEST_F(ConversionDialogsTest, OptionsAndFormatsActAtOnceAndEditsAreNotLostInSilence)
{
    const QString format = session().project().pathOf(u"report_formats\\default.fmt"_s);
    QFile::rename(format, format + u".kept"_s);
    const auto restore = qScopeGuard([&format] {
        QFile::remove(format);
        QFile::rename(format + u".kept"_s, format);
    });
    conversion::ReportConvDlg dialog(setup());
    EXPECT_EQ(said.lastStatus(), u"\"report_formats\\default.fmt\" does not exist; the built-in format is used.");
    dialog.show();
    dialog.openFiles({foreign(u"00001_primary.txt"_s)});
    inNext<conversion::ReportConvOptionsDlg>([this](conversion::ReportConvOptionsDlg &options) {
        picture(options, u"report-convert-options"_s);
        options.reject();
        EXPECT_EQ(said.lastStatus(), u"Options unchanged.");
    });
    press(dialog, u"optionsButton"_s);
    inNext<conversion::ReportConvOptionsDlg>([this](conversion::ReportConvOptionsDlg &options) {
        options.findChild<tarnwick::NumberField *>(u"fontSize"_s)->setNumber(12);
        said.answerWith({Answer::Yes});
        options.reject();
    });
    press(dialog, u"optionsButton"_s);
    EXPECT_EQ(dialog.text().font().pointSize(), 12);

    conversion::ReportConvSpec spec = dialog.spec();
    const int line = 9;
    dialog.text().setCurrentLine(line);
    spec.headerLines = line;
    dialog.useSpec(spec);
    EXPECT_TRUE(dialog.editor().report()[dialog.editor().currentEntry()].isHeader());
    EXPECT_EQ(dialog.text().currentLine(), line);
    dialog.editor().document().remove(u"Delete"_s, {0});
    said.answerWith({Answer::No, Answer::No, Answer::Yes});
    spec.headerLines = 3;
    dialog.useSpec(spec);
    EXPECT_EQ(dialog.spec().headerLines, line);
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ConversionDialogsTest, AFormatIsMadeInTheTextAndUsedAtOnce)
{
    const QString format = session().project().pathOf(u"report_formats\\default.fmt"_s);
    const QByteArray before = tarnwick::readFile(format);
    conversion::ReportConvDlg dialog(setup());
    dialog.show();
    dialog.openFiles({foreign(u"00001_primary.txt"_s)});
    dialog.text().setCurrentLine(7);
    using Editor = conversion::ReportConvSpecDlg;
    inNext<Editor>([&](Editor &editor) {
        picture(editor, u"format"_s);
        EXPECT_EQ(editor.windowTitle(), u"Format - default.fmt");
        EXPECT_EQ(editor.text().currentLine(), 7);
        auto *result = editor.findChild<tarnwick::JTableWin *>(u"lineResult"_s);
        const int fields = result->grid().rowCount();
        editor.findChild<QComboBox *>(u"newType"_s)->setCurrentText(u"Comment"_s);
        editor.text().setColumns(4, 6);
        press(editor, u"addButton"_s);
        EXPECT_EQ(result->grid().rowCount(), fields + 1);
        EXPECT_EQ(result->grid().index(fields, 2).data().toString(), u"1"); // the comment
        EXPECT_EQ(editor.windowTitle(), u"Format - default.fmt*");
        editor.text().setColumns(8, 10);
        press(editor, u"columnsButton"_s);
        EXPECT_EQ(editor.spec().reportFields.last().lastColumn, 10);
        choose(editor, u"Move Up"_s);
        EXPECT_EQ(editor.spec().reportFields.at(fields - 1).lastColumn, 10);
        choose(editor, u"Undo"_s);
        choose(editor, u"Undo"_s);
        EXPECT_EQ(editor.spec().reportFields.last().lastColumn, 6);
        choose(editor, u"Redo"_s);
        EXPECT_EQ(editor.spec().reportFields.last().lastColumn, 10);
        press(editor, u"applyButton"_s);
        EXPECT_EQ(dialog.editor().report()[6].comment, u"13");

        auto *tabs = editor.findChild<QTabWidget *>(u"formatTabs"_s);
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            if (tab != 1)
                picture(editor, u"format-"_s + QString(tabs->tabText(tab)).remove(u' ').toLower());
        }
        tabs->setCurrentIndex(2);
        editor.text().setCurrentLine(2); // the file's name
        editor.text().setColumns(0, 4);
        press(editor, u"addButton"_s);
        EXPECT_EQ(editor.spec().filenameFields.last().part, 1);
        choose(editor, u"Set Default Colors"_s);
        said.answerWith({Answer::Cancel, Answer::No});
        editor.reject();
        EXPECT_TRUE(editor.isVisible());
        editor.reject();
    });
    press(dialog, u"formatButton"_s);
    EXPECT_EQ(dialog.editor().report()[6].comment, QString()) << "Cancel goes back to the former format";
    EXPECT_EQ(tarnwick::readFile(format), before);

    inNext<Editor>([&](Editor &editor) {
        dialogs.next = session().project().pathOf(u"report_formats\\other.fmt"_s);
        choose(editor, u"Save As ..."_s);
        EXPECT_EQ(said.lastStatus(), u"Saved \"report_formats\\other.fmt\".");
        said.answerWith({Answer::Yes, Answer::No, Answer::Yes});
        choose(editor, u"Reset ..."_s);
        EXPECT_EQ(editor.spec().filenameFields.size(), 0);
        dialogs.next = format;
        choose(editor, u"Open ..."_s); // the changes are discarded
        EXPECT_EQ(said.lastStatus(), u"Opened \"report_formats\\default.fmt\".");
        choose(editor, u"Reset ..."_s);
        editor.accept();
        EXPECT_EQ(said.lastStatus(), u"Converted \"00001_primary.txt\": 72 entries.");
    });
    press(dialog, u"formatButton"_s);
    EXPECT_NE(tarnwick::readFile(format), before);
    EXPECT_EQ(dialog.windowTitle(), u"Convert default Report - 00001_primary.txt");
    QFile(format).remove();
    tarnwick::writeFileAtomically(format, before);
}

TEST_F(ConversionDialogsTest, TheTextIsReadWithTheKeyboardAndCopied)
{
    const conversion::TextSource text(u"text"_s, "HEADER\n0 12  7 1.25\n0 13  8 \xE2\x82\xAC\tTSH\n");
    conversion::TextReport view;
    view.setText(&text);
    view.resize(400, 200);
    view.show();
    QList<int> lines;
    std::pair<int, int> marked;
    QObject::connect(&view, &conversion::TextReport::currentLineChanged, &view, [&](int line) { lines.append(line); });
    QObject::connect(&view, &conversion::TextReport::columnsMarked, &view, [&](int first, int last) {
        marked = {first, last};
    });
    const auto key = [&view](int which, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&view, Qt::Key(which), modifiers);
    };
    key(Qt::Key_Down);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyRelease(&view, Qt::Key_Shift);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"12\n13");
    EXPECT_EQ(marked, std::pair(2, 3));
    key(Qt::Key_Home, Qt::ControlModifier);
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(lines, QList<int>({2, 3, 1, 3}));
    EXPECT_EQ(view.currentText(), u"Line 3: 0 13  8 €\tTSH");
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"HEADER\n0 12  7 1.25\n0 13  8 €\tTSH\n");
    view.setText(nullptr);
    key(Qt::Key_Down);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(view.currentLine(), 0);
}

} // namespace app
