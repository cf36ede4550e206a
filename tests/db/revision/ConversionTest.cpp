#include "RevisionFixture.h"

#include <db/revision/RevisionConversion.h>

#include <db/Errors.h>
#include <db/SqlText.h>
#include <QDir>
#include <QFile>
#include <QtEndian>

using namespace Qt::StringLiterals;

class ConversionTest : public RevisionTest
{
protected:
    QString questionText() const
    {
        return u"Do you wish to convert:\n\n\t\"%1\"\n\nto 1.0 format?\n\nWarning:\n\n"
               "    Choosing NO  will cause some operations to fail.\n\n"
               "    Choosing YES will cause modifications to the database.\n"
               "    A backup will be made to \"%2\""_s.arg(path, folder.path(u"arvo/project._db"_s));
    }

    /// The tables of a new database with their fields, sorted.
    QMap<QString, QStringList> presentFields()
    {
        const QString present = folder.path(u"present.mdb"_s);
        old::makeDatabase(present, old::Current);
        db::DatabaseSession other(prompts);
        other.open(present);
        QMap<QString, QStringList> tables;
        for (const QString &table : other.database().tableNames())
            if (!(other.database().table(table).attributes & dao::SystemObject))
                tables[table] = fieldsOf(other.database().table(table));
        return tables;
    }
};

struct StepCase
{
    const char *name;
    int shapes;
    const char16_t *steps;
};

static void PrintTo(const StepCase &step, std::ostream *out)
{
    *out << step.name;
}

class ConversionStepTest : public ConversionTest, public ::testing::WithParamInterface<StepCase>
{
};

TEST_P(ConversionStepTest, AsksBacksUpAndConverts)
{
    make(GetParam().shapes);
    folder.write(u"arvo/project._db"_s, "the backup of last year");
    const QByteArray before = bytes();
    ASSERT_TRUE(convert());
    EXPECT_EQ(questions(), QStringList{questionText()});
    EXPECT_EQ(informations(), QStringList{u"Conversions:\n"_s + GetParam().steps});
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(folder.read(u"arvo/project._db"_s), before);
    EXPECT_FALSE(database().hasTable(u"display_format"));
    for (const auto &[table, present] : presentFields().asKeyValueRange())
        EXPECT_EQ(fields(table), present) << table.toStdString();

    const QByteArray converted = bytes();
    ASSERT_TRUE(connect());
    EXPECT_EQ(said(Entry::Kind::Status), QStringList{u"Connected to \"project.mdb\"."_s}) << "nothing left to do";
    EXPECT_EQ(bytes(), converted);
    EXPECT_EQ(folder.names(u"arvo"_s), (QStringList{u"project._db"_s, u"project.mdb"_s}));
}

TEST_P(ConversionStepTest, DeclinedLeavesTheFileAsItIs)
{
    const QByteArray before = makeOld({}, GetParam().shapes);
    ASSERT_TRUE(connect({Answer::No}));
    EXPECT_EQ(questions(), QStringList{questionText()});
    EXPECT_EQ(informations(), QStringList());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(bytes(), before);
    EXPECT_FALSE(hasBackup());
    EXPECT_EQ(prompts.lastStatus(), u"Connected to \"project.mdb\"."_s);
}

INSTANTIATE_TEST_SUITE_P(
    EachAlone, ConversionStepTest,
    ::testing::Values(StepCase{"DisplayFormat", old::DisplayFormat, u"    1) Deleted display_format table.\n"},
                      StepCase{"Repairs", old::NoRepairs, u"    1) Created repairs table.\n"},
                      StepCase{"Report", old::Report, u"    1) Modified report table.\n"},
                      StepCase{"Landmarks", old::Landmarks, u"    1) Modified landmarks table.\n"},
                      StepCase{"TubeSets", old::TubeSets, u"    1) Modified tube_sets table.\n"},
                      StepCase{"Plans", old::Plans, u"    1) Modified plans and plan_entry tables.\n"},
                      StepCase{"Tubes", old::Tubes, u"    1) Modified tubes table.\n"},
                      StepCase{"Aliases", old::NoAliases,
                               u"    1) Created row_alias table.\n    2) Created col_alias table.\n"
                               u"    3) Created sec_alias table.\n    4) Created leg_alias table.\n"}),
    [](const auto &shape) { return shape.param.name; });

