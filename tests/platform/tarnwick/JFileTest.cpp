#include <support/Damage.h>
#include <support/FullDisk.h>
#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/JFile.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/TemporaryName.h>

#include <gtest/gtest.h>
#include <QRegularExpression>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct Record
{
    qint32 number = -7;
    quint32 colour = 0xF0F0F0;
    qint16 small = -2;
    char16_t symbol = u'Ω';
    quint8 byte = 200;
    bool flag = true;
    double radius = 1.5;
    QString text = u"Grüße \U0001D11E"_s;
    QStringList list{u"a"_s, QString(), u"c"_s};
    QList<qint32> tubes{1, -1, 3};

    void serialize(JFile &file)
    {
        file.header(u"Test"_s, 2);
        file.version(1);
        file.serialize(number);
        file.serialize(colour);
        file.serialize(small);
        file.serialize(symbol);
        file.serialize(byte);
        file.serialize(flag);
        file.serializeByte(flag);
        file.serialize(radius);
        file.serialize(text);
        file.serialize(list);
        file.serialize(tubes);
    }
    bool operator==(const Record &) const = default;
};

QByteArray written(Record record)
{
    JFile file = JFile::forWriting(u"x"_s);
    record.serialize(file);
    EXPECT_EQ(file.offset(), file.bytes().size());
    return file.bytes();
}

Record readBack(const QByteArray &bytes)
{
    JFile file = JFile::fromBytes(bytes, u"dir/test.rec"_s);
    Record record;
    record = {0, 0, 0, 0, 0, false, 0, {}, {}, {}};
    record.serialize(file);
    return record;
}

} // namespace

TEST(JFileTest, ReadsWhatItWrote)
{
    EXPECT_EQ(readBack(written(Record())), Record());
}

TEST(JFileTest, LayoutIsLittleEndianWithCountedUtf8)
{
    JFile file = JFile::forWriting(u"x"_s);
    file.header(u"Ab"_s, 3);
    char16_t symbol = 0x2126;
    QString text = u"é"_s;
    file.serialize(symbol);
    file.serialize(text);
    EXPECT_EQ(file.bytes().toHex(' '), "78 56 34 12 02 00 00 00 41 62 03 00 00 00 26 21 02 00 00 00 c3 a9");
}

TEST(JFileTest, RefusesEveryTruncationAndSurvivesDamage)
{
    support::expectEveryTruncationThrows<JFileError>(written(Record()), readBack);
    support::expectDamageIsSurvived<JFileError>(written(Record()), readBack);
}

TEST(JFileTest, ErrorsNameFileOffsetAndReason)
{
    QByteArray bytes = written(Record());
    bytes.replace("Test", "Tesa");
    try {
        readBack(bytes);
        FAIL();
    } catch (const JFileError &error) {
        EXPECT_EQ(error.offset(), 4);
        EXPECT_EQ(error.file(), u"dir/test.rec"_s);
        EXPECT_TRUE(error.text().contains(u"test.rec: this is a file of 'Tesa', not of 'Test' (at byte 4)"_s));
    }
    JFile text = JFile::fromBytes("SELECT *", u"a"_s);
    EXPECT_FALSE(text.startsWithMagic());
    EXPECT_THROW(text.header(u"Test"_s, 1), JFileError);
}

TEST(JFileTest, RefusesNewerVersionsAndReadsOlderOnes)
{
    JFile file = JFile::forWriting(u"x"_s);
    file.header(u"Test"_s, 2);
    const QByteArray bytes = file.bytes();
    EXPECT_EQ(JFile::fromBytes(bytes, u"x"_s).header(u"Test"_s, 3), 2);
    EXPECT_THROW(JFile::fromBytes(bytes, u"x"_s).header(u"Test"_s, 1), JFileError);
    EXPECT_THROW(JFile::fromBytes(QByteArray(4, '\0'), u"x"_s).version(1), JFileError);
}

TEST(JFileTest, FalseCountsTakeNoMemory)
{
    const QByteArray huge = QByteArray::fromHex("ffffff7f").leftJustified(20, 'x');
    for (const QByteArray &bytes : {huge, QByteArray::fromHex("ffffffff"), QByteArray("\x05\0\0\0abcd", 8)}) {
        QList<qint32> numbers;
        QStringList texts;
        QString text;
        EXPECT_THROW(JFile::fromBytes(bytes, u"x"_s).serialize(numbers), JFileError);
        EXPECT_THROW(JFile::fromBytes(bytes, u"x"_s).serialize(texts), JFileError);
        EXPECT_THROW(JFile::fromBytes(bytes, u"x"_s).serialize(text), JFileError);
    }
}

TEST(FileWriterTest, ReplacesWholeFilesOnly)
{
    const support::TemporaryFolder folder;
    const QString path = folder.path(u"new/file.txt"_s);
    writeFileAtomically(path, "first");
    EXPECT_EQ(readFile(path), "first");

    failWritesAfter(3);
    EXPECT_THROW(writeFileAtomically(path, "second"), FileError);
    failWritesAfter(-1);
    {
        AtomicFile abandoned(path);
        abandoned.write("third");
    }
    EXPECT_EQ(readFile(path), "first");
    EXPECT_EQ(folder.names(u"new"_s), QStringList{u"file.txt"_s});

    AtomicFile file(path);
    file.write("two ");
    file.write("pieces");
    file.commit();
    EXPECT_EQ(readFile(path), "two pieces");
}

