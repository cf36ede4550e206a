#include "RevisionFixture.h"

#include <dao/Recordset.h>
#include <dao/values/Errors.h>
#include <db/CreateDatabase.h>
#include <db/revision/JetImport.h>
#include <db/revision/JetSink.h>
#include <fcntl.h>
#include <jet/JetReader.h>
#include <limits>
#include <QDir>
#include <QFile>
#include <random>

using namespace Qt::StringLiterals;

/// Real Jet files. They stay where they are; ARVO_TESTDATA names their folder.
class JetTest : public RevisionTest
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("ARVO_TESTDATA"))
            GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    }

    db::JetImportReport import(const QString &name)
    {
        session.close();
        QFile::remove(path);
        const db::JetImportReport report = db::importJetFile(sample(name), path);
        session.open(path);
        return report;
    }
};

/// A table's fields and indexes, one a line.
static QStringList described(const dao::TableInfo &table)
{
    QStringList lines;
    for (const dao::FieldInfo &field : table.fields)
        lines.append(u"%1 %2 %3 '%4' '%5' %6%7%8"_s.arg(field.name)
                         .arg(int(field.type))
                         .arg(field.type == dao::DataType::Text ? field.size : 0)
                         .arg(field.defaultValue, field.validationRule)
                         .arg(field.required)
                         .arg(field.allowZeroLength)
                         .arg(field.isAutoIncrement()));
    for (const dao::IndexInfo &index : table.indexes) {
        if (index.foreign) // of a relation, hidden
            continue;
        lines.append(u"index %1 %2%3"_s.arg(index.name).arg(index.primary).arg(index.unique));
        for (const dao::IndexField &field : index.fields)
            lines.last() += u' ' + field.name;
    }
    return lines;
}

/// Everything that a Jet file gives, as text: one list for each table.
class ValueList : public jet::Sink
{
public:
    QMap<QString, QStringList> tables;

    void schema(const jet::Schema &) override {}
    void beginTable(const dao::TableInfo &table) override { m_rows = &tables[table.name]; }
    void row(const QList<dao::Value> &values) override
    {
        QStringList cells;
        for (const dao::Value &value : values)
            cells.append(text(value));
        m_rows->append(cells.join(u'|'));
    }
    void endTable(const dao::TableInfo &, qint64) override { m_rows->sort(); }

    static QString text(const dao::Value &value)
    {
        switch (value.type()) {
        case dao::Value::Type::Text:
            return u'"' + value.text() + u'"';
        case dao::Value::Type::Binary:
            return QString::fromLatin1(value.binary().toHex());
        case dao::Value::Type::Float:
        case dao::Value::Type::Double:
        case dao::Value::Type::Date:
            return QString::number(value.real(), 'g', 17);
        default:
            return value.isNull() ? u"-"_s : QString::number(value.integer());
        }
    }

private:
    QStringList *m_rows = nullptr;
};

TEST_F(JetTest, EveryValueOfEverySampleComesOver)
{
    for (const QString &name :
         {u"suite-current"_s, u"suite-old-1"_s, u"suite-old-2"_s, u"foreign"_s, u"nwind"_s, u"DateTestDatabase"_s,
          u"accessLike"_s, u"pivot"_s, u"reservedWordLeave"_s, u"weirdObjectNames"_s, u"delTestV2003"_s,
          u"overflowTestV2003"_s, u"indexTestV1997"_s, u"indexTestV2003"_s, u"testIndexPropertiesV2000"_s,
          u"queryTestV1997"_s, u"queryTestV2000"_s, u"test2V2003"_s, u"testUnicodeCompV2003"_s}) {
        SCOPED_TRACE(name.toStdString());
        const db::JetImportReport report = import(name);
        EXPECT_FALSE(report.hasLosses()) << report.remarkLines().join(u'\n').toStdString();
        ValueList expected;
        jet::JetReader reader(sample(name));
        reader.read(expected);
        ASSERT_EQ(report.tables.size(), expected.tables.size());
        for (const db::JetImportReport::Table &table : report.tables) {
            QStringList found;
            dao::Recordset rowsOfTable(database());
            rowsOfTable.open(dao::Recordset::Type::Snapshot, u"SELECT * FROM ["_s + table.name + u']');
            for (; !rowsOfTable.isEof(); rowsOfTable.moveNext()) {
                QStringList cells;
                for (int i = 0; i < rowsOfTable.fieldCount(); ++i)
                    cells.append(ValueList::text(rowsOfTable.value(i)));
                found.append(cells.join(u'|'));
            }
            found.sort();
            EXPECT_EQ(found, expected.tables[table.name]) << table.name.toStdString();
            EXPECT_EQ(found.size(), table.rows);
        }
        EXPECT_EQ(folder.names(u"arvo"_s), QStringList{u"project.mdb"_s});
    }
}

