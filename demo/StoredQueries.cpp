#include "StoredQueries.h"

#include <query/QueryDocument.h>

using namespace Qt::StringLiterals;

namespace demo {

namespace {

struct Template
{
    const char16_t *fileName;
    const char16_t *title;
    const char16_t *sql; // %1: the present outage, %2: the one before, %3: where bars or plates wear, as a pattern;
                         // %4: a count for each outage, after a comma
};

constexpr Template kTemplates[] = {
    {u"depth_40_and_above.qry", u"Tubes with a depth of 40% and above",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE pcnt >= 40 AND defect <> 'NDD'\n"},
    {u"depth_20_to_39.qry", u"Tubes with a depth of 20% to 39%, outage %1",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE outage = '%1' AND pcnt BETWEEN 20 AND 39\n"},
    {u"wear.qry", u"Tubes with wear, outage %1",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE outage = '%1' AND defect IN ('WAR', 'PCT') AND loc_land LIKE '%3'\n"},
    {u"cracks.qry", u"Tubes with cracks",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE defect IN ('SAI', 'MAI', 'SCI', 'MCI')\n"},
    {u"volumetric.qry", u"Tubes with volumetric indications",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE defect IN ('VOL', 'SVI', 'MVI')\n"},
    {u"dents_above_5_volts.qry", u"Tubes with dents of 5 volts and above",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE defect IN ('DNT', 'DNG') AND volts >= 5\n"},
    {u"plugged.qry", u"Plugged tubes",
     u"SELECT DISTINCT sec, row, col\n"
     u"FROM report\n"
     u"WHERE defect = 'PLG'\n"},
    {u"open_questions.qry", u"Distorted indications without a rotating probe test, outage %1",
     u"SELECT DISTINCT r.sec, r.row, r.col\n"
     u"FROM report AS r\n"
     u"WHERE r.outage = '%1' AND r.defect IN ('DTI', 'DSI', 'NQI')\n"
     u"AND NOT EXISTS (SELECT * FROM report AS s\n"
     u"    WHERE s.outage = r.outage AND s.sec = r.sec AND s.row = r.row AND s.col = r.col\n"
     u"    AND s.probe_type = 'RPC')\n"},
    {u"not_inspected.qry", u"Tubes without a result, outage %1",
     u"SELECT t.sec, t.row, t.col\n"
     u"FROM tubes AS t\n"
     u"WHERE NOT EXISTS (SELECT * FROM report AS r\n"
     u"    WHERE r.outage = '%1' AND r.sec = t.sec AND r.row = t.row AND r.col = t.col)\n"},
    {u"periphery_indications.qry", u"Indications on the periphery",
     u"SELECT DISTINCT r.sec, r.row, r.col\n"
     u"FROM report AS r INNER JOIN tubes AS t ON (r.sec = t.sec AND r.row = t.row AND r.col = t.col)\n"
     u"WHERE t.is_periph = True AND r.defect NOT IN ('NDD', 'PLG')\n"},
    {u"growth.qry", u"Growth of depth from %2 to %1",
     u"SELECT b.sec, b.row, b.col, b.loc_land, b.loc_off, a.pcnt AS before, b.pcnt AS after, b.pcnt - a.pcnt AS "
     u"growth\n"
     u"FROM report AS a INNER JOIN report AS b\n"
     u"    ON (a.sec = b.sec AND a.row = b.row AND a.col = b.col AND a.loc_land = b.loc_land\n"
     u"    AND a.probe_type = b.probe_type)\n"
     u"WHERE a.outage = '%2' AND b.outage = '%1' AND a.oper_type = 'RES' AND b.oper_type = 'RES'\n"
     u"    AND Abs(b.loc_off - a.loc_off) <= 0.15 AND a.pcnt > 0 AND b.pcnt > 0\n"
     u"ORDER BY b.pcnt - a.pcnt DESC, b.sec, b.row, b.col\n"},
    {u"deepest_of_each_tube.qry", u"Deepest call of each tube, outage %1",
     u"SELECT sec, row, col, MAX(pcnt) AS deepest, COUNT(*) AS calls\n"
     u"FROM report\n"
     u"WHERE outage = '%1' AND pcnt > 0\n"
     u"GROUP BY sec, row, col\n"
     u"HAVING MAX(pcnt) >= [Least depth]\n"
     u"ORDER BY MAX(pcnt) DESC, sec, row, col\n"},
    {u"calls_of_one_code.qry", u"Calls of one code",
     u"PARAMETERS [Code] Text;\n"
     u"SELECT sec, row, col, outage, oper_type, volts, phase, pcnt, loc_land, loc_off, analyst_id, comment\n"
     u"FROM report\n"
     u"WHERE defect = [Code]\n"
     u"ORDER BY sec, row, col, outage\n"},
    {u"codes_by_outage.qry", u"Codes by outage",
     u"SELECT defect, COUNT(*) AS results%4\n"
     u"FROM report\n"
     u"GROUP BY defect\n"
     u"ORDER BY defect\n"},
    {u"totals.qry", u"Results by outage and operation",
     u"SELECT outage, oper_type, COUNT(*) AS results, SUM(IIF(defect = 'NDD', 0, 1)) AS indications\n"
     u"FROM report\n"
     u"GROUP BY outage, oper_type\n"
     u"ORDER BY outage, oper_type\n"},
    {u"analysts.qry", u"Calls by analyst, outage %1",
     u"SELECT analyst_id, oper_type, COUNT(*) AS results, AVG(volts) AS mean_volts\n"
     u"FROM report\n"
     u"WHERE outage = '%1' AND defect <> 'NDD'\n"
     u"GROUP BY analyst_id, oper_type\n"
     u"ORDER BY COUNT(*) DESC\n"},
    {u"largest_voltages.qry", u"The twenty largest signals, outage %1",
     u"SELECT TOP 20 sec, row, col, defect, volts, phase, loc_land, loc_off\n"
     u"FROM report\n"
     u"WHERE outage = '%1' AND oper_type = 'RES'\n"
     u"ORDER BY volts DESC\n"},
    {u"out_of_service.qry", u"Tubes found plugged or repaired",
     u"SELECT sec, row, col FROM report WHERE defect = 'PLG'\n"
     u"UNION SELECT sec, row, col FROM repairs WHERE date_completed IS NOT NULL\n"
     u"ORDER BY sec, row, col\n"},
    {u"results_by_day.qry", u"Results of each day, outage %1",
     u"SELECT Format(entry_time, 'yyyy-mm-dd') AS day_tested, COUNT(*) AS results, Max(volts) AS largest\n"
     u"FROM report\n"
     u"WHERE outage = '%1'\n"
     u"GROUP BY Format(entry_time, 'yyyy-mm-dd')\n"
     u"ORDER BY Format(entry_time, 'yyyy-mm-dd')\n"},
    {u"primary_without_secondary.qry", u"Primary calls that the secondary analyst did not make, outage %1",
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
    QString counts;
    for (const brannock::Project::Outage &outage : project.outages)
        counts += u", SUM(IIF(outage = '%1', 1, 0)) AS %1"_s.arg(outage.name);
    const auto filled = [&](const char16_t *text) {
        QString result = QString::fromUtf16(text);
        return result.replace(u"%1"_s, present)
            .replace(u"%2"_s, before)
            .replace(u"%4"_s, counts)
            .replace(u"%3"_s, hasBars ? u"AV*"_s : u"*S"_s);
    };
    QList<StoredQuery> queries;
    for (const Template &one : kTemplates)
        queries.append({QString::fromUtf16(one.fileName), filled(one.title), filled(one.sql)});
    return queries;
}

void writeQueries(const brannock::Project &project)
{
    using tarnwick::JTablePrintArg;
    for (const StoredQuery &stored : storedQueries(project)) {
        query::QueryDocument document;
        document.name = u"queries\\"_s + stored.fileName;
        document.sql = stored.sql;
        document.layout.sections[JTablePrintArg::ReportTitle].text = stored.title + u'\n';
        document.layout.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]\n"_s;
        query::writeQueryFile(document, project.folder + u"/queries/" + stored.fileName);
    }
}

} // namespace demo
