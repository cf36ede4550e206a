#include <brannock/Project.h>
#include <brannock/SystemOption.h>
#include <ctime>
#include <ellery/ComponentFile.h>
#include <gmock/gmock.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using brannock::DefectList;
using brannock::Project;
using tarnwick::FileError;
using tarnwick::JDateTime;

namespace {

class ProjectFolderTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Project project;
        project.folder = dir.path();
        project.name = u"Unit 1"_s;
        project.site.siteCode = u"S1"_s;
        project.site.compCode = u"SGA"_s;
        project.outages = {{u"R10"_s, JDateTime::fromLocal(2016, 4, 1)}, {u"R11"_s, JDateTime()}};
        project.users = {{u"A1001"_s, u"Analyst"_s}};
        project.probes = {{u"BOBBIN"_s, u"MB-720"_s, 720, u"1"_s}};
        project.store();
        ellery::SteamGen gen;
        gen.name = u"SGA"_s;
        gen.modelName = u"U51"_s;
        gen.setTubes({ellery::Tube()});
        ellery::writeComponent(gen, dir.filePath(u"component"_s));
    }
    QString error()
    {
        try {
            Project::load(dir.path());
        } catch (const FileError &e) {
            return u"%1:%2: %3"_s.arg(QString(e.file()).remove(dir.path() + u'/')).arg(e.line()).arg(e.reason());
        }
        return u"no error"_s;
    }
    void replace(const QByteArray &before, const QByteArray &after)
    {
        const QString path = dir.filePath(u"project.json"_s);
        QByteArray text = tarnwick::readFile(path);
        ASSERT_TRUE(text.contains(before)) << text.toStdString();
        tarnwick::writeFileAtomically(path, text.replace(before, after));
    }
    QTemporaryDir dir;
};

TEST_F(ProjectFolderTest, SettingsComeBack)
{
    const Project project = Project::load(dir.path());
    EXPECT_TRUE(project.isLoaded());
    EXPECT_EQ(project.name, u"Unit 1");
    EXPECT_EQ(project.outageName(), u"R11") << "the last outage is the present one";
    EXPECT_TRUE(project.outageDate().isNull());
    EXPECT_EQ(project.outages[0].date, JDateTime::fromLocal(2016, 4, 1));
    EXPECT_EQ(project.site.model, u"U51");
    EXPECT_EQ(project.site.outage, u"R11");
    EXPECT_EQ(project.users[0], (fenwright::UserInfo{u"A1001"_s, u"Analyst"_s}));
    EXPECT_EQ(project.probes[0].size, 720);
    EXPECT_EQ(project.operTypes.first(), u"PRI");
    EXPECT_EQ(project.databaseFormat, 2002);
    EXPECT_TRUE(project.databasePath().endsWith(u"/arvo/project.mdb"));
    EXPECT_EQ(project.pathOf(u"queries\\a.qry"_s), QDir(project.folder).filePath(u"queries/a.qry"_s));
    project.makeFolders();
    EXPECT_TRUE(QDir(dir.filePath(u"map_headers"_s)).exists());
}

TEST_F(ProjectFolderTest, WrongSettingsAreNamed)
{
    replace("\"date\": \"2016-04-01\"", "\"date\": \"April\"");
    EXPECT_EQ(error(), u"project.json:0: Setting 'outages[0].date': 'April' is not a date.");
    replace("\"date\": \"April\"", "\"date\": \"04/01/2016\"");
    EXPECT_EQ(error(), u"no error");
    replace("\"current_outage\": \"R11\"", "\"current_outage\": \"R99\"");
    EXPECT_EQ(error(), u"project.json:0: Setting 'current_outage': 'R99' is not in the list of outages.");
    replace("\"R99\"", "\"R10\"");
    replace("\"database_format\": 2002", "\"database_format\": 2003");
    EXPECT_EQ(error(), u"project.json:0: Setting 'database_format': 1997, 2000 or 2002 is needed.");
    replace("\"database_format\": 2003", "\"database_format\": 1997");
    replace("\"code\": \"S1\"", "\"code\": \"\"");
    EXPECT_EQ(error(), u"project.json:0: Setting 'site.code': the setting is missing or empty.");
    QFile::remove(dir.filePath(u"project.json"_s));
    EXPECT_FALSE(Project::isProjectFolder(dir.path()));
    EXPECT_EQ(error(), u"project.json:0: The folder is not a project: it has no project.json.");
}

TEST_F(ProjectFolderTest, OwnDefectListReplacesTheStandardOne)
{
    EXPECT_TRUE(Project::load(dir.path()).defects.isRequiredField(u"DNT", DefectList::Volts));
    tarnwick::writeFileAtomically(dir.filePath(u"defects.txt"_s), "code\trequired\nGEO\tvolts, phase\n");
    const DefectList own = Project::load(dir.path()).defects;
    EXPECT_TRUE(own.isRequiredField(u"GEO", DefectList::Volts));
    EXPECT_FALSE(own.isRequiredField(u"GEO", DefectList::Percent));
    EXPECT_FALSE(own.isRequiredField(u"DNT", DefectList::Volts));
    tarnwick::writeFileAtomically(dir.filePath(u"defects.txt"_s), "code\trequired\nGEO\tvolt\n");
    EXPECT_EQ(error(), u"defects.txt:2: Column 'required': 'volt' is not one of location, volts, phase, percent.");
}

TEST(DefectListTest, StandardCodesNeedWhatTheTradeMeasures)
{
    const DefectList list = DefectList::standard();
    for (const QStringView code : {u"PCNT", u"DNT", u"SAI", u"VOL", u"WAR"})
        EXPECT_TRUE(list.isRequiredField(code, 2)) << code.toString().toStdString();
    for (const QStringView code : {u"NDD", u"PLG", u"", u"ndd", u"???"})
        EXPECT_FALSE(list.isRequiredField(code, 2)) << code.toString().toStdString();
}

TEST(SystemOptionTest, RecentProjectsAreStoredWithoutDoubles)
{
    const QTemporaryDir dir;
    brannock::SystemOption options;
    for (int i = 0; i < 14; ++i)
        options.addRecentProject(u"/projects/p%1"_s.arg(i));
    options.addRecentProject(u"\\Projects\\P5\\"_s);
    EXPECT_EQ(options.recentProjects.size(), 12);
    EXPECT_EQ(options.recentProjects.first(), u"\\Projects\\P5\\");
    EXPECT_FALSE(options.recentProjects.contains(u"/projects/p5"_s));
    options.storeTo(dir.filePath(u"system.opt"_s));
    brannock::SystemOption again;
    again.loadFrom(dir.filePath(u"system.opt"_s));
    EXPECT_EQ(again.recentProjects, options.recentProjects);
}

} // namespace
