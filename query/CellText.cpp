#include "CellText.h"

#include <charconv>
#include <cmath>
#include <dao/values/CellFailure.h>
#include <db/FieldAccess.h>
#include <db/ValueText.h>
#include <tarnwick/JFormatSpec.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;
using tarnwick::JFormatSpec;
using Type = dao::Value::Type;

namespace {

/// The text of "%.2f" for a finite number.
QString twoDecimals(double number)
{
    char digits[512];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed, 2).ptr;
    return QString::fromLatin1(digits, end - digits);
}

/// Whether a value has its type's own format, as most have: exports of a million rows take half the time if such a cell
/// does not go through the formatter.
bool isStandard(const QString &format, QStringView standard)
{
    return format.isEmpty() || format == standard;
}

QString booleanText(const dao::Value &value, const QString &format)
{
    const QString words = format.isEmpty() ? u"T F"_s : format;
    const qsizetype blank = words.indexOf(u' ');
    if (blank < 0)
        return JFormatSpec(words).apply(qint32(value.integer()));
    return value.boolean() ? words.first(blank) : words.sliced(blank + 1);
}

QString dateText(const dao::Value &value, const QString &format)
{
    const JDateTime date = db::fieldAs<JDateTime>(value);
    if (date == JDateTime::invalidDate())
        return u"Invalid DateTime"_s;
    return format.isEmpty() ? date.toString() : date.toString(format);
}

} // namespace

QString cellText(const dao::Value &value, const QString &format)
{
    const auto print = [&format](const tarnwick::FormatArg &argument, const char16_t *standard) {
        return JFormatSpec(format.isEmpty() ? QString::fromUtf16(standard) : format).apply(argument);
    };
    switch (value.type()) {
    case Type::Short:
    case Type::Long:
    case Type::Byte:
        return isStandard(format, u"%d") ? QString::number(qint32(value.integer()))
                                         : print(qint32(value.integer()), u"%d");
    case Type::Error:
        return dao::failureWord(int(value.integer()));
    case Type::Text:
        return isStandard(format, u"%U") || format == u"%S" ? value.text() : print(value.text(), u"%U");
    case Type::Float:
    case Type::Double:
        return isStandard(format, u"%.2f") && std::isfinite(value.real()) ? twoDecimals(value.real())
                                                                          : print(value.real(), u"%.2f");
    case Type::Currency:
        return db::currencyText(value);
    case Type::Date:
        return dateText(value, format);
    case Type::Boolean:
        return booleanText(value, format);
    default:
        return {};
    }
}

QString cellTip(const dao::Value &value)
{
    return value.isError() ? dao::failureTip(int(value.integer())) : QString();
}

} // namespace query
