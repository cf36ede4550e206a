#include "Statements.h"

namespace bench {
namespace {

#define TUBE(a, b) a ".sec = " b ".sec AND " a ".row = " b ".row AND " a ".col = " b ".col"

/// The rows of a view with labels are those whose numbers all have a label.
#define LABELLED                                                                                                       \
    "sec IN (SELECT \"index\" FROM sec_alias) AND row IN (SELECT \"index\" FROM row_alias) AND col IN (SELECT "        \
    "\"index\" "                                                                                                       \
    "FROM col_alias) AND leg IN (SELECT \"index\" FROM leg_alias)"

// The expert knows which fields may be Null; apart from that both texts give the same rows of any data.
constexpr StatementPair kPairs[] = {
    // TOP
    {"top two keys", "SELECT TOP 10 * FROM report ORDER BY pcnt DESC, volts DESC",
     "SELECT * FROM report WHERE (pcnt, volts) >= (SELECT pcnt, volts FROM report ORDER BY pcnt DESC, volts DESC "
     "LIMIT 1 OFFSET 9) ORDER BY pcnt DESC, volts DESC, recd_num"},
    {"top by index", "SELECT TOP 10 * FROM report ORDER BY volts DESC",
     "SELECT * FROM report WHERE volts >= (SELECT volts FROM report ORDER BY volts DESC LIMIT 1 OFFSET 9) "
     "ORDER BY volts DESC, recd_num"},
    {"top without index", "SELECT TOP 10 * FROM report ORDER BY loc_off DESC",
     "SELECT * FROM report WHERE loc_off >= (SELECT loc_off FROM report ORDER BY loc_off DESC LIMIT 1 OFFSET 9) "
     "ORDER BY loc_off DESC, recd_num"},
    {"top of a sum", "SELECT TOP 10 recd_num, volts + pcnt * 1.5 AS both FROM report ORDER BY volts + pcnt * 1.5 DESC",
     "SELECT recd_num, volts + pcnt * 1.5 FROM report WHERE volts + pcnt * 1.5 >= (SELECT volts + pcnt * 1.5 FROM "
     "report ORDER BY volts + pcnt * 1.5 DESC LIMIT 1 OFFSET 9) ORDER BY volts + pcnt * 1.5 DESC, recd_num"},
    {"top ascending", "SELECT TOP 10 recd_num, volts FROM report WHERE volts > 0.5 ORDER BY volts",
     "SELECT recd_num, volts FROM report WHERE volts > 0.5 AND volts <= (SELECT volts FROM report WHERE volts > 0.5 "
     "ORDER BY volts LIMIT 1 OFFSET 9) ORDER BY volts, recd_num"},
    {"top with condition",
     "SELECT TOP 20 sec, row, col, defect, volts FROM report WHERE oper_type = 'RES' AND defect <> 'NDD' "
     "ORDER BY volts DESC",
     "SELECT sec, row, col, defect, volts FROM report WHERE oper_type = 'RES' AND defect <> 'NDD' AND volts >= "
     "(SELECT volts FROM report WHERE oper_type = 'RES' AND defect <> 'NDD' ORDER BY volts DESC LIMIT 1 OFFSET 19) "
     "ORDER BY volts DESC, recd_num"},
    {"top by key", "SELECT TOP 100 * FROM report ORDER BY recd_num DESC",
     "SELECT * FROM report ORDER BY recd_num DESC LIMIT 100"},
    {"top percent", "SELECT TOP 1 PERCENT recd_num, volts FROM report ORDER BY volts DESC",
     "SELECT recd_num, volts FROM report WHERE volts >= (SELECT volts FROM report ORDER BY volts DESC LIMIT 1 "
     "OFFSET (SELECT (count(*) + 99) / 100 - 1 FROM report)) ORDER BY volts DESC, recd_num"},
    {"top of many", "SELECT TOP 20000 * FROM report ORDER BY volts DESC",
     "SELECT * FROM report WHERE volts >= (SELECT volts FROM report ORDER BY volts DESC LIMIT 1 OFFSET 19999) "
     "ORDER BY volts DESC, recd_num"},
    {"top of a join",
     "SELECT TOP 20 r.*, t.x FROM report AS r INNER JOIN tubes AS t ON (" TUBE("r", "t") ") "
                                                                                         "ORDER BY r.volts DESC",
     "SELECT r.*, t.x FROM report r JOIN tubes t ON " TUBE(
         "r", "t") " WHERE r.volts >= (SELECT r.volts FROM report r "
                   "JOIN tubes t ON " TUBE(
                       "r", "t") " ORDER BY r.volts DESC LIMIT 1 OFFSET 19) ORDER BY r.volts DESC, r.recd_num"},
    {"top of an outer join",
     "SELECT TOP 20 r.recd_num, p.repair_type FROM report AS r LEFT JOIN repairs AS p ON (" TUBE(
         "r", "p") ") "
                   "ORDER BY r.volts DESC",
     "SELECT r.recd_num, p.repair_type FROM report r LEFT JOIN repairs p ON " TUBE(
         "r", "p") " WHERE r.volts >= "
                   "(SELECT r.volts FROM report r LEFT JOIN repairs p ON " TUBE(
                       "r", "p") " ORDER BY r.volts DESC LIMIT 1 OFFSET 19) "
                                 "ORDER BY r.volts DESC, r.recd_num"},
    {"top of groups",
     "SELECT TOP 10 sec, row, col, Count(*) AS n FROM report GROUP BY sec, row, col "
     "ORDER BY Count(*) DESC",
     "WITH g AS MATERIALIZED (SELECT sec, row, col, count(*) AS n FROM report GROUP BY sec, row, col) "
     "SELECT * FROM g WHERE n >= (SELECT n FROM g ORDER BY n DESC LIMIT 1 OFFSET 9) ORDER BY n DESC"},
    {"top of distinct", "SELECT DISTINCT TOP 10 row, pcnt FROM report ORDER BY pcnt DESC",
     "WITH g AS MATERIALIZED (SELECT DISTINCT row, pcnt FROM report) "
     "SELECT * FROM g WHERE pcnt >= (SELECT pcnt FROM g ORDER BY pcnt DESC LIMIT 1 OFFSET 9) ORDER BY pcnt DESC"},
    {"top within from",
     "SELECT defect, Count(*) AS n FROM (SELECT TOP 1000 * FROM report ORDER BY volts DESC) AS largest GROUP BY defect",
     "SELECT defect, count(*) FROM report WHERE volts >= (SELECT volts FROM report ORDER BY volts DESC LIMIT 1 "
     "OFFSET 999) GROUP BY defect"},
    {"top within where",
     "SELECT * FROM report WHERE recd_num IN (SELECT TOP 50 recd_num FROM report ORDER BY pcnt DESC, volts DESC)",
     "SELECT * FROM report WHERE (pcnt, volts) >= (SELECT pcnt, volts FROM report ORDER BY pcnt DESC, volts DESC "
     "LIMIT 1 OFFSET 49)"},
    {"top where exists",
     "SELECT TOP 20 * FROM report AS r WHERE EXISTS (SELECT * FROM repairs AS p WHERE " TUBE("p",
                                                                                             "r") ") "
                                                                                                  "ORDER BY volts DESC",
     "SELECT * FROM report r WHERE volts >= (SELECT volts FROM report r WHERE EXISTS (SELECT * FROM repairs p "
     "WHERE " TUBE("p", "r") ") ORDER BY volts DESC LIMIT 1 OFFSET 19) AND EXISTS (SELECT * FROM repairs p WHERE " TUBE(
         "p", "r") ") ORDER BY volts DESC, recd_num"},
    {"top where in",
     "SELECT TOP 20 recd_num FROM report WHERE row IN (SELECT row FROM repairs WHERE col > 40) "
     "ORDER BY loc_off DESC",
     "SELECT recd_num FROM report WHERE row IN (SELECT row FROM repairs WHERE col > 40) AND loc_off >= (SELECT loc_off "
     "FROM report WHERE row IN (SELECT row FROM repairs WHERE col > 40) ORDER BY loc_off DESC LIMIT 1 OFFSET 19) "
     "ORDER BY loc_off DESC, recd_num"},
    {"top of top",
     "SELECT TOP 5 * FROM (SELECT TOP 100 * FROM report ORDER BY volts DESC) AS largest ORDER BY phase DESC",
     "WITH a AS MATERIALIZED (SELECT recd_num, phase FROM report WHERE volts >= (SELECT volts FROM report ORDER BY "
     "volts DESC LIMIT 1 OFFSET 99)) SELECT r.* FROM a JOIN report r USING (recd_num) WHERE a.phase >= (SELECT phase "
     "FROM a ORDER BY phase DESC LIMIT 1 OFFSET 4) ORDER BY a.phase DESC, a.recd_num"},
    // Of each group
    {"first of group",
     "SELECT recd_num FROM report WHERE recd_num IN (SELECT TOP 1 recd_num FROM report AS r WHERE " TUBE(
         "r", "report") " ORDER BY volts DESC)",
     "SELECT recd_num FROM (SELECT recd_num, rank() OVER (PARTITION BY sec, row, col ORDER BY volts DESC) AS n "
     "FROM report) WHERE n <= 1 ORDER BY recd_num"},
    {"first two of group",
     "SELECT * FROM report WHERE recd_num IN (SELECT TOP 2 recd_num FROM report AS r WHERE " TUBE(
         "r", "report") " ORDER BY pcnt DESC, volts DESC)",
     "SELECT * FROM report WHERE recd_num IN (SELECT recd_num FROM (SELECT recd_num, rank() OVER (PARTITION BY sec, "
     "row, col ORDER BY pcnt DESC, volts DESC) AS n FROM report) WHERE n <= 2)"},
    {"first of group in part",
     "SELECT recd_num FROM report WHERE cal_num = 7 AND recd_num IN (SELECT TOP 3 recd_num FROM report AS r "
     "WHERE " TUBE("r", "report") " ORDER BY volts DESC)",
     "SELECT recd_num FROM (SELECT recd_num, cal_num, rank() OVER (PARTITION BY sec, row, col ORDER BY volts DESC) AS "
     "n FROM report WHERE (sec, row, col) IN (SELECT sec, row, col FROM report WHERE cal_num = 7)) "
     "WHERE n <= 3 AND cal_num = 7 ORDER BY recd_num"},
    {"first of one group",
     "SELECT recd_num FROM report WHERE sec = 0 AND row = 9 AND col = 9 AND recd_num IN (SELECT TOP 3 recd_num FROM "
     "report AS r WHERE " TUBE("r", "report") " ORDER BY volts DESC)",
     "SELECT recd_num FROM (SELECT recd_num, rank() OVER (ORDER BY volts DESC) AS n FROM report WHERE sec = 0 AND "
     "row = 9 AND col = 9) WHERE n <= 3"},
    {"first of another table's group",
     "SELECT row, col FROM tubes WHERE 'DNT' IN (SELECT TOP 2 defect FROM report AS r WHERE " TUBE(
         "r", "tubes") " ORDER BY volts DESC)",
     "SELECT row, col FROM tubes t WHERE EXISTS (SELECT * FROM report r WHERE " TUBE(
         "r", "t") " AND defect = 'DNT' "
                   "AND volts >= (SELECT volts FROM report r WHERE " TUBE(
                       "r", "t") " ORDER BY volts DESC LIMIT 1 OFFSET 1))"},
    {"first as a column",
     "SELECT row, col, (SELECT TOP 1 volts FROM report AS r WHERE " TUBE(
         "r", "tubes") " ORDER BY volts DESC, recd_num) AS v FROM tubes",
     "SELECT row, col, (SELECT volts FROM report r WHERE " TUBE("r", "tubes") " ORDER BY volts DESC LIMIT 1) FROM "
                                                                              "tubes"},
    // Groups
    {"duplicates",
     "SELECT cal_num, file_num, recd_num FROM report WHERE cal_num IN (SELECT cal_num FROM report AS Tmp GROUP BY "
     "cal_num, file_num HAVING Count(*) > 1 AND file_num = report.file_num) ORDER BY cal_num",
     "SELECT cal_num, file_num, recd_num FROM report WHERE (cal_num, file_num) IN (SELECT cal_num, file_num FROM "
     "report GROUP BY cal_num, file_num HAVING count(*) > 1) ORDER BY cal_num, recd_num"},
    {"duplicates of five",
     "SELECT recd_num FROM report WHERE outage IN (SELECT outage FROM report AS Tmp GROUP BY outage, sec, row, col, "
     "oper_type HAVING Count(*) > 3 AND sec = report.sec AND row = report.row AND col = report.col AND oper_type = "
     "report.oper_type)",
     "SELECT recd_num FROM report WHERE (outage, sec, row, col, oper_type) IN (SELECT outage, sec, row, col, oper_type "
     "FROM report GROUP BY outage, sec, row, col, oper_type HAVING count(*) > 3)"},
    {"duplicates in part",
     "SELECT recd_num FROM report WHERE cal_num = 7 AND outage IN (SELECT outage FROM report AS Tmp GROUP BY outage, "
     "sec, row, col HAVING Count(*) > 3 AND sec = report.sec AND row = report.row AND col = report.col)",
     "SELECT recd_num FROM report WHERE cal_num = 7 AND (outage, sec, row, col) IN (SELECT outage, sec, row, col FROM "
     "report WHERE (sec, row, col) IN (SELECT sec, row, col FROM report WHERE cal_num = 7) GROUP BY outage, sec, row, "
     "col HAVING count(*) > 3)"},
    {"condition on a group key",
     "SELECT cal_num, Count(*) AS n, Max(volts) AS m FROM report GROUP BY cal_num HAVING cal_num = 7",
     "SELECT cal_num, count(*), max(volts) FROM report WHERE cal_num = 7 GROUP BY cal_num"},
    {"range of group keys",
     "SELECT defect, row, Count(*) AS n FROM report GROUP BY defect, row HAVING row Between 3 And 5 AND Count(*) > 2",
     "SELECT defect, row, count(*) FROM report WHERE row BETWEEN 3 AND 5 GROUP BY defect, row HAVING count(*) > 2"},
    // Joins of expressions
    {"join of texts",
     "SELECT r.recd_num, p.repair_type FROM report AS r INNER JOIN repairs AS p "
     "ON r.row & '/' & r.col = p.row & '/' & p.col",
     "SELECT r.recd_num, p.repair_type FROM repairs p JOIN report r ON r.row = p.row AND r.col = p.col ORDER BY "
     "r.recd_num, p.rowid"},
    {"outer join of texts",
     "SELECT r.recd_num, p.repair_type FROM report AS r LEFT JOIN repairs AS p "
     "ON r.row & '/' & r.col = p.row & '/' & p.col",
     "SELECT r.recd_num, p.repair_type FROM report r LEFT JOIN repairs p ON p.row = r.row AND p.col = r.col ORDER BY "
     "r.recd_num, p.rowid"},
    {"join of texts in where",
     "SELECT Count(*) AS n FROM report AS r, repairs AS p WHERE r.sec & '-' & r.row & '-' & r.col = p.sec & '-' & "
     "p.row & '-' & p.col",
     "SELECT count(*) FROM report r JOIN repairs p ON " TUBE("r", "p")},
    {"join of a sum",
     "SELECT Count(*) AS n FROM report AS r INNER JOIN repairs AS p ON r.row * 1000 + r.col = p.row * 1000 + p.col",
     "WITH k AS MATERIALIZED (SELECT row * 1000 + col AS k FROM repairs) SELECT count(*) FROM report r JOIN k ON "
     "k.k = r.row * 1000 + r.col"},
    // Views with labels
    {"view in a subquery",
     "SELECT row, col FROM tubes WHERE EXISTS (SELECT * FROM [report#] AS v WHERE v.recd_num = tubes.row)",
     "SELECT row, col FROM tubes t WHERE EXISTS (SELECT * FROM report v WHERE v.recd_num = t.row AND " LABELLED ")"},
    {"view in a list",
     "SELECT recd_num FROM report WHERE recd_num IN (SELECT recd_num FROM [report#] WHERE pcnt >= 50)",
     "SELECT recd_num FROM report WHERE recd_num IN (SELECT recd_num FROM report WHERE pcnt >= 50 AND " LABELLED ")"},
    {"groups of a view", "SELECT outage, defect, Count(*) AS n, Max(volts) AS m FROM [report#] GROUP BY outage, defect",
     "SELECT outage, defect, count(*), max(volts) FROM report WHERE " LABELLED " GROUP BY outage, defect"},
    {"sum over a view", "SELECT Count(*) AS n, Avg(volts) AS v FROM [report#] WHERE defect = 'DNT'",
     "SELECT count(*), avg(volts) FROM report WHERE defect = 'DNT' AND " LABELLED},
    {"view with a label",
     "SELECT recd_num FROM report WHERE recd_num IN (SELECT recd_num FROM [report#] WHERE "
     "row = '9' AND col = '9')",
     "SELECT recd_num FROM report WHERE recd_num IN (SELECT recd_num FROM report WHERE row IN (SELECT \"index\" FROM "
     "row_alias WHERE row = '9') AND col IN (SELECT \"index\" FROM col_alias WHERE col = '9') AND sec IN (SELECT "
     "\"index\" FROM sec_alias) AND leg IN (SELECT \"index\" FROM leg_alias))"},
    {"scalar of a view",
     "SELECT row, (SELECT Max(v.volts) FROM [report#] AS v WHERE v.cal_num = tubes.row) AS m FROM tubes WHERE col = 9",
     "SELECT row, (SELECT max(v.volts) FROM report v WHERE v.cal_num = tubes.row AND " LABELLED
     ") FROM tubes WHERE col = 9"},
    {"distinct of a view", "SELECT Count(*) AS n FROM (SELECT DISTINCT outage, cal_num, oper_type FROM [report#]) AS d",
     // here joins take a third of the time of the tests by IN
     "SELECT count(*) FROM (SELECT DISTINCT outage, cal_num, oper_type FROM report r JOIN sec_alias sa ON r.sec = "
     "sa.\"index\" JOIN row_alias ra ON r.row = ra.\"index\" JOIN col_alias ca ON r.col = ca.\"index\" JOIN leg_alias "
     "la ON r.leg = la.\"index\")"},
};

#undef LABELLED
#undef TUBE

} // namespace

std::span<const StatementPair> statementPairs()
{
    return kPairs;
}

} // namespace bench
