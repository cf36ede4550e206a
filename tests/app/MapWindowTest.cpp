#include "DialogChecks.h"
#include "WindowFixture.h"

#include <app/HeaderDlg.h>
#include <app/logic/Messages.h>
#include <app/MapPreviewDlg.h>
#include <app/MapPrinting.h>
#include <app/TextPanel.h>

#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>

#include <QCheckBox>
#include <QClipboard>
#include <QFontComboBox>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

class MapWindowTest : public WindowFixture
{
protected:
    MapWindowTest()
    {
        window.setFileDialogs(&dialogs);
        EXPECT_TRUE(window.openProject(projectFolder()));
        QCoreApplication::processEvents();
        said.clear();
    }
    /// Does something with the dialog of a class once it is open.
    template <typename Dialog>
    static void whenOpen(const std::function<void(Dialog &)> &work)
    {
        QTimer::singleShot(0, qApp, [work] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            work(*dialog);
            if (dialog->isVisible())
                dialog->QDialog::done(0);
        });
    }
    void pressHeader() { window.findChild<QToolButton *>(u"headerButton"_s)->click(); }

    support::TemporaryFolder folder;
};

} // namespace

TEST_F(MapWindowTest, ClosingAsksAboutTheMapAndStaysWhenToldTo)
{
    window.show();
    addPattern(1);
    EXPECT_EQ(window.findChild<QLabel *>(u"mapText"_s)->text(), u"Map not saved"_s);
    said.answerWith({Answer::Cancel, Answer::Yes});
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.projectSession().database().isOpen());
    dialogs.next = folder.path(u"closing.map"_s);
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(folder.has(u"closing.map"_s));
}

TEST_F(MapWindowTest, MapsAreSavedListedAndOpenedAgain)
{
    addPattern(1);
    dialogs.next = folder.path(u"first.map"_s);
    run(SaveMap);
    EXPECT_TRUE(window.findChild<TextPanel *>(u"projectPanel"_s)->text().contains(u"Map Name : first\n"_s));
    EXPECT_TRUE(window.findChild<QLabel *>(u"mapText"_s)->text().isEmpty());
    EXPECT_FALSE(command(NoRecentMap)->isVisible());
    addPattern(2);
    auto *changes = find<QMenu>(u"changes"_s);
    Q_EMIT changes->aboutToShow();
    QStringList listed;
    for (const QAction *change : changes->actions())
        listed.append(change->text());
    EXPECT_EQ(listed, (QStringList{u"Pattern Fill"_s, u"Pattern Fill\tsaved"_s, u"Start"_s}));
    run(Undo);
    run(NewMap);
    run(FirstRecentMap);
    EXPECT_EQ(mapOf(window).count(), 1);

    // Another project is another map.
    addPattern(2);
    said.answerWith({Answer::Cancel});
    dialogs.next = projectFolder();
    run(OpenProject);
    EXPECT_EQ(mapOf(window).count(), 2);
}

