#include "TestFiles.h"

#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace jet::test {
namespace {

constexpr int kPatience = 20; // seconds; a reading of these files takes a fraction of one

// What a reading came to.
struct Outcome
{
    bool failed = false;
    bool lost = false;
    bool remarked = false; ///< lost or suspect
    QHash<QString, qint64> rows;
    QSet<QString> queries;
    qsizetype relations = 0;
    qsizetype indexes = 0;
    QString text;
};

class Counter : public Sink
{
public:
    explicit Counter(Outcome &outcome)
        : m_outcome(outcome)
    {
    }
    void schema(const Schema &schema) override
    {
        for (const dao::QueryInfo &query : schema.queries)
            m_outcome.queries.insert(query.name);
        for (const Table &table : schema.tables)
            m_outcome.indexes += table.info.indexes.size();
        m_outcome.relations = schema.relations.size();
    }
    void beginTable(const dao::TableInfo &) override {}
    void row(const QList<dao::Value> &) override {}
    void endTable(const dao::TableInfo &table, qint64 rows) override { m_outcome.rows.insert(table.name, rows); }

private:
    Outcome &m_outcome;
};

Outcome readOutcome(const QString &path)
{
    Outcome outcome;
    JetReader reader(path, {QString(), kPatience});
    try {
        Counter counter(outcome);
        reader.read(counter);
    } catch (const JetError &error) {
        outcome.failed = true;
        outcome.text = error.text();
        EXPECT_FALSE(error.text().isEmpty());
        // The limits and the guards of the reading process: not a crash, not a hang.
        EXPECT_NE(error.reason(), JetError::Reason::ReaderFailed) << error.what();
        EXPECT_NE(error.reason(), JetError::Reason::ReaderStuck) << error.what();
    }
    outcome.lost = reader.hasRemark(Remark::Kind::Lost);
    outcome.remarked = outcome.lost || reader.hasRemark(Remark::Kind::Suspect);
    return outcome;
}

qint64 totalRows(const Outcome &outcome)
{
    const QList<qint64> rows = outcome.rows.values();
    return std::accumulate(rows.begin(), rows.end(), qint64(0));
}

// What is missing against the healthy file must be told by an error or a remark.
bool isTold(const Outcome &outcome, const Outcome &healthy)
{
    return outcome.failed || outcome.remarked ||
           (totalRows(outcome) == totalRows(healthy) && outcome.rows.size() == healthy.rows.size() &&
            outcome.queries.size() == healthy.queries.size() && outcome.relations == healthy.relations &&
            outcome.indexes == healthy.indexes);
}

struct Sample
{
    const char *file;
    qsizetype pageSize;
    int runs; ///< fewer for larger files
};
void PrintTo(const Sample &sample, std::ostream *out)
{
    *out << sample.file;
}

class DamagedFileTest : public ::testing::TestWithParam<Sample>
{
protected:
    void SetUp() override
    {
        ARVO_NEEDS_TESTDATA();
        m_path = dataFile(QString::fromLatin1(GetParam().file));
        m_healthy = readFile(m_path);
        m_expected = readOutcome(m_path);
        ASSERT_FALSE(m_expected.failed);
        ASSERT_FALSE(m_expected.remarked);
        for (qsizetype at = 0; at < m_healthy.size(); at += GetParam().pageSize) {
            if (m_healthy.at(at) == 1 || m_healthy.at(at) == 2) // rows, definitions
                m_structure.append(at);
        }
    }
    Outcome readDamaged(const QByteArray &bytes) { return readOutcome(writeFile(m_folder, bytes)); }

    QString m_path;
    QByteArray m_healthy;
    Outcome m_expected;
    QList<qsizetype> m_structure; ///< where pages of rows and of definitions begin
    QTemporaryDir m_folder;
};

TEST_P(DamagedFileTest, CutShort)
{
    std::mt19937 random(7);
    for (int i = 0; i < GetParam().runs; ++i) {
        // Whole pages as well as any place.
        qsizetype length = qsizetype(random() % size_t(m_healthy.size()));
        if (i % 2 == 0)
            length -= length % GetParam().pageSize;
        const Outcome outcome = readDamaged(m_healthy.left(length));
        EXPECT_TRUE(length % GetParam().pageSize == 0 || outcome.failed) << length;
        EXPECT_TRUE(isTold(outcome, m_expected)) << "cut to " << length;
        EXPECT_TRUE(length > m_healthy.size() / 2 || outcome.failed || outcome.lost) << "cut to " << length;
    }
    // The last pages, one by one, whatever stands on them.
    for (int pages = 1; pages <= 6; ++pages) {
        const Outcome outcome = readDamaged(m_healthy.left(m_healthy.size() - pages * GetParam().pageSize));
        EXPECT_TRUE(isTold(outcome, m_expected)) << pages << " pages";
    }
}

TEST_P(DamagedFileTest, BitsFlipped)
{
    std::mt19937 random(11);
    for (int i = 0; i < 2 * GetParam().runs; ++i) {
        QByteArray bytes = m_healthy;
        qsizetype at = qsizetype(random() % size_t(bytes.size()));
        if (i % 2 == 0) // where counts and offsets stand
            at = m_structure.at(qsizetype(random() % size_t(m_structure.size()))) + qsizetype(random() % 100);
        bytes[at] = char(bytes.at(at) ^ (1 << (random() % 8)));
        EXPECT_TRUE(isTold(readDamaged(bytes), m_expected)) << "bit at " << at;
    }
}

TEST_P(DamagedFileTest, PagesOverwritten)
{
    std::mt19937 random(13);
    const qsizetype pageSize = GetParam().pageSize;
    for (int i = 0; i < GetParam().runs; ++i) {
        QByteArray bytes = m_healthy;
        const qsizetype page = 1 + qsizetype(random() % size_t(bytes.size() / pageSize - 1));
        const bool wholePage = i % 3 == 0;
        const qsizetype at = page * pageSize + (wholePage ? 0 : qsizetype(random() % size_t(pageSize - 96)));
        const qsizetype length = wholePage ? pageSize : 96;
        for (qsizetype j = at; j < at + length; ++j)
            bytes[j] = i % 2 == 0 ? '\0' : char(random());
        EXPECT_TRUE(isTold(readDamaged(bytes), m_expected)) << length << " bytes at " << at;
    }
}

INSTANTIATE_TEST_SUITE_P(RealFiles, DamagedFileTest,
                         ::testing::Values(Sample{"indexTestV1997.mdb", 2048, 40},
                                           Sample{"indexTestV2003.mdb", 4096, 30}, Sample{"suite-old-2.mdb", 4096, 12},
                                           Sample{"nwind.mdb", 2048, 4}));

} // namespace
} // namespace jet::test
