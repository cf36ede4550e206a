#include <support/Printers.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/base/TaskThread.h>
#include <tarnwick/Prompts.h>
#include <tarnwick/StringToValue.h>
#include <tarnwick/TerminalText.h>

#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

TEST(StringToValueTest, ReadsWholeNumbersOfTheRange)
{
    EXPECT_EQ(string_to_value<qint16>(u" -32768 "), -32768);
    EXPECT_EQ(string_to_value<qint16>(u"+7"), 7);
    EXPECT_EQ(string_to_value<quint32>(u"0xFFFFFFFF", 16), 0xFFFFFFFFu);
    EXPECT_EQ(string_to_value<qint32>(u"7f", 16), 127);
    EXPECT_EQ(string_to_value<qint64>(u"-9223372036854775808"), std::numeric_limits<qint64>::min());
    for (const QStringView text : {u"", u" ", u"32768", u"1.0", u"1,000", u"12a", u"- 1", u"+-1", u"0x10", u"１２"})
        EXPECT_FALSE(string_to_value<qint16>(text).has_value()) << text.toUtf8().constData();
    EXPECT_FALSE(string_to_value<quint16>(u"-1").has_value());
}

TEST(StringToValueTest, ReadsNumbersWithADecimalPoint)
{
    EXPECT_EQ(string_to_value<double>(u" -1.5e3 "), -1500.0);
    EXPECT_EQ(string_to_value<double>(u".5"), 0.5);
    EXPECT_EQ(string_to_value<float>(u"0.1"), 0.1F);
    for (const QStringView text : {u"", u"1,5", u"1,000", u"abc", u"1e999", u"inf", u"nan", u"1.5x"})
        EXPECT_FALSE(string_to_value<double>(text).has_value()) << text.toUtf8().constData();
    EXPECT_FALSE(string_to_value<float>(u"1e39").has_value());
}

TEST(StringToValueTest, TakesLeadingDigits)
{
    EXPECT_EQ(leadingInteger(u"  12abc"), 12);
    EXPECT_EQ(leadingInteger(u"-3.9"), -3);
    EXPECT_EQ(leadingInteger(u"abc"), 0);
    EXPECT_EQ(leadingInteger(u""), 0);
    EXPECT_EQ(leadingInteger(u"99999999999999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(leadingInteger(u"-99999999999999999999"), std::numeric_limits<int>::min());
}

namespace {

class CountingProgress : public Progress
{
public:
    void report(qint64 done, qint64 /*total*/, const QString & /*what*/) override { last = done; }
    bool cancelled() override { return ++looks > 5; }
    qint64 last = -1;
    int looks = 0;
};

} // namespace

TEST(TerminalTextTest, ShowsControlCharactersAndKeepsLines)
{
    EXPECT_EQ(terminalText(u"Größe\tx\ny\r\n"), u"Größe\tx\ny\r\n"_s);
    EXPECT_EQ(terminalText(u"a\x1b[2J\rb\a\x7f\u009b1m"), u"a\u241b[2J\u240db\u2407\u2421\ufffd1m"_s);
}

TEST(ProgressLoopTest, StopsWhenAskedTo)
{
    CountingProgress progress;
    ProgressLoop loop(&progress, 1000000, u"Reading"_s);
    EXPECT_EQ(progress.last, 0);
    qint64 done = 0;
    EXPECT_THROW(
        {
            for (; done < 1000000; ++done)
                loop.tick(done);
        },
        Cancelled);
    EXPECT_LT(done, 1000000);
    EXPECT_EQ(progress.looks, 6);

    ProgressLoop silent(nullptr, 0, {});
    silent.tick(1);
}

TEST(TaskThreadTest, RunsTasksInOrderUntilOneThrows)
{
    QList<int> done;
    TaskThread thread;
    for (int i = 0; i < 100; ++i)
        thread.add([i, &done] { done.append(i); });
    thread.finish();
    ASSERT_EQ(done.size(), 100);
    EXPECT_TRUE(std::is_sorted(done.cbegin(), done.cend()));

    thread.add([] { throw Error(u"full"_s); });
    EXPECT_THROW(thread.finish(), Error);
    EXPECT_THROW(thread.add([&done] { done.clear(); }), Error);
    EXPECT_EQ(done.size(), 100);
}
