#include <brannock/gui/ChooseSymbolDlg.h>
#include <brannock/gui/ColourWell.h>
#include <brannock/gui/SymbolGrid.h>
#include <brannock/MapPalette.h>
#include <brannock/SymbolTable.h>
#include <gtest/gtest.h>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace brannock {

namespace {

/// Answers from a script.
class ScriptedColours : public ColourChooser
{
public:
    using ColourChooser::ColourChooser;
    std::optional<QColor> next;
    std::optional<QColor> choose(QWidget *, const QColor &) override { return next; }
};

class ChooseSymbolTest : public testing::Test
{
protected:
    ChooseSymbolTest()
    {
        qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
        dialog.show();
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    void click(int place)
    {
        const QModelIndex cell = grid->model()->index(place / kSymbolColumns, place % kSymbolColumns);
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
    }
    QString code() { return dialog.findChild<QLabel *>(u"symbolCode"_s)->text(); }

    QTemporaryDir folder;
    tarnwick::RecordingPrompts said;
    ScriptedColours colours{tarnwick::PathRoots{folder.path(), {}}, said};
    ChooseSymbolDlg dialog{markOf(u'B', 0x112233), MapOptions(), colours};
    SymbolGrid *grid = dialog.findChild<SymbolGrid *>();
};

} // namespace

TEST_F(ChooseSymbolTest, ClickChoosesAndShowsTheCode)
{
    EXPECT_EQ(dialog.windowTitle(), u"Choose Symbol"_s);
    EXPECT_EQ(code(), u"Unicode 0x0042"_s);
    EXPECT_EQ(grid->model()->columnCount(), 16);
    EXPECT_EQ(grid->model()->rowCount(), 9);
    click(kSymbolCount - 1);
    EXPECT_EQ(code(), u"Unicode 0x266B"_s);
    QTest::keyClick(grid, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(dialog.mark(), markOf(u'\u266B', 0x112233));
}

TEST_F(ChooseSymbolTest, ArrowKeysChooseAndTheSecondLambdaIsReached)
{
    EXPECT_TRUE(grid->hasFocus());
    QTest::keyClick(grid, Qt::Key_Right);
    EXPECT_EQ(dialog.mark().symbol, ellery::Symbol(u'C'));
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(dialog.mark().symbol, ellery::Symbol(u'S'));
    const int second = symbolIndex(ellery::Symbol(u'\u03B4')) + 1;
    click(second);
    EXPECT_EQ(dialog.mark().symbol, ellery::Symbol(u'\u03BB'));
    EXPECT_EQ(grid->chosen(), second);
}

TEST_F(ChooseSymbolTest, FindGoesToTheBestSymbol)
{
    auto *find = dialog.findChild<QLineEdit *>(u"findSymbol"_s);
    QTest::keyClicks(find, u"omega"_s);
    EXPECT_EQ(code(), u"Unicode 0x03A9"_s);
    QTest::keyClicks(find, u" and none"_s);
    EXPECT_EQ(code(), u"Unicode 0x03A9"_s);
    // A name is typed from the grid, too.
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_S);
    QTest::keyClicks(QApplication::focusWidget(), u"igma"_s);
    EXPECT_EQ(find->text(), u"sigma"_s);
}

TEST_F(ChooseSymbolTest, ColourComesFromThePaletteOrTheChooser)
{
    dialog.findChild<QToolButton *>(u"palette2"_s)->click();
    EXPECT_EQ(dialog.mark().colour, paletteColour(2));
    auto *well = dialog.findChild<ColourWell *>();
    EXPECT_EQ(well->size(), QSize(200, 200));
    QTest::mouseClick(well, Qt::LeftButton);
    EXPECT_EQ(dialog.mark().colour, paletteColour(2)) << "the chooser was cancelled";
    colours.next = QColor(10, 20, 30);
    QTest::mouseClick(well, Qt::LeftButton);
    EXPECT_EQ(dialog.mark().colour, tarnwick::ColourRef(0x1E140A));
    EXPECT_EQ(grid->colour(), QColor(10, 20, 30));
}

TEST_F(ChooseSymbolTest, EscapeGivesTheCallersMarkBack)
{
    click(0);
    dialog.findChild<QToolButton *>(u"palette1"_s)->click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), int(QDialog::Rejected));
    EXPECT_EQ(dialog.mark(), markOf(u'B', 0x112233));
}

TEST(SymbolChoiceTest, KeepsASymbolThatTheTableDoesNotHave)
{
    const QTemporaryDir folder;
    tarnwick::RecordingPrompts said;
    ColourChooser colours(tarnwick::PathRoots{folder.path(), {}}, said);
    ChooseSymbolDlg dialog(markOf(u'\u0416', 1), MapOptions(), colours);
    dialog.show();
    EXPECT_EQ(dialog.findChild<SymbolGrid *>()->chosen(), -1);
    dialog.accept();
    EXPECT_EQ(dialog.mark(), markOf(u'\u0416', 1));
}

} // namespace brannock
