#include "TestHost.h"

#include <plans/FillCommit.h>
#include <plans/FillEditors.h>
#include <plans/MapUndo.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

/// Undo as the window has it.
class UndoingHost : public TestHost
{
public:
    using TestHost::TestHost;
    MapUndo undo{entries};
    void undoCheckpoint(const QString &label) override
    {
        TestHost::undoCheckpoint(label);
        undo.checkpoint(label);
    }
};

class FillEditorTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    tarnwick::PathRoots roots{folder.path(), {}};
    UndoingHost host{4, 5};
};

} // namespace

TEST_F(FillEditorTest, NewFillTakesTheRememberedValuesAndRemembersItsOwn)
{
    {
        PatternFillEditor editor(host, roots);
        EXPECT_EQ(editor.parameters(), PatternFill::Parameters());
        PatternFill::Parameters values;
        values.rowIncrement = 3;
        values.includeLastTube = true;
        editor.setParameters(values);
        EXPECT_EQ(editor.label(), u"Pattern 3x2"_s);
        EXPECT_EQ(host.legend().count(), 0) << "nothing happens before OK";
        editor.accept();
    }
    EXPECT_EQ(host.legend().count(), 1);
    EXPECT_EQ(host.legend().entry(0).label, u"Pattern 3x2"_s);
    EXPECT_EQ(host.checkpoints, QStringList{u"Pattern Fill"_s});
    const PatternFillEditor next(host, roots);
    EXPECT_EQ(next.parameters().rowIncrement, 3);
    EXPECT_TRUE(next.parameters().includeLastTube);
}

TEST_F(FillEditorTest, OptionsOfALargeComponentAreHeldWithinASmallOne)
{
    UndoingHost large{60, 80};
    {
        PcntFillEditor sample(large, roots);
        PcntFill::Parameters many = sample.parameters();
        many.percentMode = false;
        many.tubeCount = 4000;
        sample.setParameters(many);
        sample.accept();
        BoxFillEditor box(large, roots);
        box.setParameters({90});
        box.accept();
        PatternFillEditor pattern(large, roots);
        PatternFill::Parameters far = pattern.parameters();
        far.firstRow = 50;
        far.firstCol = 70;
        far.rowIncrement = 40;
        far.colIncrement = 3;
        pattern.setParameters(far);
        pattern.accept();
    }
    const PcntFillEditor sample(host, roots);
    EXPECT_EQ(sample.value(), 20);
    const BoxFillEditor box(host, roots);
    EXPECT_EQ(box.parameters().radius, box.maxRadius());
    const PatternFillEditor pattern(host, roots);
    EXPECT_EQ(pattern.parameters().firstRow, 4);
    EXPECT_EQ(pattern.parameters().firstCol, 5);
    EXPECT_EQ(pattern.parameters().rowIncrement, 4);
    EXPECT_EQ(pattern.parameters().colIncrement, 3);
}

TEST_F(FillEditorTest, ADialogThatIsCancelledRemembersAndChangesNothing)
{
    {
        BoxFillEditor editor(host, roots);
        editor.setParameters({2.5});
        editor.setMark(u'Z', 0x123456);
    }
    EXPECT_EQ(BoxFillEditor(host, roots).parameters().radius, 1.0);
    EXPECT_EQ(host.legend().count(), 0);
    EXPECT_EQ(host.picture(), QString(20, u'.'));
    EXPECT_TRUE(host.said.entries().isEmpty());
}

TEST_F(FillEditorTest, EditedFillKeepsItsSymbolAndLeavesTheOptionsAlone)
{
    PatternFill first;
    first.symbol = u'Q';
    first.colour = 0x00FF00;
    addNewFill(host, first, false);
    PatternFillEditor editor(host, roots, 0);
    EXPECT_EQ(editor.symbol(), u'Q');
    EXPECT_EQ(editor.colour(), 0x00FF00u);
    PatternFill::Parameters values = editor.parameters();
    values.colIncrement = 4;
    editor.setParameters(values);
    editor.accept();
    EXPECT_EQ(host.legend().count(), 1);
    EXPECT_EQ(host.legend().entry(0).label, u"Pattern 2x4"_s);
    EXPECT_EQ(host.legend().entry(0).symbol, u'Q');
    EXPECT_EQ(PatternFillEditor(host, roots).parameters(), PatternFill::Parameters());
    EXPECT_EQ(host.undo.undoLabel(), u"Pattern Fill"_s);
    host.undo.undo();
    EXPECT_EQ(host.legend().entry(0).label, u"Pattern 2x2"_s);
}