TEST_F(MapWindowTest, HeaderDialogShowsValuesForKeywordsAndSetsTheHeader)
{
    whenOpen<HeaderDlg>([](HeaderDlg &dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Map Header -  "_s);
        auto *upper = dialog.findChild<QPlainTextEdit *>(u"upperText"_s);
        upper->setPlainText(u"Site [SITE CODE]"_s);
        EXPECT_TRUE(dialog.windowTitle().endsWith(u'*'));
        dialog.findChild<QCheckBox *>(u"expandMacros"_s)->click();
        EXPECT_FALSE(upper->toPlainText().contains(u'['));
        EXPECT_TRUE(upper->isReadOnly());
        // Other fields go on being edited meanwhile, and the template is not lost.
        auto *size = dialog.findChild<QSpinBox *>(u"font2Size"_s);
        EXPECT_EQ(size->text(), u"10 pts"_s);
        size->setValue(99);
        EXPECT_EQ(size->value(), 20);
        dialog.findChild<QLineEdit *>(u"preparedBy"_s)->setText(u"Me"_s);
        dialog.findChild<QCheckBox *>(u"showTemplate"_s)->click();
        EXPECT_EQ(upper->toPlainText(), u"Site [SITE CODE]"_s);
        dialog.findChild<QPushButton *>(u"setHeader"_s)->click();
    });
    pressHeader();
    const map::MapHeader header = mapOf(window).header();
    EXPECT_EQ(header.upperText, u"Site [SITE CODE]"_s);
    EXPECT_EQ(header.lowerSize, 20);
    EXPECT_EQ(header.preparedBy, u"Me"_s);

    // What looks like a keyword and is none is named, and what is being typed outlives a crash.
    whenOpen<HeaderDlg>([this](HeaderDlg &dialog) {
        const auto *unknown = dialog.findChild<QLabel *>(u"unknownKeywords"_s);
        EXPECT_TRUE(unknown->isHidden());
        dialog.findChild<QPlainTextEdit *>(u"lowerText"_s)->setPlainText(u"[MAP NAME] [MAP NMAE]"_s);
        EXPECT_TRUE(unknown->text().endsWith(u": [MAP NMAE]"_s));
        ASSERT_TRUE(window.projectSession().headerDraft.has_value());
        EXPECT_EQ(window.projectSession().headerDraft->header.lowerText, u"[MAP NAME] [MAP NMAE]"_s);
        said.answerWith({Answer::No});
        dialog.findChild<QPushButton *>(u"closeHeader"_s)->click();
    });
    pressHeader();
    EXPECT_FALSE(window.projectSession().headerDraft.has_value());

    // A font that is being typed is a change, too; and keywords go where the focus is.
    said.clear();
    said.answerWith({Answer::Yes});
    whenOpen<HeaderDlg>([](HeaderDlg &dialog) {
        dialog.findChild<QToolButton *>(u"keywords"_s)->menu()->actions().first()->trigger();
        auto *font = dialog.findChild<QFontComboBox *>(u"footerFont"_s);
        font->setFocus();
        font->setEditText(u"Courier"_s);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    pressHeader();
    EXPECT_EQ(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Question).size(), 1);
    EXPECT_EQ(mapOf(window).header().footerFont, u"Courier"_s);
    EXPECT_TRUE(mapOf(window).header().upperText.startsWith(u'['));
    EXPECT_TRUE(mapOf(window).header().lowerText.isEmpty());
}

TEST_F(MapWindowTest, PicturesGoThroughTheirChoosersAndCarryTheLegendsCounts)
{
    addPattern(1);
    addPattern(1);
    dialogs.next = folder.path(u"plain.svg"_s);
    run(StoreMetafile);
    dialogs.asked.clear();
    // A selection is no part of the page.
    run(SelectAllTubes);
    dialogs.next = folder.path(u"map.svg"_s);
    run(StoreMetafile);
    const auto timeless = [this](const QString &name) {
        return QString::fromUtf8(folder.read(name)).remove(QRegularExpression(u"\\d+:\\d\\d(:\\d\\d)?"_s));
    };
    EXPECT_EQ(timeless(u"map.svg"_s), timeless(u"plain.svg"_s));
    EXPECT_EQ(dialogs.asked, QStringList{u"Metafiles (*.emf)"_s});
    EXPECT_TRUE(said.lastStatus().startsWith(u"Stored picture"_s));
    const QString svg = QString::fromUtf8(folder.read(u"map.svg"_s));
    const auto counted = [](int number) -> QString { return u">"_s + tarnwick::format(u"%D", number) + u"<"_s; };
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(svg.contains(counted(mapOf(window).entry(i).fillCount)));
        EXPECT_TRUE(svg.contains(counted(mapOf(window).hits(i))));
    }
    EXPECT_EQ(mapOf(window).hits(0), 0) << "the later entry shows";

    dialogs.next = folder.path(u"map.bmp"_s);
    run(StoreBitmap);
    EXPECT_EQ(dialogs.asked.last(), u"Bitmaps (*.bmp)"_s);
    EXPECT_TRUE(QImageReader(dialogs.next).canRead());
    dialogs.next = folder.path(u"no folder/map.emf"_s);
    QFile(folder.path(u"no folder"_s)).open(QIODevice::WriteOnly);
    run(StoreMetafile);
    EXPECT_TRUE(said.entries().last().text.startsWith(u"Could not store the picture.\n\n"_s));
}

