// The dialogs of fills as users drive them: from the tool bar and the legend, by mouse and keys.
#include "WindowFixture.h"

#include <app/LegendModel.h>
#include <app/LegendView.h>
#include <tarnwick/gui/CommandActions.h>

#include <brannock/gui/ChooseSymbolDlg.h>
#include <map/dialogs/FillDialog.h>
#include <map/FillEditors.h>
#include <tarnwick/gui/NumberField.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using tarnwick::NumberField;

namespace app {

namespace {

class FillDialogTest : public WindowFixture
{
protected:
    FillDialogTest()
    {
        qputenv("XDG_CONFIG_HOME", m_settings.path().toLocal8Bit());
        open();
        window.show();
        activate(window);
    }

    /// Keys reach the active window only, and without a window manager none becomes active by itself.
    static void activate(QWidget &widget)
    {
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&widget] { return QApplication::activeWindow() == &widget; }));
    }
    /// Does this to the next dialog that opens, which must end by it.
    void whenOpen(const std::function<void(QDialog &)> &act)
    {
        const QWidget *before = QApplication::activeModalWidget();
        auto *timer = new QTimer(&window);
        QObject::connect(timer, &QTimer::timeout, &window, [this, timer, before, act] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            if (!dialog || dialog == before)
                return;
            timer->stop();
            timer->deleteLater();
            activate(*dialog);
            ++opened;
            act(*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << "the dialog is still open";
                dialog->reject();
            }
        });
        timer->start(1);
    }
    void pressFill(const QString &name)
    {
        find<QToolButton>(u"fill"_s + name)->click();
        settle();
    }
    static void enter(QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }
    template <typename Widget>
    static Widget *part(QDialog &dialog, const QString &name)
    {
        auto *widget = dialog.findChild<Widget *>(name);
        EXPECT_NE(widget, nullptr) << qPrintable(name);
        return widget;
    }
    QString undoText() { return command(Undo)->text(); }
    LegendView &legend() { return *find<LegendView>(u"legend"_s); }
    QString cell(int row, int column) { return legend().model()->index(row, column).data().toString(); }
    void addPattern(int firstRow)
    {
        plans::PatternFill fill;
        fill.parameters.firstRow = firstRow;
        addFill(window, fill);
        settle();
    }

    int opened = 0;

private:
    QTemporaryDir m_settings; ///< sizes of dialogs
};

} // namespace

TEST_F(FillDialogTest, RandomFillByMouseAndKeys)
{
    whenOpen([](QDialog &dialog) {
        auto *value = part<NumberField>(dialog, u"value"_s);
        EXPECT_TRUE(value->hasFocus());
        auto *mode = part<QPushButton>(dialog, u"mode"_s);
        QTest::mousePress(mode, Qt::RightButton);
        EXPECT_EQ(mode->text(), u"Tube Count"_s);
        EXPECT_EQ(value->text(), u"     0 tubes"_s);
        EXPECT_EQ(part<QLabel>(dialog, u"entryLabel"_s)->text(), u"0 Tubes Fill"_s);
        QTest::mouseClick(value->findChild<QLineEdit *>(), Qt::RightButton); // round to all of them
        EXPECT_EQ(part<QLabel>(dialog, u"summary"_s)->text(), u"300 of 300 tubes"_s);
        QTest::mouseClick(value->findChild<QLineEdit *>(), Qt::MiddleButton);
        QTest::keyClicks(value, u"25"_s);
        EXPECT_FALSE(part<NumberField>(dialog, u"seed"_s)->isEnabled());
        QTest::keyClick(part<QCheckBox>(dialog, u"randomSeed"_s), Qt::Key_Space);
        EXPECT_TRUE(part<NumberField>(dialog, u"seed"_s)->isEnabled());
        QTest::keyClicks(part<NumberField>(dialog, u"seed"_s), u"9"_s); // 1 becomes 19
        enter(dialog);
    });
    pressFill(u"RANDOM"_s);
    ASSERT_EQ(opened, 1);
    ASSERT_EQ(mapOf(window).count(), 1);
    const auto &fill = static_cast<const plans::PcntFill &>(mapOf(window).entry(0));
    EXPECT_EQ(fill.label, u"25 Tubes Fill"_s);
    EXPECT_EQ(fill.tubes.size(), 25);
    EXPECT_EQ(fill.parameters.seed, 19u);
    EXPECT_EQ(cell(0, LegendModel::Tubes), u"25"_s);
    EXPECT_EQ(cell(0, LegendModel::Hits), u"25"_s);
    EXPECT_EQ(legend().currentEntry(), 0);
}