TEST_F(ConversionTest, EveryOldShapeAtOnce)
{
    make(old::Everything);
    ASSERT_TRUE(convert());
    EXPECT_EQ(informations(), QStringList{u"Conversions:\n"
                                          "    1) Deleted display_format table.\n"
                                          "    2) Created repairs table.\n"
                                          "    3) Modified report table.\n"
                                          "    4) Modified landmarks table.\n"
                                          "    5) Modified tube_sets table.\n"
                                          "    6) Modified plans and plan_entry tables.\n"
                                          "    7) Modified tubes table.\n"
                                          "    8) Created row_alias table.\n"
                                          "    9) Created col_alias table.\n"
                                          "    10) Created sec_alias table.\n"
                                          "    11) Created leg_alias table.\n"_s});
    EXPECT_EQ(
        said(Entry::Kind::Status),
        (QStringList{u"Backing up \"%1\" to \"%2\" ..."_s.arg(path, folder.path(u"arvo/project._db"_s)),
                     u"Converting database ..."_s, u"Conversion complete."_s, u"Connected to \"project.mdb\"."_s}));
    EXPECT_EQ(connected, QStringList{path});
    // The view leaves out what has no label: of the rows 1 to 4, the second and the fourth.
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 12);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM [report#]"_s), 6);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM plan_entry"_s), 6);
}

TEST_F(ConversionTest, RowsKeepTheirValuesAndGetWhatIsNew)
{
    make(old::Everything);
    ASSERT_TRUE(convert());
    EXPECT_EQ(rows(u"SELECT recd_num, row, comment, util1, plan FROM report WHERE recd_num < 3"_s),
              (QStringList{u"1|1|Entry 0|-|-"_s, u"2|2|Entry 1|-|-"_s}));
    EXPECT_EQ(rows(u"SELECT number, name, pos, land_set FROM landmarks"_s),
              (QStringList{u"0|TEH|0|0"_s, u"1|TSH|20.5|0"_s}));
    EXPECT_EQ(rows(u"SELECT name, row, col, entry_num, color, symbol FROM tube_set_entry"_s),
              QStringList{u"PL|1|2|0|0|0"_s});
    EXPECT_EQ(rows(u"SELECT row, col, x, y, is_periph FROM tubes WHERE col < 3"_s),
              (QStringList{u"1|1|0|0|0"_s, u"1|2|0|0|-1"_s}));
    EXPECT_TRUE(database().table(u"landmarks").field(u"land_set")->required);
    EXPECT_FALSE(database().table(u"report").field(u"plan")->required);
    EXPECT_EQ(database().table(u"report").field(u"plan")->size, 255);
}

TEST_F(ConversionTest, PlansAreNamedAfterTheirNumbers)
{
    make(old::Plans);
    ASSERT_TRUE(convert());
    EXPECT_EQ(rows(u"SELECT name, probe_model FROM plans ORDER BY name"_s),
              (QStringList{u"S1_SGA_R11_2|PB-7"_s, u"S1_SGA_R12_1|PB-7"_s, u"S1_SGA_R12_3|PB-7"_s}));
    EXPECT_EQ(rows(u"SELECT name, entry_num, is_done FROM plan_entry WHERE name = 'S1_SGA_R12_3'"_s),
              (QStringList{u"S1_SGA_R12_3|0|0"_s, u"S1_SGA_R12_3|1|-1"_s}));
    EXPECT_EQ(indexes(u"plans"_s), QStringList{u"name primary name"_s});
    EXPECT_EQ(indexes(u"plan_entry"_s), (QStringList{u"name name"_s, u"primary primary name,entry_num"_s}));
    ASSERT_EQ(database().relations().size(), 2);
    db::executeSql(database(), u"UPDATE plans SET name = 'new' WHERE name = 'S1_SGA_R12_3'"_s);
    db::executeSql(database(), u"DELETE FROM plans WHERE name = 'S1_SGA_R11_2'"_s);
    EXPECT_EQ(rows(u"SELECT DISTINCT name FROM plan_entry ORDER BY name"_s),
              (QStringList{u"new"_s, u"S1_SGA_R12_1"_s}));
    EXPECT_THROW(db::executeSql(database(), u"INSERT INTO plan_entry (name) VALUES ('nobody''s')"_s),
                 dao::DaoException);
}

