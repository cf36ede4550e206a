#include <dao/DatabaseImpl.h>
#include <db/revision/ConnectDatabase.h>
#include <gmock/gmock.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::Not;

namespace {

/// How the inner engine goes about the program's own queries: which index, and whether it sorts.
class PlanTest : public support::DatabaseTest
{
protected:
    /// The steps of the inner engine's plan, one a line, for each SQL text that the engine makes of a statement.
    std::string plansOf(const QString &sql)
    {
        const dao::QueryDef query(database(), sql);
        const dao::sql::Plan &plan = query.compiled().plan;
        std::string text;
        if (const auto *select = std::get_if<dao::sql::SelectPlan>(&plan)) {
            text = planOf(select->fullSql);
            if (select->keyed)
                text += planOf(select->keySql);
        } else {
            for (const auto &step : std::get<dao::sql::ActionPlan>(plan).steps)
                text += planOf(step.sql);
        }
        return text;
    }

    /// Twenty thousand results in 40 cals of two outages, and the rest of a project.
    void fillTables()
    {
        dao::Transaction transaction(session.workspace());
        run(u"INSERT INTO report (sec, row, col, volts, phase, pcnt, defect, loc_land, chan, site_code, outage, comp, "
            "cal_num, oper_type, analyst_id, oper_id, entry_time) "
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 19999) "
            "SELECT 0, 1 + i % 46, 1 + i / 46 % 72, iif(i % 4, NULL, i % 900 * 0.01), i % 360, "
            "iif(i % 20, NULL, i % 90), substr('NDDNDDDNTWARPCT', 1 + i % 5 * 3, 3), iif(i % 4, NULL, i % 8 || 'H'), "
            "'P1', 'S1', 'R' || (10 + i / 10000), 'SGA', 1 + i % 10000 / 500, "
            "substr('PRISECRES', 1 + i % 3 * 3, 3), 'A' || i % 9, 'OP', 45000 + i * 0.001 FROM n"_s);
        run(u"INSERT INTO tubes (sec, row, col) SELECT DISTINCT sec, row, col FROM report"_s);
        for (int plan = 0; plan < 5; ++plan) {
            const QString name = u"p%1"_s.arg(plan);
            for (const auto &[table, entries] :
                 {std::pair(u"plans"_s, u"plan_entry"_s), {u"tube_sets"_s, u"tube_set_entry"_s}}) {
                const QString created = table == u"plans" ? u", create_time"_s : QString();
                run(u"INSERT INTO %1 (name%2) VALUES ('%3'%4)"_s.arg(table, created, name,
                                                                     created.isEmpty() ? QString() : u", 45000"_s));
                run(u"INSERT INTO %1 (name, entry_num, sec, row, col) SELECT '%2', rowid, sec, row, col FROM tubes "
                    "LIMIT 300"_s.arg(entries, name));
            }
        }
        transaction.commit();
    }

    void checkProgramQueries();

private:
    std::string planOf(const QString &sql)
    {
        dao::store::Statement steps(database().impl().connection, u"EXPLAIN QUERY PLAN "_s + sql,
                                    dao::store::Access::User);
        std::string text;
        while (steps.step())
            text += steps.text(3).toStdString() + '\n';
        return text;
    }

    void run(const QString &sql) { database().impl().connection.run(sql); }
};

struct Case
{
    const char16_t *sql;
    const char *has;         ///< a step of every plan of it
    const char *hasNot = ""; ///< no step of any
};

constexpr const char *kSorts = "TEMP B-TREE";
constexpr const char *kAnyIndex = "INDEX";

