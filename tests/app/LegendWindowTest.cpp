#include "WindowFixture.h"

#include <app/LegendModel.h>
#include <app/LegendView.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolButton>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

class LegendWindowTest : public WindowFixture
{
protected:
    QString legendOrder()
    {
        QString text;
        for (int i = 0; i < mapOf(window).count(); ++i)
            text += mapOf(window).entry(i).mark.symbol.text();
        return text;
    }
};

} // namespace

TEST_F(LegendWindowTest, IsReorderedByKeysAndByDropping)
{
    open();
    addPattern(1, 3);
    addPattern(2, 3);
    addPattern(3, 3);
    showActive();
    auto *legend = find<LegendView>(u"legend"_s);
    ASSERT_EQ(legend->model()->rowCount(), 3);
    legend->setFocus();
    legend->setCurrentEntry(2);
    QTest::keyClick(legend, Qt::Key_Up, Qt::AltModifier);
    settle();
    EXPECT_EQ(legendOrder(), u"ACB"_s);
    EXPECT_EQ(legend->currentEntry(), 1);

    const std::unique_ptr<QMimeData> dragged(legend->model()->mimeData({legend->model()->index(0, 1)}));
    legend->model()->dropMimeData(dragged.get(), Qt::MoveAction, 3, 0, {});
    settle();
    EXPECT_EQ(legendOrder(), u"CBA"_s);
    run(Undo);
    run(Undo);
    EXPECT_EQ(legendOrder(), u"ABC"_s);
}

TEST_F(LegendWindowTest, ShowsHidesAndDeletesByKeys)
{
    open();
    addPattern(1, 2);
    addPattern(2, 2);
    showActive();
    auto *legend = find<LegendView>(u"legend"_s);
    const QAbstractItemModel &model = *legend->model();
    const QString hits = model.index(0, LegendModel::Hits).data().toString();
    EXPECT_EQ(model.index(0, LegendModel::Tubes).data().toString(), hits);
    legend->setFocus();
    legend->setCurrentEntry(0);
    QTest::keyClick(legend, Qt::Key_Space);
    settle();
    EXPECT_FALSE(mapOf(window).entry(0).shown);
    EXPECT_EQ(said.lastStatus(), u"Hidden: \"Pattern 2x1\"."_s);
    EXPECT_EQ(model.index(0, LegendModel::Hits).data().toString(), u"0"_s);
    window.commands().action(EntriesInvert)->trigger();
    settle();
    EXPECT_TRUE(mapOf(window).entry(0).shown);
    EXPECT_FALSE(mapOf(window).entry(1).shown);
    QTest::keyClick(legend, Qt::Key_Delete);
    settle();
    EXPECT_EQ(legendOrder(), u"B"_s);

    said.answerWith({Answer::No, Answer::Yes});
    run(DeleteAllEntries);
    EXPECT_EQ(mapOf(window).count(), 1);
    run(DeleteAllEntries);
    EXPECT_EQ(mapOf(window).count(), 0);
    EXPECT_FALSE(command(DeleteAllEntries)->isEnabled());
}