TEST_F(ConversionTest, LandmarksAreConvertedAsFarAsTheyNeedIt)
{
    make(old::Landmarks);
    ASSERT_TRUE(convert());
    EXPECT_EQ(indexes(u"landmarks"_s), QStringList{u"primary_key primary name,land_set"_s});

    // A landmark without a set, or a missing key, is reason enough by itself.
    database().deleteIndex(u"landmarks", u"primary_key");
    session.close();
    ASSERT_TRUE(convert());
    EXPECT_EQ(informations(), QStringList{u"Conversions:\n    1) Modified landmarks table.\n"_s});
    EXPECT_EQ(indexes(u"landmarks"_s), QStringList{u"primary_key primary name,land_set"_s});
}

TEST_F(ConversionTest, ViewsShowLabelsAndFollowTheTables)
{
    make(old::Current);
    ASSERT_TRUE(connect());
    EXPECT_EQ(questions(), QStringList());
    EXPECT_EQ(database().query(u"tubes#").sql,
              u"SELECT sa.sec, ra.row, ca.col, x, y, is_periph, is_marked\n"
              "FROM tubes r, row_alias ra, col_alias ca, sec_alias sa\n"
              "WHERE r.row = ra.index\nAND r.col = ca.index\nAND r.sec = sa.index\n"_s);
    EXPECT_EQ(rows(u"SELECT * FROM row_alias ORDER BY index"_s), (QStringList{u"0|A"_s, u"1|B"_s, u"3|D"_s}));
    EXPECT_EQ(rows(u"SELECT * FROM sec_alias"_s), QStringList{u"0|0"_s});
    EXPECT_EQ(rows(u"SELECT * FROM leg_alias ORDER BY index"_s),
              (QStringList{u"-1|NONE"_s, u"0|OUTLET"_s, u"1|INLET"_s, u"2|UBEND"_s}));
    EXPECT_EQ(rows(u"SELECT DISTINCT [sec], [row], [col] FROM [tubes#] WHERE [col] = '2'"_s), QStringList{u"0|B|2"_s});

    // Also when the user declines.
    database().setQuerySql(u"report#", u"SELECT 1"_s);
    db::executeSql(database(), u"UPDATE row_alias SET row = 'X'"_s);
    database().deleteField(u"tubes", u"y");
    database().deleteField(u"tubes", u"x");
    session.close();
    ASSERT_TRUE(connect({Answer::No}));
    EXPECT_TRUE(database().query(u"report#").sql.startsWith(u"SELECT recd_num, sa.sec, ra.row, ca.col, chan, "_s));
    EXPECT_TRUE(database().query(u"tubes#").sql.startsWith(u"SELECT sa.sec, ra.row, ca.col, is_periph"_s));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM row_alias WHERE row = 'X'"_s), 0);
}

