#include "TestMap.h"

#include <map/FillCommit.h>
#include <map/FillEditors.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace map {

namespace {

class FillEditorTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    tarnwick::PathRoots roots{folder.path(), {}};
    TestMap host{4, 5};
    FillEditorContext context{host.document, host.runner, roots};
};

} // namespace

TEST_F(FillEditorTest, NewFillTakesTheRememberedValuesAndRemembersItsOwn)
{
    {
        PatternFillEditor editor(context);
        EXPECT_EQ(editor.parameters(), plans::PatternFill::Parameters());
        plans::PatternFill::Parameters values;
        values.rowIncrement = 3;
        values.includeLastTube = true;
        editor.setParameters(values);
        EXPECT_EQ(editor.label(), u"Pattern 3x2"_s);
        EXPECT_EQ(host.document.count(), 0) << "nothing happens before OK";
        editor.accept();
    }
    EXPECT_EQ(host.document.count(), 1);
    EXPECT_EQ(host.document.entry(0).label, u"Pattern 3x2"_s);
    EXPECT_EQ(host.document.history().labels(), QStringList{u"Pattern Fill"_s});
    const PatternFillEditor next(context);
    EXPECT_EQ(next.parameters().rowIncrement, 3);
    EXPECT_TRUE(next.parameters().includeLastTube);
}

TEST_F(FillEditorTest, OptionsOfALargeComponentAreHeldWithinASmallOne)
{
    TestMap large{60, 80};
    const FillEditorContext inLarge{large.document, large.runner, roots};
    {
        PcntFillEditor sample(inLarge);
        plans::PcntFill::Parameters many = sample.parameters();
        many.percentMode = false;
        many.tubeCount = 4000;
        sample.setParameters(many);
        sample.accept();
        BoxFillEditor box(inLarge);
        box.setParameters({90});
        box.accept();
        PatternFillEditor pattern(inLarge);
        plans::PatternFill::Parameters far = pattern.parameters();
        far.firstRow = 50;
        far.firstCol = 70;
        far.rowIncrement = 40;
        far.colIncrement = 3;
        pattern.setParameters(far);
        pattern.accept();
    }
    const PcntFillEditor sample(context);
    EXPECT_EQ(sample.value(), 20);
    const BoxFillEditor box(context);
    EXPECT_EQ(box.parameters().radius, box.maxRadius());
    const PatternFillEditor pattern(context);
    EXPECT_EQ(pattern.parameters().firstRow, 4);
    EXPECT_EQ(pattern.parameters().firstCol, 5);
    EXPECT_EQ(pattern.parameters().rowIncrement, 4);
    EXPECT_EQ(pattern.parameters().colIncrement, 3);
}

TEST_F(FillEditorTest, ADialogThatIsCancelledRemembersAndChangesNothing)
{
    {
        BoxFillEditor editor(context);
        editor.setParameters({2.5});
        editor.setMark(markOf(u'Z', 0x123456));
    }
    EXPECT_EQ(BoxFillEditor(context).parameters().radius, 1.0);
    EXPECT_EQ(host.document.count(), 0);
    EXPECT_EQ(host.picture(), QString(20, u'.'));
    EXPECT_TRUE(host.said.entries().isEmpty());
}

TEST_F(FillEditorTest, EditedFillKeepsItsSymbolAndLeavesTheOptionsAlone)
{
    plans::PatternFill first;
    first.mark.symbol = ellery::Symbol(u'Q');
    first.mark.colour = tarnwick::ColourRef(0x00FF00);
    addNewFill(host.document, host.runner, first, false);
    PatternFillEditor editor(context, 0);
    EXPECT_EQ(editor.mark().symbol, ellery::Symbol(u'Q'));
    EXPECT_EQ(editor.mark().colour, tarnwick::ColourRef(0x00FF00));
    plans::PatternFill::Parameters values = editor.parameters();
    values.colIncrement = 4;
    editor.setParameters(values);
    editor.accept();
    EXPECT_EQ(host.document.count(), 1);
    EXPECT_EQ(host.document.entry(0).label, u"Pattern 2x4"_s);
    EXPECT_EQ(host.document.entry(0).mark.symbol, ellery::Symbol(u'Q'));
    EXPECT_EQ(PatternFillEditor(context).parameters(), plans::PatternFill::Parameters());
    EXPECT_EQ(host.document.undoLabel(), u"Pattern Fill"_s);
    host.document.undo();
    EXPECT_EQ(host.document.entry(0).label, u"Pattern 2x2"_s);
}

TEST_F(FillEditorTest, SymbolIsTheNextLetterUnlessAnotherIsChosen)
{
    BoxFillEditor box(context);
    EXPECT_EQ(box.mark().symbol, ellery::Symbol(u'A'));
    EXPECT_EQ(box.mark().colour, tarnwick::ColourRef(0xFF0000));
    box.setMark(markOf(u'A', 0x00FFFF)); // only the colour
    box.accept();
    EXPECT_EQ(host.document.entry(0).mark.symbol, ellery::Symbol(u'A'));
    EXPECT_EQ(host.document.entry(0).mark.colour, tarnwick::ColourRef(0x00FFFF));
    PcntFillEditor random(context);
    EXPECT_EQ(random.mark().symbol, ellery::Symbol(u'B'));
    EXPECT_EQ(random.mark().colour, tarnwick::ColourRef(0x0000FF));
    random.setMark(markOf(u'\u0394', 0x0000FF));
    random.accept();
    EXPECT_EQ(host.document.entry(1).mark.symbol, ellery::Symbol(u'\u0394'));
    for (int i = 2; i < 26; ++i)
        addNewFill(host.document, host.runner, plans::BoxFill());
    EXPECT_EQ(BoxFillEditor(context).mark().symbol, ellery::Symbol(u'D')) << "letters end with the 26th entry";
    EXPECT_EQ(PcntFillEditor(context).mark().symbol, ellery::Symbol(u'A'));
}

