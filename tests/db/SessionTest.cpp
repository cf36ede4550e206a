#include <db/FieldAccess.h>
#include <db/StoredQueries.h>
#include <db/TableGrowth.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

class SessionTest : public support::DatabaseTest
{
};

TEST_F(SessionTest, CommandsWithoutAConnectionAreWarned)
{
    EXPECT_TRUE(db::checkConnected(session));
    session.close();
    EXPECT_FALSE(db::checkConnected(session));
    ASSERT_EQ(prompts.entries().size(), 1);
    EXPECT_EQ(prompts.entries()[0].number, 1053);
}

TEST_F(SessionTest, TransactionsReportOrRethrow)
{
    EXPECT_TRUE(db::beginTrans(session));
    execute(u"INSERT INTO tube_sets (name) VALUES ('A')"_s);
    EXPECT_TRUE(db::rollbackTrans(session));
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM tube_sets"_s).integer(), 0);

    EXPECT_FALSE(db::commitTrans(session));
    EXPECT_FALSE(db::rollbackTrans(session));
    EXPECT_THROW(db::commitTrans(session, true), dao::DaoException);
    ASSERT_EQ(prompts.entries().size(), 2);
    EXPECT_EQ(prompts.entries()[0].number, 1055);
    EXPECT_TRUE(prompts.entries()[0].text.startsWith(u"Could not commit transaction.\n\n[3034] DAO.Workspace "));
    EXPECT_EQ(prompts.entries()[1].number, 1056);
}

TEST_F(SessionTest, ClosingRollsBackWhatIsNotCommitted)
{
    db::beginTrans(session);
    execute(u"INSERT INTO tube_sets (name) VALUES ('A')"_s);
    session.close();
    session.open(path);
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM tube_sets"_s).integer(), 0);
    EXPECT_EQ(session.workspace().transactionDepth(), 0);
}

TEST_F(SessionTest, FieldsAreReadAndWrittenByNameOrOrdinal)
{
    const tarnwick::JDateTime day = tarnwick::JDateTime::fromLocal(2020, 5, 6, 7, 8, 9);
    dao::Recordset repairs(database());
    repairs.open(dao::Recordset::Type::Dynaset, u"repairs"_s);
    EXPECT_EQ(db::fieldIndex(repairs, u"row"), 1);
    EXPECT_EQ(db::fieldIndex(repairs, u"Row"), -1);
    EXPECT_EQ(db::fieldInfo(repairs, u"sec"_s).validationRule, u">= 0 and <= 999");
    EXPECT_THROW(db::fieldInfo(repairs, u"nothing"_s), dao::DaoException);

    repairs.addNew();
    db::setField(repairs, u"row"_s, qint16(12));
    db::setField(repairs, u"repair_type"_s, u"PLUG"_s);
    db::setField(repairs, u"heat1"_s, QString());
    db::setField(repairs, u"vendor"_s, QString());
    db::setField(repairs, u"loc_off"_s, 1.25F);
    db::setField(repairs, u"date_scheduled"_s, day);
    db::setField(repairs, u"date_completed"_s, tarnwick::JDateTime());
    db::setField(repairs, u"is_perm"_s, false);
    repairs.update();
    repairs.moveFirst();
    EXPECT_EQ(db::getField<qint16>(repairs, 1), 12);
    EXPECT_EQ(db::getField<qint32>(repairs, u"ROW"_s), 12);
    EXPECT_EQ(db::getField<float>(repairs, u"loc_off"_s), 1.25F);
    EXPECT_EQ(db::getField<tarnwick::JDateTime>(repairs, u"date_scheduled"_s), day);
    EXPECT_TRUE(db::getField<tarnwick::JDateTime>(repairs, u"date_completed"_s).isNull());
    EXPECT_FALSE(db::getField<bool>(repairs, u"is_perm"_s));
    EXPECT_TRUE(repairs.value(u"heat1"_s).isNull());
    EXPECT_EQ(repairs.value(u"vendor"_s), dao::Value::fromText({}));
}

TEST_F(SessionTest, StoredQueriesAreReplacedByNameAndViewsAreNotListed)
{
    db::storeQueryDef(database(), u"deep"_s, u"SELECT * FROM report"_s);
    db::storeQueryDef(database(), u"Deep"_s, u"SELECT row FROM report"_s);
    db::storeQueryDef(database(), u"report#"_s, u"SELECT col FROM report"_s);
    EXPECT_EQ(database().query(u"deep").sql, u"SELECT row FROM report");
    EXPECT_EQ(db::storedQueryNames(database()), QStringList{u"deep"_s});
}

TEST_F(SessionTest, CreatingKeepsTheFormatAndNeverTouchesAnExistingFile)
{
    const QString old = folder.path(u"old.mdb"_s);
    EXPECT_TRUE(db::createDatabase(prompts, old, 1997));
    EXPECT_EQ(prompts.lastStatus(), QString(u"Creating database \""_s + old + u"\"."));
    session.open(old);
    EXPECT_EQ(session.database().fileFormat(), dao::FileFormat::Jet3);
    EXPECT_EQ(db::formatYear(session), 1997);
    session.open(path);
    EXPECT_EQ(session.database().fileFormat(), dao::FileFormat::Jet4);
    session.close();

    const QByteArray before = folder.read(u"old.mdb"_s);
    prompts.clear();
    EXPECT_FALSE(db::createDatabase(prompts, old));
    EXPECT_EQ(folder.read(u"old.mdb"_s), before);
    EXPECT_FALSE(db::createDatabase(prompts, folder.path(u"no/such/folder.mdb"_s)));
    EXPECT_EQ(folder.names(), (QStringList{u"old.mdb"_s, u"project.mdb"_s}));
    QStringList errors = prompts.texts(Kind::Error);
    ASSERT_EQ(errors.size(), 2);
    EXPECT_TRUE(errors[0].startsWith(u"Could not create database.\n\n[3204] DAO.Workspace "));
    EXPECT_TRUE(errors[1].startsWith(u"Could not create database.\n\n[3044] DAO."));
    EXPECT_EQ(prompts.entries().last().number, 1015);
}

TEST_F(SessionTest, StatisticsAreMadeOnlyWhenATableGrewMuch)
{
    const auto pending = [this] { return database().property(u"RowsAddedSince.report"_s).toInt(); };
    db::noteTableGrowth(database(), u"report"_s, 15'000);
    EXPECT_EQ(pending(), 15'000);
    db::noteTableGrowth(database(), u"report"_s, 5'000);
    EXPECT_EQ(pending(), 0);
    db::noteTableGrowth(database(), u"report"_s, 100'000);
    EXPECT_EQ(pending(), 0);
    db::noteTableGrowth(database(), u"report"_s, 50'000);
    EXPECT_EQ(pending(), 50'000);
}

} // namespace
