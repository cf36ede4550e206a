#include <support/Printers.h>
#include <tarnwick/gui/NumberField.h>

#include <gtest/gtest.h>
#include <limits>
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace tarnwick;

TEST(StepRangeTest, GoesRoundWhereAWholeStepDoesNotFit)
{
    const StepRange percent{0, 100};
    EXPECT_EQ(percent.increased(99, 1), 100);
    EXPECT_EQ(percent.increased(100, 1), 0);
    EXPECT_EQ(percent.increased(95, 10), 0) << "not 100: the step does not fit whole";
    EXPECT_EQ(percent.increased(0, 1000), 0);
    EXPECT_EQ(percent.decreased(1, 1), 0);
    EXPECT_EQ(percent.decreased(0, 1), 100);
    EXPECT_EQ(percent.decreased(9, 10), 100);
    const StepRange seed{1, std::numeric_limits<quint32>::max()};
    EXPECT_EQ(seed.increased(seed.maximum, 1), 1);
    EXPECT_EQ(seed.decreased(1, 1000), seed.maximum);
    EXPECT_EQ(stepFactor(false, false), 1);
    EXPECT_EQ(stepFactor(true, false), 10);
    EXPECT_EQ(stepFactor(false, true), 100);
    EXPECT_EQ(stepFactor(true, true), 1000);
}

class NumberFieldTest : public testing::Test
{
protected:
    NumberFieldTest()
    {
        field.setFormat(u"%3d%%"_s);
        field.setLimits(0, 100);
        field.setNumber(10);
        field.show();
        field.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&field));
    }
    QLineEdit *text() { return field.findChild<QLineEdit *>(); }
    void click(Qt::MouseButton button, Qt::KeyboardModifiers keys = {}) { QTest::mouseClick(text(), button, keys); }

    NumberField field;
    QSignalSpy edited{&field, &NumberField::numberEdited};
};

TEST_F(NumberFieldTest, StepsByTheButtonsOfTheMouse)
{
    EXPECT_EQ(field.text(), u" 10%"_s);
    click(Qt::LeftButton);
    EXPECT_EQ(field.whole(), 11);
    click(Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(field.whole(), 1);
    click(Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(field.text(), u"100%"_s);
    click(Qt::LeftButton);
    EXPECT_EQ(field.whole(), 0);
    field.setNumber(55);
    click(Qt::MiddleButton);
    EXPECT_EQ(field.text(), u"  0%"_s);
    field.setLimits(0, 16000);
    click(Qt::LeftButton, Qt::ControlModifier);
    click(Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(field.whole(), 1100);
}

TEST_F(NumberFieldTest, RepeatsWhileHeldDown)
{
    QElapsedTimer clock;
    clock.start();
    QTest::mousePress(text(), Qt::LeftButton);
    EXPECT_EQ(field.whole(), 11);
    QTest::qWait(NumberField::kRepeatDelay - 200);
    EXPECT_EQ(field.whole(), 11);
    EXPECT_TRUE(QTest::qWaitFor([this] { return field.whole() >= 13; }));
    // Coarse timers may come up to a twentieth early.
    EXPECT_GE(clock.elapsed(), (NumberField::kRepeatDelay + NumberField::kRepeatInterval) * 9 / 10);
    QTest::mouseRelease(text(), Qt::LeftButton);
    const qint64 stopped = field.whole();
    QTest::qWait(3 * NumberField::kRepeatInterval);
    EXPECT_EQ(field.whole(), stopped);
}

TEST_F(NumberFieldTest, StepsByArrowsKeysAndWheel)
{
    const QRect face = field.rect();
    QTest::mouseClick(&field, Qt::LeftButton, {}, {face.right() - 6, face.bottom() - 6});
    EXPECT_EQ(field.whole(), 9);
    QTest::mouseClick(&field, Qt::LeftButton, {}, {face.right() - 6, 6});
    EXPECT_EQ(field.whole(), 10);
    QTest::keyClick(&field, Qt::Key_Down);
    QTest::keyClick(&field, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&field, Qt::Key_PageUp);
    EXPECT_EQ(field.whole(), 29);
    QWheelEvent turn({5, 5}, field.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&field, &turn);
    EXPECT_EQ(field.whole(), 28);
    EXPECT_EQ(edited.count(), 6);
}

TEST_F(NumberFieldTest, TakesTypedNumbersWithinItsLimits)
{
    const auto type = [this](const QString &keys) {
        field.selectAll();
        QTest::keyClicks(text(), keys);
        field.clearFocus();
        field.setFocus();
        return field.text();
    };
    EXPECT_EQ(type(u"25"_s), u" 25%"_s);
    EXPECT_EQ(type(u"7%"_s), u"  7%"_s);
    EXPECT_EQ(type(u"1x2"_s), u" 12%"_s);
    EXPECT_EQ(type(u"250"_s), u" 25%"_s);
    field.setFormat(u"%6d tubes"_s);
    field.setLimits(0, 16000);
    EXPECT_EQ(type(u"1,234 tubes"_s), u"  1234 tubes"_s);
    field.setFormat(u"%.3f"_s);
    field.setLimits(0.001, 99, 0.1);
    EXPECT_EQ(type(u"1.25"_s), u"1.250"_s);
    EXPECT_EQ(type(u"2,5"_s), u"2.500"_s);
    EXPECT_EQ(type(u"0"_s), u"2.500"_s);
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(field.text(), u"2.600"_s);
}

/// A dialog rewrites every field at each key press.
TEST_F(NumberFieldTest, IsNotWrittenOverWhileANumberIsTyped)
{
    QObject::connect(&field, &NumberField::numberEdited, &field, [this](double number) {
        field.setFormat(u"%3d%%"_s);
        field.setLimits(0, 100);
        field.setNumber(number);
    });
    field.selectAll();
    QTest::keyClicks(text(), u"25"_s);
    EXPECT_EQ(field.whole(), 25);
}

TEST_F(NumberFieldTest, SpeaksOfTheUsersChangesOnly)
{
    field.setNumber(42);
    field.setLimits(0, 30);
    field.setFormat(u"%d"_s);
    EXPECT_EQ(field.text(), u"30"_s);
    EXPECT_EQ(edited.count(), 0);
}
