#include "CliProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace {

QString elfText(const QString &program)
{
    QProcess readelf;
    readelf.start(u"readelf"_s, {u"-hldW"_s, u"--dyn-syms"_s, program});
    EXPECT_TRUE(readelf.waitForFinished()) << "readelf belongs to the packages that ARVO is built with";
    return QString::fromUtf8(readelf.readAllStandardOutput());
}

bool isOptimisedBuild()
{
#ifdef __OPTIMIZE__
    return true;
#else
    return false;
#endif
}

} // namespace

// What the linker and the compiler were asked for is seen in the programs themselves.
TEST(HardeningTest, ProgramsAreBuiltSoThatFaultsAreHardToUse)
{
    const QDir folder = QFileInfo(QStringLiteral(ARVO_CLI)).dir();
    for (const QString &name : {u"arvo-cli"_s, u"arvo-jet-reader"_s, u"arvo"_s}) {
        const QString program = folder.filePath(name);
        if (name == u"arvo" && !QFile::exists(program))
            continue; // the tests of the command line are built without it
        const QString text = elfText(program);
        const auto segment = [&](const QString &type) {
            return text.section(u"  "_s + type + u' ', 1, 1).section(u'\n', 0, 0);
        };
        EXPECT_TRUE(text.contains(u"Type: "_s) && text.contains(u"DYN (Position-Independent"_s)) << qPrintable(name);
        EXPECT_FALSE(segment(u"GNU_RELRO"_s).isEmpty()) << qPrintable(name);
        EXPECT_TRUE(segment(u"GNU_STACK"_s).contains(u" RW "_s)) << qPrintable(name);
        EXPECT_TRUE(text.contains(u"BIND_NOW"_s) || text.contains(u"Flags: NOW"_s)) << qPrintable(name);
        EXPECT_FALSE(text.contains(u"(TEXTREL)"_s)) << qPrintable(name);
        if (!isOptimisedBuild())
            continue;
        EXPECT_TRUE(text.contains(u"__stack_chk_fail"_s)) << qPrintable(name);
#ifdef __x86_64__
        // Places that an indirect call may reach are marked; without the flag the few of the system's own files are.
        constexpr int kMarksOfTheSystem = 50;
        EXPECT_GT(support::readFile(program).count("\xF3\x0F\x1E\xFA"), kMarksOfTheSystem) << qPrintable(name);
#endif
    }
#if defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__)
    EXPECT_GE(_FORTIFY_SOURCE, 2) << "copies into buffers of known size are checked";
#endif
}

TEST(HardeningTest, TheCommandLineLoadsNoWidgets)
{
    const QString text = elfText(QStringLiteral(ARVO_CLI));
    EXPECT_TRUE(text.contains(u"[libQt6Gui.so"_s)) << "pictures are painted with Qt Gui";
    EXPECT_FALSE(text.contains(u"[libQt6Widgets.so"_s) || text.contains(u"[libQt6PrintSupport.so"_s));
}

TEST(HardeningTest, ControlCharactersOfDataDoNotReachATerminal)
{
    const CliProcess cli;
    const QTemporaryDir folder;
    const QString database = folder.filePath(u"d.mdb"_s);
    cli.mustRun({u"create"_s, database});
    cli.mustRun({u"sql"_s, database, u"INSERT INTO tube_sets (name) VALUES ('a' & Chr(27) & '[2J' & Chr(7))"_s});
    const QString query = u"SELECT name FROM tube_sets"_s;
    const QString shown = u"a\u241b[2J\u2407"_s;
    EXPECT_TRUE(cli.mustRun({u"sql"_s, database, query}).output.contains(shown));
    EXPECT_TRUE(cli.run({u"sql"_s, database, u"SELECT \x1b[2J"_s}).error.contains(u"\u241b"_s));
    // Other programs get the data as they are, a terminal does not.
    EXPECT_TRUE(cli.mustRun({u"sql"_s, database, query, u"--format"_s, u"csv"_s}).output.contains(u"a\x1b[2J\a"_s));
    QProcess terminal;
    const QString command = u"'%1' sql '%2' '%3' --format csv"_s.arg(QStringLiteral(ARVO_CLI), database, query);
    terminal.start(u"script"_s, {u"-qec"_s, command, u"/dev/null"_s});
    if (!terminal.waitForFinished())
        GTEST_SKIP() << "no terminal can be made here";
    const QString output = QString::fromUtf8(terminal.readAllStandardOutput());
    EXPECT_TRUE(output.contains(shown)) << qPrintable(output);
    EXPECT_FALSE(output.contains(u"\x1b[2J"_s));
}