TEST_F(JetTest, DefinitionsComeOver)
{
    const db::JetImportReport report = import(u"suite-current"_s);
    EXPECT_EQ(report.jetVersion, 4);
    EXPECT_EQ(report.remarkLines(), QStringList());
    EXPECT_EQ(report.relations.size(), 2);
    EXPECT_EQ(report.queries.size(), 11);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 11961);
    const dao::TableInfo &table = database().table(u"report");
    EXPECT_EQ(table.field(u"pcnt")->validationRule, u">= 0 and <= 100"_s);
    EXPECT_GT(number(u"SELECT COUNT(*) FROM [Indications R12]"_s), 0);
    const int highest = number(u"SELECT MAX(recd_num) FROM report"_s);
    database().execute(u"INSERT INTO report (sec, row, col, site_code, outage, comp, oper_type, analyst_id, oper_id, "
                       "entry_time) VALUES (0, 1, 1, 'S', 'R', 'C', 'PRI', 'A', 'O', #1/1/2003#)"_s);
    EXPECT_GT(number(u"SELECT MAX(recd_num) FROM report"_s), highest);
}

TEST_F(JetTest, ANewDatabaseHasTheTablesOfTheSuite)
{
    import(u"suite-current"_s);
    const QString fresh = folder.path(u"fresh.mdb"_s);
    ASSERT_TRUE(db::createDatabase(prompts, fresh));
    dao::Workspace workspace;
    dao::Database created(workspace);
    created.open(fresh);
    int tables = 0;
    for (const QString &name : created.tableNames()) {
        if (created.table(name).attributes & dao::SystemObject)
            continue;
        ++tables;
        EXPECT_EQ(described(created.table(name)), described(database().table(name))) << name.toStdString();
    }
    EXPECT_EQ(tables, 12);
    for (int i = 0; i < 2; ++i) {
        const dao::RelationInfo relation = created.relations()[i];
        const dao::RelationInfo suite = database().relations()[i];
        EXPECT_EQ(relation.name, suite.name);
        EXPECT_EQ(relation.table, suite.table);
        EXPECT_EQ(relation.foreignTable, suite.foreignTable);
        EXPECT_EQ(relation.attributes, suite.attributes);
    }
}

TEST_F(JetTest, OpensReadOnlyUntilItIsConverted)
{
    ASSERT_TRUE(takeSample(u"suite-current"_s));
    const QByteArray before = bytes();
    ASSERT_TRUE(connect({Answer::No}));
    EXPECT_EQ(session.path(), path);
    EXPECT_FALSE(session.isUpdatable());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 11961);
    EXPECT_THROW(database().execute(u"DELETE FROM report"_s), dao::DaoException);
    EXPECT_EQ(questions().size(), 1);
    EXPECT_EQ(rows(u"SELECT * FROM row_alias"_s), (QStringList{u"0|A"_s, u"1|B"_s, u"3|D"_s})) << "as in any other";
    EXPECT_NO_THROW(rows(u"SELECT * FROM [tubes#]"_s));
    EXPECT_EQ(bytes(), before);
    session.close();
    EXPECT_EQ(folder.names(u"arvo"_s), QStringList{u"project.mdb"_s});

    ASSERT_TRUE(connect({Answer::Yes}));
    EXPECT_TRUE(session.isUpdatable());
    EXPECT_EQ(informations(), QStringList{u"Conversions:\n    1) Converted Jet database file.\n"_s});
    EXPECT_EQ(folder.read(u"arvo/project._db"_s), before);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 11961);
    EXPECT_TRUE(database().query(u"report#").sql.startsWith(u"SELECT recd_num, sa.sec, ra.row, ca.col, chan, "_s));
    EXPECT_EQ(folder.names(u"arvo"_s), (QStringList{u"project._db"_s, u"project.mdb"_s}));
    session.close();
    const QByteArray converted = bytes();
    ASSERT_TRUE(connect());
    EXPECT_EQ(bytes(), converted);
}

