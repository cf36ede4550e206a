#include "StoredQueries.h"

using namespace Qt::StringLiterals;

namespace demo {

namespace {

struct Template
{
    const char16_t *fileName;
    const char16_t *sql; // %1: the present outage, %2: the one before, %3: where bars or plates wear, as a pattern
};

constexpr Template kTemplates[] = {
    {u"depth_40_and_above.qry", u"SELECT DISTINCT sec, row, col\n"
                                u"FROM report\n"
                                u"WHERE pcnt >= 40 AND defect <> 'NDD'\n"},
    {u"depth_20_to_39.qry", u"SELECT DISTINCT sec, row, col\n"
                            u"FROM report\n"
                            u"WHERE outage = '%1' AND pcnt BETWEEN 20 AND 39\n"},
    {u"wear.qry", u"SELECT DISTINCT sec, row, col\n"
                  u"FROM report\n"
                  u"WHERE outage = '%1' AND defect IN ('WAR', 'PCT') AND loc_land LIKE '%3'\n"},
    {u"cracks.qry", u"SELECT DISTINCT sec, row, col\n"
                    u"FROM report\n"
                    u"WHERE defect IN ('SAI', 'MAI', 'SCI', 'MCI')\n"},
    {u"volumetric.qry", u"SELECT DISTINCT sec, row, col\n"
                        u"FROM report\n"
                        u"WHERE defect IN ('VOL', 'SVI', 'MVI')\n"},
    {u"dents_above_5_volts.qry", u"SELECT DISTINCT sec, row, col\n"
                                 u"FROM report\n"
                                 u"WHERE defect IN ('DNT', 'DNG') AND volts >= 5\n"},
    {u"plugged.qry", u"SELECT DISTINCT sec, row, col\n"
                     u"FROM report\n"
                     u"WHERE defect = 'PLG'\n"},
    {u"open_questions.qry", u"SELECT DISTINCT r.sec, r.row, r.col\n"
                            u"FROM report AS r\n"
                            u"WHERE r.outage = '%1' AND r.defect IN ('DTI', 'DSI', 'NQI')\n"
                            u"AND NOT EXISTS (SELECT * FROM report AS s\n"
                            u"    WHERE s.outage = r.outage AND s.sec = r.sec AND s.row = r.row AND s.col = r.col\n"
                            u"    AND s.probe_type = 'RPC')\n"},
    {u"not_inspected.qry", u"SELECT t.sec, t.row, t.col\n"
                           u"FROM tubes AS t\n"
                           u"WHERE NOT EXISTS (SELECT * FROM report AS r\n"
                           u"    WHERE r.outage = '%1' AND r.sec = t.sec AND r.row = t.row AND r.col = t.col)\n"},
    {u"periphery_indications.qry",
     u"SELECT DISTINCT r.sec, r.row, r.col\n"
     u"FROM report AS r INNER JOIN tubes AS t ON (r.sec = t.sec AND r.row = t.row AND r.col = t.col)\n"
     u"WHERE t.is_periph = True AND r.defect NOT IN ('NDD', 'PLG')\n"},
    {u"growth.qry",
     u"SELECT b.sec, b.row, b.col, b.loc_land, a.pcnt AS before, b.pcnt AS after, b.pcnt - a.pcnt AS growth\n"
     u"FROM report AS a INNER JOIN report AS b\n"
     u"    ON (a.sec = b.sec AND a.row = b.row AND a.col = b.col AND a.loc_land = b.loc_land)\n"
     u"WHERE a.outage = '%2' AND b.outage = '%1' AND a.oper_type = 'RES' AND b.oper_type = 'RES'\n"
     u"    AND a.pcnt > 0 AND b.pcnt > a.pcnt\n"
     u"ORDER BY b.pcnt - a.pcnt DESC, b.sec, b.row, b.col\n"},
    {u"deepest_of_each_tube.qry", u"SELECT sec, row, col, MAX(pcnt) AS deepest, COUNT(*) AS calls\n"
                                  u"FROM report\n"
                                  u"WHERE outage = '%1' AND pcnt > 0\n"
                                  u"GROUP BY sec, row, col\n"
                                  u"HAVING MAX(pcnt) >= [Least depth]\n"
                                  u"ORDER BY MAX(pcnt) DESC, sec, row, col\n"},
    {u"calls_of_one_code.qry",
     u"PARAMETERS [Code] Text;\n"
     u"SELECT sec, row, col, outage, oper_type, volts, phase, pcnt, loc_land, loc_off, analyst_id, comment\n"
     u"FROM report\n"
     u"WHERE defect = [Code]\n"
     u"ORDER BY sec, row, col, outage\n"},
    {u"codes_by_outage.qry", u"TRANSFORM COUNT(*)\n"
                             u"SELECT defect\n"
                             u"FROM report\n"
                             u"GROUP BY defect\n"
                             u"PIVOT outage\n"},
    {u"totals.qry", u"SELECT outage, oper_type, COUNT(*) AS results, SUM(IIF(defect = 'NDD', 0, 1)) AS indications\n"
                    u"FROM report\n"
                    u"GROUP BY outage, oper_type\n"
                    u"ORDER BY outage, oper_type\n"},
    {u"analysts.qry", u"SELECT analyst_id, oper_type, COUNT(*) AS results, AVG(volts) AS mean_volts\n"
                      u"FROM report\n"
                      u"WHERE outage = '%1' AND defect <> 'NDD'\n"
                      u"GROUP BY analyst_id, oper_type\n"
                      u"ORDER BY COUNT(*) DESC\n"},
    {u"primary_without_secondary.qry",
     u"SELECT p.sec, p.row, p.col, p.defect, p.loc_land, p.volts, p.pcnt\n"
     u"FROM report AS p LEFT JOIN (SELECT * FROM report WHERE oper_type = 'SEC') AS s\n"
     u"    ON (p.outage = s.outage AND p.cal_num = s.cal_num AND p.sec = s.sec AND p.row = s.row\n"
     u"    AND p.col = s.col AND p.defect = s.defect AND p.loc_land = s.loc_land)\n"
     u"WHERE p.outage = '%1' AND p.oper_type = 'PRI' AND p.loc_land IS NOT NULL AND s.recd_num IS NULL\n"
     u"ORDER BY p.sec, p.row, p.col\n"},
};

} // namespace

QList<StoredQuery> storedQueries(const brannock::Project &project)
{
    const QString present = project.outages.last().name;
    const QString before = project.outages.size() > 1 ? project.outages[project.outages.size() - 2].name : present;
    const bool hasBars = project.steamGen.landmarkSets.last().find(u"AV1") >= 0;
    QList<StoredQuery> queries;
    for (const Template &one : kTemplates) {
        QString sql = QString::fromUtf16(one.sql);
        sql.replace(u"%1"_s, present).replace(u"%2"_s, before).replace(u"%3"_s, hasBars ? u"AV*"_s : u"*S"_s);
        queries.append({QString::fromUtf16(one.fileName), sql});
    }
    return queries;
}

} // namespace demo
