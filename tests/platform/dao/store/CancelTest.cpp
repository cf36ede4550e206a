#include "Fixture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace dao;

namespace {

/// Cancels at the n-th call.
class StopAt : public tarnwick::Progress
{
public:
    explicit StopAt(int times)
        : m_left(times)
    {
    }
    bool cancelled() override
    {
        if (whenAsked)
            whenAsked();
        return --m_left <= 0;
    }
    std::function<void()> whenAsked;

private:
    int m_left;
};

} // namespace

class CancelTest : public StoreTest
{
protected:
    CancelTest()
    {
        database.execute(u"CREATE TABLE n (x LONG)"_s);
        Transaction transaction(workspace);
        Recordset set(database);
        set.open(Recordset::Type::TableAppend, u"n"_s);
        for (int x = 0; x < 3000; ++x) {
            set.addNew();
            set.setValue(0, number(x));
            set.update();
        }
        transaction.commit();
    }
    ~CancelTest() override { database.setProgress(nullptr); }
    QString sum() { return rawRows(u"SELECT count(*), sum(x) FROM n"_s); }

    const QString before = u"3000|4498500"_s;
    const QString longUpdate = u"UPDATE n SET x = x + 1 WHERE (SELECT Count(*) FROM n AS m WHERE m.x <> n.x) > 0"_s;
    const QString longSelect = u"SELECT a.x FROM n AS a, n AS b WHERE a.x + b.x = -1"_s;
};

TEST_F(CancelTest, WhatTheProgressThrowsStopsTheStatementAndComesOut)
{
    StopAt stop(1);
    stop.whenAsked = [] { throw std::runtime_error("from the window"); };
    for (const bool inTransaction : {false, true}) {
        for (const QString &sql : {longSelect, longUpdate}) {
            SCOPED_TRACE(testing::Message() << inTransaction << sql.toStdString());
            if (inTransaction)
                workspace.beginTrans();
            database.setProgress(&stop);
            Recordset set(database);
            EXPECT_THROW(sql == longSelect ? set.open(Recordset::Type::Dynaset, sql) : void(database.execute(sql)),
                         std::runtime_error);
            database.setProgress(nullptr);
            EXPECT_EQ(database.execute(u"UPDATE n SET x = x WHERE x < 10"_s), 10) << "goes on";
            if (inTransaction)
                workspace.commitTrans();
            EXPECT_EQ(sum(), before);
        }
    }
}

TEST_F(CancelTest, WhatComesAfterAStopIsNotStoppedToo)
{
    class StopOnce : public tarnwick::Progress
    {
    public:
        bool cancelled() override { return !std::exchange(m_asked, true); }

    private:
        bool m_asked = false;
    } stop;
    database.setProgress(&stop);
    Recordset rows(database);
    rows.open(Recordset::Type::Dynaset, u"n"_s);
    rows.edit();
    rows.setValue(0, number(-7));
    Recordset set(database);
    EXPECT_EQ(errorOf([&] { set.open(Recordset::Type::Dynaset, longSelect); }), u"cancelled"_s);
    EXPECT_EQ(errorOf([&] { rows.update(); }), QString());
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM n WHERE x = -7"_s), u"1"_s);
}

TEST_F(CancelTest, WhoeverIsAskedCannotRunStatementsMeanwhile)
{
    StopAt stop(2);
    QString failure;
    stop.whenAsked = [&] { failure = errorOf([&] { database.execute(u"DELETE FROM n"_s); }); };
    database.setProgress(&stop);
    EXPECT_EQ(errorOf([&] { database.execute(longUpdate); }), u"cancelled"_s);
    EXPECT_EQ(failure.left(4), u"3211"_s);
    EXPECT_EQ(sum(), before);
}

TEST_F(CancelTest, ReadingLetsTheFileGoWhenTheEventLoopIsReached)
{
    Recordset set(database);
    set.open(Recordset::Type::Dynaset, u"n"_s);
    QEventLoop loop;
    QString during;
    QString after;
    QTimer::singleShot(0, &loop, [&] {
        set.moveNext();
        set.value(0);
        during = raw(u"DELETE FROM n WHERE x = 2999"_s);
        QTimer::singleShot(0, &loop, [&] {
            after = raw(u"DELETE FROM n WHERE x = 2999"_s);
            loop.quit();
        });
    });
    loop.exec();
    EXPECT_EQ(during, u"database is locked"_s) << "a screenful is read in one piece";
    EXPECT_EQ(after, QString());
    set.moveNext();
    EXPECT_EQ(set.value(0), number(2));
    EXPECT_EQ(raw(u"DELETE FROM n WHERE x = 2998"_s), QString()) << "without an event loop nothing is held";
}