TEST_F(JetTest, OldRevisionsAreConvertedInOneGo)
{
    ASSERT_TRUE(takeSample(u"suite-old-1"_s));
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_TRUE(informations().value(0).startsWith(u"Conversions:\n    1) Converted Jet database file.\n"_s));
    EXPECT_EQ(informations().value(0).count(u'\n'), 1 + 12);
    EXPECT_EQ(rows(u"SELECT name, COUNT(*) FROM plan_entry GROUP BY name"_s),
              (QStringList{u"S1_SGA_R11_2|50"_s, u"S1_SGA_R12_1|50"_s, u"S1_SGA_R12_3|50"_s}));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 2000);

    ASSERT_TRUE(takeSample(u"suite-old-2"_s));
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(informations().value(0).count(u'\n'), 1 + 6);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM landmarks WHERE land_set IS NULL"_s), 0);
    EXPECT_TRUE(database().hasQuery(u"Open repairs"));
}

TEST_F(JetTest, ForeignTablesAreImported)
{
    ASSERT_TRUE(takeSample(u"foreign"_s));
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 3000);
    EXPECT_EQ(rows(u"SELECT DISTINCT site_code, comp, oper_type FROM report"_s), QStringList{u"S1|SGA|PRI"_s});
    // An entry without a call that has volts keeps its places; one that is NDD has none.
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report WHERE to_land IS NOT NULL"_s),
              number(u"SELECT COUNT(*) FROM EXAMDATA WHERE EXAILOC4 <> 0 AND Trim(EXAILOC1 & '') <> '' AND "
                     "NOT (EXAIVOLT = 0 AND Trim(EXAMINDN & '') = '') AND Trim(EXAMINDN & '') <> 'NDD'"_s));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report WHERE outage = 'P12'"_s), 246);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM repairs"_s), 30);
    EXPECT_EQ(rows(u"SELECT name, COUNT(*) FROM tube_set_entry GROUP BY name"_s),
              (QStringList{u"IN|72"_s, u"PL|15"_s}));
    EXPECT_EQ(said(Entry::Kind::Status).filter(u"Converting ISIS record"_s).size(), 30);
}

TEST_F(JetTest, AFileOutsideTheProjectStaysReadOnly)
{
    const QString elsewhere = folder.path(u"old.mdb"_s);
    ASSERT_TRUE(QFile::copy(sample(u"suite-old-1"_s), elsewhere));
    ASSERT_TRUE(connectTo(elsewhere));
    EXPECT_FALSE(session.isUpdatable());
    EXPECT_EQ(questions(), QStringList());
    EXPECT_EQ(connected, QStringList{elsewhere});
}

TEST_F(JetTest, DamagedFilesAreRefused)
{
    const QByteArray whole = support::readFile(sample(u"suite-old-1"_s));
    for (const qsizetype size :
         {qsizetype(0), qsizetype(3000), qsizetype(4096), whole.size() / 2, whole.size() - 4096}) {
        folder.write(u"arvo/project.mdb"_s, whole.left(size));
        EXPECT_FALSE(connect()) << size;
        EXPECT_EQ(errors(), QStringList{u"1032 Could not connect to database."_s}) << size;
        EXPECT_FALSE(session.isOpen());
        EXPECT_EQ(folder.names(u"arvo"_s), QStringList{u"project.mdb"_s});
    }
}

