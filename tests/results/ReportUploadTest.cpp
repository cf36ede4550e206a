#include <brannock/ReportFields.h>
#include <db/ReportRows.h>
#include <results/UploadRun.h>
#include <support/DatabaseFixture.h>
#include <tarnwick/FileStatusList.h>

using namespace Qt::StringLiterals;
using brannock::Report;
using brannock::ReportEntry;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

ReportEntry entry(int row = 1, int col = 1, int calNumber = 7)
{
    ReportEntry entry;
    entry.outage = u"R12"_s;
    entry.site.siteCode = u"TMC"_s;
    entry.site.compCode = u"SGA"_s;
    entry.calNumber = calNumber;
    entry.row = row;
    entry.col = col;
    entry.defect = u"NDD"_s;
    entry.operType = u"PRI"_s;
    entry.analystId = u"AB1"_s;
    entry.operatorId = u"OP2"_s;
    entry.entryTime = tarnwick::JDateTime::fromLocal(2020, 3, 4, 5, 6, 7);
    return entry;
}

ReportEntry indication(int row = 1, int col = 1)
{
    ReportEntry full = entry(row, col);
    full.defect = u"DNT"_s;
    full.channel = u" 1 \t2"_s;
    full.meas = {u"Vpp"_s, 2.5, 345, 172.4, 40};
    full.location = {u"02H"_s, -1.5F, 1200, 0};
    full.from = {u"01H"_s, 0.5F, 1100, 0};
    full.to = {u"03H"_s, 0.25F, 1300, 0};
    return full;
}

class ReportUploadTest : public support::DatabaseTest
{
protected:
    ReportUploadTest()
    {
        project.site.siteCode = u"TMC"_s;
        project.site.compCode = u"SGA"_s;
        project.steamGen.name = u"SGA"_s;
        QList<ellery::Tube> tubes;
        for (qint16 row = 1; row <= 3; ++row)
            for (qint16 col = 1; col <= 3; ++col)
                tubes.append({{0, row, col}, float(col), float(row), false});
        project.steamGen.setTubes(tubes);
        ellery::LandmarkSet set;
        ellery::Landmark support;
        support.name = u"02H"_s;
        support.leg = 1;
        support.pos = 100;
        set.landmarks.append(support);
        support.name = u"02C"_s;
        support.forward = false;
        set.landmarks.append(support);
        project.steamGen.landmarkSets.append(set);
    }

    results::UploadSummary upload(const QList<ReportEntry> &entries, std::initializer_list<Answer> answers = {})
    {
        Report report;
        report.entries = entries;
        prompts.clear();
        prompts.answerWith(answers);
        const results::UploadSummary summary = results::ReportUpload(session, project).upload(report);
        EXPECT_FALSE(prompts.unusedAnswers());
        EXPECT_EQ(session.workspace().transactionDepth(), 0);
        return summary;
    }

    qint64 rowCount() { return scalar(u"SELECT COUNT(*) FROM report"_s).integer(); }
    QStringList questions() const { return prompts.texts(Kind::Question); }

    brannock::Project project;
};

TEST_F(ReportUploadTest, AnEntryIsStoredByTheFieldMapping)
{
    ReportEntry full = indication();
    full.leg = 0;
    full.fileNumber = 12;
    full.id = 3;
    full.beginTest = u"TEC"_s;
    full.endTest = u"TEH"_s;
    full.probe = {u"BOBBIN"_s, u"A-600"_s, 600, u"SN1"_s};
    full.fileName = u"00007"_s;
    full.util1 = u"u1"_s;
    full.util2 = u"u2"_s;
    full.plan = u"FULL LENGTH"_s;
    full.comment = u"a note"_s;
    ASSERT_TRUE(upload({full}).completed);
    EXPECT_EQ(
        rows(u"SELECT recd_num, sec, row, col, chan, meas_type, volts, dig_volts, phase, pcnt, defect FROM report"_s),
        QStringList{u"1|0|1|1|12|Vpp|2.5|345|172|40|DNT"_s});
    EXPECT_EQ(
        rows(u"SELECT loc_land, loc_off, loc_pnt, loc_dist, from_land, from_off, from_pnt, to_land, to_off, to_pnt "
             u"FROM report"_s),
        QStringList{u"02H|-1.5|1200|98.5|01H|0.5|1100|03H|0.25|1300"_s});
    EXPECT_EQ(rows(u"SELECT site_code, comp, outage, oper_type, cal_num, file_num, id, leg, analyst_id, oper_id "
                   u"FROM report"_s),
              QStringList{u"TMC|SGA|R12|PRI|7|12|3|0|AB1|OP2"_s});
    EXPECT_EQ(
        rows(u"SELECT beg_test, end_test, probe_type, probe_model, probe_size, probe_sn, file_name, util1, util2, "
             u"plan, comment FROM report"_s),
        QStringList{u"TEC|TEH|BOBBIN|A-600|600|SN1|00007|u1|u2|FULL LENGTH|a note"_s});
    EXPECT_EQ(scalar(u"SELECT entry_time FROM report"_s).real(), full.entryTime.toOleDate());
    EXPECT_EQ(prompts.lastStatus(), u"Successfully uploaded 1 entries.");

    dao::Recordset records(database());
    records.open(dao::Recordset::Type::Dynaset, u"SELECT * FROM report"_s);
    const ReportEntry read = db::ReportReader(records).read();
    full.channel = u"12"_s;
    full.meas.phase = 172;
    full.location.dist = 98.5F;
    full.site.outage = full.outage;
    EXPECT_EQ(read, full) << "a row read back is the entry that was stored";
}

