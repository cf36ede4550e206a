#include <brannock/gui/TubesheetMap.h>
#include <gmock/gmock.h>
#include <QMarginsF>
#include <QSignalSpy>
#include <QtTest>
#include <QWheelEvent>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

namespace {

using namespace brannock;
using testing::ElementsAre;
using SelectMode = TubesheetMap::SelectMode;

class TubesheetMapTest : public testing::Test
{
protected:
    TubesheetMapTest()
        : steamGen(sample::block(10, 12))
        , tubes(steamGen.numTube())
    {
        QObject::connect(&map, &TubesheetMap::selectionWanted, &map,
                         [this](const QList<qint32> &wanted, SelectMode mode) {
                             ++wishes;
                             select(wanted, mode);
                         });
        map.resize(640, 520);
        map.setSteamGen(&steamGen, &tubes);
        map.show();
        QCoreApplication::processEvents();
    }

    int tube(int row, int col) const { return steamGen.findTube(ellery::TubeAddress::of(0, row, col)); }
    QPoint pos(int row, int col) const { return map.posOf(tube(row, col)).toPoint(); }
    void click(int row, int col, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(&map, Qt::LeftButton, modifiers, pos(row, col));
    }
    void drag(const QPoint &from, const QPoint &to, Qt::KeyboardModifiers modifiers = {},
              Qt::MouseButton button = Qt::LeftButton)
    {
        dragAlong({from, to}, modifiers, button);
    }
    void dragAlong(const QList<QPoint> &points, Qt::KeyboardModifiers modifiers = {},
                   Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(&map, button, modifiers, points.first());
        for (const QPoint &point : points) {
            QMouseEvent move(QEvent::MouseMove, point, map.mapToGlobal(point), Qt::NoButton, button, modifiers);
            QCoreApplication::sendEvent(&map, &move);
        }
        QTest::mouseRelease(&map, button, modifiers, points.last());
    }
    void hover(const QPointF &at)
    {
        QMouseEvent move(QEvent::MouseMove, at, map.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&map, &move);
    }
    void wheel(const QPointF &at, int delta)
    {
        QWheelEvent event(at, map.mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&map, &event);
    }
    void select(const QList<qint32> &wanted, SelectMode mode)
    {
        tubes.select(wanted, mode);
        map.refresh();
    }
    QImage shown() { return map.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    ellery::SteamGen steamGen;
    ellery::TubeStates tubes;
    TubesheetMap map;
    int wishes = 0; ///< of selection
};

TEST_F(TubesheetMapTest, ClicksSelectToggleAndAdd)
{
    click(3, 4);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(3, 4)));
    click(5, 6);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(5, 6)));
    click(3, 4, Qt::ShiftModifier);
    click(3, 5, Qt::ControlModifier);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(3, 4), tube(3, 5), tube(5, 6)));
    click(3, 4, Qt::ControlModifier);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(3, 5), tube(5, 6)));
    EXPECT_EQ(wishes, 5);
    QTest::mouseClick(&map, Qt::LeftButton, {}, QPoint(620, 10));
    EXPECT_TRUE(tubes.selection().isEmpty());
    EXPECT_EQ(wishes, 6);
}

TEST_F(TubesheetMapTest, TheSelectionIsSeenAtOnce)
{
    const auto rim = [&](int row, int col) {
        const QPointF aside(map.scene().pitch() * map.view().scale / 2, 0);
        return shown().pixelColor((map.posOf(tube(row, col)) + aside).toPoint());
    };
    EXPECT_EQ(rim(4, 4), QColor(0xFD, 0xFF, 0xD0));
    click(4, 4);
    EXPECT_EQ(rim(4, 4), QColor(0, 255, 0));
    tubes.setSelection({});
    map.refresh();
    EXPECT_EQ(rim(4, 4), QColor(0xFD, 0xFF, 0xD0));
    MapOptions options;
    options.mapColour = tarnwick::ColourRef(0x112233);
    map.setOptions(options);
    EXPECT_EQ(rim(4, 4), QColor(0x33, 0x22, 0x11));
}

