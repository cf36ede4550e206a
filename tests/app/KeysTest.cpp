// What keys do in the main window: the full screen, menus, buttons, names.
#include "WindowFixture.h"

#include <app/HeaderDlg.h>
#include <app/LegendView.h>
#include <app/logic/KeyList.h>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace app {

namespace {

class KeysTest : public WindowFixture
{
protected:
    KeysTest()
    {
        EXPECT_TRUE(window.openProject(projectFolder()));
        window.resize(1700, 800); // every button of the bars is seen
        showActive();
        settle();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(window.focusWidget(), key, modifiers);
        settle();
    }
    bool isFullScreen() { return window.windowState() & Qt::WindowFullScreen; }
    static constexpr int kAfterReturn = 700; // ms
};

} // namespace

TEST_F(KeysTest, EscGoesToTheFullScreenFromTheMapOnly)
{
    auto *legend = find<LegendView>(u"legend"_s);
    legend->setFocus();
    press(Qt::Key_Escape);
    EXPECT_FALSE(isFullScreen());
    window.map().setFocus();
    window.map().setCursorTube(5);
    const QImage withCard = window.map().grab().toImage();
    QTimer::singleShot(0, &window, [this, &withCard] {
        QWidget *box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        EXPECT_NE(window.map().grab().toImage(), withCard) << "the card hides under a box";
        QTest::keyClick(box, Qt::Key_Escape);
    });
    window.commands().action(ListOfKeys)->trigger();
    QApplication::setActiveWindow(&window); // not done by the platform of the tests
    EXPECT_EQ(window.map().grab().toImage(), withCard);
    press(Qt::Key_Escape);
    EXPECT_FALSE(isFullScreen()) << "one Esc too many after a box";
    QTest::qWait(kAfterReturn);

    auto *menu = find<QMenu>(u"mapMenu"_s);
    Q_EMIT window.map().contextMenuRequested(window.map().mapToGlobal(QPoint(10, 10)), -1);
    EXPECT_TRUE(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu->isVisible());
    press(Qt::Key_Escape);
    EXPECT_FALSE(isFullScreen()) << "one Esc too many after a menu";
    window.activateWindow(); // which this platform does not do by itself after a menu
    QTest::qWait(kAfterReturn);
    press(Qt::Key_Escape);
    EXPECT_TRUE(isFullScreen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(isFullScreen());
}

TEST_F(KeysTest, MenusOpenOnTheFullScreenAndTheSidePanelComesBackAsWide)
{
    auto *splitter = find<QSplitter>(u"mainSplitter"_s);
    const int before = splitter->sizes()[1] * 100 / splitter->width();
    run(MapFullScreen);
    EXPECT_EQ(window.menuBar()->height(), 0);
    EXPECT_FALSE(find<QWidget>(u"sidePanel"_s)->isVisible());
    EXPECT_TRUE(window.map().isVisible());
    press(Qt::Key_V, Qt::AltModifier);
    auto *view = find<QMenu>(u"menuView"_s);
    EXPECT_TRUE(view->isVisible());
    QTest::keyClick(view, Qt::Key_Escape);
    view->hide();
    run(MapFullScreen);
    EXPECT_GT(window.menuBar()->height(), 0);
    EXPECT_TRUE(find<QLineEdit>(u"findTube"_s)->isVisible());
    EXPECT_NEAR(splitter->sizes()[1] * 100 / splitter->width(), before, 1);
    // In another width the panel keeps its share.
    window.resize(1300, 800);
    settle();
    EXPECT_NEAR(splitter->sizes()[1] * 100 / splitter->width(), before, 1);
}

TEST_F(KeysTest, ReturnPressesTheButtonWithTheFocusAndCtrlASelectsAll)
{
    window.map().setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(mapOf(window).tubes().selectedCount(), mapOf(window).component().numTube());
    auto *flip = qobject_cast<QToolButton *>(find<QToolBar>(u"viewBar"_s)->widgetForAction(command(FlipVertical)));
    ASSERT_NE(flip, nullptr);
    flip->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(window.map().yOrientation(), -1);
    auto *drag = find<QToolButton>(u"dragButton"_s);
    drag->setFocus();
    QTimer::singleShot(0, &window, [this] {
        EXPECT_TRUE(find<QMenu>(u"dragModes"_s)->isVisible());
        find<QMenu>(u"dragModes"_s)->close();
    });
    press(Qt::Key_Return);
}

TEST_F(KeysTest, ANameBeingTypedIsTakenOnceOrGoesWithItsEntry)
{
    static QStringList warnings;
    warnings.clear();
    const QtMessageHandler usual =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            if (!text.startsWith(u"This plugin"))
                warnings.append(text);
        });
    auto *legend = find<LegendView>(u"legend"_s);
    const auto type = [&](const QString &name) {
        legend->setCurrentEntry(0);
        legend->setFocus();
        press(Qt::Key_F2);
        QTest::keyClicks(QApplication::focusWidget(), name);
    };
    addPattern(1);
    type(u"first"_s);
    legend->endRename();
    type(u"second"_s); // while the first editor waits to be deleted
    legend->endRename();
    legend->endRename();
    EXPECT_EQ(mapOf(window).entry(0).label, u"second"_s);
    type(u"third"_s);
    run(FlipHorizontal);
    EXPECT_EQ(mapOf(window).history().labels().last(), u"Flip Horizontal"_s) << "after the name";
    EXPECT_EQ(mapOf(window).entry(0).label, u"third"_s);
    type(u"gone"_s);
    mapOf(window).moveTo(0);
    settle();
    EXPECT_EQ(mapOf(window).count(), 0);
    addPattern(1);
    type(u"fourth"_s);
    ASSERT_TRUE(window.openProject(projectFolder()));
    settle();
    EXPECT_EQ(mapOf(window).count(), 0);
    qInstallMessageHandler(usual);
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(KeysTest, TheListOfKeysIsCompleteAndInTheHelpMenu)
{
    EXPECT_TRUE(find<QMenu>(u"menuHelp"_s)->actions().contains(window.commands().action(ListOfKeys)));
    QStringList listed;
    for (const KeyGroup &group : keyList()) {
        for (const KeyGroup::Line &line : group.lines)
            listed += line.keys.split(u", "_s);
    }
    for (const QAction *action : window.findChildren<QAction *>()) {
        for (const QKeySequence &keys : action->shortcuts()) {
            EXPECT_TRUE(listed.contains(keys.toString(QKeySequence::PortableText)))
                << qPrintable(action->text()) << qPrintable(keys.toString());
        }
    }
    EXPECT_TRUE(keyListText().contains(u"\n\nLegend\n  F2 "_s)) << qPrintable(keyListText());
}

} // namespace app
