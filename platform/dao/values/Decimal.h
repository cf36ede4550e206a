#pragma once
#include <optional>
#include <QByteArray>
#include <QString>

namespace dao {

/// A number by its decimal digits, as users see it: 15 significant digits of a double. Rounding "half to even" is meant
/// on these digits (0.125 to two places is 0.12), not on the binary value.
class Decimal
{
public:
    static Decimal fromDouble(double value);

    bool isNegative() const { return m_negative; }
    bool isZero() const { return m_digits.isEmpty(); }
    /// Rounds half to even to that many places after the point.
    void roundTo(int places);
    /// Multiplies by a power of ten.
    void shift(int power) { m_point += power; }
    /// Exponent of scientific notation: 0 for 1.5, 4 for 12345.
    int exponent() const { return isZero() ? 0 : m_point - 1; }
    double toDouble() const;
    /// Digits before the point, "" below 1, and after it, without trailing zeros.
    QString whole() const;
    QString fraction() const;

private:
    bool m_negative = false;
    QByteArray m_digits; ///< without leading and trailing zeros; empty for zero
    int m_point = 0;     ///< the point stands before this digit
};

/// Half to even, to a whole number.
double roundHalfEven(double value);
/// Half to even on the decimal digits.
double roundDecimal(double value, int places);

// Amounts of Currency, which are stored as reals. Above 900,000,000,000 not every amount of four decimals has a real of
// its own.
/// To four decimals, keeping all digits that the number has.
double roundCurrency(double amount);
/// The nearest whole number of ten-thousandths; the limits of 64 bits for what is beyond them.
qint64 tenThousandths(double amount);
/// Exact: "-922337203685477.5808".
QString currencyText(qint64 tenThousandths);

/// A number as text: shortest, at most 15 digits, point as the decimal sign, exponent like "1.5E-07".
QString numberText(double value);
/// The same with the 7 digits of a Single.
QString singleText(double value);

/// Text to number as assignments and CDbl read it: blanks around, sign, "$", thousands commas, exponent, &H and &O
/// forms, a negative number in parentheses. Nothing when the text is no number.
std::optional<double> parseNumber(QStringView text);

} // namespace dao
