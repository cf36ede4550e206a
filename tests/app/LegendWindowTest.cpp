#include "WindowFixture.h"

#include <app/LegendModel.h>
#include <app/LegendView.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QToolButton>

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
        for (int i = 0; i < window.legend().count(); ++i)
            text += QChar(window.legend().entry(i).symbol);
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
    EXPECT_EQ(command(Undo)->text(), u"Undo Move Entry"_s);

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
    EXPECT_FALSE(window.legend().entry(0).shown);
    EXPECT_EQ(model.index(0, LegendModel::Hits).data().toString(), u"0"_s);
    EXPECT_EQ(command(Undo)->text(), u"Undo Hide Entry"_s);
    window.commands().extra(Extra::EntriesInvert)->trigger();
    settle();
    EXPECT_TRUE(window.legend().entry(0).shown);
    EXPECT_FALSE(window.legend().entry(1).shown);
    QTest::keyClick(legend, Qt::Key_Delete);
    settle();
    EXPECT_EQ(legendOrder(), u"B"_s);

    said.answerWith({Answer::No, Answer::Yes});
    run(DeleteAllEntries);
    EXPECT_EQ(window.legend().count(), 1);
    run(DeleteAllEntries);
    EXPECT_EQ(window.legend().count(), 0);
    EXPECT_FALSE(command(DeleteAllEntries)->isEnabled());
}

TEST_F(LegendWindowTest, UpdateComputesTheLegendAnew)
{
    open();
    addPattern(1, 2);
    window.legend().entry(0).tubes.clear();
    said.clear();
    find<QToolButton>(u"updateButton"_s)->click();
    settle();
    EXPECT_GT(window.legend().entry(0).paintedCount, 0);
    EXPECT_EQ(said.lastStatus(), u"Done updating map."_s);
    const QStringList told = said.texts(tarnwick::RecordingPrompts::Entry::Kind::Information);
    EXPECT_TRUE(told.size() == 1 && told[0].contains(u"    1  Pattern 2x1: "_s)) << qPrintable(told.join(u'|'));
    EXPECT_EQ(command(Undo)->text(), u"Undo Update Map"_s);
}

TEST_F(LegendWindowTest, IgnoreSectionIsOfferedWhereThereAreSections)
{
    open();
    addPattern(1);
    QAction *ignore = command(IgnoreSection);
    ASSERT_FALSE(window.steamGen().hasSections());
    EXPECT_FALSE(ignore->isEnabled());
    EXPECT_TRUE(ignore->toolTip().endsWith(u"\nThe component has no sections."_s));
    window.project().steamGen.labels[int(ellery::Axis::Sec)] = {u"HOT"_s};
    window.refreshAll();
    EXPECT_TRUE(ignore->isEnabled());
}

TEST(LegendModel, IsAProperModelWhileTheLegendChanges)
{
    ellery::SteamGen sg;
    sg.setTubes({{{0, 1, 1}, 1, 1, false}, {{0, 1, 2}, 2, 1, false}});
    plans::MapLegend legend(sg);
    LegendModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setLegend(&legend);
    legend.changed = [&model] { model.refresh(); };
    for (int i = 0; i < 3; ++i) {
        auto fill = std::make_unique<plans::PatternFill>();
        fill->tubes = {i % 2};
        fill->label = u"entry %1"_s.arg(i);
        legend.addEntry(std::move(fill), true);
    }
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(1, LegendModel::Description).data().toString(), u"entry 1"_s);
    legend.moveEntry(0, 2);
    legend.deleteEntry(1);
    EXPECT_EQ(model.rowCount(), 2);
    model.setLegend(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(LegendModel, DropsBetweenRowsAndAsksForTheMove)
{
    ellery::SteamGen sg;
    plans::MapLegend legend(sg);
    for (int i = 0; i < 4; ++i)
        legend.addEntry(std::make_unique<plans::PatternFill>(), true);
    LegendModel model;
    model.setLegend(&legend);
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
