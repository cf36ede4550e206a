#include "RevisionFixture.h"

#include <db/Errors.h>
#include <db/revision/LegacyImport.h>
#include <QFile>

using namespace Qt::StringLiterals;

/// A foreign database, one or more rows of which are imported.
class LegacyImportTest : public RevisionTest
{
protected:
    LegacyImportTest() { old::makeForeignDatabase(path); }

    /// values: field and value as SQL text, of one row of EXAMDATA with number 7, tube 1 2 3.
    static QString examination(const QList<std::pair<QString, QString>> &values)
    {
        QString fields = u"PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL"_s;
        QString list = u"7, 1, 2, 3"_s;
        for (const auto &[field, value] : values) {
            fields += u", "_s + field;
            list += u", "_s + value;
        }
        return u"INSERT INTO EXAMDATA (%1) VALUES (%2)"_s.arg(fields, list);
    }

    /// Imports one row of EXAMDATA and returns the named columns of the result.
    QString imported(const QList<std::pair<QString, QString>> &values, const QString &columns)
    {
        const QString file = folder.path(u"arvo/one.mdb"_s);
        session.close();
        QFile::remove(file);
        old::makeForeignDatabase(file);
        old::executeAll(file, {examination(values)});
        EXPECT_TRUE(connectTo(file));
        EXPECT_EQ(errors(), QStringList());
        return rows(u"SELECT %1 FROM report"_s.arg(columns)).join(u' ');
    }
};

TEST_F(LegacyImportTest, IdentOfTheLastRowCounts)
{
    old::executeAll(path, {u"INSERT INTO IDENT (SITE, COMP) VALUES ('S9', 'SGX')"_s,
                           u"INSERT INTO IDENT (SITE, COMP) VALUES ('S1      ', '  SGA')"_s, examination({})});
    session.open(path);
    const db::LegacyIdent ident = db::readIdent(database());
    EXPECT_EQ(ident.site + u'/' + ident.comp, u"S1/SGA"_s);
    ASSERT_TRUE(connect());
    EXPECT_EQ(rows(u"SELECT site_code, comp FROM report"_s), QStringList{u"S1|SGA"_s});
}

TEST_F(LegacyImportTest, ProjectSuppliesWhatIsMissing)
{
    EXPECT_EQ(imported({}, u"recd_num, sec, row, col, site_code, comp, outage, analyst_id, oper_id, oper_type, leg, "
                           "defect, file_num, chan, meas_type, loc_land"_s),
              u"7|1|2|3|P1|PC|P12|UNKNOWN|UNKNOWN|PRI|1|NDD|0|-|-|-"_s);
    EXPECT_EQ(imported({{u"EXAMOUT"_s, u"' R10 '"_s}, {u"EXAMPERS"_s, u"'A1'"_s}, {u"EXAMOPER"_s, u"' P1'"_s}},
                       u"outage, analyst_id, oper_id"_s),
              u"R10|A1|P1"_s);
}

TEST_F(LegacyImportTest, MeasurementsNeedVolts)
{
    const QString columns = u"meas_type, volts, phase, pcnt, chan, defect"_s;
    EXPECT_EQ(imported({{u"EXAIVOLT"_s, u"1.5"_s},
                        {u"EXAIDEG"_s, u"170"_s},
                        {u"EXAIDEPH"_s, u"40"_s},
                        {u"EXAMCHAN"_s, u"' P 1 '"_s},
                        {u"EXAMINDN"_s, u"'DNT'"_s}},
                       columns),
              u"Vxx|1.5|170|40|P1|DNT"_s);
    EXPECT_EQ(imported({{u"EXAIVOLT"_s, u"1.5"_s}, {u"EXAMINDN"_s, u"' '"_s}}, columns), u"Vxx|1.5|0|-|-|-"_s)
        << "without a call, but not NDD";
    EXPECT_EQ(imported({{u"EXAIVOLT"_s, u"0"_s}, {u"EXAIDEG"_s, u"170"_s}, {u"EXAMINDN"_s, u"'DNT'"_s}}, columns),
              u"-|-|-|-|-|DNT"_s);
}

