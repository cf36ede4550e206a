#include <brannock/gui/MapAccessible.h>
#include <brannock/gui/TubesheetMap.h>
#include <gtest/gtest.h>
#include <QAccessible>
#include <QtTest>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

using namespace brannock;

// That moves of the cursor are announced is checked by scripts/check-accessibility: without a screen reader, Qt sends
// no events.
TEST(MapAccessibleTest, ScreenReadersReachEveryTube)
{
    const ellery::SteamGen steamGen = sample::block(10, 12);
    ellery::TubeStates tubes(steamGen.numTube());
    installMapAccessibility();
    TubesheetMap map;
    map.resize(640, 520);
    map.setSteamGen(&steamGen, &tubes);
    map.setTipText([](int) { return QStringList{u"Plugged in R11"_s}; });
    QObject::connect(&map, &TubesheetMap::selectionWanted, &map, [&](const QList<qint32> &wanted, auto mode) {
        tubes.select(wanted, mode);
        map.refresh();
    });
    map.show();
    map.setFocus();
    QCoreApplication::processEvents();
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(&map);
    ASSERT_TRUE(list && list->role() == QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), u"Tubesheet map");
    ASSERT_EQ(list->childCount(), steamGen.numTube());

    const int index = steamGen.findTube(ellery::TubeAddress::of(0, 3, 4));
    QAccessibleInterface *tube = list->child(index);
    EXPECT_EQ(list->indexOfChild(tube), index);
    EXPECT_EQ(tube->text(QAccessible::Name), u"ROW 3 COL 4, Open");
    EXPECT_EQ(tube->text(QAccessible::Description), u"Plugged in R11");
    const QPoint place = map.mapToGlobal(map.posOf(index).toPoint());
    EXPECT_TRUE(tube->rect().contains(place));
    EXPECT_EQ(list->childAt(place.x(), place.y()), tube);
    EXPECT_EQ(list->focusChild(), nullptr);

    map.setCursorTube(index);
    EXPECT_EQ(list->focusChild(), tube);
    tube->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(tube->state().selected);
    EXPECT_EQ(tube->text(QAccessible::Name), u"ROW 3 COL 4, Open, selected");

    map.setSteamGen(nullptr);
    EXPECT_EQ(list->childCount(), 0);
    EXPECT_FALSE(tube->isValid());
}