TEST_F(JetTest, AFileThatHasLostPagesOfATableIsRefused)
{
    const QByteArray whole = support::readFile(sample(u"suite-old-1"_s));
    constexpr qsizetype kMapOfReport = 38 * 4096 + 33; // which pages hold its rows
    int missing = 0;
    for (int bit = 0; bit < 8; ++bit) {
        QByteArray bytes = whole;
        bytes[kMapOfReport] = char(bytes[kMapOfReport] ^ (1 << bit));
        folder.write(u"arvo/project.mdb"_s, bytes);
        if (connect({Answer::No})) {
            EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 2000) << bit;
            continue;
        }
        missing += said(Entry::Kind::Error).first().contains(u"Table 'report': rows are missing, "_s) ? 1 : 0;
        EXPECT_EQ(errors(), QStringList{u"1032 Could not connect to database."_s});
        EXPECT_EQ(questions(), QStringList());
    }
    EXPECT_GT(missing, 0);
}

TEST_F(JetTest, AFileThatOthersHaveOpenIsNotReplaced)
{
    const QString lockFile = folder.path(u"arvo/PROJECT.LDB"_s);
    const auto lock = [](QFile &file) {
        struct flock region = {};
        region.l_type = F_WRLCK;
        region.l_start = 0x10000001;
        region.l_len = 1;
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_EQ(::fcntl(file.handle(), F_OFD_SETLK, &region), 0);
    };
    const QString isLocked = u"Database %1\nwill not be converted since another program has it open."_s.arg(path);
    ASSERT_TRUE(takeSample(u"suite-old-2"_s));
    const QByteArray before = bytes();
    const auto expectUntouched = [&](const QString &information) {
        ASSERT_TRUE(connect({Answer::Yes}));
        EXPECT_FALSE(session.isUpdatable());
        EXPECT_EQ(questions() + errors(), QStringList());
        ASSERT_EQ(informations().size(), 1);
        EXPECT_TRUE(informations().first().startsWith(information)) << informations().first().toStdString();
        session.close();
        EXPECT_EQ(bytes(), before);
    };
    {
        QFile user(path);
        lock(user);
        expectUntouched(isLocked);
    }
    {
        QFile user(lockFile);
        lock(user);
        expectUntouched(isLocked);
    }
    // Left behind, as far as can be seen: the user has to say so.
    expectUntouched(u"Database %1\nwill not be converted since its lock file %2\nsays"_s.arg(path, lockFile));

    QFile::remove(lockFile);
    ASSERT_TRUE(convert());
    EXPECT_TRUE(session.isUpdatable());
}

TEST_F(JetTest, WhatADamagedFileLosesIsToldOrNothingComesOver)
{
    const QByteArray whole = support::readFile(sample(u"indexTestV2003"_s));
    const auto rowsOf = [](const db::JetImportReport &report) {
        QStringList lines;
        for (const db::JetImportReport::Table &table : report.tables)
            lines.append(u"%1 %2"_s.arg(table.name).arg(table.rows));
        return lines;
    };
    const QStringList expected = rowsOf(import(u"indexTestV2003"_s));
    session.close();
    std::mt19937 random(17);
    int refused = 0;
    for (int run = 0; run < 120; ++run) {
        SCOPED_TRACE(run);
        QByteArray bytes = whole;
        const auto at = qsizetype(random() % size_t(bytes.size()));
        if (run % 3 == 0)
            bytes[at] = char(bytes[at] ^ (1 << (random() % 8)));
        else if (run % 3 == 1)
            bytes.truncate(at / 4096 * 4096);
        else
            bytes.replace(at, qMin<qsizetype>(64, bytes.size() - at), QByteArray(64, char(random())));
        bytes.resize(bytes.size() / 4096 * 4096);
        const QString damaged = folder.write(u"damaged.mdb"_s, bytes);
        QFile::remove(path);
        try {
            const db::JetImportReport report = db::importJetFile(damaged, path);
            EXPECT_TRUE(!report.remarks.isEmpty() || rowsOf(report) == expected);
            session.open(path);
            session.close();
        } catch (const dao::DaoException &exception) {
            ++refused;
            EXPECT_TRUE(exception.description().contains(u"damaged.mdb"_s)) << exception.what();
            EXPECT_EQ(folder.names(u"arvo"_s), QStringList());
        }
    }
    EXPECT_GT(refused, 20);
}

