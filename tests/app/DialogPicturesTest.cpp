// Pictures of the dialogs, to be looked at: written to the folder that ARVO_PICTURES names; ARVO_DARK asks for the dark
// palette, QT_SCALE_FACTOR for another scale. The checks hold in every case: nothing may be cut off.
#include "DialogFixture.h"

#include <app/CheckStyle.h>
#include <app/HeaderDlg.h>
#include <app/MapPrinting.h>

#include <brannock/gui/ChooseSymbolDlg.h>
#include <db/dialogs/ListOpenDlg.h>
#include <map/dialogs/BoxFillDlg.h>
#include <map/dialogs/PatternFillDlg.h>
#include <map/dialogs/PercentFillDlg.h>
#include <query/SchemaInfo.h>
#include <tarnwick/gui/CommandActions.h>
#include <tarnwick/gui/TablePreviewDlg.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QPixmap>
#include <QPlainTextEdit>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

QImage painted(QWidget &widget, const QSize &size)
{
    widget.resize(size);
    return widget.grab().toImage();
}

/// Number of the columns of pixels in which something is painted.
int paintedColumns(const QImage &image, QRgb background)
{
    int columns = 0;
    for (int x = 0; x < image.width(); ++x) {
        bool isPainted = false;
        for (int y = 0; y < image.height(); ++y)
            isPainted = isPainted || image.pixel(x, y) != background;
        columns += isPainted ? 1 : 0;
    }
    return columns;
}

class DialogPicturesTest : public AppTest
{
protected:
    void SetUp() override
    {
        useLookOfTheProgram();
        ASSERT_TRUE(window.openProject(m_pictures.isEmpty() ? projectFolder() : largeProject()));
        plans::PatternFill fill;
        fill.parameters.rowIncrement = 3;
        addFill(window, fill);
    }

    QString largeProject()
    {
        demo::DemoOptions options;
        options.tubes = 3300;
        options.entries = 200;
        options.outages = 1;
        demo::makeProject(options, m_folder.filePath(u"project"_s));
        return m_folder.filePath(u"project"_s);
    }

    map::FillEditorContext editing()
    {
        ProjectSession &session = window.projectSession();
        return {session.map(), session.fillRunner(), session.roots()};
    }
    map::FillDialogContext context() { return {editing(), window.map().options(), &window}; }

    void look(QWidget &widget, const QString &name)
    {
        widget.show();
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
        QApplication::setActiveWindow(&widget); // not done by the platform of the tests while another window is active
        if (qobject_cast<QDialog *>(&widget))
            checkDialog(widget, name);
        if (!m_pictures.isEmpty()) {
            EXPECT_TRUE(widget.grab().save(m_pictures + u'/' + name + u".png"_s));
        }
    }

    /// A rectangle of tubes in the middle.
    void selectSome()
    {
        const ellery::SteamGen &sg = mapOf(window).component();
        const int row = sg.maxNumber(ellery::Axis::Row) / 2;
        const int col = sg.maxNumber(ellery::Axis::Col) / 2;
        QList<qint32> some;
        for (int i = 0; i < sg.numTube(); ++i) {
            if (std::abs(sg[i].address.row - row) <= 1 && std::abs(sg[i].address.col - col) <= 2)
                some.append(i);
        }
        selectTubes(mapOf(window), some);
    }

    ScriptedDialogs dialogs;
    DBase window{&said};

private:
    const QString m_pictures = qEnvironmentVariable("ARVO_PICTURES");
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(DialogPicturesTest, RandomFill)
{
    map::PcntFillEditor editor(editing());
    map::PercentFillDlg dialog(editor, context());
    look(dialog, u"random-fill"_s);
    plans::PcntFill::Parameters counted = editor.parameters();
    counted.percentMode = false;
    counted.randomSeed = false;
    counted.tubeCount = 250;
    counted.filter = {plans::TubeFilter::SelectedTubes, plans::TubeFilter::OpenTubesOnly};
    editor.setParameters(counted);
    look(dialog, u"random-fill-count"_s);
}

TEST_F(DialogPicturesTest, BoxFill)
{
    {
        map::BoxFillEditor editor(editing());
        map::BoxFillDlg dialog(editor, context());
        look(dialog, u"box-fill-empty"_s);
    }
    selectSome();
    map::BoxFillEditor editor(editing());
    editor.setParameters({editor.pitch() * 4});
    map::BoxFillDlg dialog(editor, context());
    look(dialog, u"box-fill"_s);
}

TEST_F(DialogPicturesTest, PatternFill)
{
    map::PatternFillEditor editor(editing());
    map::PatternFillDlg dialog(editor, context());
    look(dialog, u"pattern-fill"_s);
}

TEST_F(DialogPicturesTest, ChooseSymbol)
{
    brannock::ColourChooser colours(window.projectSession().roots(), said);
    brannock::ChooseSymbolDlg dialog(markOf(u'B', 0x009FE6), window.map().options(), colours);
    look(dialog, u"choose-symbol"_s);
}

TEST_F(DialogPicturesTest, ListAndPreview)
{
    db::ListOpenDlg list(
        {.title = u"Open List"_s, .label = u"List"_s, .column = {}, .table = {}, .initialName = u"w"_s},
        {u"wear"_s, u"wear at AVB 3"_s}, &window);
    look(list, u"list-open"_s);
    query::TextRows rows({{.title = u"NAME"_s}});
    rows.rows.append({.cells = {u"wear"_s}});
    const tarnwick::TablePrint print(rows, {1, {}}, {}, {}, {8.5, 11});
    tarnwick::TablePreviewDlg preview(
        print, u"Lists"_s, [] {}, &window);
    look(preview, u"table-preview"_s);
}

TEST_F(DialogPicturesTest, Header)
{
    ProjectSession &session = window.projectSession();
    map::HeaderEditor editor(
        {session.map(), said, dialogs, session.roots(), [&session] { return session.printMacros(); }});
    MapPrinting printing(session, &window);
    const auto page = [&printing](const map::MapHeader &header) { return printing.page(header); };
    HeaderDlg dialog(editor, page, printing.paperSize(), printing.resolution(), &window);
    look(dialog, u"header"_s);
    dialog.findChild<QPlainTextEdit *>(u"upperText"_s)->setPlainText(u"[SITE CODE] [OUTAGE NMAE]"_s);
    QCoreApplication::processEvents(); // the line with the unknown word takes its room
    look(dialog, u"header-unknown"_s);
}

TEST_F(DialogPicturesTest, Window)
{
    window.resize(1280, 800);
    look(window, u"window-with-fill"_s);
}

TEST_F(DialogPicturesTest, UnderlinedTextsFitTheirSize)
{
    for (const QString &text : {u"&Top Margin"_s, u"R&To && To"_s, u"Tic&k Color"_s}) {
        SCOPED_TRACE(text.toStdString());
        QWidget buddy;
        CheckStyle style;
        QLabel label(text);
        label.setStyle(&style);
        label.setBuddy(&buddy);
        const QSize wide = label.sizeHint() + QSize(40, 0);
        const QImage underlined = painted(label, wide);
        const QRgb background = underlined.pixel(underlined.width() - 1, 0);
        EXPECT_EQ(paintedColumns(painted(label, label.sizeHint()), background), paintedColumns(underlined, background));
        label.setText(QString(text).remove(text.indexOf(u'&'), 1));
        EXPECT_EQ(label.sizeHint() + QSize(40, 0), wide);
        EXPECT_NE(painted(label, wide), underlined);
    }
}

} // namespace app
