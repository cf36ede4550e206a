#include "RoundTrip.h"
#include "TestDatabase.h"

#include <gmock/gmock.h>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using dao::Value;

// Statements as data: each file of the folder data is one database and a list of statements with what they must give.
//
//   @query NAME = SQL     a stored query
//   > SQL                 a statement; lines that begin with a blank continue it
//   NUMBER> SQL           a statement that fails with that number
//   ? NAME = VALUE        value of a parameter of the statement above
//   : A | B               the names of its columns
//   ~ WORD                "updatable", "keyed", or why it is neither (see reasons below)
//   = N                   it changes N rows
//   ! NUMBER [L:C+LENGTH] [TEXT]   it fails, at that place, with a description or hint that contains the text
//   anything else         the rows it returns, in order, cells parted by " | "; "(none)" for no rows

namespace {

struct Case
{
    int line = 0;
    QString sql;
    TestDatabase::Parameters parameters;
    QString columns;
    QString kind;
    QString error;
    QString affected;
    QStringList rows;
};

QString reasonWord(const TestDatabase::Result &plan)
{
    using enum dao::sql::NotUpdatable;
    switch (plan.whyNot) {
    case No:
        return u"updatable"_s;
    case Distinct:
        return u"distinct"_s;
    case Grouped:
        return u"grouped"_s;
    case Aggregate:
        return u"aggregate"_s;
    case Union:
        return u"union"_s;
    case Crosstab:
        return u"crosstab"_s;
    case CommaJoin:
        return plan.keyed ? u"comma keyed"_s : u"comma"_s;
    case NoTable:
        return u"no table"_s;
    case SubqueryColumn:
        return plan.keyed ? u"subquery keyed"_s : u"subquery"_s;
    case NestedQuery:
        return u"nested"_s;
    case ManyToMany:
        return plan.keyed ? u"many keyed"_s : u"many"_s;
    default:
        return u"?"_s;
    }
}

Value valueFromText(const QString &text)
{
    if (text == u"Null")
        return Value::null();
    return Value::fromText(text);
}

class SqlFile
{
public:
    explicit SqlFile(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("cannot open the data file");
        int number = 0;
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n'))
            readLine(line, ++number);
        finishCase();
    }

private:
    void readLine(const QString &line, int number)
    {
        const QString rest = line.size() > 2 ? line.sliced(2) : QString();
        if (line.startsWith(u'#') || line.isEmpty()) {
            return;
        } else if (line.startsWith(u"@query ")) {
            finishCase();
            const qsizetype equals = line.indexOf(u" = ");
            m_database.addQuery(line.sliced(7, equals - 7), line.sliced(equals + 3));
        } else if (line.startsWith(u"> ")) {
            finishCase();
            m_case.line = number;
            m_case.sql = rest;
        } else if (const auto failing = s_failing.match(line); failing.hasMatch()) {
            finishCase();
            m_case.line = number;
            m_case.error = failing.captured(1);
            m_case.sql = failing.captured(2);
        } else if (line.startsWith(u' ')) {
            m_case.sql += u'\n' + line.trimmed();
        } else if (line.startsWith(u"? ")) {
            const qsizetype equals = rest.indexOf(u" = ");
            m_case.parameters.append({rest.first(equals), valueFromText(rest.sliced(equals + 3))});
        } else if (line.startsWith(u": ")) {
            m_case.columns = rest;
        } else if (line.startsWith(u"~ ")) {
            m_case.kind = rest;
        } else if (line.startsWith(u"! ")) {
            m_case.error = rest;
        } else if (line.startsWith(u"= ")) {
            m_case.affected = rest;
        } else {
            m_case.rows.append(line);
        }
    }

    void finishCase()
    {
        const Case test = std::exchange(m_case, {});
        if (test.sql.isEmpty())
            return;
        SCOPED_TRACE("line " + std::to_string(test.line) + ": " + test.sql.toStdString());
        expectRoundTrip(m_database, test.sql);
        try {
            const TestDatabase::Result result = m_database.run(test.sql, test.parameters);
            ASSERT_TRUE(test.error.isEmpty()) << "no error, but expected " << test.error.toStdString();
            compare(test, result);
        } catch (const dao::DaoException &exception) {
            compareError(test, exception);
        } catch (const std::exception &exception) {
            ADD_FAILURE() << exception.what();
        }
    }

    static void compare(const Case &test, const TestDatabase::Result &result)
    {
        if (!test.affected.isEmpty()) {
            EXPECT_EQ(result.affected, test.affected.toInt());
        }
        QStringList names;
        for (const dao::sql::Column &column : result.columns)
            names.append(column.info.name);
        if (names.isEmpty())
            return;
        if (!test.columns.isEmpty()) {
            EXPECT_EQ(names.join(u" | "), test.columns);
        }
        if (!test.kind.isEmpty()) {
            EXPECT_EQ(reasonWord(result), test.kind);
        }
        QStringList rows;
        for (const QStringList &row : result.rows)
            rows.append(row.join(u" | "));
        if (rows.isEmpty() && test.rows == QStringList{u"(none)"_s})
            return;
        if (!test.rows.isEmpty() || test.columns.isEmpty()) {
            EXPECT_EQ(rows.join(u'\n'), test.rows.join(u'\n'));
        }
    }

    static void compareError(const Case &test, const dao::DaoException &exception)
    {
        QStringList words = test.error.split(u' ', Qt::SkipEmptyParts);
        const QString said = exception.description() + u" / "_s + exception.hint();
        ASSERT_FALSE(words.isEmpty()) << exception.what() << " at " << exception.where().line << ':'
                                      << exception.where().column;
        EXPECT_EQ(exception.number(), words.takeFirst().toInt()) << said.toStdString();
        const dao::SourceRange &where = exception.where();
        const QString place = u"%1:%2+%3"_s.arg(where.line).arg(where.column).arg(where.length);
        if (!words.isEmpty() && words.constFirst().contains(u'+') && words.constFirst().contains(u':')) {
            EXPECT_EQ(place, words.takeFirst()) << said.toStdString();
        }
        if (!words.isEmpty()) {
            EXPECT_THAT(said.toStdString(), testing::HasSubstr(words.join(u' ').toStdString()));
        }
    }

    static inline const QRegularExpression s_failing{u"^(\\d+)> (.+)$"_s};
    TestDatabase m_database;
    Case m_case;
};

QStringList dataFiles()
{
    const QDir folder(QStringLiteral(ARVO_TEST_DATA "/data"));
    QStringList paths;
    for (const QString &name : folder.entryList({u"*.test"_s}, QDir::Files, QDir::Name))
        paths.append(folder.filePath(name));
    return paths;
}

class DataFileTest : public testing::TestWithParam<QString>
{
};

} // namespace

TEST_P(DataFileTest, StatementsGiveWhatTheFileSays)
{
    SqlFile file(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Sql, DataFileTest, testing::ValuesIn(dataFiles()), [](const auto &file) {
    return QString(QFileInfo(file.param).completeBaseName()).replace(u'-', u'_').toStdString();
});
