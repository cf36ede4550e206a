#include "TestFiles.h"

#include <QProcess>

using namespace Qt::StringLiterals;
using dao::DataType;

namespace jet::test {
namespace {

// No text of the files holds these.
constexpr char kFieldEnd[] = "\x1F@|@";
constexpr char kRowEnd[] = "\x1E@|@";

// Each part stands before an end mark.
QByteArrayList split(const QByteArray &text, const QByteArray &end)
{
    QByteArrayList parts;
    qsizetype from = 0;
    for (qsizetype at = text.indexOf(end); at >= 0; at = text.indexOf(end, from)) {
        parts.append(text.mid(from, at - from));
        from = at + end.size();
    }
    EXPECT_EQ(from, text.size());
    return parts;
}

// What the command-line programs of mdbtools print, cell by cell; an independent reader of the same files.
QList<QByteArrayList> exportedRows(const QString &file, const QString &table)
{
    QProcess process;
    process.start(u"mdb-export"_s, {u"-Q"_s, u"-b"_s, u"hex"_s, u"-d"_s, QString::fromLatin1(kFieldEnd), u"-R"_s,
                                    QString::fromLatin1(kRowEnd), u"-T"_s, u"%Y-%m-%d %H:%M:%S"_s, u"-D"_s,
                                    u"%Y-%m-%d %H:%M:%S"_s, file, table});
    EXPECT_TRUE(process.waitForFinished(-1)) << "mdb-export of package mdbtools";
    QList<QByteArrayList> rows;
    for (const QByteArray &line : split(process.readAllStandardOutput(), kRowEnd))
        rows.append(split(line + kFieldEnd, kFieldEnd));
    return rows;
}

QByteArray number(const char *format, double value)
{
    return QByteArray(QString::asprintf(format, value).toUtf8());
}

QByteArray dateText(double days)
{
    const qint64 seconds = std::llround(days * 86400);
    const QDateTime date = QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC).addSecs(seconds);
    return date.toString(u"yyyy-MM-dd HH:mm:ss"_s).toUtf8();
}

// Dates outside of 1900 to 2037 it prints wrongly; they are looked at in a test of their own.
bool isPrintedRight(const dao::Value &value)
{
    return value.type() != dao::Value::Type::Date || (value.real() > 1 && value.real() < 50000);
}

QByteArray asExported(const dao::Value &value, DataType type)
{
    switch (type) {
    case DataType::Boolean:
        return value.boolean() ? "1" : "0";
    default:
        break;
    }
    if (value.isNull())
        return {};
    switch (type) {
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
        return QByteArray::number(value.integer());
    case DataType::Currency:
        return QByteArray::number(double(value.integer()) / 10000, 'f', 4);
    case DataType::Single:
        return number("%.8g", value.real());
    case DataType::Double:
        return number("%.16g", value.real());
    case DataType::Date:
        return dateText(value.real());
    case DataType::Binary:
    case DataType::LongBinary:
        return value.binary().toHex().toUpper();
    default:
        return value.text().toUtf8();
    }
}

class ContentTest : public ::testing::TestWithParam<std::string>
{
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ContentTest);

TEST_P(ContentTest, EveryValueIsTheOneThatMdbExportPrints)
{
    const QString file = dataFile(QString::fromStdString(GetParam()));
    Collector content;
    JetReader reader(file);
    reader.read(content);
    EXPECT_FALSE(reader.hasRemark(Remark::Kind::Lost));
    EXPECT_FALSE(reader.hasRemark(Remark::Kind::Changed));
    for (const TableContent &table : content.tables()) {
        SCOPED_TRACE(table.info.name.toStdString());
        QList<QByteArrayList> expected = exportedRows(file, table.info.name);
        ASSERT_FALSE(expected.isEmpty());
        const QByteArrayList head = expected.takeFirst();
        QList<QByteArrayList> actual;
        for (const QList<dao::Value> &row : table.rows) {
            QByteArrayList cells;
            for (const QByteArray &name : head) {
                const int field = table.info.indexOf(QString::fromUtf8(name));
                ASSERT_GE(field, 0) << name.constData();
                const dao::Value &value = row.at(field);
                cells.append(isPrintedRight(value) ? asExported(value, table.info.fields.at(field).type)
                                                   : QByteArray("?"));
            }
            actual.append(cells);
        }
        ASSERT_EQ(head.size(), table.info.fields.size());
        ASSERT_EQ(actual.size(), expected.size());
        // A moved row stands at its old place here and at its new one there.
        std::sort(actual.begin(), actual.end());
        std::sort(expected.begin(), expected.end());
        for (qsizetype row = 0; row < actual.size(); ++row) {
            for (qsizetype i = 0; i < head.size(); ++i) {
                const QByteArray &cell = actual.at(row).at(i);
                ASSERT_TRUE(cell == "?" || cell == expected.at(row).at(i))
                    << "row " << row << " field " << head.at(i).constData() << ": " << cell.left(100).constData()
                    << " against " << expected.at(row).at(i).left(100).constData();
            }
        }
    }
}

std::string testName(const ::testing::TestParamInfo<std::string> &file)
{
    std::string name = file.param.substr(0, file.param.find('.'));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}
INSTANTIATE_TEST_SUITE_P(RealFiles, ContentTest, ::testing::ValuesIn(dataFiles()), testName);

const dao::Value &cell(const TableContent &table, qsizetype row, const QString &field)
{
    return table.rows.at(row).at(table.info.indexOf(field));
}

struct Texts
{
    qint64 nulls = 0;
    qint64 empty = 0;
};
Texts countTexts(const TableContent &table)
{
    Texts count;
    for (const QList<dao::Value> &row : table.rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (!dao::isTextType(table.info.fields.at(i).type))
                continue;
            count.nulls += row.at(i).isNull();
            count.empty += !row.at(i).isNull() && row.at(i).text().isEmpty();
        }
    }
    return count;
}

