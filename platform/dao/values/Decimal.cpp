#include "Decimal.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;
constexpr double kCurrencyScale = 10'000.0;

std::optional<double> parseRadix(QStringView digits, int radix)
{
    bool ok = false;
    const quint64 value = digits.toULongLong(&ok, radix);
    if (!ok || value > 0xFFFFFFFFu)
        return {};
    // Hexadecimal numbers of up to 16 bits are signed: &HFFFF is -1.
    if (value <= 0xFFFF)
        return double(qint16(value));
    return double(qint32(value));
}

} // namespace

// 15 significant digits: more would show the binary representation (0.1 + 0.2), fewer would lose digits that the user
// entered.
Decimal Decimal::fromDouble(double value)
{
    Decimal result;
    if (value == 0 || !std::isfinite(value))
        return result;
    result.m_negative = value < 0;
    // "d.dddde+xx": the mantissa without its point, then the exponent.
    const QByteArray text = QByteArray::number(std::fabs(value), 'e', kDoubleDigits - 1);
    const qsizetype e = text.indexOf('e');
    result.m_digits = text.first(1) + text.sliced(2, e - 2);
    result.m_point = text.sliced(e + 1).toInt() + 1;
    while (result.m_digits.endsWith('0'))
        result.m_digits.chop(1);
    return result;
}

// Half to even, on decimal digits: rounding the binary number would turn 2.675 into 2.67 instead of 2.68.
void Decimal::roundTo(int places)
{
    const qsizetype keep = qsizetype(m_point) + places;
    if (keep >= m_digits.size())
        return;
    if (keep < 0) {
        m_digits.clear();
        return;
    }
    const QByteArray rest = m_digits.sliced(keep);
    m_digits.truncate(keep);
    const bool isHalf = rest == "5";
    const bool lastOdd = keep > 0 && ((m_digits.back() - '0') & 1);
    if (isHalf ? lastOdd : rest.front() >= '5') {
        qsizetype i = keep;
        while (i > 0 && m_digits[i - 1] == '9')
            --i;
        m_digits.truncate(i);
        if (i > 0) {
            m_digits[i - 1] = char(m_digits[i - 1] + 1);
        } else {
            m_digits = "1";
            ++m_point;
        }
    }
    while (m_digits.endsWith('0'))
        m_digits.chop(1);
}

double Decimal::toDouble() const
{
    if (isZero())
        return 0;
    const QByteArray text = (m_negative ? "-0." : "0.") + m_digits + 'e' + QByteArray::number(m_point);
    return text.toDouble();
}

QString Decimal::whole() const
{
    if (isZero() || m_point <= 0)
        return {};
    return QString::fromLatin1(
        m_digits.first(std::min<qsizetype>(m_point, m_digits.size())).leftJustified(m_point, '0'));
}

QString Decimal::fraction() const
{
    if (isZero() || m_point >= m_digits.size())
        return {};
    if (m_point >= 0)
        return QString::fromLatin1(m_digits.sliced(m_point));
    return QString(-m_point, u'0') + QString::fromLatin1(m_digits);
}

// The rounding mode of the floating-point unit is the default one, to nearest even.
double roundHalfEven(double value)
{
    return std::nearbyint(value);
}

double roundDecimal(double value, int places)
{
    if (!std::isfinite(value))
        return value;
    Decimal decimal = Decimal::fromDouble(value);
    decimal.roundTo(places);
    return decimal.toDouble();
}

double roundCurrency(double amount)
{
    // Above this limit four decimals need more than the 15 digits of Decimal.
    constexpr double kMostDigits = 1e11;
    constexpr int kPlaces = 4;
    return std::abs(amount) < kMostDigits ? roundDecimal(amount, kPlaces)
                                          : std::nearbyint(amount * kCurrencyScale) / kCurrencyScale;
}

// The limits of 64 bits are not exact as doubles, so a comparison comes before the conversion.
qint64 tenThousandths(double amount)
{
    using Limits = std::numeric_limits<qint64>;
    const double scaled = amount * kCurrencyScale;
    if (scaled >= double(Limits::max()))
        return Limits::max();
    return scaled <= double(Limits::min()) ? Limits::min() : std::llround(scaled);
}

// Without floating point, because 19 digits do not fit into a double.
QString currencyText(qint64 tenThousandths)
{
    constexpr quint64 kScale = 10'000;
    constexpr int kPlaces = 4;
    const quint64 size = tenThousandths < 0 ? 0 - quint64(tenThousandths) : quint64(tenThousandths);
    QString fraction = QString::number(size % kScale).rightJustified(kPlaces, u'0');
    while (fraction.endsWith(u'0'))
        fraction.chop(1);
    return (tenThousandths < 0 ? u"-"_s : QString()) + QString::number(size / kScale) +
           (fraction.isEmpty() ? QString() : QString(u'.' + fraction));
}

// Minus zero is shown as 0.
QString numberText(double value)
{
    return QString::number(value == 0 ? 0.0 : value, 'G', kDoubleDigits);
}

QString singleText(double value)
{
    return QString::number(value == 0 ? 0.0 : value, 'G', kSingleDigits);
}

// Accepts what the dialect accepts in a text: (1) is negative, &H and &O are hexadecimal and octal, D marks an exponent
// as E does, commas group digits, a $ may precede them.
std::optional<double> parseNumber(QStringView text)
{
    text = text.trimmed();
    bool negative = false;
    if (text.size() > 2 && text.startsWith(u'(') && text.endsWith(u')')) {
        negative = true;
        text = text.sliced(1).chopped(1).trimmed();
    }
    if (text.size() > 2 && text[0] == u'&') {
        const QChar kind = text[1].toUpper();
        if (kind == u'H' || kind == u'O')
            return parseRadix(text.sliced(2), kind == u'H' ? 16 : 8);
        return {};
    }
    QByteArray digits;
    bool seenDigit = false;
    bool seenPoint = false;
    bool seenExponent = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            seenDigit = true;
            digits += char(c);
        } else if (c == u'.' && !seenPoint && !seenExponent) {
            seenPoint = true;
            digits += '.';
        } else if ((c == u'-' || c == u'+') && (digits.isEmpty() || digits.endsWith('e'))) {
            digits += char(c);
        } else if ((c == u'e' || c == u'E' || c == u'd' || c == u'D') && seenDigit && !seenExponent) {
            seenExponent = true;
            digits += 'e';
        } else if (c == u',' && seenDigit && !seenPoint && !seenExponent) {
            continue;
        } else if (c == u'$' && !seenDigit && !seenPoint) {
            continue;
        } else {
            return {};
        }
    }
    if (!seenDigit || digits.endsWith('e'))
        return {};
    bool ok = false;
    const double value = digits.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return {};
    return negative ? -value : value;
}

} // namespace dao