namespace {

/// Counts how often a widget is painted.
class Paints : public QObject
{
public:
    explicit Paints(QWidget &widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

} // namespace

TEST_F(LegendWindowTest, OneEditPaintsTheMapOnceAndRefreshesTheLegendOnce)
{
    open();
    addPattern(1);
    addPattern(2);
    showActive();
    QTest::qWait(50);
    Paints paints(window.map());
    QSignalSpy legend(find<LegendView>(u"legend"_s)->model(), &QAbstractItemModel::dataChanged);
    int seen = 0;
    const auto counts = [&](const std::function<void()> &edit) {
        edit();
        QTest::qWait(20);
        return std::pair(std::exchange(paints.count, 0), int(legend.size() - std::exchange(seen, int(legend.size()))));
    };
    using Counts = std::pair<int, int>;
    map::LegendCommands commands = legendOf(window);
    EXPECT_EQ(counts([&] { commands.setShown(0, false); }), Counts(1, 1));
    EXPECT_EQ(counts([&] { commands.setMark(1, markOf(u'?', 0x00FF00)); }), Counts(1, 1));
    EXPECT_EQ(counts([&] { commands.move(0, 1); }), Counts(0, 1));
    EXPECT_EQ(counts([&] { commands.rename(0, u"other"_s); }), Counts(0, 1));
    EXPECT_EQ(counts([&] { selectTubes(mapOf(window), {1, 2, 3}); }), Counts(1, 0));
    EXPECT_EQ(counts([&] { command(FlipHorizontal)->trigger(); }), Counts(1, 0));
    EXPECT_EQ(counts([&] { command(Undo)->trigger(); }), Counts(1, 0));
}

TEST_F(LegendWindowTest, IgnoreSectionIsOfferedWhereThereAreSections)
{
    open();
    addPattern(1);
    QAction *ignore = command(IgnoreSection);
    ASSERT_FALSE(mapOf(window).component().hasSections());
    EXPECT_FALSE(ignore->isEnabled());
    EXPECT_TRUE(ignore->toolTip().endsWith(u"\nThe component has no sections."_s));
    window.projectSession().project().steamGen.labels[int(ellery::Axis::Sec)] = {u"HOT"_s};
    window.refreshAll();
    EXPECT_TRUE(ignore->isEnabled());
}

TEST(LegendModelTest, IsAProperModelWhileTheLegendChanges)
{
    brannock::Project project;
    project.steamGen.setTubes({{{0, 1, 1}, 1, 1, false}, {{0, 1, 2}, 2, 1, false}});
    map::MapDocument document;
    document.setProject(&project);
    LegendModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setDocument(&document);
    for (int i = 0; i < 3; ++i) {
        auto fill = std::make_unique<plans::PatternFill>();
        fill->tubes = {i % 2};
        fill->label = u"entry %1"_s.arg(i);
        document.change(u"Fill"_s, [&fill](map::MapEdit &edit) { edit.addEntry(std::move(fill), true); });
    }
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(1, LegendModel::Description).data().toString(), u"entry 1"_s);
    document.change(u"Move"_s, [](map::MapEdit &edit) { edit.moveEntry(0, 2); });
    document.change(u"Delete"_s, [](map::MapEdit &edit) { edit.removeEntry(1); });
    EXPECT_EQ(model.rowCount(), 2);
    model.setDocument(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(LegendModelTest, DropsBetweenRowsAndAsksForTheMove)
{
    map::MapDocument document;
    document.change(u"Fills"_s, [](map::MapEdit &edit) {
        for (int i = 0; i < 4; ++i)
            edit.addEntry(std::make_unique<plans::PatternFill>(), true);
    });
    LegendModel model;
    model.setDocument(&document);
    QList<std::pair<int, int>> moves;
    QObject::connect(&model, &LegendModel::moveRequested, &model, [&moves](int from, int to) {
        moves.append({from, to});
    });
    const std::unique_ptr<QMimeData> second(model.mimeData({model.index(1, 0)}));
    EXPECT_FALSE(model.dropMimeData(second.get(), Qt::MoveAction, 0, 0, {}));
    EXPECT_FALSE(model.dropMimeData(second.get(), Qt::MoveAction, 4, 0, {}));
    EXPECT_FALSE(model.dropMimeData(second.get(), Qt::MoveAction, -1, -1, model.index(3, 0)));
    QMimeData foreign;
    foreign.setText(u"1"_s);
    EXPECT_FALSE(model.dropMimeData(&foreign, Qt::MoveAction, 0, 0, {}));
    EXPECT_EQ(moves, (QList<std::pair<int, int>>{{1, 0}, {1, 3}, {1, 2}}));
}

} // namespace app