TEST_F(ConversionTest, FieldsAreFoundByNameAndMayBeCalledByWordsOfTheGrammar)
{
    make(old::Current);
    ASSERT_TRUE(connect());
    const auto shown = [this] {
        return rows(u"SELECT row, col, [order], r.index FROM [tubes#] r ORDER BY row, col"_s);
    };
    for (const QString &name : {u"order"_s, u"null"_s, u"index"_s, u"top"_s}) {
        dao::FieldInfo field;
        field.name = name;
        field.type = dao::DataType::Long;
        database().addField(u"tubes", field);
    }
    session.close();
    ASSERT_TRUE(connect());
    EXPECT_TRUE(database().query(u"tubes#").sql.contains(u"is_marked, [order], [null], r.index, top\n"_s));
    for (const int row : {0, 3})
        db::executeSql(database(), u"INSERT INTO tubes (sec, row, col) VALUES (0, %1, 2)"_s.arg(row));
    const QStringList before = shown();
    EXPECT_TRUE(before.contains(u"B|2|-|-"_s)) << before.join(u' ').toStdString();

    // The fields of a foreign program's table stand in the other order, and its rows have no key.
    database().deleteTable(u"row_alias");
    db::executeSql(database(), u"CREATE TABLE row_alias (row TEXT(50), [index] SHORT, note TEXT(9))"_s);
    for (int copy = 0; copy < 2; ++copy)
        db::executeSql(database(), u"INSERT INTO row_alias (row, [index]) VALUES ('B', 1)"_s);
    session.close();
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(shown(), before);
    session.close();
    const QByteArray refilled = bytes();
    ASSERT_TRUE(connect());
    EXPECT_EQ(rows(u"SELECT index, row FROM row_alias ORDER BY index"_s), (QStringList{u"0|A"_s, u"1|B"_s, u"3|D"_s}));
    session.close();
    EXPECT_EQ(bytes(), refilled) << "nothing differs, so nothing is written";
}

TEST_F(ConversionTest, ADamagedDatabaseIsNotConverted)
{
    make(old::Tubes, {.tubes = 400});
    QByteArray damaged = bytes();
    constexpr int kPage = 4096;
    damaged.replace(damaged.size() - kPage, 100, QByteArray(100, 'z'));
    folder.write(u"arvo/project.mdb"_s, damaged);
    ASSERT_TRUE(convert());
    ASSERT_FALSE(errors().isEmpty());
    EXPECT_TRUE(errors().first().startsWith(u"0 The database "_s));
    EXPECT_TRUE(said(Entry::Kind::Error).first().endsWith(u"It is not converted. Restore a backup of it."_s));
    session.close();
    EXPECT_EQ(bytes(), damaged);
    EXPECT_FALSE(hasBackup());
}

/// What a program that was killed leaves beside the file: the first page as it was before its change.
static QByteArray journalOf(const QByteArray &firstPage)
{
    constexpr int kSector = 512;
    constexpr quint32 kNonce = 7;
    QByteArray journal = QByteArray::fromHex("d9d505f920a163d7");
    const auto add = [&](quint32 number) {
        for (int shift = 24; shift >= 0; shift -= 8)
            journal.append(char(number >> shift));
    };
    const quint32 pages = qFromBigEndian<quint32>(firstPage.constData() + 28);
    for (const quint32 number : {1U, kNonce, pages, quint32(kSector), quint32(firstPage.size())})
        add(number);
    journal.append(kSector - journal.size(), '\0');
    add(1);
    journal.append(firstPage);
    quint32 sum = kNonce;
    for (qsizetype at = firstPage.size() - 200; at > 0; at -= 200)
        sum += quint8(firstPage[at]);
    add(sum);
    return journal;
}