TEST(FileWriterTest, SaysWhatCannotBeReadOrWritten)
{
    const support::TemporaryFolder folder;
    folder.write(u"file"_s, "12345");
    EXPECT_THROW(readFile(folder.path(u"missing"_s)), FileError);
    EXPECT_THROW(readFile(folder.path()), FileError);
    EXPECT_THROW(readFile(folder.path(u"file"_s), 4), FileError);
    EXPECT_EQ(readFile(folder.path(u"file"_s), 5), "12345");
    EXPECT_THROW(writeFileAtomically(folder.path(u"file/below.txt"_s), "x"), FileError);
    EXPECT_THROW(writeFileAtomically(folder.path(), "x"), FileError);
}

TEST(FileWriterTest, WhatTheSystemCannotWriteReplacesNothing)
{
    const support::TemporaryFolder folder;
    const QString path = folder.write(u"file"_s, "old");
    const auto reasonOf = [&](const QByteArray &content) {
        QString whileWriting;
        AtomicFile file(path);
        try {
            file.write(content);
        } catch (const FileError &error) {
            whileWriting = error.reason();
        }
        try {
            file.commit();
        } catch (const FileError &error) {
            EXPECT_TRUE(whileWriting.isEmpty() || whileWriting == error.reason());
            return error.reason();
        }
        return u"written"_s;
    };
    for (const qsizetype size : {10, 700, 16'000, 1 << 20}) {
        const support::FullDisk disk(size / 2);
        EXPECT_EQ(reasonOf(QByteArray(size, 'x')), u"cannot be written: File too large."_s) << size;
    }
    failSyncs(true);
    EXPECT_EQ(reasonOf("new"), u"cannot be written: Input/output error."_s);
    failSyncs(false);
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(folder.names(), QStringList{u"file"_s});
    EXPECT_EQ(reasonOf("new"), u"written"_s);
}

TEST(FileWriterTest, KeepsRightsAndFollowsNoLinks)
{
    const support::TemporaryFolder folder;
    const QString mine = folder.write(u"mine"_s, "mine");
    const auto rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QFile::setPermissions(mine, rights);
    writeFileAtomically(mine, "mine too");
    EXPECT_EQ(QFile::permissions(mine), rights);
    AtomicFile copy(folder.path(u"copy"_s), mine);
    copy.commit();
    EXPECT_EQ(QFile::permissions(folder.path(u"copy"_s)), rights);

    for (const QString &target : {mine, folder.path(u"nothing"_s)}) {
        const QString link = folder.path(u"map of the project"_s);
        ASSERT_TRUE(QFile::link(target, link));
        EXPECT_THROW(writeFileAtomically(link, "not mine"), FileError);
        EXPECT_TRUE(QFile::remove(link));
    }
    EXPECT_EQ(readFile(mine), "mine too");
    EXPECT_EQ(folder.names(), (QStringList{u"copy"_s, u"mine"_s}));

    // Nor where the unfinished file is to stand.
    static const QRegularExpression number(u"-([0-9]+)\\.new$"_s);
    const QString next = temporaryNameFor(mine);
    QString ahead = next;
    ahead.replace(number, u"-%1.new"_s.arg(number.match(next).captured(1).toInt() + 1));
    ASSERT_TRUE(QFile::link(folder.path(u"nothing"_s), ahead));
    writeFileAtomically(mine, "new");
    EXPECT_FALSE(folder.has(u"nothing"_s));
    EXPECT_EQ(readFile(mine), "new");
}

TEST(FileWriterTest, DoesNotBringBackAFolderThatHasGone)
{
    const support::TemporaryFolder folder;
    EXPECT_THROW(writeFileAtomically(folder.path(u"gone/plans/file.txt"_s), "x"), FileError);
    EXPECT_FALSE(QFileInfo::exists(folder.path(u"gone"_s)));
}

TEST(JMacroTest, ExpandsKnownNamesOnce)
{
    JMacro macros;
    macros.set(u"MAP NAME"_s, u"[Unit 1]"_s);
    macros.set(u"[Unit 1]"_s, u"never"_s);
    macros.set(u"[EMPTY]"_s, QString());
    macros.set(u"[map name]"_s, u"[Unit 1] A"_s);
    EXPECT_EQ(macros.entries().size(), 3);
    EXPECT_EQ(macros.expand(u"[Map Name]: [row_num] [EMPTY][[MAP NAME]] ] [MAP"_s),
              u"[Unit 1] A: [row_num] [[Unit 1] A] ] [MAP"_s);
    EXPECT_EQ(macros.value(u"empty"_s), QString());
    EXPECT_FALSE(macros.value(u"[other]"_s).has_value());
    macros.remove(u"empty"_s);
    EXPECT_EQ(macros.expand(u"[EMPTY]"_s), u"[EMPTY]"_s);
}

TEST(JMacroTest, MergesSortsAndIsKept)
{
    JMacro user;
    user.set(u"[B]"_s, u"user"_s);
    JMacro system;
    system.set(u"[b]"_s, u"system"_s);
    system.set(u"[A]"_s, u"a"_s);
    user.merge(system);
    user.sort();
    const QList<JMacro::Entry> expected{{u"[A]"_s, u"a"_s}, {u"[B]"_s, u"user"_s}};
    EXPECT_EQ(user.entries(), expected);

    JFile file = JFile::forWriting(u"x"_s);
    user.serialize(file);
    const auto read = [](const QByteArray &bytes) {
        JFile reader = JFile::fromBytes(bytes, u"x"_s);
        JMacro macros;
        macros.serialize(reader);
        return macros;
    };
    EXPECT_EQ(read(file.bytes()), user);
    support::expectEveryTruncationThrows<JFileError>(file.bytes(), read);
}
