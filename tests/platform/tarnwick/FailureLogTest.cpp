#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <tarnwick/FailureLog.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tarnwick::FailureLog;

namespace {

QString content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

TEST(FailureLogTest, EntriesHaveTimeNumberAndTextAndCannotBeForged)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"state/arvo/failures.log"_s);
    {
        FailureLog log(u"arvo"_s, path);
        log.add(1069, u"Could not execute query.\n\n[3061] Too few parameters.\n\nLine 1, column 8."_s);
        for (int i = 0; i < 4000; ++i)
            log.add(0, u"value \"a\r\x1b[31m\n2026-01-01T00:00:00.000 arvo[1] 5 forged\""_s);
    }
    const QRegularExpression wanted(
        u"\\A(\\d{4}-\\d\\d-\\d\\dT[\\d:.]+ arvo\\[\\d+\\] )1069 Could not execute query.\n"
        "    \\[3061\\] Too few parameters.\n    Line 1, column 8.\n"
        "[^ ]+ arvo\\[\\d+\\] 0 value \"a  \\[31m\n    2026-01-01T00:00:00.000 arvo\\[1\\] 5 forged\"\n"
        "[^ ]+ arvo\\[\\d+\\] 0 The failure above occurred 3999 more times.\n\\z"_s);
    EXPECT_TRUE(wanted.match(content(path)).hasMatch()) << qPrintable(content(path));
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST(FailureLogTest, ErrorsAndNumberedQuestionsOfThePromptsAreWritten)
{
    const QTemporaryDir state;
    const QByteArray before = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    tarnwick::RecordingPrompts shown;
    {
        tarnwick::LoggedPrompts prompts(shown, u"arvo"_s);
        shown.answerWith({tarnwick::Answer::No, tarnwick::Answer::Yes});
        prompts.ask(tarnwick::Buttons::YesNo, u"Go on?"_s, 1068);
        prompts.ask(tarnwick::Buttons::YesNo, u"Save?"_s, 0);
        prompts.showError(3, 1032, u"Could not connect."_s);
        prompts.showInformation(u"Done."_s);
    }
    const QString log = content(FailureLog::defaultPath());
    qputenv("XDG_STATE_HOME", before);
    EXPECT_EQ(log.count(u'\n'), 3) << qPrintable(log);
    EXPECT_TRUE(log.contains(u" 1068 Go on?\n    Answer: No\n"_s) && log.contains(u" 1032 Could not connect."_s));
}

TEST(FailureLogTest, SizeIsBoundedAndTheNewestIsKept)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"failures.log"_s);
    constexpr qint64 kLimit = 20'000;
    FailureLog log(u"arvo"_s, path, kLimit);
    for (int i = 0; i < 1000; ++i)
        log.add(i, QString(100, u'x'));
    log.add(7, QString(1'000'000, u'y'));
    EXPECT_LT(QFileInfo(path).size(), kLimit + 10'000);
    EXPECT_LT(QFileInfo(path + u".1"_s).size(), kLimit + 10'000);
    const QString both = content(path + u".1"_s) + content(path);
    EXPECT_TRUE(both.contains(u" 999 xxx"_s) && both.contains(u" 900 xxx"_s) && !both.contains(u" 1 xxx"_s));
    EXPECT_TRUE(both.contains(u"... (1000000 characters in all)"_s));

    // A folder that cannot be made costs nothing but the log.
    FailureLog(u"arvo"_s, path + u"/below/a.log"_s).add(1, u"text"_s);
}
