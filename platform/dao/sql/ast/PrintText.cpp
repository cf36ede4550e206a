#include "PrintText.h"

#include "Token.h"

#include <dao/values/OleDate.h>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

struct Operator
{
    BinaryOp op;
    const char16_t *text;
    Rank rank;
};

constexpr Operator kOperators[] = {
    {BinaryOp::Power, u"^", Rank::Power},
    {BinaryOp::Multiply, u"*", Rank::Product},
    {BinaryOp::Divide, u"/", Rank::Product},
    {BinaryOp::IntegerDivide, u"\\", Rank::IntegerDivision},
    {BinaryOp::Mod, u"Mod", Rank::Mod},
    {BinaryOp::Add, u"+", Rank::Sum},
    {BinaryOp::Subtract, u"-", Rank::Sum},
    {BinaryOp::Concatenate, u"&", Rank::Concatenation},
    {BinaryOp::Equal, u"=", Rank::Comparison},
    {BinaryOp::NotEqual, u"<>", Rank::Comparison},
    {BinaryOp::Less, u"<", Rank::Comparison},
    {BinaryOp::Greater, u">", Rank::Comparison},
    {BinaryOp::LessEqual, u"<=", Rank::Comparison},
    {BinaryOp::GreaterEqual, u">=", Rank::Comparison},
    {BinaryOp::Like, u"Like", Rank::Comparison},
    {BinaryOp::ALike, u"ALike", Rank::Comparison},
    {BinaryOp::Xor, u"Xor", Rank::Xor},
    {BinaryOp::Eqv, u"Eqv", Rank::Eqv},
    {BinaryOp::Imp, u"Imp", Rank::Imp},
};

const Operator &operatorOf(BinaryOp op)
{
    return *std::find_if(std::begin(kOperators), std::end(kOperators), [op](const Operator &o) { return o.op == op; });
}

// Negative literals come only from hexadecimal numbers. The 16-bit form is used if the value fits.
QString longText(qint64 number)
{
    if (number >= 0)
        return QString::number(number);
    const QString digits =
        number >= -0x8000 ? QString::number(quint16(number), 16) : QString::number(quint32(number), 16);
    return u"&H"_s + digits.toUpper();
}

// Always written with a point or an exponent, so that it is not parsed as an integer.
QString doubleText(double number)
{
    QString text = QString::number(number, 'g', QLocale::FloatingPointShortest);
    if (!text.contains(u'.') && !text.contains(u'e'))
        text += u".0"_s;
    return text;
}

QString dateText(double date)
{
    QString text;
    if (dayOf(date) != 0 || secondsOf(date) == 0)
        text = shortDateText(date);
    if (secondsOf(date) != 0)
        text += (text.isEmpty() ? QString() : u" "_s) + longTimeText(date);
    return u'#' + text + u'#';
}

} // namespace

Rank rankOf(BinaryOp op)
{
    return operatorOf(op).rank;
}

Rank rankOf(const Expr &expr)
{
    if (const Binary *binary = expr.as<Binary>())
        return rankOf(binary->op);
    if (const Unary *unary = expr.as<Unary>())
        return unary->op == UnaryOp::Not ? Rank::Not : Rank::Sign;
    if (const Chain *chain = expr.as<Chain>())
        return chain->isAnd ? Rank::And : Rank::Or;
    if (expr.as<Between>() || expr.as<InList>() || expr.as<InQuery>() || expr.as<IsNull>() || expr.as<Quantified>())
        return Rank::Comparison;
    return Rank::Primary;
}

QStringView operatorText(BinaryOp op)
{
    return operatorOf(op).text;
}

QString nameText(const QString &name)
{
    if (isPlainName(name) && keywordOf(name) == Keyword::None)
        return name;
    // Neither form can escape its closing mark, so a name never contains both.
    return name.contains(u']') ? QString(u'`' + name + u'`') : QString(u'[' + name + u']');
}

QString nameText(const Name &name)
{
    if (name.isSimple())
        return nameText(name.text);
    QString text = nameText(name.parts.front());
    qsizetype at = name.parts.front().size();
    for (qsizetype i = 1; i < name.parts.size(); ++i) {
        const QString &part = name.parts[i];
        text += name.text[at];
        // After a dot each word is a plain name.
        text += isPlainName(part) ? part : nameText(part);
        at += 1 + part.size();
    }
    return text;
}

QString literalText(const Value &value)
{
    switch (value.type()) {
    case Value::Type::Text:
        return u'\'' + value.text().replace(u'\'', u"''"_s) + u'\'';
    case Value::Type::Long:
        return longText(value.integer());
    case Value::Type::Double:
        return doubleText(value.real());
    case Value::Type::Date:
        return dateText(value.real());
    case Value::Type::Boolean:
        return value.boolean() ? u"True"_s : u"False"_s;
    default:
        return u"Null"_s;
    }
}

QString typeText(DataType type, bool autoIncrement)
{
    switch (type) {
    case DataType::Boolean:
        return u"BIT"_s;
    case DataType::Byte:
        return u"BYTE"_s;
    case DataType::Integer:
        return u"SHORT"_s;
    case DataType::Long:
        return autoIncrement ? u"COUNTER"_s : u"LONG"_s;
    case DataType::Currency:
        return u"CURRENCY"_s;
    case DataType::Single:
        return u"SINGLE"_s;
    case DataType::Double:
        return u"DOUBLE"_s;
    case DataType::Date:
        return u"DATETIME"_s;
    case DataType::Binary:
        return u"BINARY"_s;
    case DataType::Text:
        return u"TEXT"_s;
    case DataType::LongBinary:
        return u"LONGBINARY"_s;
    case DataType::Memo:
        return u"MEMO"_s;
    case DataType::Guid:
        return u"GUID"_s;
    case DataType::Decimal:
        return u"DECIMAL"_s;
    case DataType::Unknown:
        break;
    }
    return u"VALUE"_s;
}

} // namespace dao::sql::ast