TEST_F(MapWindowTest, TubesAreCopiedAsText)
{
    addPattern(1);
    const auto copied = [this] {
        window.commands().action(CopyTubes)->trigger();
        return QGuiApplication::clipboard()->text();
    };
    EXPECT_EQ(copied().count(u'\n'), mapOf(window).entry(0).fillCount) << "the whole map";
    EXPECT_TRUE(copied().contains(u"\tA\tPATTERN\t"_s));
    selectTubes(mapOf(window), {0});
    EXPECT_EQ(copied().count(u'\n'), 1);
    EXPECT_EQ(said.lastStatus(), u"Copied 1 tube."_s);
    auto *legend = find<QTableView>(u"legend"_s);
    legend->setCurrentIndex(legend->model()->index(0, 1));
    window.commands().action(EntrySelect)->trigger();
    EXPECT_EQ(mapOf(window).tubes().selectedCount(), mapOf(window).entry(0).fillCount);
    settle();
    EXPECT_EQ(command(Undo)->text(), u"Undo Select Tubes"_s);
}

TEST_F(MapWindowTest, PrintsOnAPrinterAndSaysWhenItCannotBeOpened)
{
    addPattern(2);
    MapPrinting printing(window.projectSession(), &window);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.path(u"map.pdf"_s));
    EXPECT_TRUE(printing.printOn(printer, messages::kPrinterFailed));
    EXPECT_TRUE(folder.read(u"map.pdf"_s).startsWith("%PDF"));
    printing.printToFile(folder.path(u"page"_s));
    EXPECT_TRUE(folder.read(u"page.pdf"_s).startsWith("%PDF"));
    QPrinter nowhere;
    nowhere.setOutputFormat(QPrinter::PdfFormat);
    nowhere.setOutputFileName(folder.path(u"missing/map.pdf"_s));
    said.clear();
    EXPECT_FALSE(printing.printOn(nowhere, messages::kPrinterFailed));
    ASSERT_EQ(said.entries().size(), 1);
    EXPECT_EQ(said.entries()[0].number, 1018);
    EXPECT_EQ(said.entries()[0].text, u"Could not open printer."_s);

    int pages = 0;
    MapPreviewDlg preview(
        printer, [&](QPrinter &device) { pages += printing.printOn(device, messages::kPreviewPrinterFailed); },
        &window);
    EXPECT_EQ(preview.windowTitle(), u"Map Print Preview"_s);
    preview.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&preview));
    EXPECT_GE(pages, 1);
    QStringList hidden;
    tabOrder(preview, &hidden);
    EXPECT_EQ(hidden, QStringList());
}

TEST_F(MapWindowTest, ACopyForTheCaseOfACrashFollowsTheChangesAndGoesWithTheWindow)
{
    window.projectSession().keepsRecoveryCopies = true;
    ASSERT_TRUE(window.openProject(projectFolder()));
    const QDir copies(tarnwick::RecoveryCopies::folder());
    const auto count = [&copies] { return copies.entryList({u"*.map"_s}, QDir::Files).size(); };
    addPattern(1);
    EXPECT_TRUE(QTest::qWaitFor([&count] { return count() == 1; }));
    run(Undo);
    EXPECT_TRUE(QTest::qWaitFor([&count] { return count() == 0; }));
    addPattern(1);
    EXPECT_TRUE(QTest::qWaitFor([&count] { return count() == 1; }));
    said.answerWith({Answer::No});
    EXPECT_TRUE(window.close());
    EXPECT_EQ(count(), 0);
}

} // namespace app
