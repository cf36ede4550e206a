#include "CellPrinter.h"

#include "PlainDate.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <dao/values/CellFailure.h>
#include <dao/values/Decimal.h>
#include <db/FieldAccess.h>
#include <db/ValueText.h>
#include <tarnwick/JFormatSpec.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::JDateTime;
using tarnwick::JFormatSpec;
using Type = dao::Value::Type;

namespace {

/// Whether a column has the format that its type has anyway, as most have: its cells need no formatter.
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

QStringView CellPrinter::formatted(const dao::Value &value, const QString &format)
{
    switch (value.type()) {
    case Type::Short:
    case Type::Long:
    case Type::Byte:
        return isStandard(format, u"%d") ? integer(qint32(value.integer()))
                                         : kept(JFormatSpec(format).apply(qint32(value.integer())));
    case Type::Error:
        return kept(dao::failureWord(int(value.integer())));
    case Type::Text:
        return kept(isStandard(format, u"%U") || format == u"%S" ? value.text()
                                                                 : JFormatSpec(format).apply(value.text()));
    case Type::Float:
    case Type::Double:
        if (isStandard(format, u"%.2f") && std::isfinite(value.real()))
            return twoDecimals(value.real());
        return kept(JFormatSpec(format.isEmpty() ? u"%.2f"_s : format).apply(value.real()));
    case Type::Currency:
        return kept(db::currencyText(value));
    case Type::Date:
        return kept(dateText(value, format));
    case Type::Boolean:
        return kept(booleanText(value, format));
    default:
        return {};
    }
}

QStringView CellPrinter::plain(const dao::Value &value)
{
    switch (value.type()) {
    case Type::Empty:
    case Type::Null:
        return {};
    case Type::Boolean:
        return value.boolean() ? u"True" : u"False";
    case Type::Float:
        return kept(dao::singleText(value.real()));
    case Type::Double:
        return kept(dao::numberText(value.real()));
    case Type::Currency:
        return kept(dao::currencyText(value.integer()));
    case Type::Date:
        return kept(plainDate(value.real()));
    case Type::Text:
        return kept(value.text());
    case Type::Error:
        return kept(dao::failureWord(int(value.integer())));
    case Type::Binary:
        return kept(u"(%1 bytes)"_s.arg(value.binary().size()));
    default:
        return integer(value.integer());
    }
}

QStringView CellPrinter::kept(QString text)
{
    m_text = std::move(text);
    return m_text;
}

QStringView CellPrinter::integer(qint64 number)
{
    return widened(std::to_chars(m_digits.begin(), m_digits.end(), number).ptr);
}

QStringView CellPrinter::twoDecimals(double number)
{
    constexpr int kDecimals = 2;
    return widened(std::to_chars(m_digits.begin(), m_digits.end(), number, std::chars_format::fixed, kDecimals).ptr);
}

QStringView CellPrinter::widened(const char *end)
{
    const qsizetype size = end - m_digits.data();
    std::copy_n(m_digits.data(), size, m_wide.data());
    return {m_wide.data(), size};
}

} // namespace query