TEST_F(JetTest, StoppedByTheUserTheFileStaysAsItIs)
{
    ASSERT_TRUE(takeSample(u"suite-old-2"_s));
    const QByteArray before = bytes();
    int whileReading = 0;
    int whileConverting = 0;
    for (int looks = 0;; ++looks) {
        SCOPED_TRACE(looks);
        StopAt stop(looks);
        progress = &stop;
        const bool isConnected = connect({Answer::Yes});
        EXPECT_EQ(errors(), QStringList());
        if (session.isUpdatable())
            break;
        (isConnected ? whileConverting : whileReading) += 1;
        EXPECT_TRUE(isConnected || questions().isEmpty()) << "once it is open it stays so";
        EXPECT_EQ(said(Entry::Kind::Status).filter(u"cancelled."_s).size(), 1);
        if (isConnected) {
            EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 1200);
        }
        session.close();
        EXPECT_EQ(bytes(), before);
        EXPECT_EQ(folder.names(u"arvo"_s).filter(u".new"_s), QStringList());
    }
    // How often each of them looks depends on the time that it takes.
    EXPECT_GT(whileReading, 0);
    EXPECT_GT(whileConverting, 0);
}

TEST_F(JetTest, AFileBehindALinkIsConvertedWhereItLies)
{
    const QString real = folder.path(u"arvo/data/real.mdb"_s);
    ASSERT_TRUE(QDir().mkpath(folder.path(u"arvo/data"_s)));
    ASSERT_TRUE(QFile::copy(sample(u"suite-old-2"_s), real));
    const auto rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
    QFile::setPermissions(real, rights);
    ASSERT_TRUE(QFile::link(real, path));
    ASSERT_TRUE(convert());
    EXPECT_EQ(errors(), QStringList());
    EXPECT_TRUE(session.isUpdatable());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(QFile::permissions(real) & rights, rights);
    EXPECT_EQ(QFile::permissions(folder.path(u"arvo/project._db"_s)), QFile::permissions(real));
    EXPECT_EQ(folder.names(u"arvo/data"_s), QStringList{u"real.mdb"_s});
}

TEST(JetSinkTest, RemarksOnAmountsThatItRounds)
{
    const QTemporaryDir folder;
    dao::Workspace workspace;
    dao::Database database(workspace);
    db::JetAllowances allowances;
    db::JetImportReport report;
    jet::Table costs;
    costs.info.name = u"costs"_s;
    for (const QString &name : {u"small"_s, u"large"_s}) {
        dao::FieldInfo field;
        field.name = name;
        field.type = dao::DataType::Currency;
        costs.info.fields.append(field);
    }
    jet::Schema schema;
    schema.jetVersion = 4;
    schema.tables.append(costs);
    {
        db::JetSink sink(database, allowances, report, folder.filePath(u"new.mdb"_s), nullptr, {});
        sink.schema(schema);
        sink.beginTable(costs.info);
        constexpr qint64 amounts[][2] = {{123'4567, std::numeric_limits<qint64>::max()},
                                         {-1, 922'337'203'685'477'5801}};
        for (const auto &[small, large] : amounts)
            sink.row({dao::Value::fromCurrencyScaled(small), dao::Value::fromCurrencyScaled(large)});
        sink.endTable(costs.info, 2);
        sink.finish();
    }
    ASSERT_EQ(report.remarks.size(), 1);
    EXPECT_EQ(report.remarks[0].text, u"Table 'costs', field 'large': 1 amount has more digits than can be kept; the "
                                      "last decimals were rounded."_s);
    dao::Recordset rows(database);
    rows.open(dao::Recordset::Type::Snapshot, u"costs"_s);
    EXPECT_EQ(rows.value(1).integer(), std::numeric_limits<qint64>::max());
}
