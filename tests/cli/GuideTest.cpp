// The guide is true: its commands run on the demo project, its messages are those of the program, its links lead
// somewhere.
#include "CliProcess.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace {

const QString kSources = QStringLiteral(ARVO_SOURCES);
const QString kGuide = kSources + u"/docs/guide/"_s;
/// In the order in which they are read: commands of a chapter may use what those of an earlier one have made.
const QStringList kChapters{u"index"_s,        u"first-hour"_s, u"map"_s,      u"queries"_s,
                            u"reports"_s,      u"plans"_s,      u"repairs"_s,  u"pictures"_s,
                            u"command-line"_s, u"files"_s,      u"messages"_s, u"glossary"_s};

QString textOf(const QString &path)
{
    return QString::fromUtf8(support::readFile(path));
}

using Messages = QMap<int, QSet<QString>>; ///< texts by number

/// As the guide prints a text: "..." for what is inserted, without line ends.
QString printed(QString text)
{
    static const QRegularExpression inserted(u"%[A-Za-z]"_s);
    static const QRegularExpression blanks(u" +"_s);
    return text.replace(u"\\n"_s, u" "_s)
        .replace(u"\\\""_s, u"\""_s)
        .replace(inserted, u"..."_s)
        .replace(blanks, u" "_s);
}

Messages messagesOfTheProgram()
{
    static const QRegularExpression message(
        u"Message\\s+k\\w+\\s*\\{\\s*([0-9]+),\\s*((?:u\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+)\\}"_s);
    static const QRegularExpression literal(u"u\"((?:[^\"\\\\]|\\\\.)*)\""_s);
    Messages messages;
    for (const QString &folder : {u"app"_s, u"conversion"_s, u"db"_s, u"map"_s, u"plans"_s, u"platform"_s, u"query"_s,
                                  u"results"_s, u"setup"_s}) {
        QDirIterator files(kSources + u'/' + folder, {u"*.h"_s, u"*.cpp"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            for (const QRegularExpressionMatch &match : message.globalMatch(textOf(files.next()))) {
                QString text;
                for (const QRegularExpressionMatch &part : literal.globalMatch(match.captured(2)))
                    text += part.captured(1);
                if (match.captured(1).toInt() > 0)
                    messages[match.captured(1).toInt()].insert(printed(text));
            }
        }
    }
    return messages;
}

/// The rows of the tables of messages. A row may explain several.
Messages messagesOfTheGuide()
{
    static const QRegularExpression row(u"^\\| (<a id=\"message-.*?) \\| (.*?) \\| (.+?) \\| (.+?) \\|$"_s,
                                        QRegularExpression::MultilineOption);
    static const QRegularExpression tags(u"<a[^>]*></a>"_s);
    Messages messages;
    for (const QRegularExpressionMatch &match : row.globalMatch(textOf(kGuide + u"messages.md"_s))) {
        const QStringList numbers = match.captured(1).remove(tags).split(u"<br>"_s);
        const QStringList texts = match.captured(2).split(u"<br>"_s);
        EXPECT_EQ(numbers.size(), texts.size()) << qPrintable(match.captured());
        for (qsizetype i = 0; i < numbers.size() && i < texts.size(); ++i)
            messages[numbers[i].toInt()].insert(texts[i].mid(1, texts[i].size() - 2));
    }
    return messages;
}

/// The ids of a page: its anchors, and its headings as code hosting sites name them.
QSet<QString> idsOf(const QString &text)
{
    static const QRegularExpression anchor(u"<a id=\"([^\"]*)\""_s);
    static const QRegularExpression heading(u"^#+ (.*)$"_s, QRegularExpression::MultilineOption);
    static const QRegularExpression dropped(u"[^a-z0-9 _-]"_s);
    QSet<QString> ids;
    for (const QRegularExpressionMatch &match : anchor.globalMatch(text))
        ids.insert(match.captured(1));
    for (const QRegularExpressionMatch &match : heading.globalMatch(text))
        ids.insert(match.captured(1).toLower().remove(dropped).replace(u' ', u'-'));
    return ids;
}

} // namespace

TEST(GuideTest, MessagesAreThoseOfTheProgram)
{
    const Messages program = messagesOfTheProgram();
    const Messages guide = messagesOfTheGuide();
    EXPECT_GT(program.size(), 60);
    for (auto it = program.begin(); it != program.end(); ++it)
        EXPECT_EQ(guide.value(it.key()), it.value()) << it.key();
    for (const int number : guide.keys())
        EXPECT_TRUE(program.contains(number)) << number;
    const QString engine = textOf(kSources + u"/platform/dao/values/Errors.h"_s);
    static const QRegularExpression row(u"^\\| (3[0-9]{3}) "_s, QRegularExpression::MultilineOption);
    for (const QRegularExpressionMatch &match : row.globalMatch(textOf(kGuide + u"messages.md"_s)))
        EXPECT_TRUE(engine.contains(u"= "_s + match.captured(1) + u',')) << qPrintable(match.captured());
}

TEST(GuideTest, LinksAndPicturesExist)
{
    constexpr qint64 kLargestPicture = 60 * 1024;
    EXPECT_EQ(QDir(kGuide).entryList({u"*.md"_s}).size(), kChapters.size());
    const QString contents = textOf(kGuide + u"index.md"_s);
    static const QRegularExpression link(u"\\]\\(([^)#]*)#?([^)]*)\\)"_s);
    for (const QString &chapter : kChapters) {
        const QString path = kGuide + chapter + u".md"_s;
        const QString text = textOf(path);
        EXPECT_TRUE(chapter == u"index" || contents.contains(u'(' + chapter + u".md)"_s)) << qPrintable(chapter);
        for (const QRegularExpressionMatch &match : link.globalMatch(text)) {
            const QString target = match.captured(1).isEmpty() ? path : kGuide + match.captured(1);
            ASSERT_TRUE(QFileInfo::exists(target)) << qPrintable(match.captured());
            if (target.endsWith(u".png"_s)) {
                EXPECT_LE(QFileInfo(target).size(), kLargestPicture) << qPrintable(target);
            } else if (!match.captured(2).isEmpty()) {
                EXPECT_TRUE(idsOf(textOf(target)).contains(match.captured(2))) << qPrintable(match.captured());
            }
        }
    }
}
