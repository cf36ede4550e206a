#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/Paths.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

TEST(SuitePathTest, LeadsToPathsOfTheMachine)
{
    const PathRoots roots{u"/opt/palomine"_s, u"/data/unit1"_s};
    EXPECT_EQ(SuitePath(u"queries\\a.qry"_s).machinePath(roots), u"/data/unit1/queries/a.qry"_s);
    EXPECT_EQ(SuitePath(u".\\reports"_s).machinePath(roots), u"/data/unit1/reports"_s);
    EXPECT_EQ(SuitePath(u"[palomine_dir]\\user\\b.qry"_s).machinePath(roots), u"/opt/palomine/user/b.qry"_s);
    EXPECT_EQ(SuitePath(u"config\\arvo\\sql.opt"_s).installationPath(roots), u"/opt/palomine/config/arvo/sql.opt"_s);
    EXPECT_EQ(SuitePath(u"/tmp/x.txt"_s).machinePath(roots), u"/tmp/x.txt"_s);
    EXPECT_EQ(SuitePath(u"C:\\x\\y.txt"_s).machinePath(roots), u"C:/x/y.txt"_s);
    EXPECT_EQ(SuitePath().machinePath(roots), QString());
}

TEST(SuitePathTest, ComesFromPathsOfTheMachine)
{
    const PathRoots roots{u"/opt/palomine"_s, u"/data/unit1"_s};
    const QStringList paths{u"/data/unit1/reports/1.rep"_s, u"/opt/palomine/user/q.qry"_s, u"/data/unit10/x"_s};
    QStringList texts;
    for (const QString &path : paths) {
        const SuitePath suite = SuitePath::fromMachine(path, roots);
        texts << suite.text();
        EXPECT_EQ(suite.machinePath(roots), path);
    }
    const QStringList expected{u"reports\\1.rep"_s, u"[PALOMINE_DIR]\\user\\q.qry"_s, u"\\data\\unit10\\x"_s};
    EXPECT_EQ(texts, expected);
}

TEST(SuitePathTest, FindsFilesWrittenInAnotherCase)
{
    const support::TemporaryFolder folder;
    folder.write(u"Reports/00001_PRI.REP"_s, "x");
    const PathRoots roots{{}, folder.path()};
    EXPECT_EQ(SuitePath(u"reports\\00001_pri.rep"_s).machinePath(roots), folder.path(u"Reports/00001_PRI.REP"_s));
    EXPECT_EQ(SuitePath(u"reports\\new\\a.rep"_s).machinePath(roots), folder.path(u"Reports/new/a.rep"_s));
}

TEST(SuitePathTest, TakesNamesApart)
{
    const SuitePath path(u"report_formats/sub.d\\default.v2.fmt"_s);
    EXPECT_EQ(path.folder(), u"report_formats\\sub.d"_s);
    EXPECT_EQ(path.fileName(), u"default.v2.fmt"_s);
    EXPECT_EQ(path.baseName(), u"default.v2"_s);
    EXPECT_EQ(path.extension(), u".fmt"_s);
    EXPECT_EQ(path.withExtension(u".bak"_s).text(), u"report_formats\\sub.d\\default.v2.bak"_s);
    EXPECT_EQ(SuitePath(u"dir.x\\name"_s).extension(), QString());
    EXPECT_EQ(SuitePath(u"name"_s).folder(), QString());
}

TEST(SuitePathTest, IsComparedWithoutCaseAndSeparators)
{
    EXPECT_EQ(SuitePath(u"Queries\\sub\\a.qry"_s).relativeTo(u"queries/"_s), u"sub\\a.qry"_s);
    EXPECT_EQ(SuitePath(u".\\queries\\a.qry"_s).relativeTo(u"queries"_s), u"a.qry"_s);
    EXPECT_EQ(SuitePath(u"queries2\\a.qry"_s).relativeTo(u"queries"_s), u"queries2\\a.qry"_s);
    EXPECT_TRUE(SuitePath(u"ARVO\\project.mdb"_s).isBelow(u"arvo"_s));
    EXPECT_FALSE(SuitePath(u"arvo"_s).isBelow(u"arvo"_s));
    EXPECT_FALSE(SuitePath(u"a\\b"_s).isBelow(QString()));
    EXPECT_EQ(SuitePath(u"arvo\\a.mdb"_s).shown(u"arvo"_s), u"a.mdb"_s);
    EXPECT_EQ(SuitePath(u"/data/a.mdb"_s).shown(u"arvo"_s), u"/data/a.mdb"_s);
}

TEST(PathRootsTest, ComeFromTheEnvironment)
{
    const support::TemporaryFolder folder;
    qputenv("PALOMINE_DIR", folder.path(u"inst/"_s).toUtf8());
    EXPECT_EQ(PathRoots::fromEnvironment().palomineDir, folder.path(u"inst"_s));
    EXPECT_FALSE(folder.has(u"inst"_s)); // an installation named by the user is not made up

    qunsetenv("PALOMINE_DIR");
    qputenv("XDG_DATA_HOME", folder.path(u"data"_s).toUtf8());
    const PathRoots roots = PathRoots::fromEnvironment(folder.path());
    EXPECT_EQ(roots.palomineDir, folder.path(u"data/palomine"_s));
    EXPECT_EQ(roots.projectDir, folder.path());
    EXPECT_TRUE(folder.has(u"data/palomine/config/arvo"_s));
    EXPECT_TRUE(folder.has(u"data/palomine/user/display_formats"_s));

    folder.write(u"file"_s, "x");
    EXPECT_THROW((PathRoots{folder.path(u"file"_s), {}}.makeInstallationFolders()), FileError);
    qunsetenv("XDG_DATA_HOME");
}

TEST(ValidFileNameTest, GivesNamesForEverySystem)
{
    EXPECT_EQ(validFileName(u"Unit 1: A/B?\t"_s), u"Unit 1_ A_B_"_s);
    EXPECT_EQ(validFileName(u"name. ."_s), u"name___"_s);
    EXPECT_EQ(validFileName(u"NUL.txt"_s), u"_NUL.txt"_s);
    EXPECT_EQ(validFileName(u"com1"_s), u"_com1"_s);
    EXPECT_EQ(validFileName(u"  "_s), u"_"_s);
    EXPECT_EQ(validFileName(u".."_s), u"__"_s);
    EXPECT_EQ(validFileName(u"Ölprüfung"_s), u"Ölprüfung"_s);
}
