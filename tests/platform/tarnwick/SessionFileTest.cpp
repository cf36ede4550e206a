#include <gtest/gtest.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/SessionFile.h>

using namespace Qt::StringLiterals;
using tarnwick::SessionFile;

TEST(SessionFileTest, KeepsWhatOtherWindowsStoredAndLosesNothingOnAFullDisk)
{
    const support::TemporaryFolder folder;
    const QString path = folder.path(u"config/arvo/session.json"_s);
    const SessionFile one(path);
    const SessionFile other(path);
    EXPECT_TRUE(one.values().isEmpty());
    const QByteArray bytes("\0\xff geometry", 11);
    one.store({{u"a/geometry"_s, SessionFile::fromBytes(bytes)}, {u"a/columns"_s, 1}});
    other.store({{u"b/columns"_s, 2}});
    one.store({{u"a/columns"_s, 3}});
    const QJsonObject all = other.values();
    EXPECT_EQ(SessionFile::toBytes(all[u"a/geometry"_s]), bytes);
    EXPECT_EQ(all[u"a/columns"_s].toInt(), 3);
    EXPECT_EQ(all[u"b/columns"_s].toInt(), 2);

    const QByteArray before = folder.read(u"config/arvo/session.json"_s);
    tarnwick::failWritesAfter(before.size() / 2);
    EXPECT_THROW(one.store({{u"a/columns"_s, 4}}), tarnwick::FileError);
    EXPECT_NO_THROW(one.store({{u"a/columns"_s, 3}})) << "nothing differs";
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(folder.names(u"config/arvo"_s), QStringList{u"session.json"_s});
    EXPECT_EQ(folder.read(u"config/arvo/session.json"_s), before);

    folder.write(u"config/arvo/session.json"_s, before.first(before.size() / 2));
    EXPECT_TRUE(one.values().isEmpty());
    one.store({{u"a/columns"_s, 5}});
    EXPECT_EQ(one.values(), (QJsonObject{{u"a/columns"_s, 5}}));
}
