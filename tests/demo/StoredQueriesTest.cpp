#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <dao/sql/Compiler.h>
#include <db/CreateDatabase.h>
#include <db/DatabaseSession.h>
#include <demo/DemoProject.h>
#include <demo/StoredQueries.h>
#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <tarnwick/Prompts.h>

using namespace Qt::StringLiterals;

// That each finds rows is tested with the project that ./run makes.
TEST(StoredQueriesTest, EveryQueryIsTheSameWhenItIsPrinted)
{
    using namespace dao::sql;
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"project.mdb"_s);
    tarnwick::RecordingPrompts prompts;
    ASSERT_TRUE(db::createDatabase(prompts, path));
    db::DatabaseSession session(prompts);
    session.open(path);
    const dao::SchemaView &schema = session.database().schema();
    for (const demo::StoredQuery &stored : demo::storedQueries(demo::inventProject({}, folder.path()))) {
        SCOPED_TRACE(stored.sql.toStdString());
        const QString printed = ast::printStatement(ast::Parser(stored.sql).parseStatement());
        EXPECT_EQ(ast::printStatement(ast::Parser(printed).parseStatement()), printed);
        EXPECT_EQ(std::get<SelectPlan>(compile(schema, printed).plan).fullSql,
                  std::get<SelectPlan>(compile(schema, stored.sql).plan).fullSql);
    }
}
