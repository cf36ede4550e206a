#pragma once
#include <optional>
#include <QByteArray>
#include <QString>

namespace dao {

/// A number as decimal digits, as users see it: 15 significant digits of a double. "Half to even" applies to these
/// digits (0.125 to two places is 0.12), not to the binary value.
class Decimal
{
public:
    static Decimal fromDouble(double value);

    bool isNegative() const { return m_negative; }
    bool isZero() const { return m_digits.isEmpty(); }
    /// Rounds half to even to this number of decimals.
    void roundTo(int places);
    /// Multiplies by a power of ten.
    void shift(int power) { m_point += power; }
    /// Exponent of scientific notation: 0 for 1.5, 4 for 12345.
    int exponent() const { return isZero() ? 0 : m_point - 1; }
    double toDouble() const;
    /// The digits before the point ("" below 1) and after it, without trailing zeros.
    QString whole() const;
    QString fraction() const;

private:
    bool m_negative = false;
    QByteArray m_digits; ///< without leading and trailing zeros; empty for zero
    int m_point = 0;     ///< index of the digit after the decimal point
};

/// Rounds half to even to a whole number.
double roundHalfEven(double value);
/// Rounds half to even on the decimal digits.
double roundDecimal(double value, int places);

// Currency amounts are stored as doubles. Above 900,000,000,000 a double cannot represent every amount with four
// decimals exactly.
// Rounds to four decimals and keeps all significant digits of the number.
double roundCurrency(double amount);
/// The nearest whole number of ten-thousandths; values outside 64 bits become the nearest limit.
qint64 tenThousandths(double amount);
/// The exact text: "-922337203685477.5808".
QString currencyText(qint64 tenThousandths);

/// A number as the shortest text of at most 15 digits, with "." as decimal sign and an exponent like "1.5E-07".
QString numberText(double value);
/// A Single as text of at most 7 digits.
QString singleText(double value);

/// Parses a number as assignments and CDbl do: surrounding blanks, sign, "$", thousands commas, exponent, &H and &O
/// forms, a negative number in parentheses. Returns nothing if the text is not a number.
std::optional<double> parseNumber(QStringView text);

} // namespace dao
