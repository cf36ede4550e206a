#include "ByteReader.h"

#include <dao/functions/Call.h>
#include <dao/functions/Functions.h>
#include <dao/functions/LikePattern.h>
#include <dao/values/Decimal.h>
#include <dao/values/OleDate.h>

#include <cmath>
#include <ctime>
#include <memory>
#include <QHash>
#include <sqlite3.h>
#include <vector>

using namespace Qt::StringLiterals;
using dao::functions::Entry;
using dao::functions::LikePattern;

namespace fuzz {
namespace {

// Of the processor, as other work may hold a fuzzer up.
constexpr std::clock_t MostTime = 4 * CLOCKS_PER_SEC;
constexpr int MostArguments = 8;
constexpr int MostRepeats = 2000;

enum Argument : uint8_t { Null, Whole, Small, Real, Day, Text, Repeated, Blob, ArgumentKinds };

std::vector<const Entry *> allEntries()
{
    using namespace dao::functions;
    std::vector<const Entry *> result;
    for (const auto &family :
         {conversionFunctions(), textFunctions(), formatFunctions(), dateFunctions(), numberFunctions(),
          logicFunctions(), moneyFunctions(), operatorFunctions(), assignmentFunctions()}) {
        for (const Entry &entry : family)
            result.push_back(&entry);
    }
    return result;
}

class Functions
{
public:
    Functions()
        : m_entries(allEntries())
    {
        if (sqlite3_open(":memory:", &m_handle) != SQLITE_OK)
            throw std::runtime_error("no database");
        dao::functions::registerAll(m_handle);
    }
    ~Functions()
    {
        for (sqlite3_stmt *statement : std::as_const(m_statements))
            sqlite3_finalize(statement);
        sqlite3_close(m_handle);
    }
    Functions(const Functions &) = delete;
    Functions &operator=(const Functions &) = delete;

    void call(ByteReader &reader)
    {
        const Entry &entry = *m_entries[reader.number<uint8_t>() % m_entries.size()];
        const int most = entry.maxArguments < 0 ? MostArguments : entry.maxArguments;
        const int count = entry.minArguments + reader.number<uint8_t>() % (most - entry.minArguments + 1);
        sqlite3_stmt *statement = prepared(entry, count);
        for (int i = 1; i <= count; ++i)
            bind(statement, i, reader);
        const std::clock_t before = std::clock();
        const int result = sqlite3_step(statement);
        const std::string message = sqlite3_errmsg(m_handle);
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
        if (std::clock() - before > MostTime)
            throw Finding(std::string(entry.name) + " takes too long");
        if (result != SQLITE_ROW && result != SQLITE_TOOBIG && !message.starts_with("dao:"))
            throw Finding(std::string(entry.name) + ": an error of the inner engine: " + message);
    }

private:
    sqlite3_stmt *prepared(const Entry &entry, int count)
    {
        QStringList places;
        for (int i = 1; i <= count; ++i)
            places.append(u'?' + QString::number(i));
        const QString sql = u"SELECT jet_"_s + QString::fromLatin1(entry.name) + u'(' + places.join(u',') + u')';
        sqlite3_stmt *&statement = m_statements[sql];
        if (!statement && sqlite3_prepare_v2(m_handle, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
            throw Finding(std::string("refused: ") + sqlite3_errmsg(m_handle));
        return statement;
    }

    static void bindText(sqlite3_stmt *statement, int place, const QString &text)
    {
        sqlite3_bind_text16(statement, place, text.utf16(), int(text.size() * 2), SQLITE_TRANSIENT);
    }

    static void bind(sqlite3_stmt *statement, int place, ByteReader &reader)
    {
        switch (reader.number<uint8_t>() % ArgumentKinds) {
        case Whole:
            sqlite3_bind_int64(statement, place, reader.number<qint64>());
            break;
        case Small:
            sqlite3_bind_int64(statement, place, reader.number<qint8>());
            break;
        case Real:
            sqlite3_bind_double(statement, place, reader.number<double>());
            break;
        case Day:
            sqlite3_bind_double(statement, place, reader.number<qint32>() / 256.0);
            break;
        case Text:
            bindText(statement, place, reader.text());
            break;
        case Repeated: {
            const int times = reader.number<uint16_t>() % MostRepeats;
            bindText(statement, place, reader.text().repeated(times));
            break;
        }
        case Blob:
            sqlite3_bind_blob(statement, place, "\0\xff", 2, SQLITE_STATIC);
            break;
        default:
            break; // Null
        }
    }

    std::vector<const Entry *> m_entries;
    QHash<QString, sqlite3_stmt *> m_statements;
    sqlite3 *m_handle = nullptr;
};

// A pattern in which every special character stands for itself matches its text, and no longer one.
void checkPattern(ByteReader &reader)
{
    const QString text = reader.text();
    QString pattern;
    for (const QChar c : text)
        pattern += QStringView(u"*?#[").contains(c) ? QString(u'[' + c + u']') : QString(c);
    const QString around = reader.text();
    if (!LikePattern(pattern).matches(text) || LikePattern(pattern).matches(QString(text + u'x')))
        throw Finding("a pattern does not match its own text: " + text.toStdString());
    const QString longer = around + text + around + u'x';
    if (!LikePattern(u'*' + pattern + u"*?"_s).matches(longer))
        throw Finding("a pattern does not match within a text: " + text.toStdString());
    LikePattern(around, LikePattern::Form::Percent).matches(text);
    LikePattern(around).matches(text);
}

void checkDate(ByteReader &reader)
{
    const double date = reader.number<double>();
    const QString text = dao::generalDateText(date);
    constexpr double LastDay = 2958465;
    if (dao::isValidDate(date) && date < LastDay) {
        const std::optional<double> again = dao::parseDate(text);
        if (!again || dao::dayOf(*again) != dao::dayOf(date) || dao::secondsOf(*again) != dao::secondsOf(date))
            throw Finding("a date is not read as written: " + text.toStdString());
    }
    const QString given = reader.text();
    const std::optional<double> parsed = dao::parseDate(given);
    if (parsed && !dao::isValidDate(*parsed))
        throw Finding("a text is read as no date: " + given.toStdString());
}

void checkNumber(ByteReader &reader)
{
    const double number = reader.number<double>();
    dao::parseNumber(reader.text());
    if (!std::isfinite(number))
        return;
    constexpr double FifteenDigits = 1e-14;
    const std::optional<double> again = dao::parseNumber(dao::numberText(number));
    // The largest numbers, rounded to fifteen digits, are beyond the range.
    const bool largest = std::abs(number) > 1.79769313486231e308;
    if (!largest && (!again || std::abs(*again - number) > std::abs(number) * FifteenDigits))
        throw Finding("a number is not read as written: " + dao::numberText(number).toStdString());
}

} // namespace

void callFunction(Bytes bytes)
{
    static Functions functions;
    ByteReader reader(bytes);
    try {
        switch (reader.number<uint8_t>() % 8) {
        case 0:
            return checkPattern(reader);
        case 1:
            return checkDate(reader);
        case 2:
            return checkNumber(reader);
        default:
            return functions.call(reader);
        }
    } catch (const dao::functions::FunctionFault &) {
        // a pattern that is too long
    }
}

} // namespace fuzz
