#pragma once
#include <array>
#include <dao/values/Value.h>

namespace query {

/// Prints cells without making a QString for each of them, for exports: a million rows have many millions of cells.
/// Each text is valid until the next call.
class CellPrinter
{
public:
    CellPrinter() {} // the arrays need no initial values
    CellPrinter(const CellPrinter &) = delete;
    CellPrinter &operator=(const CellPrinter &) = delete;

    /// The value in the format of its column: numbers and texts in printf style, dates by strftime's rules, currency in
    /// the user's locale, a Boolean as one of the format's two words ("T F"), or as a number if the format is numeric.
    /// Null gives an empty text.
    QStringView formatted(const dao::Value &value, const QString &format);
    /// The value for other programs, independent of display formats: numbers with a decimal point, dates
    /// "mm/dd/yyyy hh:mm:ss", Booleans True and False, Null empty.
    QStringView plain(const dao::Value &value);

private:
    QStringView kept(QString text);
    QStringView integer(qint64 number);
    QStringView twoDecimals(double number);
    QStringView widened(const char *end);

    static constexpr size_t kMostDigits = 512; ///< the longest double with two decimals has 313 characters
    QString m_text;
    std::array<char, kMostDigits> m_digits;
    std::array<char16_t, kMostDigits> m_wide;
};

} // namespace query