TEST_F(FillEditorTest, OkWithoutAChangeLeavesNoStepOfUndo)
{
    addNewFill(host, PatternFill());
    EXPECT_EQ(host.undo.stack().count(), 1);
    PatternFillEditor(host, roots, 0).accept();
    EXPECT_EQ(host.undo.stack().count(), 1);
    EXPECT_EQ(host.undo.undoLabel(), u"Pattern Fill"_s);
}

TEST_F(FillEditorTest, SymbolIsTheNextLetterUnlessAnotherIsChosen)
{
    BoxFillEditor box(host, roots);
    EXPECT_EQ(box.symbol(), u'A');
    EXPECT_EQ(box.colour(), 0xFF0000u);
    box.setMark(u'A', 0x00FFFF); // only the colour
    box.accept();
    EXPECT_EQ(host.legend().entry(0).symbol, u'A');
    EXPECT_EQ(host.legend().entry(0).colour, 0x00FFFFu);
    PcntFillEditor random(host, roots);
    EXPECT_EQ(random.symbol(), u'B');
    EXPECT_EQ(random.colour(), 0x0000FFu);
    random.setMark(u'\u0394', 0x0000FF);
    random.accept();
    EXPECT_EQ(host.legend().entry(1).symbol, u'\u0394');
    for (int i = 2; i < 26; ++i)
        addNewFill(host, BoxFill());
    EXPECT_EQ(BoxFillEditor(host, roots).symbol(), u'D') << "letters end with the 26th entry";
    EXPECT_EQ(PcntFillEditor(host, roots).symbol(), u'A');
}

TEST_F(FillEditorTest, PreviewShowsTheMapAsItWouldBeAndLeavesItAlone)
{
    PatternFill rows;
    rows.parameters.colIncrement = 1;
    addNewFill(host, rows); // rows 1 and 3
    const QString before = host.picture();
    PatternFillEditor editor(host, roots);
    PatternFill::Parameters values;
    values.firstRow = 2;
    values.rowIncrement = 1;
    values.filter.tube = TubeFilter::OpenTubesOnly;
    editor.setParameters(values);
    EXPECT_EQ(editor.summary(), u"6 tubes"_s) << "those of rows 2 and 4";
    EXPECT_EQ(editor.preview().tubes().symbol(host.tube(2, 1)), u'B');
    EXPECT_EQ(host.picture(), before);
    editor.accept();
    for (int i = 0; i < host.steamGen().numTube(); ++i)
        EXPECT_EQ(editor.preview().tubes().symbol(i), host.tubes().symbol(i)) << i;

    // An edited entry sees its own tubes open.
    PatternFillEditor again(host, roots, 1);
    EXPECT_EQ(again.summary(), u"6 tubes"_s);
    values.filter.tube = TubeFilter::SymbolsOnly;
    again.setParameters(values);
    EXPECT_EQ(again.summary(), u"3 tubes"_s) << "those of row 3";
}

