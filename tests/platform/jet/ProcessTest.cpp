#include "TestFiles.h"

#include <jet/wire/Facts.h>

#include <QElapsedTimer>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace jet::test {
namespace {

using wire::Frame;

// Stands in for the reading program: a script that does what a test asks.
class JetProcessTest : public ::testing::Test
{
protected:
    JetError::Reason reasonWith(const QString &script, int patience = 20)
    {
        QFile program(m_folder.filePath(u"reader"_s));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\n" + script.toUtf8() + '\n');
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        program.close();
        return reasonOf({program.fileName(), patience});
    }
    JetError::Reason reasonWithStream(const QByteArray &stream)
    {
        const QString file = support::writeFile(m_folder.filePath(u"stream"_s), stream);
        return reasonWith(u"cat '"_s + file + u'\'');
    }
    JetError::Reason reasonOf(const ReadOptions &options)
    {
        Collector content;
        try {
            JetReader(u"/nowhere.mdb"_s, options).read(content);
        } catch (const JetError &error) {
            EXPECT_TRUE(error.text().contains(u"nowhere.mdb"_s)) << error.what();
            return error.reason();
        }
        ADD_FAILURE() << "no error";
        return {};
    }

    QTemporaryDir m_folder;
};

QByteArray frame(Frame kind, const wire::WireWriter &payload = {})
{
    wire::WireWriter writer;
    writer.u8(quint8(kind));
    writer.u32(quint32(payload.size()));
    return writer.bytes() + payload.bytes();
}

template <typename Facts>
QByteArray factsFrame(Frame kind, const Facts &facts)
{
    wire::WireWriter payload;
    put(payload, facts);
    return frame(kind, payload);
}

QByteArray numberFrame(Frame kind, qint64 number, bool wide = true)
{
    wire::WireWriter payload;
    wide ? payload.i64(number) : payload.u32(quint32(number));
    return frame(kind, payload);
}

// One table of one Long field with one row.
QByteArray smallStream(quint32 tables = 1, qint64 rowsStated = 1, wire::Tag tag = wire::Tag::Long)
{
    wire::TableFacts table;
    table.info.name = u"t"_s;
    dao::FieldInfo field;
    field.name = u"f"_s;
    field.type = dao::DataType::Long;
    table.info.fields.append(field);
    wire::WireWriter rows;
    rows.u32(1);
    rows.u8(quint8(tag));
    rows.u32(42);
    return factsFrame(Frame::File, wire::FileFacts{4, 1252, 4096, 3}) + factsFrame(Frame::Table, table) +
           numberFrame(Frame::SchemaEnd, tables, false) + frame(Frame::TableBegin) + frame(Frame::Rows, rows) +
           numberFrame(Frame::TableEnd, rowsStated) + numberFrame(Frame::End, 1);
}

TEST_F(JetProcessTest, AProgramThatIsMissingCrashesHangsOrPrintsWithoutEnd)
{
    EXPECT_EQ(reasonOf({m_folder.filePath(u"none"_s), 5}), JetError::Reason::ReaderMissing);
    EXPECT_EQ(reasonWith(u"kill -SEGV $$"_s), JetError::Reason::ReaderFailed);
    EXPECT_EQ(reasonWith(u"exit 0"_s), JetError::Reason::ReaderFailed);
    EXPECT_EQ(reasonWith(u"exec sleep 60"_s, 1), JetError::Reason::ReaderStuck);
    EXPECT_EQ(reasonWith(u"exec yes 1>&2"_s, 1), JetError::Reason::ReaderStuck);
    EXPECT_EQ(reasonWith(u"exec yes"_s), JetError::Reason::ReaderFailed);
}

TEST_F(JetProcessTest, EveryPrefixOfAStreamIsAnError)
{
    const QByteArray whole = smallStream();
    for (qsizetype length = 0; length < whole.size(); length += 7)
        EXPECT_EQ(reasonWithStream(whole.left(length)), JetError::Reason::ReaderFailed) << length;
}

TEST_F(JetProcessTest, AStreamThatContradictsItselfIsAnError)
{
    EXPECT_EQ(reasonWithStream(smallStream(2)), JetError::Reason::ReaderFailed);
    EXPECT_EQ(reasonWithStream(smallStream(1, 2)), JetError::Reason::ReaderFailed);
    EXPECT_EQ(reasonWithStream(smallStream(1, 1, wire::Tag::Float)), JetError::Reason::ReaderFailed);
    EXPECT_EQ(reasonWithStream(smallStream() + frame(Frame::TableBegin)), JetError::Reason::ReaderFailed);
    // A frame of four gigabytes, and a list of as many fields.
    EXPECT_EQ(reasonWithStream(QByteArray::fromHex("01ffffffff")), JetError::Reason::ReaderFailed);
    wire::WireWriter fields;
    fields.text(u"t");
    fields.u32(0);
    fields.u32(0xFFFFFFFF);
    EXPECT_EQ(reasonWithStream(smallStream().left(25) + frame(Frame::Table, fields)), JetError::Reason::ReaderFailed);
}

TEST_F(JetProcessTest, FilesThatAreNotWhatTheySeem)
{
    const auto reasonOfFile = [&](const QByteArray &bytes) {
        Collector content;
        const QString path = writeFile(m_folder, bytes);
        try {
            JetReader(path).read(content);
        } catch (const JetError &error) {
            return error.reason();
        }
        ADD_FAILURE() << "no error";
        return JetError::Reason::Damaged;
    };
    const QByteArray head = QByteArrayLiteral("\0\1\0\0Standard Jet DB\0\1");
    EXPECT_EQ(reasonOfFile("SQLite format 3"), JetError::Reason::NotJet);
    EXPECT_EQ(reasonOfFile({}), JetError::Reason::NotJet);
    EXPECT_EQ(reasonOfFile(QByteArrayLiteral("\0\1\0\0Standard ACE DB\0\2\0\0")), JetError::Reason::NewerFormat);
    EXPECT_EQ(reasonOfFile(head + QByteArray(3 * 4096 - head.size() + 1, '\0')), JetError::Reason::CutShort);
    EXPECT_EQ(reasonOfFile(head + QByteArray(3 * 4096 - head.size(), '\0')), JetError::Reason::Damaged);
    Collector content;
    EXPECT_THROW(JetReader(m_folder.filePath(u"none.mdb"_s)).read(content), JetError);
}

class StopAtOnce : public tarnwick::Progress
{
public:
    bool cancelled() override
    {
        ++asked;
        return true;
    }
    int asked = 0;
};

class FailingSink : public Collector
{
public:
    void row(const QList<dao::Value> &) override { throw std::runtime_error("full"); }
};

TEST_F(JetProcessTest, CanBeStoppedByTheUserAndByTheSink)
{
    ARVO_NEEDS_TESTDATA();
    JetReader reader(dataFile(u"suite-current.mdb"_s));
    Collector content;
    StopAtOnce progress;
    EXPECT_THROW(reader.read(content, &progress), tarnwick::Cancelled);
    EXPECT_EQ(progress.asked, 1);
    FailingSink sink;
    EXPECT_THROW(reader.read(sink), std::runtime_error);
}

TEST_F(JetProcessTest, PathsOfAnyKind)
{
    ARVO_NEEDS_TESTDATA();
    const QString folder = m_folder.filePath(u"o'Brien \"x\" Ünïcode "_s + QString(150, u'n'));
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + u"/-a b%1.mdb"_s;
    ASSERT_TRUE(QFile::copy(dataFile(u"indexTestV2003.mdb"_s), path));
    Collector content;
    JetReader(path).read(content);
    EXPECT_EQ(content.table(u"Table1"_s)->rows.size(), 4);
}

} // namespace
} // namespace jet::test
