#include <db/ColumnFormat.h>
#include <db/Errors.h>
#include <db/FieldAccess.h>
#include <db/FieldDefinition.h>
#include <db/SqlText.h>
#include <db/ValueText.h>
#include <gtest/gtest.h>
#include <support/Damage.h>
#include <support/Printers.h>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;
using tarnwick::JDateTime;

namespace {

Value read(const QString &text, DataType type)
{
    tarnwick::RecordingPrompts prompts;
    Value value;
    db::textToValue(prompts, value, type, text);
    EXPECT_TRUE(prompts.entries().isEmpty());
    return value;
}

TEST(ValueTextTest, PrintsEachKindByItsOwnFormatOrTheGivenOne)
{
    EXPECT_EQ(db::valueToText(Value::null()), u"");
    EXPECT_EQ(db::valueToText(Value::fromShort(-7)), u"-7");
    EXPECT_EQ(db::valueToText(Value::fromLong(70000)), u"70000");
    EXPECT_EQ(db::valueToText(Value::fromLong(70000), u"%D"_s), u"70,000");
    EXPECT_EQ(db::valueToText(Value::fromFloat(0.5F)), u"0.500000");
    EXPECT_EQ(db::valueToText(Value::fromDouble(2.345), u"%.2f V"_s), u"2.35 V");
    EXPECT_EQ(db::valueToText(Value::fromByte(200)), u"200");
    EXPECT_EQ(db::valueToText(Value::fromText(u"TEH"_s)), u"TEH");
    const JDateTime noon = JDateTime::fromLocal(2020, 3, 9, 12, 30, 5);
    EXPECT_EQ(db::valueToText(db::toValue(noon)), u"03/09/2020 12:30:05");
    for (const Value &unprintable :
         {Value::fromBoolean(true), Value::fromCurrencyScaled(10000), Value(), Value::fromBinary("x"_ba)})
        EXPECT_EQ(db::valueToText(unprintable), u"???");
}

TEST(ValueTextTest, ReadsBooleansAsTrueUnlessTheySayNo)
{
    for (const QString &no : {u"NO"_s, u"n"_s, u"F"_s, u"False"_s, u"off"_s, u"0"_s})
        EXPECT_EQ(read(no, DataType::Boolean), Value::fromBoolean(false)) << no.toStdString();
    for (const QString &yes : {u"yes"_s, u"maybe"_s, u""_s, u"1"_s, u" no"_s})
        EXPECT_EQ(read(yes, DataType::Boolean), Value::fromBoolean(true)) << yes.toStdString();
}

TEST(ValueTextTest, ReadsNumbersWithinTheirRange)
{
    EXPECT_EQ(read(u"255"_s, DataType::Byte), Value::fromByte(255));
    for (const QString &text : {u"256"_s, u"-1"_s, u"x"_s, u""_s})
        EXPECT_TRUE(read(text, DataType::Byte).isEmpty()) << text.toStdString();
    EXPECT_EQ(read(u"-32768"_s, DataType::Integer), Value::fromShort(-32768));
    EXPECT_TRUE(read(u"32768"_s, DataType::Integer).isEmpty());
    EXPECT_EQ(read(u"32768"_s, DataType::Long), Value::fromLong(32768));
    EXPECT_EQ(read(u"1.5"_s, DataType::Single), Value::fromFloat(1.5F));
    EXPECT_EQ(read(u"1e3"_s, DataType::Double), Value::fromDouble(1000));
    EXPECT_EQ(read(u" as it is "_s, DataType::Text), Value::fromText(u" as it is "_s));

    tarnwick::RecordingPrompts prompts;
    Value kept = Value::fromLong(5);
    db::textToValue(prompts, kept, DataType::Long, u"five"_s);
    db::textToValue(prompts, kept, DataType::Memo, u"text"_s);
    db::textToValue(prompts, kept, DataType::LongBinary, u"text"_s);
    EXPECT_EQ(kept, Value::fromLong(5));
}

TEST(ValueTextTest, ReadsCurrencyAndDatesInSeveralForms)
{
    EXPECT_EQ(read(u"$1,234.5"_s, DataType::Currency), Value::fromCurrencyScaled(12'345'000));
    EXPECT_EQ(read(u"(2.25)"_s, DataType::Currency), Value::fromCurrencyScaled(-22'500));
    const Value day = db::toValue(JDateTime::fromLocal(2021, 4, 5));
    EXPECT_EQ(read(u"4/5/2021"_s, DataType::Date), day);
    EXPECT_EQ(read(u"2021-04-05"_s, DataType::Date), day);
}

TEST(ValueTextTest, ReportsCurrencyAndDateTextsItCannotRead)
{
    tarnwick::RecordingPrompts prompts;
    Value value;
    db::textToValue(prompts, value, DataType::Currency, u"much"_s);
    db::textToValue(prompts, value, DataType::Date, u"31/31/2020"_s);
    EXPECT_TRUE(db::parseDateTime(prompts, u"soon"_s).isNull());
    EXPECT_TRUE(value.isEmpty());
    ASSERT_EQ(prompts.entries().size(), 3);
    EXPECT_EQ(prompts.entries()[0].number, 1058);
    EXPECT_EQ(prompts.entries()[0].text, u"Could not parse currency text 'much'\n\nSCODE[-2147352571]");
    EXPECT_EQ(prompts.entries()[1].number, 1059);
    EXPECT_TRUE(prompts.entries()[1].text.startsWith(u"Could not parse date text '31/31/2020'\n\nSCODE["));
    EXPECT_EQ(prompts.entries()[2].number, 1057);
    EXPECT_TRUE(prompts.entries()[2].text.startsWith(u"Could not parse date/time.\n\nSCODE["));
}

TEST(FieldValuesTest, BecomeTypedResults)
{
    EXPECT_EQ(db::fieldAs<qint32>(Value::null()), 0);
    EXPECT_EQ(db::fieldAs<qint32>(Value::fromText(u"12"_s)), 12);
    EXPECT_EQ(db::fieldAs<qint16>(Value::fromDouble(2.5)), 2);
    EXPECT_TRUE(db::fieldAs<bool>(Value::fromBoolean(true)));
    EXPECT_TRUE(db::fieldAs<bool>(Value::fromLong(7)));
    EXPECT_FALSE(db::fieldAs<bool>(Value::null()));
    EXPECT_EQ(db::fieldAs<double>(Value::fromCurrencyScaled(15'000)), 1.5);
    EXPECT_EQ(db::fieldAs<QString>(Value::fromLong(12)), u"");
    EXPECT_TRUE(db::fieldAs<JDateTime>(Value::null()).isNull());
    EXPECT_EQ(db::fieldAs<JDateTime>(Value::fromText(u"never"_s)), JDateTime::invalidDate());
    const JDateTime time = JDateTime::fromLocal(1999, 12, 31, 23, 59, 59);
    EXPECT_EQ(db::fieldAs<JDateTime>(db::toValue(time)), time);
    EXPECT_TRUE(db::toValue(JDateTime()).isNull());
}

TEST(FieldValuesTest, EmptyTextIsNullUnlessTheFieldTakesIt)
{
    dao::FieldInfo field;
    field.type = DataType::Text;
    EXPECT_TRUE(db::textForField({}, field).isNull());
    EXPECT_EQ(db::textForField(u"x"_s, field), Value::fromText(u"x"_s));
    field.allowZeroLength = true;
    EXPECT_EQ(db::textForField({}, field), Value::fromText({}));
}

TEST(ColumnFormatTest, TakesItsDefaultsFromNameAndType)
{
    const db::ColumnFormat model(u"probe_model"_s, DataType::Text);
    EXPECT_EQ(model.title, u"PROBE MODEL");
    EXPECT_EQ(model.width, 11);
    EXPECT_EQ(model.format, u"%U");
    EXPECT_EQ(model.alignment, 1);

    EXPECT_EQ(db::ColumnFormat(u"is_done"_s, DataType::Boolean).alignment, 0);
    EXPECT_EQ(db::ColumnFormat(u"pcnt"_s, DataType::Integer).alignment, 2);
    EXPECT_EQ(db::ColumnFormat(u"volts"_s, DataType::Single).format, u"%.2f");
}

TEST(ColumnFormatTest, RevalidationPutsBackWhatDoesNotFit)
{
    const auto revalidated = [](DataType type, const QString &format) {
        db::ColumnFormat column(u"x"_s, type);
        column.format = format;
        column.revalidate();
        return column.format;
    };
    EXPECT_EQ(revalidated(DataType::Byte, u"%X"_s), u"%X");
    EXPECT_EQ(revalidated(DataType::Byte, u"%f"_s), u"%d");
    EXPECT_EQ(revalidated(DataType::Long, u"%D tubes"_s), u"%D tubes");
    EXPECT_EQ(revalidated(DataType::Text, u"%d"_s), u"%U");
    EXPECT_EQ(revalidated(DataType::Single, u"%8.3e"_s), u"%8.3e");
    EXPECT_EQ(revalidated(DataType::Single, u"volts"_s), u"%.2f");
    EXPECT_EQ(revalidated(DataType::Boolean, u"Yes No"_s), u"T F");
    EXPECT_EQ(revalidated(DataType::LongBinary, u"%d"_s), u"%D");
    EXPECT_EQ(revalidated(DataType::Date, u"%Y"_s), u"%Y");

    db::ColumnFormat column(u"x"_s, DataType::Long);
    column.title = u"LONGER"_s;
    column.revalidate();
    EXPECT_EQ(column.width, 6);
}

TEST(ColumnFormatTest, RecordsComeBackAndDamagedOnesAreRefused)
{
    db::ColumnFormat column(u"volts"_s, DataType::Single);
    column.width = 12;
    tarnwick::JFile file = tarnwick::JFile::forWriting({});
    column.serialize(file);
    const auto readBack = [](const QByteArray &bytes) {
        tarnwick::JFile from = tarnwick::JFile::fromBytes(bytes, u"formats"_s);
        db::ColumnFormat read;
        read.serialize(from);
        return read;
    };
    EXPECT_EQ(readBack(file.bytes()), column);
    support::expectEveryTruncationThrows<tarnwick::JFileError>(file.bytes(), readBack);
    support::expectDamageIsSurvived<tarnwick::JFileError>(file.bytes(), readBack);
}

TEST(FieldDefinitionTest, NamesTypesAndReadsFlags)
{
    for (int none : {-1, 0, 9, 13})
        EXPECT_TRUE(db::daoTypeName(none).isEmpty()) << none;

    dao::TableInfo table;
    db::createField(table, u"a"_s, DataType::Long, 50, {}, {}, u"RZA");
    EXPECT_EQ(table.fields[0].size, 0);
    EXPECT_TRUE(table.fields[0].required);
    EXPECT_FALSE(table.fields[0].allowZeroLength);
    EXPECT_EQ(table.fields[0].attributes, 16);
    db::addField(table, u"b"_s, DataType::Text, u""_s);
    EXPECT_EQ(table.fields[1].size, 255);
    EXPECT_TRUE(table.fields[1].required);
    db::addField(table, u"c"_s, DataType::Text, {}, 0, 50, true);
    EXPECT_EQ(table.fields[2].size, 50);
    EXPECT_FALSE(table.fields[2].required);
    EXPECT_TRUE(table.fields[2].allowZeroLength);

    db::createIndex(table, u"i"_s, 1 | 2 | 4 | 8 | 16, {u"a"_s, u"b"_s, QString(), u"c"_s});
    const dao::IndexInfo &index = table.indexes[0];
    EXPECT_EQ(index.fields.size(), 2);
    EXPECT_TRUE(index.primary && index.unique && index.ignoreNulls && index.required && index.foreign);
}

TEST(SqlTextTest, RefusesTextsThatWouldChangeTheStatement)
{
    EXPECT_EQ(db::sqlText(u"... '%S' = %d", u"S\"1"_s, 3), u"... 'S\"1' = 3");
    try {
        db::sqlText(u"DELETE FROM report WHERE site_code = '%S'", u"x' OR 'a' = 'a"_s);
        FAIL();
    } catch (const dao::DaoException &exception) {
        EXPECT_EQ(exception.number(), 3075);
    }
}

TEST(ErrorsTest, TextHasMessageCodeSourceAndDescription)
{
    const dao::DaoException known(3022, u"DAO.Recordset"_s, u"Duplicate."_s);
    EXPECT_EQ(db::daoErrorText(u"Could not."_s, known), u"Could not.\n\n[3022] DAO.Recordset Duplicate.");
    EXPECT_EQ(db::daoErrorText(u"Could not."_s, std::runtime_error("x")), u"Could not.\n\n[-1] ???");
    dao::DaoException placed(3075, u"DAO.QueryDef"_s, u"Syntax error."_s, dao::SourceRange::of(u"SELECT\n  *", 9, 1));
    placed.withHint(u"Did you mean 'row'?"_s);
    EXPECT_EQ(db::daoErrorText(u"Could not."_s, placed),
              u"Could not.\n\n[3075] DAO.QueryDef Syntax error.\n\nLine 2, column 3. Did you mean 'row'?");
}

} // namespace