// What the program runs, in the order of its subsystems.
constexpr Case kProgramQueries[] = {
    // Is the cal there already; the cal is deleted; the list of cals.
    {u"SELECT COUNT(cal_num)\nFROM report\nWHERE site_code = 'S1'\nAND comp = 'SGA'\nAND oper_type = 'PRI'\n"
     u"AND outage = 'R10'\nAND sec = 0\nAND cal_num = 4\n",
     "USING INDEX report.cal_num (cal_num=?)"},
    {u"DELETE FROM report\nWHERE site_code = 'S1'\nAND comp = 'SGA'\nAND oper_type = 'PRI'\nAND outage = 'R10'\n"
     u"AND sec = 0\nAND cal_num = 4",
     "USING INDEX report.cal_num (cal_num=?)"},
    {u"SELECT COUNT(*), site_code, comp, outage, cal_num, oper_type, sec\nFROM report\n"
     u"GROUP BY site_code, comp, outage, cal_num, oper_type, sec\n"
     u"ORDER BY site_code, comp, outage, cal_num, oper_type, sec",
     "USE TEMP B-TREE FOR GROUP BY", kAnyIndex},
    // History: tube by tube along the index, each tube sorted by itself.
    {u"SELECT *\nFROM report\nORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC",
     "SCAN _s1 USING INDEX report.tube_id", "B-TREE FOR ORDER BY"},
    {u"SELECT DISTINCT outage\nFROM report\nORDER BY outage", "USING COVERING INDEX report.outage", kSorts},
    {u"SELECT DISTINCT COUNT(*), defect\nFROM report\nGROUP BY defect\nORDER BY defect",
     "USING COVERING INDEX report.defect"},
    // One tube.
    {u"SELECT *\nFROM report\nWHERE sec=0\nAND row=4\nAND col=5\nORDER BY outage,sec,row,col",
     "USING INDEX report.tube_id (sec=? AND row=? AND col=?)"},
    {u"SELECT *\nFROM report\nWHERE row = 4\nAND   col = 5\n",
     "USING INDEX report.tube_id (ANY(sec) AND row=? AND col=?)"},
    // Repairs are read whole.
    {u"SELECT * FROM repairs ORDER BY sec, row, col, repair_type, outage", "SCAN _s1"},
    // Plans and tube sets.
    {u"SELECT COUNT(*)\nFROM plans\nWHERE name = 'p1'\n", "USING COVERING INDEX plans.primary_key (name=?)"},
    {u"SELECT * FROM plans WHERE name = 'p1'", "USING INDEX plans.primary_key (name=?)"},
    {u"DELETE FROM plans\nWHERE name = 'p1'\n", "USING INDEX plans.primary_key (name=?)"},
    {u"SELECT * \nFROM plan_entry\nWHERE name = 'p1'\nORDER BY entry_num, sec, row, col",
     "USING INDEX plan_entry.primary_key (name=?)"},
    {u"SELECT COUNT(*)\nFROM report\nWHERE outage = 'R10'\nAND row=[row_num]\nAND col=[col_num]\nAND sec=[sec_num]\n",
     "USING INDEX report.tube_id (sec=? AND row=? AND col=?)"},
    {u"SELECT COUNT(*)\nFROM tube_sets\nWHERE name = 'p1'", "USING COVERING INDEX tube_sets.primary_key (name=?)"},
    {u"SELECT * \nFROM tube_set_entry\nWHERE name = 'p1'\nORDER BY entry_num, sec, row, col",
     "USING INDEX tube_set_entry.primary_key (name=?)"},
    {u"DELETE FROM tube_sets\nWHERE name = 'p1'", "USING INDEX tube_sets.primary_key (name=?)"},
    {u"SELECT name FROM plans ORDER BY name", "USING COVERING INDEX plans.primary_key"},
    // Rows without an order come in that of the table, although an index would be shorter to walk.
    {u"SELECT * FROM report", "SCAN _s1", kAnyIndex},
    {u"SELECT pcnt FROM report", "SCAN _s1", kAnyIndex},
    {u"SELECT sec, row, col FROM report", "SCAN _s1", kAnyIndex},
    {u"SELECT COUNT(*) FROM report", "USING COVERING INDEX"},
    // What users ask for.
    {u"SELECT * FROM report WHERE defect = 'DNT'", "USING INDEX report.defect (defect=?)"},
    {u"SELECT * FROM report WHERE defect LIKE 'D*'", "USING INDEX report.defect (defect>? AND defect<?)"},
    {u"SELECT DISTINCT t.row FROM tubes AS t INNER JOIN report AS r ON t.sec = r.sec AND t.row = r.row AND "
     u"t.col = r.col WHERE r.pcnt >= 40",
     "USING COVERING INDEX tubes.primary_key (sec=? AND row=? AND col=?)"},
};

void PlanTest::checkProgramQueries()
{
    for (const Case &query : kProgramQueries) {
        const QString sql = QString::fromUtf16(query.sql);
        SCOPED_TRACE(sql.toStdString());
        const std::string plans = plansOf(sql);
        EXPECT_THAT(plans, HasSubstr(query.has));
        if (*query.hasNot) {
            EXPECT_THAT(plans, Not(HasSubstr(query.hasNot)));
        }
    }
}

TEST_F(PlanTest, ADatabaseKnowsWhichIndexServesBeforeAndAfterItsRowsAreCounted)
{
    checkProgramQueries();
    fillTables();
    session.close();
    session.open(path);
    checkProgramQueries();
    database().analyze();
    checkProgramQueries();
}

TEST_F(PlanTest, ADatabaseWithoutStatisticsGetsThemWhenItIsConnected)
{
    // Counting a table without rows leaves nothing known of it.
    database().analyze();
    EXPECT_FALSE(database().hasStatistics(u"report"_s));
    ASSERT_TRUE(db::connectDatabase(session, path, {}));
    checkProgramQueries();
    database().analyze();
    fillTables();
    ASSERT_TRUE(db::connectDatabase(session, path, {}));
    checkProgramQueries();
}

} // namespace