/// The names of the fields that table 'report' stores.
struct StoredNames
{
    void stored(brannock::StoredWhen when) { isStored = when != brannock::StoredWhen::InFilesOnly; }
    template <typename... Rest>
    void field(QStringView name, const Rest &...)
    {
        if (isStored)
            names.insert(name.toString());
    }
    template <typename... Rest>
    void sparse(QStringView name, const Rest &...)
    {
        field(name);
    }
    bool isStored = true;
    QSet<QString> names{u"recd_num"_s};
};

TEST_F(ReportUploadTest, EveryColumnOfTheTableIsAFieldOfAnEntry)
{
    StoredNames stored;
    const ReportEntry entry;
    brannock::visitReportFields(entry, stored);
    dao::Recordset table(database());
    table.open(dao::Recordset::Type::Dynaset, u"SELECT * FROM report"_s);
    QSet<QString> columns;
    for (int i = 0; i < table.fieldCount(); ++i)
        columns.insert(table.field(i).name);
    EXPECT_EQ(columns, stored.names);
}

TEST_F(ReportUploadTest, WhatAnEntryDoesNotHaveStaysNull)
{
    ReportEntry ndd = indication();
    ndd.defect = u"NDD"_s;
    ReportEntry bare = indication();
    bare.meas.percent = 0;
    bare.channel = u"  "_s;
    bare.location.clear();
    bare.entryTime = {};
    ReportEntry unmeasured = indication();
    unmeasured.meas.type.clear();
    ASSERT_TRUE(upload({ndd, bare, unmeasured}).completed);
    EXPECT_EQ(rows(u"SELECT chan, meas_type, volts, dig_volts, phase, pcnt, loc_land, loc_dist, from_land, to_land, "
                   u"beg_test, plan FROM report ORDER BY recd_num"_s),
              (QStringList{u"-|-|-|-|-|-|-|-|-|-|-|-"_s, u"-|Vpp|2.5|345|172|-|-|-|01H|03H|-|-"_s,
                           u"12|-|-|-|-|-|02H|98.5|01H|03H|-|-"_s}));
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM report WHERE entry_time IS NULL"_s).integer(), 0);
}

TEST_F(ReportUploadTest, LocationDistanceComesFromTheLandmark)
{
    ReportEntry backward = indication(2);
    backward.location.landmark = u"02C"_s;
    ReportEntry known = indication();
    known.location.dist = 55;
    ReportEntry elsewhere = indication();
    elsewhere.location.landmark = u"XXX"_s;
    ASSERT_TRUE(upload({backward, known, elsewhere}).completed);
    EXPECT_EQ(rows(u"SELECT loc_dist FROM report ORDER BY recd_num"_s), (QStringList{u"101.5"_s, u"55"_s, u"0"_s}));
}

TEST_F(ReportUploadTest, HeaderAndStandardEntriesAreNeverUploaded)
{
    ReportEntry header;
    header.kind = ReportEntry::Kind::Header;
    ReportEntry standard = entry(99, 99);
    standard.kind = ReportEntry::Kind::Standard;
    results::UploadSummary summary = upload({header, entry(), standard});
    EXPECT_EQ(summary.headers, 2);
    EXPECT_EQ(summary.read, 1);
    EXPECT_EQ(summary.stored, 1);

    summary = upload({header, standard});
    EXPECT_TRUE(summary.completed);
    EXPECT_EQ(prompts.lastStatus(), u"Successfully uploaded 0 entries.");
    EXPECT_EQ(rowCount(), 1);
}

