#include <support/Damage.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/OptionFile.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

class BoxOptions : public OptionFile
{
public:
    explicit BoxOptions(int version = 2, const QString &title = u"Box Options"_s)
        : OptionFile(u"config\\arvo\\box.opt"_s, title, version)
    {
    }
    double radius = 1.0;
    QStringList names;
    bool added = true;

protected:
    void serializeBody(JFile &file, int version) override
    {
        file.serialize(radius);
        file.serialize(names);
        if (version >= 2)
            file.serializeByte(added);
    }
    void resetToDefaults() override
    {
        radius = 1.0;
        names.clear();
        added = true;
    }
};

class OptionFileTest : public ::testing::Test
{
protected:
    support::TemporaryFolder folder;
    PathRoots roots{folder.path(), {}};
    const QString file = u"config/arvo/box.opt"_s;

    void storeChanged(int version)
    {
        BoxOptions options(version);
        options.radius = 2.5;
        options.names = {u"a"_s};
        options.added = false;
        options.store(roots);
    }
};

} // namespace

TEST_F(OptionFileTest, IsKeptBelowTheInstallation)
{
    BoxOptions options;
    options.radius = 9;
    EXPECT_FALSE(options.load(roots));
    EXPECT_EQ(options.radius, 9);

    storeChanged(2);
    EXPECT_TRUE(options.load(roots));
    EXPECT_EQ(options.radius, 2.5);
    EXPECT_EQ(options.names, QStringList{u"a"_s});
    EXPECT_FALSE(options.added);
}

TEST_F(OptionFileTest, OlderVersionsGetDefaultsForNewFields)
{
    storeChanged(1);
    BoxOptions options;
    options.added = false;
    EXPECT_TRUE(options.load(roots));
    EXPECT_EQ(options.radius, 2.5);
    EXPECT_TRUE(options.added);
}

TEST_F(OptionFileTest, NewerVersionsAreRefusedAndNeverOverwritten)
{
    storeChanged(2);
    const QByteArray before = folder.read(file);
    BoxOptions old(1);
    try {
        old.load(roots);
        FAIL();
    } catch (const JFileError &error) {
        EXPECT_TRUE(error.text().contains(u"of version 2, written by a newer program"_s)) << error.what();
    }
    EXPECT_THROW(old.store(roots), FileError);
    EXPECT_EQ(folder.read(file), before);
}

TEST_F(OptionFileTest, DamageLeavesTheRecordAsItWas)
{
    storeChanged(2);
    const QByteArray good = folder.read(file);
    const auto read = [this](const QByteArray &bytes) {
        BoxOptions options;
        options.radius = 4;
        options.names = {u"mine"_s, u"too"_s};
        try {
            options.loadFrom(folder.write(file, bytes));
        } catch (...) {
            EXPECT_EQ(options.radius, 4);
            EXPECT_EQ(options.names.size(), 2);
            throw;
        }
    };
    support::expectEveryTruncationThrows<JFileError>(good, read);
    EXPECT_THROW(read(good + "x"), JFileError);
    EXPECT_THROW(read("just text"), JFileError);
    EXPECT_THROW(BoxOptions(2, u"Other"_s).loadFrom(folder.write(file, good)), JFileError);

    // Settings can be stored again over a damaged file.
    folder.write(file, good.left(20));
    storeChanged(2);
    EXPECT_EQ(folder.read(file), good);
}
