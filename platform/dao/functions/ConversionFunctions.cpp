#include "Call.h"
#include "ValueText.h"

#include <cmath>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>
#include <limits>
#include <QLocale>

namespace dao::functions {

namespace {

void toBoolean(Call &call)
{
    if (call.isText(0)) {
        const QString text = call.text(0).trimmed();
        if (text.compare(u"true", Qt::CaseInsensitive) == 0)
            return call.resultBoolean(true);
        if (text.compare(u"false", Qt::CaseInsensitive) == 0)
            return call.resultBoolean(false);
    }
    call.resultBoolean(call.condition(0));
}

template <int least, int most>
void toWhole(Call &call)
{
    const double rounded = roundHalfEven(call.number(0));
    if (!(rounded >= least && rounded <= most))
        throw FunctionFault{error::Overflow};
    call.result(qint64(rounded));
}

void toCurrency(Call &call)
{
    // 64 bits, in ten-thousandths
    constexpr double kMost = 922337203685477.5807;
    const double rounded = roundCurrency(call.number(0));
    if (std::abs(rounded) > kMost)
        throw FunctionFault{error::Overflow};
    call.result(rounded);
}

void toSingle(Call &call)
{
    const double number = call.number(0);
    if (std::abs(number) > double(std::numeric_limits<float>::max()))
        throw FunctionFault{error::Overflow};
    call.result(double(float(number)));
}

void toDouble(Call &call)
{
    call.result(call.number(0));
}

void toDate(Call &call)
{
    call.result(call.date(0));
}

void identity(Call &call)
{
    call.resultArgument(0);
}

// Arguments: (type, value).
void toText(Call &call)
{
    if (call.isNull(1))
        throw FunctionFault{error::InvalidUseOfNull};
    call.result(textOf(call, 0, 1));
}

// Val: parses the number at the start of a text; blanks are skipped everywhere, also between digits.
void leadingNumber(Call &call)
{
    QString text = call.text(0);
    text.removeIf([](QChar c) { return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r'; });
    const auto digitsFrom = [&text](qsizetype start, auto isDigit) {
        qsizetype end = start;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        return end;
    };
    const auto isDecimal = [](QChar c) { return c >= u'0' && c <= u'9'; };

    if (text.startsWith(u"&H", Qt::CaseInsensitive) || text.startsWith(u"&O", Qt::CaseInsensitive)) {
        const bool hex = text[1].toUpper() == u'H';
        const qsizetype end = digitsFrom(2, [hex](QChar c) {
            const QChar upper = c.toUpper();
            return hex ? (c >= u'0' && c <= u'9') || (upper >= u'A' && upper <= u'F') : c >= u'0' && c <= u'7';
        });
        bool ok = false;
        const quint64 bits = text.mid(2, end - 2).toULongLong(&ok, hex ? 16 : 8);
        if (!ok)
            return call.result(0.0);
        // Hexadecimal numbers of up to 16 bits are signed 16-bit values, those of up to 32 bits signed 32-bit values.
        const double value = bits <= 0xFFFF       ? double(qint16(bits))
                             : bits <= 0xFFFFFFFF ? double(qint32(bits))
                                                  : double(bits);
        return call.result(value);
    }

    qsizetype end = !text.isEmpty() && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    end = digitsFrom(end, isDecimal);
    if (end < text.size() && text[end] == u'.')
        end = digitsFrom(end + 1, isDecimal);
    if (end < text.size() && (text[end].toUpper() == u'E' || text[end].toUpper() == u'D')) {
        text[end] = u'e';
        qsizetype exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == u'-' || text[exponent] == u'+'))
            ++exponent;
        const qsizetype exponentEnd = digitsFrom(exponent, isDecimal);
        if (exponentEnd > exponent)
            end = exponentEnd;
    }
    call.result(QLocale::c().toDouble(text.left(end)));
}

// Str. Arguments: (type, value). Positive numbers start with a blank in place of the sign.
void numberAsText(Call &call)
{
    const QString text = numberTextOf(call.number(1), typeArgument(call, 0));
    call.result(text.startsWith(u'-') ? text : QString(u' ' + text));
}

// Hex and Oct. Arguments: (type, value). Negative numbers are shown in two's complement of 16 or 32 bits, by type.
template <int base>
void digits(Call &call)
{
    const int number = call.integer(1);
    const DataType type = typeArgument(call, 0);
    const bool isShort = (type == DataType::Integer || type == DataType::Boolean) &&
                         number >= std::numeric_limits<qint16>::min() && number < 0;
    call.result(QString::number(isShort ? quint16(number) : quint32(number), base).toUpper());
}

constexpr Entry kEntries[] = {
    {"cbool", 1, 1, toBoolean, 0},
    {"cbyte", 1, 1, toWhole<0, 255>, 0},
    {"cint", 1, 1, toWhole<std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()>, 0},
    {"clng", 1, 1, toWhole<std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()>, 0},
    {"ccur", 1, 1, toCurrency, 0},
    {"csng", 1, 1, toSingle, 0},
    {"cdbl", 1, 1, toDouble, 0},
    {"cdec", 1, 1, toDouble, 0},
    {"cdate", 1, 1, toDate, 0},
    {"cvdate", 1, 1, toDate},
    {"cstr", 2, 2, toText, 0},
    {"cvar", 1, 1, identity, 0},
    {"val", 1, 1, leadingNumber},
    {"str", 2, 2, numberAsText},
    {"hex", 2, 2, digits<16>},
    {"oct", 2, 2, digits<8>},
};

} // namespace

std::span<const Entry> conversionFunctions()
{
    return kEntries;
}

} // namespace dao::functions