TEST_F(ReportUploadTest, UnknownTubesAreListedAndUploadedSkippedOrStopTheUpload)
{
    QList<ReportEntry> entries{entry()};
    ReportEntry header;
    header.kind = ReportEntry::Kind::Header;
    entries.append(header);
    for (int i = 0; i < 25; ++i)
        entries.append(entry(50, i + 1));

    EXPECT_FALSE(upload(entries, {Answer::Cancel}).completed);
    QString expected = u"Warning: The following 25 report entries are for tubes do not exist in \"SGA\":\n"_s;
    for (int i = 0; i < 19; ++i)
        expected += tarnwick::format(u"\tentry=%3d row= 50 col=%3d sec=  0\n", i + 3, i + 1);
    expected += u"\t...\nDo you wish to upload them along with the valid tubes anyway?";
    EXPECT_EQ(questions(), QStringList{expected});
    EXPECT_EQ(prompts.lastStatus(), u"Upload cancelled");
    EXPECT_EQ(rowCount(), 0);

    results::UploadSummary summary = upload(entries, {Answer::No});
    EXPECT_EQ(summary.skipped, 25);
    EXPECT_EQ(summary.stored, 1);
    EXPECT_EQ(summary.read, 26);
    EXPECT_EQ(rowCount(), 1);

    summary = upload(entries, {Answer::Yes, Answer::No});
    EXPECT_EQ(summary.stored, 26);
    EXPECT_EQ(rowCount(), 27);
}

TEST_F(ReportUploadTest, AComponentWithoutTubesIsNotChecked)
{
    project.steamGen.setTubes({});
    EXPECT_EQ(upload({entry(500, 500)}).stored, 1);
}

TEST_F(ReportUploadTest, AnEntryWithoutCalInformationEndsTheUpload)
{
    ReportEntry blank;
    blank.row = blank.col = 1;
    for (const ReportEntry &invalid : {[] {
                                           auto e = entry();
                                           e.site.siteCode.clear();
                                           return e;
                                       }(),
                                       [] {
                                           auto e = entry();
                                           e.operType.clear();
                                           return e;
                                       }(),
                                       entry(1, 1, 0), blank}) {
        EXPECT_FALSE(upload({entry(), invalid}).completed);
        EXPECT_EQ(prompts.texts(Kind::Information), QStringList{u"Please fill in the cal information!"_s});
        EXPECT_EQ(prompts.lastStatus(), u"Upload terminated.");
        EXPECT_EQ(rowCount(), 0);
    }
    EXPECT_FALSE(upload({blank}).completed);
    EXPECT_EQ(prompts.texts(Kind::Information).size(), 1);
}

TEST_F(ReportUploadTest, ACalThatIsThereCanBeReplacedKeptOrStopTheUpload)
{
    ASSERT_TRUE(upload({entry(1), entry(2)}).completed);
    const QString question =
        u"There are already 2 report entries for\n\tCal\t\t7\n\tUser Type\tPRI\n\tSite Code\t\tTMC\n"
        u"\tComponent\tSGA\n\tOutage\t\tR12\n\tSection\t\t0\nDo you wish to delete them before "
        u"uploading this report?"_s;

    EXPECT_FALSE(upload({entry(3)}, {Answer::Cancel}).completed);
    EXPECT_EQ(questions(), QStringList{question});
    EXPECT_EQ(prompts.texts(Kind::Status), (QStringList{u"Upload cancelled."_s, u"Upload terminated."_s}));
    EXPECT_FALSE(upload({entry(3)}, {Answer::Yes, Answer::No}).completed);
    EXPECT_EQ(questions(), (QStringList{question, u"Are you sure?"_s}));
    EXPECT_EQ(prompts.texts(Kind::Status), (QStringList{u"Upload cancelled."_s, u"Upload terminated."_s}));
    EXPECT_EQ(rows(u"SELECT row FROM report"_s), (QStringList{u"1"_s, u"2"_s}));

    const results::UploadSummary replaced = upload({entry(3)}, {Answer::Yes, Answer::Yes});
    EXPECT_EQ(replaced.replaced, 2);
    EXPECT_EQ(prompts.texts(Kind::Status),
              (QStringList{u"Old cal was deleted."_s, u"Successfully uploaded 1 entries."_s}));
    EXPECT_EQ(rows(u"SELECT row FROM report"_s), QStringList{u"3"_s});

    EXPECT_TRUE(upload({entry(2)}, {Answer::No}).completed);
    EXPECT_EQ(rowCount(), 2);
}

