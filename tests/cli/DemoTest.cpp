#include "CliProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <query/QueryDocument.h>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace {

const QString kSources = QStringLiteral(ARVO_SOURCES);

// What is promised to people who try the program: the demo project of ./run, and the examples of the documents.
class PromisesTest : public ::testing::Test
{
protected:
    /// Runs a line as a shell does, in the test's folder.
    void shell(const QString &line) const
    {
        QProcess process;
        QProcessEnvironment environment = cli.environment();
        environment.insert(u"PATH"_s, QFileInfo(QStringLiteral(ARVO_CLI)).path() + u':' + environment.value(u"PATH"_s));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(u"bash"_s, {u"-c"_s, line});
        ASSERT_TRUE(process.waitForFinished(300'000)) << qPrintable(line);
        EXPECT_EQ(process.exitCode(), 0) << qPrintable(line) << "\n" << process.readAllStandardError().constData();
    }
    QJsonArray rows(const QString &project, const QStringList &statement) const
    {
        return cli.mustRun(QStringList{u"sql"_s, project, u"--format"_s, u"json"_s} + statement)
            .json()[u"rows"]
            .toArray();
    }

    CliProcess cli;
    QTemporaryDir folder;
};

} // namespace

TEST_F(PromisesTest, EveryQueryOfTheDemoFindsRows)
{
    shell(u"'%1/scripts/make-demo' arvo-cli demo"_s.arg(kSources));
    const QString project = folder.filePath(u"demo"_s);
    const QHash<QString, QStringList> parameters = {
        {u"calls_of_one_code.qry"_s, {u"--param"_s, u"Code=DNT"_s}},
        {u"deepest_of_each_tube.qry"_s, {u"--param"_s, u"Least depth=20"_s}}};
    const QDir queries(project + u"/queries"_s);
    const QStringList names = queries.entryList({u"*.qry"_s});
    EXPECT_GE(names.size(), 20);
    for (const QString &name : names) {
        query::QueryDocument document;
        query::readQueryFile(document, queries.filePath(name), tarnwick::PathRoots{cli.installation(), project});
        const QString title = document.layout.sections[tarnwick::JTablePrintArg::ReportTitle].text;
        EXPECT_FALSE(QString(document.sql + title).contains(QRegularExpression(u"%[0-9]"_s))) << qPrintable(name);
        const QJsonArray found = rows(project, QStringList{document.sql} + parameters.value(name));
        EXPECT_FALSE(found.isEmpty()) << qPrintable(name);
        if (name != u"growth.qry")
            continue;
        // All of it: readings scatter, so some flaws seem to shrink; the mean is what the flaws of the demo have.
        double sum = 0;
        double least = 0;
        for (const QJsonValue &row : found) {
            sum += row[7].toDouble();
            least = std::min(least, row[7].toDouble());
        }
        EXPECT_LT(least, 0);
        EXPECT_NEAR(sum / double(found.size()), 3, 1) << found.size();
    }
    const QJsonArray stored =
        cli.mustRun({u"schema"_s, project, u"--all"_s, u"--format"_s, u"json"_s}).json()[u"queries"].toArray();
    EXPECT_FALSE(stored.isEmpty());
    for (const QJsonValue &query : stored)
        EXPECT_FALSE(rows(project, {u"SELECT TOP 1 * FROM [%1]"_s.arg(query[u"name"].toString())}).isEmpty())
            << qPrintable(query[u"name"].toString());
}

TEST_F(PromisesTest, ExamplesOfTheDocumentsRunAsPrinted)
{
    const bool hasSample = !qEnvironmentVariableIsEmpty("ARVO_TESTDATA");
    if (hasSample)
        QFile::copy(qEnvironmentVariable("ARVO_TESTDATA") + u"/suite-old-2.mdb"_s, folder.filePath(u"OLD.mdb"_s));
    // The chapters of the guide in the order in which they are read: a later one may use what an earlier one has made.
    QStringList documents{u"/README.md"_s};
    for (const char16_t *chapter : {u"index", u"first-hour", u"map", u"queries", u"reports", u"plans", u"repairs",
                                    u"pictures", u"command-line", u"files", u"messages", u"glossary"})
        documents.append(u"/docs/guide/"_s + QString::fromUtf16(chapter) + u".md"_s);
    int examples = 0;
    for (const QString &document : std::as_const(documents)) {
        const QString text = QString::fromUtf8(support::readFile(kSources + document));
        bool inBlock = false;
        for (const QString &line : text.split(u'\n')) {
            if (line.startsWith(u"```"_s))
                inBlock = !inBlock;
            const bool isCommand = line.startsWith(u"arvo-cli "_s) || line.startsWith(u"printf "_s);
            if (!inBlock || !isCommand || (line.contains(u"OLD.mdb"_s) && !hasSample))
                continue;
            ++examples;
            shell(line);
        }
        // Within sentences there are names only: of commands, and of options that they have.
        static const QRegularExpression mention(u"`arvo-cli ([a-z-]+)([^`]*)`"_s);
        for (const QRegularExpressionMatch &match : mention.globalMatch(text)) {
            const QString help = cli.mustRun({u"help"_s, match.captured(1)}).output;
            static const QRegularExpression option(u"--[a-z-]+"_s);
            for (const QRegularExpressionMatch &used : option.globalMatch(match.captured(2)))
                EXPECT_TRUE(help.contains(used.captured() + u' ')) << qPrintable(match.captured());
        }
    }
    EXPECT_GT(examples, 50);
}
