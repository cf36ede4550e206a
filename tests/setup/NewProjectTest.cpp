#include <db/DatabaseSession.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>
#include <ellery/ComponentFile.h>
#include <gmock/gmock.h>
#include <QDir>
#include <QTemporaryDir>
#include <setup/NewProject.h>
#include <support/Files.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/Prompts.h>

using namespace Qt::StringLiterals;
using setup::TubeTable;

namespace {

const setup::TubePattern kSquare{2, false};
const setup::TubePattern kTriangular{2, true};

class NewProjectTest : public ::testing::Test
{
protected:
    QString table(const QByteArray &text) const { return support::writeFile(dir.filePath(u"tubes.csv"_s), text); }
    /// What is wrong with the table, without its path; empty if nothing is.
    QStringList faults(const QByteArray &text, const setup::TubePattern &pattern = kSquare) const
    {
        const QString path = table(text);
        try {
            TubeTable::read(path, pattern);
            return {};
        } catch (const setup::TableError &error) {
            QString problems = error.text();
            return problems.remove(path).split(u'\n');
        }
    }
    setup::NewProject wanted(const QByteArray &text = "row,col\n1,1\n1,2\n2,1\n") const
    {
        return {dir.filePath(u"plant"_s), u"S1"_s, u"SGA"_s, u"R1"_s, table(text), {}, {}, kSquare};
    }

    QTemporaryDir dir;
};

TEST_F(NewProjectTest, TableIsReadAsSpreadsheetsWriteIt)
{
    struct
    {
        const char *text;
        setup::TubePattern pattern;
        ellery::Tube last;
        double pitch;
        bool isTriangular;
    } const cases[] = {
        {"Row,Column,Section\r\n1,1,1\r\n\r\n\"12\",47,2", kSquare, {{2, 12, 47}, 94, 24, false}, 2, false},
        {"col;row;x;y;Remark\n1;1;0,5;1;\"a;\nb\"\n1;2;1,75;1;;\n;;;;\n",
         {},
         {{0, 2, 1}, 1.75F, 1, false},
         1.25,
         false},
        {"# note\nrow\tcol\tx\ty\tperiphery\n3\t4\t-1.5\t2e1\tx\n",
         {1.5, true},
         {{0, 3, 4}, -1.5F, 20, true},
         1.5,
         true},
        // Columns count half pitches, or the tubes of each row.
        {"row,col\n1,1\n1,3\n2,2\n", kTriangular, {{0, 2, 2}, 2, 2 * std::sqrt(3.0F), false}, 2, true},
        {"row,col\n2,2\n1,2\n1,1\n", kTriangular, {{0, 1, 1}, 3, std::sqrt(3.0F), false}, 2, true},
        {"!version\t2\nrow\tcol\n1\t1\n!rows\t1\n", kSquare, {{0, 1, 1}, 2, 2, false}, 2, false},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.text);
        const TubeTable read = TubeTable::read(table(one.text), one.pattern);
        EXPECT_EQ(read.tubes.last().address, one.last.address);
        EXPECT_FLOAT_EQ(read.tubes.last().x, one.last.x);
        EXPECT_FLOAT_EQ(read.tubes.last().y, one.last.y);
        EXPECT_EQ(read.tubes.last().periphery, one.last.periphery);
        EXPECT_DOUBLE_EQ(read.pitch, one.pitch);
        EXPECT_EQ(read.triangular, one.isTriangular);
    }
}

