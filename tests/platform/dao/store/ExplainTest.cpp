#include "Fixture.h"

#include <dao/Explain.h>
#include <QDir>

using namespace dao;
using namespace Qt::StringLiterals;

namespace {

class ExplainTest : public StoreTest
{
protected:
    ExplainTest()
    {
        TableInfo tubes =
            build::table(u"tubes"_s,
                         {build::field(u"id"_s, DataType::Long, 4, "RA"), build::field(u"name"_s, DataType::Text, 20),
                          build::field(u"row"_s, DataType::Integer)},
                         {build::index(u"pk"_s, {u"id"_s}, true, true), build::index(u"by_name"_s, {u"name"_s})});
        database.createTable(tubes);
        append(u"tubes"_s, {{u"name"_s, text(u"a"_s)}, {u"row"_s, number(1)}});
    }

    QString plansOf(const QString &sql)
    {
        QStringList lines;
        for (const Explanation::Step &step : explain(database, sql).steps)
            lines.append(step.plan);
        return lines.join(u'\n');
    }
};

/// The examples above the functions of a source file of the generator: a statement and the SQL texts that follow it.
/// A line that is indented further continues the one before.
QList<QStringList> examplesIn(const QString &path)
{
    const QString mark = u"//     "_s;
    QFile file(path);
    QList<QStringList> examples;
    bool inside = false;
    if (!file.open(QIODevice::ReadOnly))
        return examples;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const bool was = std::exchange(inside, line.startsWith(mark));
        if (!inside)
            continue;
        const QString text = line.mid(mark.size());
        if (!was)
            examples.append(QStringList{text});
        else if (text.startsWith(u' '))
            examples.last().last() += u' ' + text.trimmed();
        else
            examples.last().append(text);
    }
    return examples;
}

} // namespace

// The generator's documentation: each function shows a statement and what becomes of it.
TEST_F(ExplainTest, ExamplesOfTheGeneratorAreTrue)
{
    for (const QString &sql :
         {u"CREATE TABLE t (id COUNTER PRIMARY KEY, a LONG, b LONG, c TEXT(50), d DOUBLE)"_s,
          u"CREATE TABLE u (k LONG PRIMARY KEY, e TEXT(50))"_s, u"CREATE TABLE v (a LONG, b LONG)"_s,
          u"CREATE TABLE w (k SHORT NOT NULL PRIMARY KEY, e TEXT(50))"_s})
        database.execute(sql);
    const QDir generator(QStringLiteral(ARVO_TEST_DATA "/../../../../platform/dao/sql/generate"));
    int examples = 0;
    for (const QFileInfo &file : generator.entryInfoList({u"*.cpp"_s})) {
        for (const QStringList &example : examplesIn(file.filePath())) {
            ++examples;
            QStringList texts;
            ASSERT_EQ(errorOf([&] {
                          for (const Explanation::Step &step : explain(database, example.first()).steps)
                              texts.append(step.sql);
                      }),
                      QString())
                << qPrintable(example.first());
            for (const QString &sql : example.mid(1))
                EXPECT_NE(texts.join(u'\n').indexOf(sql), -1)
                    << qPrintable(file.fileName() + u": "_s + example.first() + u'\n' + texts.join(u'\n'));
        }
    }
    EXPECT_GT(examples, 60);
}

TEST_F(ExplainTest, TellsParametersColumnsAndPlan)
{
    const Explanation told = explain(database, u"SELECT name, row + 1 AS next FROM tubes AS t WHERE row = [Which]"_s);
    EXPECT_EQ(told.kind, u"SELECT"_s);
    ASSERT_EQ(told.parameters.size(), 1);
    EXPECT_EQ(told.parameters[0].name, u"Which"_s);
    EXPECT_EQ(told.parameters[0].type, DataType::Integer);
    ASSERT_EQ(told.columns.size(), 2);
    EXPECT_EQ(told.columns[0].info.sourceTable, u"tubes"_s);
    EXPECT_TRUE(told.columns[0].updatable);
    EXPECT_FALSE(told.columns[1].updatable);
    EXPECT_EQ(told.whyNot, sql::NotUpdatable::No);
    EXPECT_EQ(explain(database, u"SELECT DISTINCT name FROM tubes"_s).whyNot, sql::NotUpdatable::Distinct);
}

TEST_F(ExplainTest, RunsNothing)
{
    for (const QString &statement :
         {u"DELETE FROM tubes"_s, u"UPDATE tubes SET row = 9"_s, u"INSERT INTO tubes (name) VALUES ('b')"_s,
          u"SELECT * INTO copy FROM tubes"_s, u"DROP TABLE tubes"_s, u"CREATE TABLE other (a LONG)"_s,
          u"TRANSFORM COUNT(*) SELECT row FROM tubes GROUP BY row PIVOT name"_s})
        EXPECT_FALSE(explain(database, statement).kind.isEmpty()) << qPrintable(statement);
    EXPECT_EQ(rows(u"SELECT name, row FROM tubes"_s), u"a|1"_s);
    const Explanation copying = explain(database, u"SELECT * INTO copy FROM tubes"_s);
    EXPECT_EQ(copying.steps.size(), 1);
    EXPECT_FALSE(copying.columns.isEmpty() || copying.columns[0].updatable || copying.columns[1].updatable);
    EXPECT_FALSE(database.hasTable(u"copy"_s));
    EXPECT_FALSE(database.hasTable(u"other"_s));
    EXPECT_EQ(numberOf([&] { explain(database, u"DELETE FROM nothing"_s); }), 3078);
}