TEST_F(ConversionTest, DamageFoundAfterACrashKeepsTheDatabaseReadOnlyUntilItIsRestored)
{
    make(old::Current, {.tubes = 400});
    ASSERT_TRUE(connect());
    session.close();
    const QByteArray whole = bytes();
    QByteArray damaged = whole;
    constexpr int kPage = 4096;
    damaged.replace(damaged.size() - kPage, 100, QByteArray(100, 'z'));
    folder.write(u"arvo/project.mdb"_s, damaged);
    folder.write(u"arvo/project.mdb-journal"_s, journalOf(damaged.first(kPage)));
    const QString mark = folder.path(u"arvo/project.mdb.damaged"_s);
    ASSERT_TRUE(connect());
    ASSERT_EQ(errors().size(), 1);
    EXPECT_TRUE(said(Entry::Kind::Error).first().endsWith(u"It is open for reading only. Restore a backup of it."_s));
    EXPECT_FALSE(session.isUpdatable());
    EXPECT_TRUE(QFileInfo::exists(mark));
    EXPECT_FALSE(folder.has(u"arvo/project.mdb-journal"_s)) << "what the crash had begun is undone";
    for (int connection = 0; connection < 2; ++connection) {
        ASSERT_TRUE(connect());
        EXPECT_FALSE(session.isUpdatable());
        session.close();
        EXPECT_EQ(bytes(), damaged);
    }
    folder.write(u"arvo/project.mdb"_s, whole);
    ASSERT_TRUE(connect());
    EXPECT_TRUE(session.isUpdatable());
    EXPECT_FALSE(QFileInfo::exists(mark));
}

TEST_F(ConversionTest, ADatabaseElsewhereIsNeverConverted)
{
    const QString elsewhere = folder.path(u"old.mdb"_s);
    old::makeDatabase(elsewhere, old::Everything);
    ASSERT_TRUE(connectTo(elsewhere));
    EXPECT_EQ(questions(), QStringList());
    EXPECT_EQ(informations(), QStringList{u"Database %1\nwill not be converted to rev 1.0 format\n"
                                          "since it is not in the current project."_s.arg(elsewhere)});
    EXPECT_TRUE(database().hasTable(u"display_format"));
    EXPECT_FALSE(folder.has(u"old._db"_s));

    // The folder's name is compared without regard to case.
    const QString inside = folder.path(u"ARVO/deep/old.mdb"_s);
    ASSERT_TRUE(QDir().mkpath(folder.path(u"ARVO/deep"_s)));
    old::makeDatabase(inside, old::DisplayFormat);
    EXPECT_TRUE(connectTo(inside, {Answer::Yes}));
    EXPECT_TRUE(folder.has(u"ARVO/deep/old._db"_s));
}

TEST_F(ConversionTest, AFileThatCannotBeUpdatedIsLeftAlone)
{
    make(old::Everything);
    const QByteArray before = bytes();
    session.open(path, dao::OpenMode::ReadOnly);
    db::ConversionRequest request(session, &project, [](const auto &) { FAIL() << "no backup is wanted"; });
    EXPECT_FALSE(db::reviseDatabase(session, request, &project, nullptr));
    EXPECT_EQ(prompts.entries().size(), 0);
    EXPECT_EQ(bytes(), before);
}

struct FailureCase
{
    const char *name;
    QStringList obstacle; ///< statements that keep the step from being done
    QString error;
    int doneSteps;       ///< of the eleven, those that have no error
    QString failed = {}; ///< the step, where it had got so far as to be requested
};

class ConversionFailureTest : public ConversionTest, public ::testing::WithParamInterface<FailureCase>
{
};