TEST_F(ReportUploadTest, TheOldCalComesBackWhenALaterStepFails)
{
    ASSERT_TRUE(upload({entry(1)}).completed);
    ReportEntry tooLong = entry(2);
    tooLong.analystId = QString(60, u'x');
    EXPECT_FALSE(upload({entry(3), tooLong}, {Answer::Yes, Answer::Yes, Answer::No}).completed);
    EXPECT_EQ(rows(u"SELECT row FROM report"_s), QStringList{u"1"_s});
}

TEST_F(ReportUploadTest, OnlyTheFirstCalOfAFileOfSeveralIsLookedUp)
{
    ASSERT_TRUE(upload({entry(1, 1, 8)}).completed);
    EXPECT_TRUE(upload({entry(1, 1, 7), entry(1, 2, 8)}).completed);
    EXPECT_EQ(rowCount(), 3);
    EXPECT_TRUE(upload({entry(1, 1, 8), entry(1, 2, 7)}, {Answer::No}).completed);
    EXPECT_EQ(rowCount(), 5);
}

TEST_F(ReportUploadTest, AnotherSiteIsAskedAboutOnce)
{
    ReportEntry other = entry();
    other.site.siteCode = u"XYZ"_s;
    ReportEntry third = entry();
    third.site.compCode = u"SGB"_s;
    EXPECT_FALSE(upload({other}, {Answer::No}).completed);
    EXPECT_EQ(questions(),
              QStringList{u"Error: Site XYZ Comp SGA does not agree with project!\nDo you wish to upload anyway?"_s});
    EXPECT_EQ(rowCount(), 0);
    EXPECT_TRUE(upload({other, third, other}, {Answer::Yes}).completed);
    EXPECT_EQ(rowCount(), 3);
}

TEST_F(ReportUploadTest, AFailedEntryIsReportedAndPassedOverOrEndsTheUpload)
{
    ReportEntry nobody = entry(2);
    nobody.analystId.clear();
    results::UploadSummary summary = upload({entry(1), nobody, entry(3)}, {Answer::Yes});
    ASSERT_EQ(prompts.entries()[0].kind, Kind::Error);
    EXPECT_EQ(prompts.entries()[0].number, 1021);
    EXPECT_TRUE(prompts.entries()[0].text.startsWith(u"Could not upload report entry.\n\n[3314] DAO.Recordset "));
    EXPECT_EQ(questions(), QStringList{u"ERROR:\n\tCould not upload entry 2\n\tDo you wish to continue?"_s});
    EXPECT_EQ(summary.stored, 2);
    EXPECT_EQ(summary.failed, 1);
    EXPECT_EQ(summary.failedEntries, QList<int>{2});
    EXPECT_EQ(prompts.lastStatus(), u"Successfully uploaded 3 entries.");
    EXPECT_EQ(rowCount(), 2);

    EXPECT_FALSE(upload({entry(1), nobody}, {Answer::No, Answer::No}).completed);
    EXPECT_EQ(prompts.lastStatus(), u"Upload terminated.");
    EXPECT_EQ(rowCount(), 2);
}

TEST_F(ReportUploadTest, ValuesOutOfRangeAreFailures)
{
    ReportEntry far = entry();
    far.calNumber = 40'000;
    EXPECT_FALSE(upload({far}, {Answer::No}).completed);
    ReportEntry deep = indication();
    deep.meas.percent = 101;
    EXPECT_FALSE(upload({deep}, {Answer::No}).completed);
    EXPECT_TRUE(prompts.entries()[0].text.contains(u"[3317]"));
}

TEST_F(ReportUploadTest, ANameWithAQuoteIsRefusedByTheDuplicateTest)
{
    ReportEntry quoted = entry();
    quoted.outage = u"x' OR 'a' = 'a"_s;
    ASSERT_TRUE(upload({entry()}).completed);
    EXPECT_FALSE(upload({quoted}).completed);
    EXPECT_TRUE(prompts.texts(Kind::Error)[0].startsWith(u"Could not check for existing cal.\n\n[3075] "));
    EXPECT_EQ(rowCount(), 1);
}