TEST_F(TubesheetMapTest, RubberBandAndLassoSelectWhatTheyHold)
{
    const QPoint half(int(map.view().scale / 2), int(-map.view().scale / 2));
    drag(pos(1, 1) - half, pos(2, 3) + half);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(1, 1), tube(1, 2), tube(1, 3), tube(2, 1), tube(2, 2), tube(2, 3)));
    drag(pos(2, 3) - half, pos(3, 3) + half, Qt::ControlModifier);
    EXPECT_EQ(tubes.selectedCount(), 6);
    EXPECT_FALSE(tubes.isSelected(tube(2, 3)));
    drag(pos(8, 8) - half, pos(8, 9) + half, Qt::ShiftModifier);
    EXPECT_EQ(tubes.selectedCount(), 8);

    // A triangle: the lower right half of a block.
    dragAlong({pos(2, 2) - half, pos(2, 6) + QPoint(half.x(), -half.y()), pos(6, 6) + half}, Qt::AltModifier);
    EXPECT_TRUE(tubes.isSelected(tube(2, 6)));
    EXPECT_TRUE(tubes.isSelected(tube(3, 5)));
    EXPECT_FALSE(tubes.isSelected(tube(5, 3)));
    EXPECT_FALSE(tubes.isSelected(tube(8, 8)));

    const QList<qint32> kept = tubes.selection();
    QTest::mousePress(&map, Qt::LeftButton, {}, pos(1, 1));
    QMouseEvent move(QEvent::MouseMove, pos(7, 7), map.mapToGlobal(pos(7, 7)), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&map, &move);
    QTest::keyClick(&map, Qt::Key_Escape);
    QTest::mouseRelease(&map, Qt::LeftButton, {}, pos(7, 7));
    EXPECT_EQ(tubes.selection(), kept);
}

TEST_F(TubesheetMapTest, ADragTellsItsWishAtItsEndAndNoneWhenItIsCancelled)
{
    using Mode = TubesheetMap::DragMode;
    const struct
    {
        Mode mode;
        int told;
        bool movesView;
        Qt::CursorShape cursor;
    } cases[] = {{Mode::Rectangle, 1, false, Qt::ArrowCursor},
                 {Mode::Lasso, 1, false, Qt::CrossCursor},
                 {Mode::Zoom, 0, true, Qt::CrossCursor},
                 {Mode::Pan, 0, true, Qt::ClosedHandCursor}};
    const QList<QPoint> way{pos(1, 1) + QPoint(-9, 9), pos(6, 2), pos(5, 7)};
    for (const auto &test : cases) {
        map.setDragMode(test.mode);
        map.fit();
        select({}, SelectMode::Replace);
        const MapView whole = map.view();
        const QImage before = shown();
        wishes = 0;
        for (const bool cancelled : {true, false}) {
            QTest::mousePress(&map, Qt::LeftButton, {}, way.first());
            for (const QPoint &point : way)
                QTest::mouseMove(&map, point);
            EXPECT_NE(shown(), before);
            EXPECT_EQ(map.cursor().shape(), test.cursor) << int(test.mode);
            EXPECT_EQ(wishes, 0) << "nothing is selected while the mouse moves";
            if (cancelled)
                QTest::keyClick(&map, Qt::Key_Escape);
            QTest::mouseRelease(&map, Qt::LeftButton, {}, way.last());
            EXPECT_EQ(wishes, cancelled ? 0 : test.told) << int(test.mode);
            EXPECT_EQ(map.view() != whole, !cancelled && test.movesView) << int(test.mode);
            if (!cancelled && test.mode == Mode::Zoom) {
                EXPECT_LT((map.view().centre - QPointF(4, 3)).manhattanLength(), 1);
            }
        }
    }
}

