#include "Call.h"

#include <cmath>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <limits>
#include <sqlite3.h>

namespace dao::functions {

bool Call::isNull(int index) const
{
    return sqlite3_value_type(m_arguments[index]) == SQLITE_NULL;
}

bool Call::isText(int index) const
{
    return sqlite3_value_type(m_arguments[index]) == SQLITE_TEXT;
}

bool Call::isInteger(int index) const
{
    return sqlite3_value_type(m_arguments[index]) == SQLITE_INTEGER;
}

qint64 Call::wholeNumber(int index) const
{
    return sqlite3_value_int64(m_arguments[index]);
}

// As in the dialect, Null where a number is needed is error 94, a text that is no number error 13.
double Call::number(int index) const
{
    switch (sqlite3_value_type(m_arguments[index])) {
    case SQLITE_NULL:
        throw FunctionFault{error::InvalidUseOfNull};
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        return sqlite3_value_double(m_arguments[index]);
    case SQLITE_TEXT:
        if (const auto parsed = parseNumber(text(index)))
            return *parsed;
        break;
    default:
        break;
    }
    throw FunctionFault{error::TypeMismatch};
}

// Rounds half to even, like CInt and CLng.
int Call::integer(int index) const
{
    const double rounded = roundHalfEven(number(index));
    if (!(rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max()))
        throw FunctionFault{error::Overflow};
    return int(rounded);
}

// Text is read as UTF-16, QString's own encoding. A number is written as the dialect writes it, not as SQLite does.
QString Call::text(int index) const
{
    sqlite3_value *value = m_arguments[index];
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return QString::number(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return numberText(sqlite3_value_double(value));
    default: {
        const auto *units = static_cast<const char16_t *>(sqlite3_value_text16(value));
        return QString::fromUtf16(units, sqlite3_value_bytes16(value) / 2);
    }
    }
}

// A text is read as a date first, then as a number of days.
double Call::date(int index) const
{
    double days = 0;
    if (isText(index)) {
        const QString given = text(index);
        if (const auto parsed = parseDate(given))
            return *parsed;
        const auto asNumber = parseNumber(given);
        if (!asNumber)
            throw FunctionFault{error::TypeMismatch};
        days = *asNumber;
    } else {
        days = number(index);
    }
    if (!isValidDate(days))
        throw FunctionFault{error::InvalidProcedureCall};
    return days;
}

void Call::result(double number)
{
    // The dialect has no infinity: an infinite result is error 6 (overflow).
    if (!std::isfinite(number))
        throw FunctionFault{error::Overflow};
    sqlite3_result_double(m_context, number);
}

void Call::result(qint64 number)
{
    sqlite3_result_int64(m_context, number);
}

void Call::result(const QString &text)
{
    sqlite3_result_text16(m_context, text.utf16(), int(text.size() * 2), SQLITE_TRANSIENT);
}

void Call::resultNull()
{
    sqlite3_result_null(m_context);
}

void Call::resultArgument(int index)
{
    sqlite3_result_value(m_context, m_arguments[index]);
}

// ErrorTranslation reads the number back from the message.
void Call::fail(int number, const QString &text)
{
    const QByteArray message =
        "dao:" + QByteArray::number(number) + ':' + (text.isEmpty() ? errorText(number) : text).toUtf8();
    sqlite3_result_error(m_context, message.constData(), int(message.size()));
}

} // namespace dao::functions