TEST_F(ReportUploadTest, WithoutAConnectionNothingIsDone)
{
    session.close();
    EXPECT_FALSE(upload({entry()}).completed);
    EXPECT_EQ(prompts.entries()[0].number, 1053);
}

class StopAfter : public tarnwick::Progress
{
public:
    explicit StopAfter(qint64 entries)
        : m_entries(entries)
    {
    }
    void report(qint64 done, qint64, const QString &) override { m_done = done; }
    bool cancelled() override { return m_done >= m_entries; }

private:
    qint64 m_entries;
    qint64 m_done = 0;
};

TEST_F(ReportUploadTest, CancellingLeavesNoTrace)
{
    Report report;
    for (int i = 0; i < 2000; ++i)
        report.entries.append(entry(1 + i % 3, 1 + i % 2));
    StopAfter stop(0);
    EXPECT_FALSE(results::ReportUpload(session, project, &stop).upload(report).completed);
    EXPECT_EQ(prompts.texts(Kind::Status), (QStringList{u"Upload cancelled."_s, u"Upload terminated."_s}));
    EXPECT_EQ(rowCount(), 0);
    EXPECT_EQ(session.workspace().transactionDepth(), 0);
}

/// Another program reads the file until the upload has waited for it a while, or for as long as the user waits.
class Reader : public tarnwick::Progress
{
public:
    Reader(const QString &path, bool staysLonger)
        : m_staysLonger(staysLonger)
    {
        m_database.open(path);
        m_workspace.beginTrans();
        db::firstValue(m_database, QStringLiteral("SELECT COUNT(*) FROM report"));
    }
    void report(qint64, qint64, const QString &what) override { m_waits += what.startsWith(u"Waiting for another"); }
    bool cancelled() override
    {
        if (m_waits > 2 && !m_staysLonger)
            m_database.close();
        return m_waits > 5;
    }

private:
    dao::Workspace m_workspace;
    dao::Database m_database{m_workspace};
    bool m_staysLonger;
    int m_waits = 0;
};

TEST_F(ReportUploadTest, AReaderDelaysTheEndOfAnUploadAndDoesNotUndoIt)
{
    Report report;
    report.entries = {entry(), entry(1, 2)};
    Reader goes(path, false);
    EXPECT_TRUE(results::ReportUpload(session, project, &goes).upload(report).completed);
    EXPECT_EQ(rowCount(), 2);
    EXPECT_EQ(prompts.texts(Kind::Error), QStringList());

    prompts.clear();
    prompts.answerWith({Answer::No});
    Reader stays(path, true);
    EXPECT_FALSE(results::ReportUpload(session, project, &stays).upload(report).completed);
    EXPECT_EQ(prompts.texts(Kind::Status), (QStringList{u"Upload cancelled."_s, u"Upload terminated."_s}));
    EXPECT_EQ(session.workspace().transactionDepth(), 0);
    EXPECT_EQ(rowCount(), 2);
}

TEST_F(ReportUploadTest, TheFileListKeepsTheCurrentFileAndWhatIsDone)
{
    tarnwick::FileStatusList files;
    Report report;
    report.entries = {entry()};
    results::UploadRun uploader(session, project, results::UploadRun::Mode::Store);
    EXPECT_FALSE(uploader.uploadCurrent(files, report).completed);
    EXPECT_EQ(prompts.texts(Kind::Error), QStringList{u"Current file number=0 is not valid."_s});

    files.open({u"a.rep"_s, u"b.rep"_s});
    EXPECT_TRUE(files.select(1, prompts));
    EXPECT_EQ(prompts.lastStatus(), u"Selected file 2.");
    EXPECT_EQ(files.tip(1, 1), u"This file is shown below.") << "not by color alone";
    EXPECT_FALSE(files.select(2, prompts));
    EXPECT_TRUE(uploader.uploadCurrent(files, report).completed);
    EXPECT_EQ(files.statusText(0), u"");
    EXPECT_EQ(files.statusText(1), u"DONE");
    files.open({u"c.rep"_s});
    EXPECT_EQ(files.current(), 0);
    EXPECT_EQ(files.statusText(0), u"");
}

TEST_F(ReportUploadTest, ARecordNumberCanBeGiven)
{
    db::ReportWriter writer(database());
    ReportEntry numbered = entry();
    writer.add(numbered, 5000);
    writer.add(numbered);
    EXPECT_EQ(rows(u"SELECT recd_num FROM report ORDER BY recd_num"_s), (QStringList{u"5000"_s, u"5001"_s}));
}

} // namespace