TEST_F(TubesheetMapTest, WheelKeepsThePlaceUnderThePointer)
{
    const QPointF at(211, 307);
    const QPointF place = map.view().toMap(at);
    const double scale = map.view().scale;
    wheel(at, 240);
    EXPECT_NEAR(map.view().scale, scale * 1.25 * 1.25, 1e-9);
    EXPECT_LT((map.view().toView(place) - at).manhattanLength(), 1e-6);
    for (int i = 0; i < 100; ++i)
        wheel(at, 120);
    EXPECT_LT(map.view().scale * map.scene().pitch(), 400); // there is an end to it
    EXPECT_LT((map.view().toView(place) - at).manhattanLength(), 1e-3);
    for (int i = 0; i < 200; ++i)
        wheel(at, -120);
    EXPECT_GT(map.view().scale, scale / 3);
}

TEST_F(TubesheetMapTest, StepsOfZoomingShowWhatTheKeptPictureShows)
{
    // In a window, so that the map's pixels lie within those of the window.
    QWidget window;
    window.resize(700, 600);
    map.setParent(&window);
    map.setGeometry(37, 51, 640, 520);
    window.show();
    map.show();
    tubes.setSelected(tube(4, 4), true);
    map.refresh();
    hover(map.posOf(tube(4, 5)));
    QCoreApplication::processEvents();
    const auto inWindow = [&] {
        QCoreApplication::processEvents();
        return window.screen()->grabWindow(window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
    };
    for (int step = 0; step < 3; ++step) {
        wheel(QPointF(200, 150), 90);
        const QImage painted = inWindow();
        QTest::qWait(200); // the kept picture is made
        map.update();
        EXPECT_EQ(inWindow(), painted) << step;
    }
    // What changes while zooming goes on is seen.
    wheel(QPointF(200, 150), 90);
    const QImage before = inWindow();
    tubes.setSelected(tube(5, 5), true);
    map.refresh();
    EXPECT_NE(inWindow(), before);
    map.setParent(nullptr);
}

TEST_F(TubesheetMapTest, ViewsOutlastAnotherSizeOfTheWidget)
{
    const auto resize = [this](int width, int height) {
        map.resize(width, height);
        QCoreApplication::processEvents();
    };
    map.zoomTo(QRectF(2, 2, 3, 3));
    const MapView near = map.view();
    map.fit();
    resize(700, 400);
    const MapView whole = map.view();
    EXPECT_EQ(whole.size, QSizeF(700, 400));
    ASSERT_TRUE(map.hasPreviousView());
    map.previousView();
    EXPECT_EQ(map.view().centre, near.centre);
    EXPECT_EQ(map.view().scale, near.scale);
    EXPECT_EQ(map.view().size, whole.size);
    resize(640, 520);
    map.previousView();
    EXPECT_FALSE(map.hasPreviousView());
    map.nextView();
    map.nextView();
    EXPECT_FALSE(map.hasNextView());
    const MapView again = map.view();
    map.fit();
    EXPECT_EQ(again, map.view()) << "the whole map, whatever the size is by now";
}

TEST_F(TubesheetMapTest, ViewsBeforeAndAfterKeepTheFlip)
{
    const double whole = map.view().scale;
    map.zoomTo(QRectF(2, 2, 3, 3));
    map.setXOrientation(-1);
    map.setYOrientation(-1);
    map.previousView();
    EXPECT_EQ(map.view().scale, whole);
    EXPECT_EQ(map.xOrientation(), -1);
    EXPECT_EQ(map.yOrientation(), -1);
    EXPECT_FALSE(map.hasPreviousView());
    map.setXOrientation(1);
    map.nextView();
    EXPECT_GT(map.view().scale, whole);
    EXPECT_EQ(map.xOrientation(), 1);
}

TEST_F(TubesheetMapTest, AFittedMapIsFittedAnewByAFlip)
{
    const auto expectFitted = [this] {
        const MapView shownView = map.view();
        map.fit();
        EXPECT_EQ(shownView, map.view());
    };
    map.setXOrientation(-1);
    expectFitted();
    map.setYOrientation(-1);
    expectFitted();
    map.zoomAt(QPointF(100, 100), 3);
    map.setXOrientation(1);
    map.resize(700, 400);
    map.previousView();
    expectFitted();
}

TEST_F(TubesheetMapTest, FitHistoryAndDragging)
{
    QSignalSpy changed(&map, &TubesheetMap::viewChanged);
    const MapView whole = map.view();
    map.zoomTo(QRectF(2, 2, 3, 3));
    const MapView near = map.view();
    EXPECT_GT(near.scale, whole.scale);
    EXPECT_LT((near.centre - QPointF(3.5, 3.5)).manhattanLength(), 1);

    drag(QPoint(300, 200), QPoint(340, 170), {}, Qt::MiddleButton);
    const MapView moved = map.view();
    EXPECT_LT((moved.toView(near.toMap(QPointF(300, 200))) - QPointF(340, 170)).manhattanLength(), 1e-6);
    EXPECT_TRUE(tubes.selection().isEmpty());

    map.previousView();
    EXPECT_EQ(map.view(), near);
    map.previousView();
    EXPECT_EQ(map.view(), whole);
    EXPECT_FALSE(map.hasPreviousView());
    map.nextView();
    map.nextView();
    EXPECT_EQ(map.view(), moved);
    EXPECT_FALSE(map.hasNextView());
    QTest::keyClick(&map, Qt::Key_Backspace);
    EXPECT_EQ(map.view(), near);
    QTest::keyClick(&map, Qt::Key_Home);
    EXPECT_EQ(map.view(), whole);
    EXPECT_GE(changed.size(), 7);

    // What fits follows the window's size.
    map.resize(900, 300);
    QCoreApplication::processEvents();
    const QRectF sheet = map.view().toView(map.scene().bounds());
    EXPECT_TRUE(QRectF(0, 0, 900, 300).contains(sheet));
    EXPECT_GT(sheet.height(), 200);
}

TEST_F(TubesheetMapTest, SpaceDragsOrTogglesTheCursorTube)
{
    const MapView before = map.view();
    QTest::keyPress(&map, Qt::Key_Space);
    drag(QPoint(300, 200), QPoint(310, 260));
    QTest::keyRelease(&map, Qt::Key_Space);
    EXPECT_LT((map.view().toView(before.toMap(QPointF(300, 200))) - QPointF(310, 260)).manhattanLength(), 1e-6);
    EXPECT_TRUE(tubes.selection().isEmpty());
    map.fit();

    QSignalSpy activated(&map, &TubesheetMap::tubeActivated);
    map.setCursorTube(tube(4, 4));
    QTest::keyClick(&map, Qt::Key_Right, Qt::AltModifier);
    QTest::keyClick(&map, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(map.cursorTube(), tube(5, 5));
    QTest::keyClick(&map, Qt::Key_Space);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(5, 5)));
    EXPECT_THAT(map.accessibleDescription().toStdString(), testing::HasSubstr("1 selected; cursor on"));
    QTest::keyClick(&map, Qt::Key_Return);
    EXPECT_EQ(activated.size(), 1);
    map.setXOrientation(-1);
    QTest::keyClick(&map, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(map.cursorTube(), tube(5, 4)); // to the right on the screen
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&map, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(map.cursorTube(), tube(0, 4));
    tubes.setSelection({});
    QTest::keyClick(&map, Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    QTest::keyClick(&map, Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
    QTest::keyClick(&map, Qt::Key_Up, Qt::AltModifier);
    EXPECT_THAT(tubes.selection(), ElementsAre(tube(0, 4), tube(1, 4), tube(2, 4)));
}

TEST_F(TubesheetMapTest, CursorCrossesGapsAndStaysInSight)
{
    steamGen = sample::uBend();
    tubes = ellery::TubeStates(steamGen.numTube());
    map.setSteamGen(&steamGen, &tubes);
    map.zoomAt(QPointF(320, 260), 8);
    map.setCursorTube(steamGen.findTube({0, 6, 6})); // beside a stay rod at column 5
    QTest::keyClick(&map, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(map.cursorTube(), steamGen.findTube({0, 6, 4}));
    EXPECT_TRUE(map.rect().contains(map.posOf(map.cursorTube()).toPoint()));
}

TEST_F(TubesheetMapTest, HoveringNamesTheTube)
{
    QSignalSpy hovered(&map, &TubesheetMap::hovered);
    int asked = -1;
    map.setTipText([&](int tube) {
        asked = tube;
        return QStringList{u"Fill: 20% random"_s};
    });
    map.setTubeTip(true);
    const QImage before = shown();
    hover(pos(3, 3));
    hover(pos(3, 3) + QPoint(2, 1)); // still the same tube
    EXPECT_EQ(hovered.size(), 1);
    EXPECT_EQ(map.hoveredTube(), tube(3, 3));
    EXPECT_EQ(asked, tube(3, 3));
    EXPECT_NE(shown(), before);
    hover(QPointF(630, 5));
    EXPECT_EQ(map.hoveredTube(), -1);
    EXPECT_EQ(shown(), before); // nothing is left behind
}

TEST_F(TubesheetMapTest, TheCardFollowsTheSelectionAndHidesUnderDialogs)
{
    map.setTubeTip(true);
    const auto hasCard = [this] {
        const QImage with = shown();
        map.setTubeTip(false);
        const QImage without = shown();
        map.setTubeTip(true);
        return with != without;
    };
    select({tube(2, 2)}, SelectMode::Replace);
    map.setCursorTube(tube(2, 2));
    select({tube(8, 9)}, SelectMode::Replace);
    EXPECT_EQ(map.cursorTube(), tube(8, 9));
    map.setTipHidden(true);
    EXPECT_FALSE(hasCard());
    map.setTipHidden(false);
    EXPECT_TRUE(hasCard());
    QTest::keyClick(&map, Qt::Key_Space);
    EXPECT_FALSE(tubes.isSelected(tube(8, 9)));
    EXPECT_TRUE(hasCard()) << "deselected by the cursor itself";
    select({tube(1, 1), tube(1, 2)}, SelectMode::Replace);
    EXPECT_FALSE(hasCard());
    QTest::keyClick(&map, Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(hasCard()) << "the keyboard goes on from where it was";
}

TEST_F(TubesheetMapTest, ContextMenuNamesTheTube)
{
    QSignalSpy menu(&map, &TubesheetMap::contextMenuRequested);
    QContextMenuEvent onTube(QContextMenuEvent::Mouse, pos(2, 2), map.mapToGlobal(pos(2, 2)));
    QCoreApplication::sendEvent(&map, &onTube);
    QContextMenuEvent beside(QContextMenuEvent::Mouse, QPoint(630, 5), map.mapToGlobal(QPoint(630, 5)));
    QCoreApplication::sendEvent(&map, &beside);
    ASSERT_EQ(menu.size(), 2);
    EXPECT_EQ(menu[0][1].toInt(), tube(2, 2));
    EXPECT_EQ(menu[1][1].toInt(), -1);
}

TEST_F(TubesheetMapTest, AnotherModelOrNoneIsTakenOver)
{
    hover(pos(9, 11));
    map.setCursorTube(tube(9, 11));
    steamGen = sample::block(2, 2);
    tubes = ellery::TubeStates(4);
    map.refresh();
    EXPECT_EQ(map.scene().numTube(), 4);
    EXPECT_EQ(map.cursorTube(), -1);
    shown();
    map.setSteamGen(nullptr);
    QTest::mouseClick(&map, Qt::LeftButton, {}, QPoint(100, 100));
    wheel(QPointF(50, 50), 120);
    QTest::keyClick(&map, Qt::Key_Right, Qt::AltModifier);
    const QImage empty = shown();
    EXPECT_EQ(empty.pixelColor(300, 200), map.palette().color(QPalette::Window));
    EXPECT_EQ(map.accessibleDescription(), u"No steam generator"_s);
}

} // namespace