TEST_F(NewProjectTest, EveryLineThatCannotBeUsedIsNamed)
{
    using ::testing::ElementsAre;
    EXPECT_THAT(
        faults(
            "row;col;x;y;periphery\n1;1;0,5;0;\n4O;1000;;2;?\n;1;1;1\n1;1;3;3\n7;7;0.5;1;1;9\n8;8;4.5;1\n9;9;0,5;0\n"),
        ElementsAre(u", line 3: Column 'row': '4O' is not a whole number from 0 to 999."_s,
                    u", line 3: Column 'col': '1000' is not a whole number from 0 to 999."_s,
                    u", line 3: Column 'x' is empty."_s, u", line 3: Column 'periphery': '?' is neither yes nor no."_s,
                    u", line 4: Column 'row' is empty."_s,
                    u", line 5: The tube of row 1, column 1 is in line 2 already."_s,
                    u", line 6: The line has more cells than the heading."_s,
                    u", line 2: A number has a decimal comma, but line 7 has a decimal point."_s));
    const std::pair<const char *, const char16_t *> cases[] = {
        {"", u": The file is empty."},
        {"1,1\n1,2\n", u", line 1: The first line must name the columns; columns 'row' and 'col' are missing."},
        {"row,ROW,col\n1,1,1\n", u", line 1: Columns 'row' and 'ROW' mean the same."},
        {"row,col,x\n1,1,1\n", u", line 1: Column 'y' is missing; 'x' alone is no position."},
        {"row,col\n", u": The file lists no tubes."},
        {"row,col,x,y\n1,1,5,5\n2,2,5,5\n",
         u", line 3: The tube of row 2, column 2 is at the same place as the tube in line 2."},
        {"sec,row,col\n1,1,1\n2,1,1\n",
         u", line 3: The tube of section 2, row 1, column 1 is at the same place as the tube in line 2; "
         u"the table needs columns 'x' and 'y'."},
        {"row,col,x,y\n1,1,1e99,nan\n", u", line 2: Column 'x': '1e99' is not a number."},
        {"row,col\n1,1\n\"2,2\n", u", line 3: A quote that begins in this line has no end."},
        {"row\tcol\n1\t1\n!rows\t2\n",
         u", line 3: The file states 2 rows, but has 1: it was cut off, or changed by hand."}};
    for (const auto &[text, reason] : cases)
        EXPECT_TRUE(faults(text).contains(QString::fromUtf16(reason))) << text << qPrintable(faults(text).join(u'\n'));
    EXPECT_THAT(faults("row,col\n1,1\n", {}), ::testing::SizeIs(1)) << "neither positions nor a pattern";
    QByteArray many("row,col\n");
    for (int line = 0; line < 5000; ++line)
        many += "a,b\n";
    EXPECT_EQ(faults(many).size(), 101);
    EXPECT_EQ(faults(many).last(), u"... and 9900 more problems.");
}

TEST_F(NewProjectTest, ProjectIsWholeWithItsDatabase)
{
    const setup::NewComponent made = setup::makeNewProject(wanted());
    EXPECT_EQ(made.summary(), u"3 tubes, rows 1 to 2, columns 1 to 2");
    const brannock::Project project = brannock::Project::load(dir.filePath(u"plant"_s));
    EXPECT_EQ(project.site.siteCode, u"S1");
    EXPECT_EQ(project.outageName(), u"R1");
    EXPECT_EQ(project.steamGen.numTube(), 3);
    EXPECT_TRUE(project.tablesRemark().isEmpty());
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session(prompts);
    session.open(project.databasePath());
    EXPECT_EQ(db::fieldAs<qint32>(db::firstValue(session.database(), u"SELECT COUNT(*) FROM tubes"_s)), 3);
    // From the component of that project, another one can be made.
    setup::NewProject second = wanted();
    second.component = std::exchange(second.folder, dir.filePath(u"second"_s));
    EXPECT_EQ(setup::makeNewProject(second).steamGen.tubes().size(), 3);
}

TEST_F(NewProjectTest, NothingIsLeftOfAFailureAndNothingIsReplaced)
{
    const auto entries = [this] { return QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); };
    const auto isRefused = [&](const setup::NewProject &project) {
        const QStringList before = entries();
        EXPECT_THROW(setup::makeNewProject(project), tarnwick::Error);
        EXPECT_EQ(entries(), before);
    };
    isRefused(wanted("row,col\n1,x\n"));
    setup::NewProject noSite = wanted();
    noSite.site = u" "_s;
    isRefused(noSite);
    for (const qint64 room : {0, 100, 600}) {
        setup::NewProject project = wanted();
        tarnwick::failWritesAfter(room);
        isRefused(project);
        tarnwick::failWritesAfter(-1);
    }
    ASSERT_TRUE(QDir(dir.path()).mkdir(u"plant"_s));
    setup::makeNewProject(wanted()); // an empty folder is used
    isRefused(wanted());             // a project is not replaced
    support::writeFile(dir.filePath(u"other"_s), "x");
    setup::NewProject onFile = wanted();
    onFile.folder = dir.filePath(u"other"_s);
    isRefused(onFile);
}

} // namespace