TEST(JetValuesTest, EmptyTextAndNullAreTwoThings)
{
    ARVO_NEEDS_TESTDATA();
    Collector suite;
    JetReader(dataFile(u"suite-current.mdb"_s)).read(suite);
    for (const QString &name : {u"repairs"_s, u"plans"_s, u"tube_sets"_s}) {
        const Texts texts = countTexts(*suite.table(name));
        EXPECT_GT(texts.nulls, 0) << name.toStdString();
        EXPECT_GT(texts.empty, 0) << name.toStdString();
    }
    // No text field of this table admits an empty text.
    EXPECT_EQ(countTexts(*suite.table(u"report"_s)).empty, 0);
}

TEST(JetValuesTest, DatesOutsideOfOurCentury)
{
    ARVO_NEEDS_TESTDATA();
    Collector content;
    JetReader(dataFile(u"DateTestDatabase.mdb"_s)).read(content);
    const TableContent &table = *content.table(u"DateTest"_s);
    QList<double> days;
    for (qsizetype row = 0; row < table.rows.size(); ++row)
        days.append(cell(table, row, u"DateTimeCol"_s).real());
    // 2 December 2021, 1 January of 9999, of 1898 and of 632
    EXPECT_EQ(days.mid(0, 4), (QList<double>{44532, 2958101, -728, -463126}));
}

TEST(JetValuesTest, LongMemoOfManyPages)
{
    ARVO_NEEDS_TESTDATA();
    Collector content;
    JetReader(dataFile(u"suite-current.mdb"_s)).read(content);
    const TableContent &repairs = *content.table(u"repairs"_s);
    qsizetype longest = 0;
    for (qsizetype row = 0; row < repairs.rows.size(); ++row)
        longest = qMax(longest, cell(repairs, row, u"comment"_s).text().size());
    EXPECT_EQ(longest, 40960);
}

} // namespace
} // namespace jet::test
