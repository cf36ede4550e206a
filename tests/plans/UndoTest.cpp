#include "TestHost.h"

#include <plans/MapUndo.h>
#include <plans/PatternFill.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

class MapUndoTest : public testing::Test
{
protected:
    MapUndoTest() { undo.reset(); }

    void addFill(const QString &label, const QList<qint32> &tubes)
    {
        undo.checkpoint(label);
        host.entries.addEntry(fixed(tubes), true);
    }

    TestHost host{1, 6};
    MapUndo undo{host.entries};
};

} // namespace

TEST_F(MapUndoTest, GoesBackAndForthThroughEveryChange)
{
    QStringList pictures{host.picture()};
    addFill(u"one"_s, {0, 1});
    pictures.append(host.picture());
    addFill(u"two"_s, {1, 2, 3});
    pictures.append(host.picture());
    undo.checkpoint(u"move"_s);
    host.entries.moveEntry(0, 1);
    pictures.append(host.picture());
    undo.checkpoint(u"hide"_s);
    host.entries.setShown(0, false);
    pictures.append(host.picture());

    EXPECT_EQ(undo.stack().labels(), (QStringList{u"one"_s, u"two"_s, u"move"_s, u"hide"_s}));
    for (int i = 3; i >= 0; --i) {
        undo.undo();
        EXPECT_EQ(host.picture(), pictures[i]);
    }
    EXPECT_FALSE(undo.canUndo());
    EXPECT_EQ(undo.redoLabel(), u"one"_s);
    undo.moveTo(4);
    EXPECT_EQ(host.picture(), pictures[4]);
    undo.moveTo(2);
    EXPECT_EQ(host.picture(), pictures[2]);
    EXPECT_EQ(undo.undoLabel(), u"two"_s);
}

TEST_F(MapUndoTest, AChangeThatChangesNothingLeavesNoEntry)
{
    undo.checkpoint(u"nothing"_s);
    EXPECT_FALSE(undo.canUndo());
    addFill(u"one"_s, {0});
    undo.checkpoint(u"repaint"_s);
    host.entries.repaint();
    host.tubes().setSelection({});
    undo.checkpoint(u"there and back"_s);
    host.entries.setShown(0, false);
    EXPECT_EQ(undo.undoLabel(), u"there and back"_s);
    host.entries.setShown(0, true);
    EXPECT_EQ(undo.stack().labels(), QStringList{u"one"_s});
}

TEST_F(MapUndoTest, SelectionAndFlipsAreChangesToo)
{
    MapExtras extras;
    undo.captureExtras = [&extras] { return extras; };
    undo.restoreExtras = [&extras](const MapExtras &restored) { extras = restored; };
    undo.checkpoint(u"Select"_s);
    host.tubes().setSelection({1, 4});
    undo.checkpoint(u"Flip"_s);
    extras.xOrientation = -1;
    undo.undo();
    EXPECT_EQ(extras.xOrientation, 1);
    EXPECT_EQ(host.tubes().selection(), (QList<qint32>{1, 4}));
    undo.undo();
    EXPECT_EQ(host.tubes().selectedCount(), 0);
    undo.redo();
    undo.redo();
    EXPECT_EQ(extras.xOrientation, -1);
    EXPECT_EQ(host.tubes().selectedCount(), 2);
}

TEST_F(MapUndoTest, LongChangesMayBeLookedAtHalfWay)
{
    addFill(u"one"_s, {0});
    undo.checkpoint(u"long"_s);
    EXPECT_EQ(undo.undoLabel(), u"one"_s);
    host.entries.addEntry(fixed({1}), true);
    EXPECT_EQ(undo.undoLabel(), u"long"_s);
    host.entries.addEntry(fixed({2}), true);
    EXPECT_EQ(undo.stack().count(), 2);
    undo.undo();
    EXPECT_EQ(host.picture(), u"A....."_s);
    undo.redo();
    EXPECT_EQ(host.picture(), u"ABC..."_s);
}

TEST_F(MapUndoTest, ANewChangeForgetsWhatCouldBeRedone)
{
    addFill(u"one"_s, {0});
    addFill(u"two"_s, {1});
    undo.undo();
    addFill(u"three"_s, {2});
    EXPECT_EQ(undo.stack().labels(), (QStringList{u"one"_s, u"three"_s}));
    EXPECT_FALSE(undo.canRedo());
}

TEST_F(MapUndoTest, ModifiedIsTheDistanceFromTheSavedState)
{
    EXPECT_FALSE(undo.isModified());
    addFill(u"one"_s, {0});
    EXPECT_TRUE(undo.isModified());
    undo.setSaved();
    EXPECT_FALSE(undo.isModified());
    undo.undo();
    EXPECT_TRUE(undo.isModified());
    undo.redo();
    EXPECT_FALSE(undo.isModified());
    undo.undo();
    addFill(u"other"_s, {1});
    undo.undo();
    EXPECT_TRUE(undo.isModified()) << "the saved state cannot be reached any more";
}