// A step that fails is undone and said under its number; the others go on.
TEST_P(ConversionFailureTest, StopsOnlyItsStep)
{
    make(old::Everything);
    old::executeAll(path, GetParam().obstacle);
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors(), QStringList{GetParam().error});
    ASSERT_EQ(informations().size(), 1);
    const QString told = informations().first();
    EXPECT_EQ(told.section(u"\nNot converted:\n    1) "_s, 1).trimmed(), GetParam().failed);
    EXPECT_FALSE(told.section(u"\nNot converted:"_s, 0, 0).contains(u") "_s + GetParam().failed + u'\n'));
    int done = 0;
    done += !database().hasTable(u"display_format");
    done += database().hasTable(u"repairs");
    done += database().hasTable(u"report") && database().table(u"report").field(u"plan");
    done += database().table(u"landmarks").index(u"primary_key") != nullptr;
    done += database().hasTable(u"tube_set_entry") && database().table(u"tube_set_entry").field(u"symbol");
    done += database().table(u"plans").field(u"name") && database().table(u"plan_entry").field(u"name");
    done += database().hasTable(u"tubes") && database().table(u"tubes").field(u"x");
    for (const QString &alias : {u"row_alias"_s, u"col_alias"_s, u"sec_alias"_s, u"leg_alias"_s})
        done += database().hasTable(alias);
    EXPECT_EQ(done, GetParam().doneSteps);
    // What failed in part is wholly as it was.
    EXPECT_TRUE(database().table(u"landmarks").index(u"primary_key") ||
                database().table(u"landmarks").index(u"number"));
    EXPECT_EQ(database().relations().size(), database().hasTable(u"tube_set_entry") ? 2 : 1);
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, ConversionFailureTest,
    ::testing::Values(
        FailureCase{"Repairs",
                    {u"CREATE VIEW repairs AS SELECT 1 AS a"_s},
                    u"1006 Could not create 'repairs' table."_s,
                    10,
                    u"Created repairs table."_s},
        FailureCase{"Report", {u"DROP TABLE report"_s}, u"1024 Could not modify 'report' table."_s, 10},
        FailureCase{"Landmarks",
                    {u"DROP INDEX name ON landmarks"_s,
                     u"INSERT INTO landmarks (number, type, name) VALUES (9, 'TE', 'TEH')"_s},
                    u"1025 Could not modify 'landmarks' table."_s,
                    10,
                    u"Modified landmarks table."_s},
        FailureCase{"TubeSets",
                    {u"DELETE FROM tube_sets"_s, u"ALTER TABLE tube_set_entry DROP CONSTRAINT tubes_rel"_s,
                     u"DROP TABLE tube_set_entry"_s},
                    u"1026 Could not modify 'tube_set_entry' table."_s,
                    10},
        FailureCase{"Tubes", {u"DROP TABLE tubes"_s}, u"1027 Could not modify 'tubes' table."_s, 10},
        FailureCase{
            "Plans",
            {u"INSERT INTO plans (site_code, comp, outage, plan_num, create_time) VALUES ('S1_SGA', 'R12', 'X', "
             "1, #1/1/2000#)"_s,
             u"INSERT INTO plans (site_code, comp, outage, plan_num, create_time) VALUES ('S1', 'SGA_R12', 'X', "
             "1, #1/1/2000#)"_s},
            u"1028 Could not modify 'plans' table."_s,
            10,
            u"Modified plans and plan_entry tables."_s},
        FailureCase{"Alias",
                    {u"CREATE VIEW col_alias AS SELECT 1 AS a"_s},
                    u"1014 Could not create 'col_alias' alias table."_s,
                    10,
                    u"Created col_alias table."_s},
        FailureCase{"View", {u"CREATE TABLE [report#] (a LONG)"_s}, u"1030 Could not create view 'report#'."_s, 11}),
    [](const auto &shape) { return shape.param.name; });

TEST_F(ConversionTest, ALabelThatIsTooLongIsSaid)
{
    make(old::Current);
    ASSERT_TRUE(connect());
    project.steamGen.labels[int(ellery::Axis::Col)] = QStringList{QString(51, u'x')};
    ASSERT_TRUE(connect());
    EXPECT_EQ(errors(), QStringList{u"1029 Could not modify 'col_alias' table."_s});
    EXPECT_EQ(rows(u"SELECT * FROM col_alias"_s), (QStringList{u"0|0"_s, u"1|1"_s, u"2|2"_s})) << "as before";
}

TEST_F(ConversionTest, StoppedByTheUserNothingIsConverted)
{
    const QByteArray before = makeOld();
    for (int looks = 0; looks < 9; ++looks) {
        StopAt stop(looks);
        progress = &stop;
        ASSERT_TRUE(connect({Answer::Yes}));
        EXPECT_EQ(said(Entry::Kind::Status).last(),
                  questions().isEmpty() ? u"Cancelled. Views and labels of the database are as they were."_s
                                        : u"Conversion cancelled."_s)
            << looks;
        EXPECT_EQ(informations(), QStringList());
        session.close();
        EXPECT_EQ(bytes(), before) << looks;
    }
}
