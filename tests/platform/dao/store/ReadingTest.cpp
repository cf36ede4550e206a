#include <dao/KeyList.h>
#include <dao/store/TextPool.h>
#include <gtest/gtest.h>
#include <QByteArray>
#include <QList>

using namespace Qt::StringLiterals;

namespace {

QString pooled(dao::store::TextPool &pool, const QByteArray &utf8)
{
    return pool.text(utf8.constData(), utf8.size());
}

TEST(TextPoolTest, EveryTextIsTheOneThatWasRead)
{
    dao::store::TextPool pool;
    QList<QByteArray> texts{"", "a", "A", "NDD", "NDE", QByteArray("ab\0c", 4), "R10HC00001.003", "R10HC00001.004"};
    // The UTF-8 bytes of one text are the Latin-1 characters of another.
    texts.append(u"é"_s.toUtf8());
    texts.append(u"Ã©"_s.toUtf8());
    texts.append(QByteArray(40, 'x'));
    // More texts than slots, so that they replace each other.
    for (int i = 0; i < 3000; ++i)
        texts.append("cal " + QByteArray::number(i * 7919 % 3000));
    for (int pass = 0; pass < 2; ++pass) {
        for (const QByteArray &text : std::as_const(texts))
            ASSERT_EQ(pooled(pool, text), QString::fromUtf8(text)) << text.constData();
    }
}

TEST(TextPoolTest, ACodeThatComesAgainIsNotMadeAgain)
{
    dao::store::TextPool pool;
    const QString first = pooled(pool, "NDD");
    EXPECT_EQ(pooled(pool, "NDD").constData(), first.constData());
}

TEST(KeyListTest, KeepsItsKeysAsItGrowsAndShrinks)
{
    constexpr size_t kKeys = 10'000;
    dao::KeyList keys;
    keys.shrink_to_fit();
    for (size_t i = 0; i < kKeys; ++i)
        keys.push_back(qint64(i));
    keys.shrink_to_fit();
    const qint64 pair[] = {-1, -2};
    keys.append(pair);
    ASSERT_EQ(keys.size(), kKeys + 2);
    for (size_t i = 0; i < kKeys; ++i)
        ASSERT_EQ(keys.data()[i], qint64(i));
    EXPECT_EQ(keys.data()[kKeys + 1], -2);
}

} // namespace