TEST_F(MapUndoTest, UndoneParametersComeBackWithTheFill)
{
    undo.checkpoint(u"pattern"_s);
    host.entries.addEntry(std::make_unique<PatternFill>(), true);
    undo.checkpoint(u"edit"_s);
    PatternFill changed;
    changed.parameters.colIncrement = 5;
    host.entries.replaceEntry(0, changed, host);
    undo.undo();
    EXPECT_EQ(static_cast<PatternFill &>(host.entries.entry(0)).parameters.colIncrement, 2);
    undo.redo();
    EXPECT_EQ(static_cast<PatternFill &>(host.entries.entry(0)).parameters.colIncrement, 5);
}

/// Random changes: everything undone is the start, everything redone the end.
TEST_F(MapUndoTest, EverythingUndoneIsTheStart)
{
    quint32 state = 12345;
    const auto random = [&state](int limit) {
        state = state * 1664525U + 1013904223U;
        return int((state >> 10) % quint32(limit));
    };
    for (int step = 0; step < 200; ++step) {
        const int n = host.entries.count();
        undo.checkpoint(u"step %1"_s.arg(step));
        switch (n == 0 ? 0 : random(6)) {
        case 0:
            host.entries.addEntry(fixed({random(6), random(6)}), true);
            break;
        case 1:
            host.entries.deleteEntry(random(n));
            break;
        case 2:
            host.entries.moveEntry(random(n), random(n));
            break;
        case 3:
            host.entries.setSymbol(random(n), char16_t(u'a' + random(26)), quint32(random(1000)), host);
            break;
        case 4:
            host.entries.setShown(random(n), random(2) == 1);
            break;
        default:
            host.tubes().setSelected(random(6), random(2) == 1);
            break;
        }
    }
    const QString end = host.picture();
    const QList<qint32> selectedAtEnd = host.tubes().selection();
    undo.moveTo(0);
    EXPECT_EQ(host.picture(), u"......"_s);
    EXPECT_EQ(host.entries.count(), 0);
    EXPECT_EQ(host.tubes().selectedCount(), 0);
    undo.moveTo(undo.stack().count());
    EXPECT_EQ(host.picture(), end);
    EXPECT_EQ(host.tubes().selection(), selectedAtEnd);
}

TEST_F(MapUndoTest, WhatIsTriedOutAfterAChangeHasEndedIsNone)
{
    addFill(u"one"_s, {0});
    addFill(u"two"_s, {1});
    undo.undo();
    undo.checkpoint(u"nothing"_s);
    undo.finish();
    host.entries.entry(0).colour = 0x123456;
    EXPECT_TRUE(undo.canRedo());
    host.entries.entry(0).colour = fixed({0})->colour;
    undo.redo();
    EXPECT_EQ(host.picture(), u"AB...."_s);
}

TEST(UndoStack, AJumpRestoresTheStateAtItsEndOnly)
{
    class Step : public UndoCommand
    {
    public:
        Step(int number, QStringList &ran)
            : UndoCommand(QString::number(number))
            , m_ran(ran)
        {
        }
        void undo() override { m_ran.append(u"-"_s + label()); }
        void redo() override { m_ran.append(u"+"_s + label()); }

    private:
        QStringList &m_ran;
    };
    QStringList ran;
    UndoStack stack;
    for (int i = 1; i <= 5; ++i)
        stack.push(std::make_unique<Step>(i, ran));
    stack.moveTo(2);
    EXPECT_EQ(stack.position(), 2);
    stack.moveTo(2);
    stack.moveTo(4);
    EXPECT_EQ(stack.undoLabel(), u"4"_s);
    stack.moveTo(99);
    stack.moveTo(-1);
    EXPECT_EQ(ran, (QStringList{u"-3"_s, u"+4"_s, u"+5"_s, u"-1"_s}));
}

TEST(UndoStack, OldestChangesFallOffTheEnd)
{
    class Nothing : public UndoCommand
    {
    public:
        using UndoCommand::UndoCommand;
        void undo() override {}
        void redo() override {}
    };
    UndoStack stack;
    stack.setClean();
    for (int i = 0; i <= UndoStack::kMaxLevels; ++i)
        stack.push(std::make_unique<Nothing>(QString::number(i)));
    EXPECT_EQ(stack.count(), UndoStack::kMaxLevels);
    EXPECT_EQ(stack.labels().first(), u"1"_s);
    stack.moveTo(0);
    EXPECT_FALSE(stack.isClean());
}

} // namespace plans