TEST_F(FillDialogTest, BoxFillAroundTheSelection)
{
    selectTubes(mapOf(window), {mapOf(window).component().numTube() / 2});
    whenOpen([](QDialog &dialog) {
        auto *radius = part<NumberField>(dialog, u"radius"_s);
        EXPECT_EQ(radius->text(), u"1.000"_s);
        QTest::keyClick(radius, Qt::Key_Up, Qt::ShiftModifier);
        QTest::keyClick(radius, Qt::Key_Up, Qt::ShiftModifier);
        EXPECT_EQ(part<QLabel>(dialog, u"entryLabel"_s)->text(), u"Radius 3.000"_s);
        QTest::mouseClick(dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    pressFill(u"BOX"_s);
    ASSERT_EQ(mapOf(window).count(), 1);
    EXPECT_GT(mapOf(window).entry(0).fillCount, 0);
}

TEST_F(FillDialogTest, PatternFillByItsMnemonicsAndSymbol)
{
    whenOpen([this](QDialog &dialog) {
        QTest::keyClick(&dialog, Qt::Key_I, Qt::AltModifier);
        auto *rowInc = part<NumberField>(dialog, u"rowInc"_s);
        EXPECT_TRUE(rowInc->hasFocus());
        QTest::keyClicks(rowInc, u"3"_s);
        EXPECT_EQ(rowInc->text(), u"3"_s) << "the old number is replaced";
        QTest::keyClick(&dialog, Qt::Key_L, Qt::AltModifier);
        auto *last = part<QCheckBox>(dialog, u"includeLast"_s);
        EXPECT_TRUE(QTest::qWaitFor([last] { return last->isChecked(); }));
        whenOpen([](QDialog &symbols) {
            QTest::keyClicks(part<QLineEdit>(symbols, u"findSymbol"_s), u"spade"_s);
            enter(symbols);
        });
        QTest::keyClick(&dialog, Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([this] { return opened == 2; }));
        activate(dialog);
        enter(dialog);
    });
    pressFill(u"PATTERN"_s);
    EXPECT_EQ(opened, 2);
    ASSERT_EQ(mapOf(window).count(), 1);
    const auto &fill = static_cast<const plans::PatternFill &>(mapOf(window).entry(0));
    EXPECT_EQ(fill.label, u"Pattern 3x2"_s);
    EXPECT_TRUE(fill.parameters.includeLastTube);
    EXPECT_EQ(fill.mark.symbol, ellery::Symbol(u'\u2660')) << "in place of the automatic letter";
}

TEST_F(FillDialogTest, EntryIsEditedByDoubleClickAndReturn)
{
    addPattern(1);
    const QModelIndex description = legend().model()->index(0, LegendModel::Description);
    whenOpen([](QDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Pattern Fill"_s);
        QTest::keyClick(part<NumberField>(dialog, u"colInc"_s), Qt::Key_Up);
        enter(dialog);
    });
    const QPoint place = legend().visualRect(description).center();
    QTest::mouseClick(legend().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(legend().viewport(), Qt::LeftButton, {}, place);
    settle();
    EXPECT_EQ(cell(0, LegendModel::Description), u"Pattern 2x3"_s);
    EXPECT_EQ(mapOf(window).history().count(), 2);

    whenOpen([](QDialog &dialog) { enter(dialog); });
    legend().setFocus();
    QTest::keyClick(&legend(), Qt::Key_Return);
    settle();
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(mapOf(window).history().count(), 2) << "OK without a change is no change";
}

TEST_F(FillDialogTest, SymbolIsChosenByAClickOnItAndByKey)
{
    addPattern(1);
    const QRect symbol = legend().visualRect(legend().model()->index(0, LegendModel::Symbol));
    whenOpen([this](QDialog &dialog) {
        QTest::keyClicks(part<QLineEdit>(dialog, u"findSymbol"_s), u"Q"_s);
        EXPECT_EQ(window.map().scene().mark(mapOf(window).entry(0).tubes.first()).symbol, ellery::Symbol(u'Q'))
            << "shown at once";
        enter(dialog);
    });
    QTest::mouseClick(legend().viewport(), Qt::LeftButton, {}, {symbol.right() - 8, symbol.center().y()});
    settle();
    EXPECT_EQ(mapOf(window).entry(0).mark.symbol, ellery::Symbol(u'Q'));
    EXPECT_TRUE(mapOf(window).entry(0).shown);
    // The box beside it hides and asks for nothing.
    QTest::mouseClick(legend().viewport(), Qt::LeftButton, {}, {symbol.left() + 9, symbol.center().y()});
    settle();
    EXPECT_FALSE(mapOf(window).entry(0).shown);
    EXPECT_EQ(opened, 1);
    activate(window);
    const int steps = mapOf(window).history().count();
    whenOpen([](QDialog &dialog) {
        part<QToolButton>(dialog, u"palette3"_s)->click();
        settle();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    legend().setFocus();
    QTest::keyClick(&legend(), Qt::Key_S, Qt::AltModifier);
    settle();
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(mapOf(window).entry(0).mark.symbol, ellery::Symbol(u'Q'));
    EXPECT_EQ(mapOf(window).entry(0).mark.colour, tarnwick::ColourRef(0x0000FF));
    EXPECT_EQ(mapOf(window).history().count(), steps) << "what was only tried out is no change";
}

TEST_F(FillDialogTest, EntryIsRenamedInPlace)
{
    addPattern(1);
    addPattern(2);
    legend().setFocus();
    legend().setCurrentEntry(1);
    const auto rename = [this](const QString &text) {
        QTest::keyClick(&legend(), Qt::Key_F2);
        const QPointer<QLineEdit> editor = legend().viewport()->findChild<QLineEdit *>();
        ASSERT_NE(editor, nullptr);
        window.refreshAll(); // must not end the editing
        EXPECT_EQ(editor->selectedText(), mapOf(window).entry(1).label);
        QTest::keyClicks(editor, text);
        if (text.isEmpty())
            QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClick(editor, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&editor] { return editor.isNull(); }));
        settle();
    };
    rename(u"Edge tubes"_s);
    EXPECT_EQ(mapOf(window).entry(1).label, u"Edge tubes"_s);
    EXPECT_EQ(opened, 0) << "Return ends the typing and opens nothing";
    rename(QString());
    EXPECT_EQ(mapOf(window).entry(1).label, u"Pattern 2x2"_s);
    EXPECT_EQ(mapOf(window).count(), 2) << "Delete in the field deletes text, not the entry";
}

TEST_F(FillDialogTest, StaysOpenWhenTheFillFailsAndTheMapIsUnchanged)
{
    addEntry(window, FailingFill());
    const map::Entries before = mapOf(window).entries();
    whenOpen([&](QDialog &dialog) {
        QTest::keyClick(part<NumberField>(dialog, u"colInc"_s), Qt::Key_Up);
        said.clear();
        FailingFill::fails = true;
        enter(dialog);
        EXPECT_EQ(said.entries().value(0).text, u"There is not enough memory."_s);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(mapOf(window).entries(), before);
        EXPECT_EQ(mapOf(window).history().count(), 1);
        enter(dialog);
    });
    legend().setFocus();
    legend().setCurrentEntry(0);
    QTest::keyClick(&legend(), Qt::Key_Return);
    settle();
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(cell(0, LegendModel::Description), u"Pattern 2x3"_s);
}

TEST_F(FillDialogTest, EveryChangeIsInTheListToJumpIn)
{
    addPattern(1);
    addPattern(2);
    map::LegendCommands editor = legendOf(window);
    editor.move(0, 1);
    editor.setMark(0, markOf(u'#', 0x123456));
    editor.setShown(1, false);
    editor.rename(0, u"x & y"_s);
    editor.remove(0);
    settle();
    EXPECT_EQ(undoText(), u"Undo Delete Entry"_s);
    QTimer::singleShot(0, &window, [this] {
        auto *changes = window.findChild<QMenu *>(u"changes"_s);
        ASSERT_TRUE(changes->isVisible());
        QStringList texts;
        for (const QAction *action : changes->actions())
            texts.append(action->text());
        EXPECT_EQ(texts, (QStringList{u"Delete Entry"_s, u"Rename Entry"_s, u"Hide Entry"_s, u"Change Symbol"_s,
                                      u"Move Entry"_s, u"Pattern Fill"_s, u"Pattern Fill"_s, u"Start"_s}));
        changes->actions().at(4)->trigger();
        changes->hide();
    });
    QTest::keyClick(&window, Qt::Key_H, Qt::ControlModifier);
    settle();
    EXPECT_EQ(mapOf(window).count(), 2);
    EXPECT_EQ(undoText(), u"Undo Move Entry"_s);
}

} // namespace app
