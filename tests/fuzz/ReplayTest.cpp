#include <fuzz/Targets.h>

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

struct Target
{
    const char *name;
    void (*run)(fuzz::Bytes);
};

class CorpusTest : public testing::TestWithParam<Target>
{
};

} // namespace

TEST_P(CorpusTest, HoldsNothingThatGoesWrong)
{
    // A larger corpus, such as a fuzzer leaves behind, can be given instead.
    const QString root = qEnvironmentVariable("ARVO_FUZZ_CORPUS", QStringLiteral(ARVO_TEST_DATA "/corpus"));
    const QDir folder(root + u'/' + QString::fromLatin1(GetParam().name));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        EXPECT_NO_THROW(
            GetParam().run({reinterpret_cast<const uint8_t *>(content.constData()), size_t(content.size())}))
            << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusTest,
                         testing::Values(Target{"compile", fuzz::compileText}, Target{"catalog", fuzz::openCatalog},
                                         Target{"functions", fuzz::callFunction}),
                         [](const auto &target) { return std::string(target.param.name); });