TEST_F(LegacyImportTest, PlacesLegsReelsAndExtents)
{
    const QString place = u"loc_land, loc_off, to_land, to_off"_s;
    EXPECT_EQ(imported({{u"EXAIVOLT"_s, u"1"_s}, {u"EXAILOC1"_s, u"'TSH '"_s}, {u"EXAILOC3"_s, u"0.5"_s}}, place),
              u"TSH|0.5|-|-"_s);
    EXPECT_EQ(imported({{u"EXAIVOLT"_s, u"1"_s}, {u"EXAILOC1"_s, u"'TSH'"_s}, {u"EXAILOC4"_s, u"2"_s}}, place),
              u"TSH|0|TSH|2"_s);
    for (const auto &[leg, number] :
         {std::pair(u"'o'"_s, u"0"_s), {u"'C '"_s, u"0"_s}, {u"'I'"_s, u"1"_s}, {u"''"_s, u"1"_s}})
        EXPECT_EQ(imported({{u"EXAMLEG"_s, leg == u"''" ? u"NULL"_s : leg}}, u"leg"_s), number) << leg.toStdString();
    for (const auto &[reel, number] : {std::pair(u"R012A"_s, 12), {u"R"_s, 0}, {QString(), 0}, {u"2B7"_s, 27}})
        EXPECT_EQ(db::fileNumberOf(reel), number) << reel.toStdString();
    for (const auto &[extent, tests] :
         {std::pair(u"tehTec"_s, u"TEH|TEC"_s), {u"F/L1HC"_s, u"F/L1HC|-"_s}, {u"TEHAV12"_s, u"TEHAV12|-"_s}})
        EXPECT_EQ(imported({{u"EXAMDEXT"_s, u"'%1'"_s.arg(extent)}}, u"beg_test, end_test"_s), tests);
}

TEST_F(LegacyImportTest, TextsAndTimes)
{
    EXPECT_EQ(imported({{u"EXAMTECH"_s, u"'BOB '"_s},
                        {u"EXAMINSP"_s, u"'INR12'"_s},
                        {u"USRTEXT1"_s, u"'u'"_s},
                        {u"USRTEXT2"_s, u"'v'"_s},
                        {u"NOTEPTR"_s, u"'note'"_s},
                        {u"EXAMLOG"_s, u"#4/3/2000 12:00:00#"_s}},
                       u"probe_type, plan, util1, util2, comment, entry_time"_s),
              u"BOB|INR12|u|v|note|36619.5"_s);
    EXPECT_EQ(imported({}, u"IIf(entry_time < #1/2/1970#, 'zero', 'later')"_s), u"zero"_s);
}

TEST_F(LegacyImportTest, TablesSideBySideAndInOneFile)
{
    QStringList statements{u"INSERT INTO IDENT (SITE, COMP) VALUES ('S1', 'SGA')"_s};
    for (int i = 250; i > 0; --i)
        statements.append(u"INSERT INTO EXAMDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL) VALUES (%1, 0, 1, 2)"_s.arg(i));
    statements +=
        {u"INSERT INTO REPRDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, REPRDESC, REPRISUD, HEAT2, FLAWLOC3, REPROUT) "
         "VALUES (1, 0, 4, 5, 'Plug', #4/18/2000#, 'H1', 0.25, 'R10')"_s,
         u"INSERT INTO TUBEDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, TUBESTAT) VALUES (1, 0, 1, 3, 'OK')"_s,
         u"INSERT INTO TUBEDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, TUBESTAT) VALUES (2, 0, 1, 5, 'PL')"_s,
         u"INSERT INTO TUBEDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL, TUBESTAT) VALUES (3, 0, 1, 7, 'IN')"_s};
    old::executeAll(path, statements);
    ASSERT_TRUE(connect());
    EXPECT_EQ(said(Entry::Kind::Status),
              (QStringList{u"Converting ISIS record   100 ..."_s, u"Converting ISIS record   200 ..."_s, u"Done"_s,
                           u"Connected to \"project.mdb\"."_s}));
    EXPECT_EQ(informations() + questions() + errors(), QStringList());
    EXPECT_FALSE(hasBackup());
    EXPECT_EQ(rows(u"SELECT COUNT(*), MIN(recd_num), MAX(recd_num) FROM report"_s), QStringList{u"250|1|250"_s});
    EXPECT_EQ(rows(u"SELECT row, col, repair_type, type, heat2, loc_off, site_code, comp, outage FROM repairs"_s),
              QStringList{u"4|5|Plug|-|H1|0.25|S1|SGA|R10"_s});
    EXPECT_EQ(rows(u"SELECT * FROM tube_set_entry ORDER BY name"_s),
              (QStringList{u"IN|3|0|1|7|16711680|9679"_s, u"PL|2|0|1|5|0|9679"_s}));
    EXPECT_TRUE(database().hasTable(u"EXAMDATA"));
    EXPECT_FALSE(database().hasQuery(u"report#")) << "the revision conversion does not run after an import";

    // From now on it is a database like any other.
    ASSERT_TRUE(connect());
    EXPECT_EQ(questions(), QStringList());
    EXPECT_TRUE(database().hasQuery(u"report#"));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 250);
}

