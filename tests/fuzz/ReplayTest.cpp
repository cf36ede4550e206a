#include <dao/sql/ast/Token.h>
#include <fuzz/Targets.h>

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace {

struct Target
{
    const char *name;
    void (*run)(fuzz::Bytes);
};

class CorpusTest : public testing::TestWithParam<Target>
{
};

} // namespace

TEST_P(CorpusTest, HoldsNothingThatGoesWrong)
{
    // A larger corpus, such as a fuzzer leaves behind, can be given instead.
    const QString root = qEnvironmentVariable("ARVO_FUZZ_CORPUS", QStringLiteral(ARVO_TEST_DATA "/corpus"));
    const QDir folder(root + u'/' + QString::fromLatin1(GetParam().name));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        const QByteArray content = support::readFile(folder.filePath(name));
        EXPECT_NO_THROW(
            GetParam().run({reinterpret_cast<const uint8_t *>(content.constData()), size_t(content.size())}))
            << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusTest,
                         testing::Values(Target{"compile", fuzz::compileText}, Target{"catalog", fuzz::openCatalog},
                                         Target{"functions", fuzz::callFunction}),
                         [](const auto &target) { return std::string(target.param.name); });

// Statements with one token removed, doubled or exchanged with its neighbour.
TEST(TokensTest, NoTextBecomesSomethingThatTheInnerEngineRefuses)
{
    const auto check = [](const QString &sql) {
        const QByteArray text = sql.toUtf8();
        EXPECT_NO_THROW(fuzz::compileText({reinterpret_cast<const uint8_t *>(text.constData()), size_t(text.size())}))
            << text.constData();
    };
    const QString statements[] = {
        u"SELECT t.a, b & 'x' AS n, c * 2, - a, (SELECT Max(x) FROM u WHERE u.id = t.id) FROM t WHERE a Between 1 And 5 And Not f"_s,
        u"SELECT TOP 3 b, Count(*), Sum(c) / 2, First(d) FROM t WHERE d > #1/2/2003# GROUP BY b, a + 1 HAVING Max(a) > 2 ORDER BY b DESC, 2"_s,
        u"SELECT DISTINCT TOP 50 PERCENT UCase(b), a FROM t ORDER BY UCase(b), 2 DESC"_s,
        u"SELECT * FROM (t AS k LEFT JOIN (u INNER JOIN q ON u.id = q.id) ON k.id = u.x) INNER JOIN g ON g.b = k.b"_s,
        u"SELECT DISTINCTROW t.* FROM t INNER JOIN u ON t.id = u.id, g WHERE t.b In (SELECT b FROM u) Or t.a Not In (1, 2, [p])"_s,
        u"SELECT IIf(a > 1, t.b, 5), Switch(f, 1, True, 2), Choose(a, 1, 2), Nz(a, 0), Format(d, 'yyyy'), Left(q.b, 2) FROM q, t"_s,
        u"SELECT a, b FROM t WHERE b Like 'a*' UNION ALL SELECT x, b FROM u UNION (SELECT 1, 2) ORDER BY 1 DESC, b"_s,
        u"SELECT a FROM t WHERE a > ALL (SELECT x FROM u) And Exists (SELECT * FROM u WHERE u.x = t.a) Xor a = ANY (SELECT id FROM u)"_s,
        u"TRANSFORM Count(*) SELECT b, Sum(c) AS s FROM t WHERE a Is Not Null GROUP BY b ORDER BY b PIVOT a Mod 3"_s,
        u"INSERT INTO t (a, b, c, d, f) SELECT x, id, x \\ 2, [p], b = 'y' FROM u WHERE x <> 3 ORDER BY id"_s,
        u"INSERT INTO u (id, x, b) VALUES (1 + [n], '5', Date() & Null)"_s,
        u"UPDATE t INNER JOIN u ON t.id = u.id SET t.a = u.x, t.b = u.b & t.b, u.x = t.c WHERE u.x > 2"_s,
        u"UPDATE t SET a = a + 1, desc = 'x', f = Not f, s = DMax('x', 'u') WHERE b Is Null"_s,
        u"DELETE t.* FROM t LEFT JOIN u ON t.id = u.id WHERE u.id Is Null"_s,
    };
    for (const QString &statement : statements) {
        check(statement);
        const QList<dao::sql::ast::Token> tokens = dao::sql::ast::tokenize(statement);
        const auto text = [&statement](const dao::sql::ast::Token &token) {
            return statement.mid(token.range.start, token.range.length);
        };
        for (qsizetype i = 0; i + 1 < tokens.size(); ++i) {
            const auto range = tokens[i].range;
            check(QString(statement).remove(range.start, range.length));
            check(QString(statement).insert(range.start, text(tokens[i]) + u' '));
            const auto both = range.to(tokens[i + 1].range);
            check(QString(statement).replace(both.start, both.length, text(tokens[i + 1]) + u' ' + text(tokens[i])));
        }
    }
}
