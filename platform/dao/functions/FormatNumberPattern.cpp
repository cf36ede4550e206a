#include "FormatPattern.h"

#include <cmath>
#include <dao/values/Decimal.h>

namespace dao::functions {

using namespace Qt::StringLiterals;

namespace {

// One parsed section of a number pattern.
struct NumberSection
{
    struct Piece
    {
        enum class Kind { Literal, Digit, Point, Exponent } kind;
        QString text;      ///< literal text; for an exponent its letter and sign rule, "E+" or "E-"
        bool zero = false; ///< a 0: digit placeholder that pads with 0
    };
    QList<Piece> pieces;
    int wholeDigits = 0;
    int fractionDigits = 0;
    int exponentDigits = 0;
    bool groups = false;
    int thousandsDropped = 0;
    int percents = 0;

    explicit NumberSection(QStringView text);
    bool isScientific() const { return exponentDigits > 0; }

private:
    void addDigit(bool zero, bool afterPoint, bool inExponent);
};

void NumberSection::addDigit(bool zero, bool afterPoint, bool inExponent)
{
    ++(inExponent ? exponentDigits : afterPoint ? fractionDigits : wholeDigits);
    pieces.append({Piece::Kind::Digit, {}, zero});
}

// Parses a section in one pass. Commas are only counted at first: the next placeholder decides what they mean.
NumberSection::NumberSection(QStringView text)
{
    bool afterPoint = false;
    bool inExponent = false;
    int pendingCommas = 0;
    for (qsizetype i = 0; i < text.size();) {
        QString literal;
        const qsizetype behind = takeLiteral(text, i, literal);
        if (behind != i) {
            pieces.append({Piece::Kind::Literal, literal});
            i = behind;
            continue;
        }
        const QChar c = text[i];
        const bool exponentHere =
            (c == u'E' || c == u'e') && i + 1 < text.size() && (text[i + 1] == u'+' || text[i + 1] == u'-');
        if (c == u'0' || c == u'#') {
            // A comma between digits groups them; a comma after the last digit before the point divides by a thousand.
            if (pendingCommas > 0 && !afterPoint)
                groups = true;
            pendingCommas = 0;
            addDigit(c == u'0', afterPoint, inExponent);
        } else if (c == u',' && !inExponent) {
            pendingCommas += wholeDigits > 0 && !afterPoint;
        } else if (c == u'.' && !afterPoint && !inExponent) {
            thousandsDropped += pendingCommas;
            pendingCommas = 0;
            afterPoint = true;
            pieces.append({Piece::Kind::Point, {}});
        } else if (exponentHere && !inExponent) {
            inExponent = true;
            pieces.append({Piece::Kind::Exponent, text.mid(i, 2).toString()});
            ++i;
        } else {
            percents += c == u'%';
            pieces.append({Piece::Kind::Literal, QString(c)});
        }
        ++i;
    }
    thousandsDropped += pendingCommas;
}

// Writes the digits of a number into the placeholders of a section.
class SectionWriter
{
public:
    SectionWriter(const NumberSection &section, Decimal number, int exponent)
        : m_section(section)
        , m_whole(number.whole())
        , m_fraction(number.fraction())
        , m_exponent(QString::number(std::abs(exponent)))
        , m_exponentNegative(exponent < 0)
    {
    }