TEST_F(FillEditorTest, PreviewShowsTheMapAsItWouldBeAndLeavesItAlone)
{
    plans::PatternFill rows;
    rows.parameters.colIncrement = 1;
    addNewFill(host.document, host.runner, rows); // rows 1 and 3
    const QString before = host.picture();
    PatternFillEditor editor(context);
    plans::PatternFill::Parameters values;
    values.firstRow = 2;
    values.rowIncrement = 1;
    values.filter.tube = plans::TubeFilter::OpenTubesOnly;
    editor.setParameters(values);
    EXPECT_EQ(editor.summary(), u"6 tubes"_s) << "those of rows 2 and 4";
    EXPECT_EQ(editor.preview().tubes().symbol(host.tube(2, 1)), ellery::Symbol(u'B'));
    EXPECT_EQ(host.picture(), before);
    editor.accept();
    for (int i = 0; i < host.document.component().numTube(); ++i)
        EXPECT_EQ(editor.preview().tubes().symbol(i), host.document.tubes().symbol(i)) << i;

    // An edited entry sees its own tubes open.
    PatternFillEditor again(context, 1);
    EXPECT_EQ(again.summary(), u"6 tubes"_s);
    values.filter.tube = plans::TubeFilter::SymbolsOnly;
    again.setParameters(values);
    EXPECT_EQ(again.summary(), u"3 tubes"_s) << "those of row 3";
    values.filter.tube = plans::TubeFilter::OpenTubesOnly;
    again.setParameters(values);
    again.accept();
    EXPECT_EQ(host.entry(1).tubes.size(), 6) << "in the map, too";
}

TEST_F(FillEditorTest, RandomFillSaysWhatQualifiesAndWhatWouldBeTooMany)
{
    PcntFillEditor editor(context);
    EXPECT_EQ(editor.summary(), u"2 of 20 tubes"_s);
    EXPECT_EQ(editor.warning(), QString());
    EXPECT_EQ(editor.maxValue(), 100);
    plans::PcntFill::Parameters values = editor.parameters();
    values.percentMode = false;
    values.filter.region = plans::TubeFilter::SelectedTubes;
    editor.setParameters(values);
    EXPECT_EQ(editor.maxValue(), 20);
    EXPECT_EQ(editor.value(), 0);
    EXPECT_EQ(editor.warning(), u"No tubes are selected on the map."_s);
    host.select({3, 4});
    PcntFillEditor withSelection(context);
    withSelection.setParameters(values);
    withSelection.setValue(7);
    EXPECT_EQ(withSelection.summary(), u"2 of 2 tubes"_s);
    EXPECT_EQ(withSelection.warning(), u"7 tubes would be too many."_s);
    EXPECT_TRUE(host.said.entries().isEmpty()) << "boxes are for OK";
    withSelection.accept();
    EXPECT_EQ(host.said.entries().value(0).number, 1089);
    EXPECT_EQ(host.document.entry(0).label, u"7 Tubes Fill"_s);
    EXPECT_EQ(host.document.undoLabel(), u"Random 10% Fill"_s);
}

TEST_F(FillEditorTest, RandomFillWithTheShownSeedDrawsTheShownTubes)
{
    PcntFillEditor editor(context);
    plans::PcntFill::Parameters values = editor.parameters();
    values.randomSeed = false;
    values.percent = 40;
    values.seed = 77;
    editor.setParameters(values);
    const QList<qint32> shown = editor.preview().result().tubes;
    EXPECT_EQ(shown.size(), 8);
    editor.accept();
    EXPECT_EQ(host.document.entry(0).tubes, shown);
    PcntFillEditor zero(context);
    values.seed = 0;
    zero.setParameters(values);
    zero.accept();
    EXPECT_EQ(PcntFillEditor(context).parameters().seed, 1u);
}

TEST_F(FillEditorTest, BoxFillKnowsPitchAndLimits)
{
    EXPECT_EQ(BoxFillEditor(context).warning(), u"No tubes are selected on the map."_s);
    host.select({host.tube(2, 2)});
    BoxFillEditor editor(context);
    EXPECT_EQ(editor.pitch(), 1.0);
    EXPECT_EQ(editor.maxRadius(), 5.0); // of 4 by 3
    EXPECT_EQ(editor.summary(), u"4 tubes"_s);
    editor.setParameters({0.5});
    EXPECT_EQ(editor.summary(), u"0 tubes"_s);
    EXPECT_EQ(editor.warning(), u"The nearest tubes are 1.000 away."_s);
}

TEST_F(FillEditorTest, ADamagedOptionFileIsSaidAndPutAside)
{
    const QString path = folder.filePath(u"config/arvo/box_fill.opt"_s);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()) && QFile(path).open(QIODevice::WriteOnly));
    BoxFillEditor editor(context);
    ASSERT_EQ(host.said.entries().size(), 1);
    EXPECT_EQ(editor.parameters().radius, 1.0);
    editor.setParameters({2});
    editor.accept();
    EXPECT_EQ(host.document.count(), 1);
    EXPECT_EQ(BoxFillEditor(context).parameters().radius, 2.0);
}

TEST_F(FillEditorTest, AFolderThatCannotBeWrittenDoesNotStopTheFill)
{
    ASSERT_TRUE(QFile(folder.filePath(u"config"_s)).open(QIODevice::WriteOnly)); // a file where a folder belongs
    PatternFillEditor(context).accept();
    EXPECT_EQ(host.document.count(), 1);
    EXPECT_TRUE(host.said.lastStatus().startsWith(u"Could not store the options."_s));
}

} // namespace map
