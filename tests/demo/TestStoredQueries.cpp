#include <conversion/ReportConversion.h>
#include <dao/Recordset.h>
#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <dao/sql/Compiler.h>
#include <db/CreateDatabase.h>
#include <db/DatabaseSession.h>
#include <demo/DemoProject.h>
#include <demo/StoredQueries.h>
#include <gmock/gmock.h>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <query/QueryDocument.h>
#include <results/ReportUpload.h>
#include <tarnwick/Prompts.h>

using namespace Qt::StringLiterals;
using brannock::Project;

namespace {

/// A small demo project, converted and uploaded whole; made once.
class StoredQueries : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_dir = new QTemporaryDir;
        demo::DemoOptions options;
        options.tubes = 600;
        options.entries = 5000;
        const QString folder = s_dir->filePath(u"demo"_s);
        demo::makeProject(options, folder);
        s_project = new Project(Project::load(folder));
        convert(u"foreign"_s, u"default.fmt"_s);
        convert(u"foreign2"_s, u"quillmark.fmt"_s);
        s_prompts = new tarnwick::RecordingPrompts;
        ASSERT_TRUE(db::createDatabase(*s_prompts, s_project->databasePath()));
        s_session = new db::DatabaseSession(*s_prompts);
        s_session->open(s_project->databasePath());
        uploadReports();
        uploadTubes();
    }
    static void TearDownTestSuite()
    {
        delete s_session;
        delete s_prompts;
        delete s_project;
        delete s_dir;
    }

    static QStringList paths(const QString &sub, const QString &pattern)
    {
        QStringList list;
        const QDir dir(s_project->folder + u'/' + sub);
        const QStringList names = dir.entryList({pattern}, QDir::Files, QDir::Name);
        for (const QString &name : names)
            list.append(dir.filePath(name));
        return list;
    }
    static void convert(const QString &texts, const QString &spec)
    {
        tarnwick::RecordingPrompts prompts;
        conversion::ReportConversion conversion(*s_project);
        conversion.spec.loadFrom(s_project->folder + u"/report_formats/" + spec);
        const QStringList files = paths(texts, u"*.txt"_s);
        for (const QString &path : files) {
            conversion.convertFile(path);
            conversion.store(prompts);
        }
    }
    static void uploadReports()
    {
        results::ReportUpload upload(*s_session, *s_project);
        const QStringList files = paths(u"reports"_s, u"*.rep"_s);
        for (const QString &path : files) {
            brannock::Report report;
            report.loadReport(path);
            ASSERT_TRUE(upload.upload(report).completed) << path.toStdString();
        }
    }
    static void uploadTubes()
    {
        dao::Transaction transaction(s_session->workspace());
        for (const ellery::Tube &tube : s_project->steamGen.tubes()) {
            s_session->database().execute(
                u"INSERT INTO tubes (sec, row, col, is_periph) VALUES (%1, %2, %3, %4)"_s.arg(tube.address.sec)
                    .arg(tube.address.row)
                    .arg(tube.address.col)
                    .arg(tube.periphery ? u"True"_s : u"False"_s));
        }
        transaction.commit();
    }

    static inline QTemporaryDir *s_dir = nullptr;
    static inline Project *s_project = nullptr;
    static inline tarnwick::RecordingPrompts *s_prompts = nullptr;
    static inline db::DatabaseSession *s_session = nullptr;
};

TEST_F(StoredQueries, EveryQueryRunsAndFindsWhatItNames)
{
    const QStringList files = paths(u"queries"_s, u"*.qry"_s);
    EXPECT_GE(files.size(), 12);
    for (const QString &path : files) {
        SCOPED_TRACE(path.toStdString());
        query::QueryDocument document;
        query::readQueryFile(document, path, s_project->roots());
        EXPECT_FALSE(QString(document.sql + document.layout.sections[tarnwick::JTablePrintArg::ReportTitle].text)
                         .contains(QRegularExpression(u"%[0-9]"_s)))
            << "every place of a template is filled";
        try {
            dao::QueryDef definition(s_session->database(), document.sql);
            for (int i = 0; i < definition.parameterCount(); ++i)
                definition.setParameter(i, definition.parameter(i).name == u"Code" ? dao::Value::fromText(u"DNT"_s)
                                                                                   : dao::Value::fromLong(20));
            dao::Recordset rows(s_session->database());
            rows.open(dao::Recordset::Type::Dynaset, definition);
            // All tubes were inspected, and the rotating probe went wherever the bobbin left a question.
            const bool isNone = path.endsWith(u"not_inspected.qry") || path.endsWith(u"open_questions.qry");
            if (isNone) {
                EXPECT_EQ(rows.recordCount(), 0);
            } else {
                EXPECT_GT(rows.recordCount(), 0);
            }
        } catch (const dao::DaoException &error) {
            ADD_FAILURE() << error.what();
        }
    }
}

TEST_F(StoredQueries, EveryQueryIsTheSameWhenItIsPrinted)
{
    using namespace dao::sql;
    for (const demo::StoredQuery &stored : demo::storedQueries(*s_project)) {
        SCOPED_TRACE(stored.sql.toStdString());
        const QString printed = ast::printStatement(ast::Parser(stored.sql).parseStatement());
        EXPECT_EQ(ast::printStatement(ast::Parser(printed).parseStatement()), printed);
        const dao::SchemaView &schema = s_session->database().schema();
        EXPECT_EQ(std::get<SelectPlan>(compile(schema, printed).plan).fullSql,
                  std::get<SelectPlan>(compile(schema, stored.sql).plan).fullSql);
    }
}

} // namespace