TEST_F(FillEditorTest, RandomFillSaysWhatQualifiesAndWhatWouldBeTooMany)
{
    PcntFillEditor editor(host, roots);
    EXPECT_EQ(editor.summary(), u"2 of 20 tubes"_s);
    EXPECT_EQ(editor.warning(), QString());
    EXPECT_EQ(editor.maxValue(), 100);
    PcntFill::Parameters values = editor.parameters();
    values.percentMode = false;
    values.filter.region = TubeFilter::SelectedTubes;
    editor.setParameters(values);
    EXPECT_EQ(editor.maxValue(), 20);
    EXPECT_EQ(editor.value(), 0);
    EXPECT_EQ(editor.warning(), u"No tubes are selected on the map."_s);
    host.tubes().setSelection({3, 4});
    PcntFillEditor withSelection(host, roots);
    withSelection.setParameters(values);
    withSelection.setValue(7);
    EXPECT_EQ(withSelection.summary(), u"2 of 2 tubes"_s);
    EXPECT_EQ(withSelection.warning(), u"7 tubes would be too many."_s);
    EXPECT_TRUE(host.said.entries().isEmpty()) << "boxes are for OK";
    withSelection.accept();
    EXPECT_EQ(host.said.entries().value(0).number, 1089);
    EXPECT_EQ(host.legend().entry(0).label, u"7 Tubes Fill"_s);
    EXPECT_EQ(host.checkpoints, QStringList{u"Random 10% Fill"_s});
}

TEST_F(FillEditorTest, RandomFillWithTheShownSeedDrawsTheShownTubes)
{
    PcntFillEditor editor(host, roots);
    PcntFill::Parameters values = editor.parameters();
    values.randomSeed = false;
    values.percent = 40;
    values.seed = 0;
    editor.setParameters(values);
    values.seed = 77;
    editor.setParameters(values);
    const QList<qint32> shown = editor.preview().shown().tubes;
    EXPECT_EQ(shown.size(), 8);
    editor.accept();
    EXPECT_EQ(host.legend().entry(0).tubes, shown);
}

TEST_F(FillEditorTest, ASeedOfZeroBecomesOne)
{
    PcntFillEditor editor(host, roots);
    PcntFill::Parameters values = editor.parameters();
    values.randomSeed = false;
    values.seed = 0;
    editor.setParameters(values);
    editor.accept();
    EXPECT_EQ(static_cast<const PcntFill &>(host.legend().entry(0)).parameters.seed, 1u);
    EXPECT_EQ(PcntFillEditor(host, roots).parameters().seed, 1u);
}

TEST_F(FillEditorTest, BoxFillKnowsPitchAndLimits)
{
    EXPECT_EQ(BoxFillEditor(host, roots).warning(), u"No tubes are selected on the map."_s);
    host.tubes().setSelection({host.tube(2, 2)});
    BoxFillEditor editor(host, roots);
    EXPECT_EQ(editor.pitch(), 1.0);
    EXPECT_EQ(editor.maxRadius(), 5.0); // of 4 by 3
    EXPECT_EQ(editor.summary(), u"4 tubes"_s);
    editor.setParameters({0.5});
    EXPECT_EQ(editor.summary(), u"0 tubes"_s);
    EXPECT_EQ(editor.warning(), u"The nearest tubes are 1.000 away."_s);
}

TEST_F(FillEditorTest, ADamagedOptionFileIsSaidAndPutAside)
{
    ASSERT_TRUE(QDir().mkpath(folder.filePath(u"config/arvo"_s)));
    const QString path = folder.filePath(u"config/arvo/box_fill.opt"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no options");
    file.close();
    BoxFillEditor editor(host, roots);
    ASSERT_EQ(host.said.entries().size(), 1);
    EXPECT_TRUE(host.said.entries()[0].text.startsWith(u"Could not read the options.\n\n"_s));
    EXPECT_EQ(editor.parameters().radius, 1.0);
    editor.setParameters({2});
    editor.accept();
    EXPECT_EQ(host.legend().count(), 1);
    EXPECT_EQ(BoxFillEditor(host, roots).parameters().radius, 2.0);
    EXPECT_EQ(host.said.entries().size(), 2);
    EXPECT_EQ(host.said.lastStatus(), u"Radius 2.000: 0 tubes."_s);
}

TEST_F(FillEditorTest, AFolderThatCannotBeWrittenDoesNotStopTheFill)
{
    ASSERT_TRUE(QFile(folder.filePath(u"config"_s)).open(QIODevice::WriteOnly)); // a file where a folder belongs
    PatternFillEditor(host, roots).accept();
    EXPECT_EQ(host.legend().count(), 1);
    EXPECT_TRUE(host.said.lastStatus().startsWith(u"Could not store the options."_s));
}

} // namespace plans