TEST_F(LegacyImportTest, AnEntryThatFailsUndoesTheWholeImport)
{
    old::executeAll(path, {examination({}), examination({{u"EXAIVOLT"_s, u"1"_s}})});
    const QByteArray before = bytes();
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList{u"1021 Could not upload report entry."_s}) << "the same number twice";
    EXPECT_EQ(informations(), QStringList{u"The import failed. The database is as it was."_s});
    EXPECT_TRUE(said(Entry::Kind::Error)
                    .first()
                    .endsWith(u"\nIt is index 'recd_num' of table 'report'. Record 7 of EXAMDATA."_s))
        << said(Entry::Kind::Error).first().toStdString();
    EXPECT_FALSE(database().hasTable(u"report"));
    session.close();
    EXPECT_EQ(bytes(), before);
    ASSERT_TRUE(connect()) << "it is tried again";
    EXPECT_EQ(errors(), QStringList{u"1021 Could not upload report entry."_s});
}

TEST_F(LegacyImportTest, ANumberThatDoesNotFitIsNoZero)
{
    old::executeAll(path, {u"ALTER TABLE EXAMDATA ALTER COLUMN TUBEROW LONG"_s, examination({}),
                           u"INSERT INTO EXAMDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL) VALUES (8, 0, 40000, 2)"_s});
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList{u"1021 Could not upload report entry."_s});
    const QString text = said(Entry::Kind::Error).first();
    EXPECT_TRUE(text.contains(u"[3421]"_s) && text.contains(u"'TUBEROW'"_s)) << text.toStdString();
    EXPECT_TRUE(text.endsWith(u"Record 8 of EXAMDATA."_s)) << text.toStdString();
    EXPECT_FALSE(database().hasTable(u"report"));
}

TEST_F(LegacyImportTest, WhatIsNotImportedIsSaid)
{
    old::executeAll(path, {examination({})});
    prompts.clear();
    ASSERT_TRUE(db::connectDatabase(session, path, {}));
    EXPECT_EQ(informations(), QStringList{u"The foreign tables were not imported: no project is loaded."_s});
    EXPECT_FALSE(database().hasTable(u"report"));
    session.close();
    const QByteArray before = bytes();
    prompts.clear();
    db::ConnectContext context{&project};
    context.importsForeign = false;
    ASSERT_TRUE(db::connectDatabase(session, path, context));
    EXPECT_EQ(informations(), QStringList{u"The foreign tables were not imported: this was not asked for."_s});
    session.close();
    EXPECT_EQ(bytes(), before);
}

TEST_F(LegacyImportTest, RepairsAndTubeSetsFailByThemselves)
{
    old::executeAll(
        path, {examination({}), u"DROP TABLE TUBEDATA"_s, u"INSERT INTO IDENT (SITE, COMP) VALUES ('O''S', 'C')"_s});
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(),
              (QStringList{u"1022 Could not convert ISIS REPRDATA."_s, u"1023 Could not convert ISIS TUBEDATA."_s}));
    EXPECT_EQ(rows(u"SELECT site_code FROM report"_s), QStringList{u"O'S"_s});
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tube_sets"_s), 0);
}

TEST_F(LegacyImportTest, WhatIsMissingOrDoesNotFitIsNamed)
{
    struct Case
    {
        QStringList obstacle;
        QString named;
        bool isConnected;
    };
    const QString wide = u"ALTER TABLE EXAMDATA ALTER COLUMN EXAMTECH TEXT(90)"_s;
    for (const Case &given : std::initializer_list<Case>{
             {{u"DROP TABLE IDENT"_s}, u"[3078] DAO.Database The foreign database has no table 'IDENT'."_s, false},
             {{u"ALTER TABLE EXAMDATA DROP COLUMN EXAIDEG"_s, u"ALTER TABLE EXAMDATA DROP COLUMN NOTEPTR"_s},
              u"The foreign table 'EXAMDATA' has no column 'EXAIDEG', 'NOTEPTR'."_s,
              false},
             {{u"ALTER TABLE REPRDATA DROP COLUMN HEAT2"_s}, u"'REPRDATA' has no column 'HEAT2'."_s, true},
             {{u"DROP TABLE TUBEDATA"_s}, u"has no table 'TUBEDATA'."_s, true},
             {{wide, examination({{u"EXAMTECH"_s, u"'%1'"_s.arg(QString(80, u'x'))}})}, u"'report.probe_type'"_s, true},
         }) {
        SCOPED_TRACE(given.obstacle.first().toStdString());
        session.close();
        QFile::remove(path);
        old::makeForeignDatabase(path);
        old::executeAll(path, given.obstacle);
        const QByteArray before = bytes();
        EXPECT_EQ(connect(), given.isConnected);
        ASSERT_EQ(errors().size(), 1);
        EXPECT_TRUE(said(Entry::Kind::Error).first().contains(given.named))
            << said(Entry::Kind::Error).first().toStdString();
        session.close();
        EXPECT_TRUE(given.isConnected || bytes() == before);
    }
}