    QString write()
    {
        using Kind = NumberSection::Piece::Kind;
        for (const NumberSection::Piece &piece : m_section.pieces) {
            switch (piece.kind) {
            case Kind::Literal:
                m_result += piece.text;
                break;
            case Kind::Point:
                if (m_section.wholeDigits == 0)
                    m_result += m_whole;
                m_result += u'.';
                m_afterPoint = true;
                break;
            case Kind::Exponent:
                m_result += piece.text[0];
                m_result += m_exponentNegative ? u"-"_s : piece.text[1] == u'+' ? u"+"_s : QString();
                m_inExponent = true;
                break;
            case Kind::Digit:
                if (m_inExponent)
                    writeLeft(m_exponent, m_section.exponentDigits, m_exponentPlace++, piece.zero, false);
                else if (m_afterPoint)
                    writeFraction(piece.zero);
                else
                    writeLeft(m_whole, m_section.wholeDigits, m_wholePlace++, piece.zero, m_section.groups);
                break;
            }
        }
        return m_result;
    }

private:
    // Digits before the point fill the placeholders from the right; the first placeholder takes all remaining digits.
    void writeLeft(const QString &digits, int places, int place, bool zero, bool groups)
    {
        const qsizetype fromRight = places - place; // this placeholder and those after it
        const qsizetype first = digits.size() - fromRight;
        if (place == 0)
            for (qsizetype i = 0; i < first; ++i)
                writeDigit(digits[i], digits.size() - i, groups);
        if (first >= 0) {
            writeDigit(digits[first], fromRight, groups);
        } else {
            m_zeroSeen = m_zeroSeen || zero;
            if (m_zeroSeen)
                writeDigit(u'0', fromRight, groups);
        }
    }

    void writeDigit(QChar digit, qsizetype fromRight, bool groups)
    {
        m_result += digit;
        if (groups && fromRight > 1 && (fromRight - 1) % 3 == 0)
            m_result += u',';
    }

    void writeFraction(bool zero)
    {
        const int place = m_fractionPlace++;
        if (place < m_fraction.size())
            m_result += m_fraction[place];
        else if (zero)
            m_result += u'0';
    }

    const NumberSection &m_section;
    QString m_whole;
    QString m_fraction;
    QString m_exponent;
    bool m_exponentNegative;
    QString m_result;
    bool m_afterPoint = false;
    bool m_inExponent = false;
    bool m_zeroSeen = false;
    int m_wholePlace = 0;
    int m_fractionPlace = 0;
    int m_exponentPlace = 0;
};

// The number in the units that the section shows: a % multiplies by 100, a comma after the digits divides by 1000. In
// scientific notation also its exponent.
Decimal roundedFor(const NumberSection &section, double magnitude, int &exponent)
{
    Decimal number = Decimal::fromDouble(magnitude);
    number.shift(2 * section.percents - 3 * section.thousandsDropped);
    exponent = 0;
    if (section.isScientific() && !number.isZero()) {
        const int wholeDigits = std::max(1, section.wholeDigits);
        exponent = number.exponent() - wholeDigits + 1;
        number.shift(-exponent);
        number.roundTo(section.fractionDigits);
        // Rounding can add a digit: 9.99 becomes 10.0.
        if (number.exponent() >= wholeDigits) {
            number.shift(-1);
            ++exponent;
        }
    } else {
        number.roundTo(section.fractionDigits);
    }
    return number;
}

} // namespace

// Sections: positive; negative; zero. A missing section is replaced by the first one, with a minus sign for negative
// numbers.
QString formatNumber(double number, const QString &pattern)
{
    const QStringList sections = patternSections(pattern);
    const auto hasSection = [&sections](qsizetype index) {
        return sections.size() > index && !sections[index].isEmpty();
    };

    const bool negative = number < 0;
    const bool ownNegative = negative && hasSection(1);
    NumberSection section(number == 0 && hasSection(2) ? sections[2] : ownNegative ? sections[1] : sections[0]);
    int exponent = 0;
    Decimal rounded = roundedFor(section, std::abs(number), exponent);
    // A number that rounds to zero uses the zero section.
    if (number != 0 && rounded.isZero() && hasSection(2)) {
        section = NumberSection(sections[2]);
        rounded = roundedFor(section, 0, exponent);
    }
    const QString text = SectionWriter(section, rounded, exponent).write();
    return negative && !ownNegative && !rounded.isZero() ? QString(u'-' + text) : text;
}

} // namespace dao::functions
