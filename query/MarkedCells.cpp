#include "MarkedCells.h"

#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <QElapsedTimer>

namespace query {

using namespace Qt::StringLiterals;
using Type = dao::Value::Type;

namespace {

constexpr qint64 kScale = 10'000;
/// Digits of the low part of an exact sum; above them, the high part counts.
constexpr qint64 kCarry = 1'000'000'000'000'000;
constexpr int kSingleDigits = 7;
constexpr int kDoubleDigits = 15;

/// A number with so many significant digits, without an exponent where that stays short.
QString numberText(double number, int digits)
{
    return QString::number(number, 'g', digits);
}

} // namespace

MarkedCells::MarkedCells(const QueryResult &result, std::vector<Block> blocks, std::function<int(int)> sourceRow)
    : m_result(result)
    , m_blocks(std::move(blocks))
    , m_sourceRow(std::move(sourceRow))
{
    std::erase_if(m_blocks, [](const Block &block) { return block.bottom < block.top || block.right < block.left; });
    for (const Block &block : m_blocks)
        m_cells += (qint64(block.bottom) - block.top + 1) * (block.right - block.left + 1);
    if (!m_blocks.empty())
        m_row = m_blocks.front().top;
}

void MarkedCells::readOn(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!isDone() && timer.elapsed() < milliseconds) {
        const Block &block = m_blocks[m_block];
        readRow();
        if (m_row++ < block.bottom)
            continue;
        if (++m_block < m_blocks.size())
            m_row = m_blocks[m_block].top;
    }
}

void MarkedCells::readRow()
{
    const Block &block = m_blocks[m_block];
    const int row = m_sourceRow(m_row);
    try {
        for (int column = block.left; row >= 0 && column <= block.right; ++column)
            add(m_result.value(row, column));
    } catch (const dao::DaoException &exception) {
        if (exception.number() != dao::error::RecordDeleted)
            throw;
    }
}

void MarkedCells::add(const dao::Value &value)
{
    if (value.hasNoValue())
        return;
    ++m_values;
    switch (value.type()) {
    case Type::Short:
    case Type::Long:
    case Type::Byte:
        addExact(value.integer() * kScale);
        break;
    case Type::Currency:
        addExact(value.integer());
        break;
    case Type::Float:
        addReal(value.real(), true);
        break;
    case Type::Double:
        addReal(value.real(), false);
        break;
    default:
        return;
    }
    const double number = value.real();
    m_least = m_numbers == 0 ? number : qMin(m_least, number);
    m_largest = m_numbers == 0 ? number : qMax(m_largest, number);
    ++m_numbers;
}

void MarkedCells::addExact(qint64 tenThousandths)
{
    m_low += tenThousandths % kCarry;
    m_high += tenThousandths / kCarry + m_low / kCarry;
    m_low %= kCarry;
}

void MarkedCells::addReal(double number, bool isSingle)
{
    // Neumaier's summation: the part that is too small for the sum is kept.
    const double sum = m_real + number;
    m_lost += qAbs(m_real) >= qAbs(number) ? (m_real - sum) + number : (number - sum) + m_real;
    m_real = sum;
    m_realDigits = qMax(m_realDigits, isSingle ? kSingleDigits : kDoubleDigits);
}

double MarkedCells::sum() const
{
    return (double(m_high) * double(kCarry) + double(m_low)) / double(kScale) + m_real + m_lost;
}

QString MarkedCells::text() const
{
    if (m_cells < 2)
        return {};
    const QString rest = isDone() ? QString() : u"   ..."_s;
    if (m_numbers == 0)
        return u"Count %1"_s.arg(m_values) + rest;
    const int digits = m_realDigits > 0 ? m_realDigits : kDoubleDigits;
    // Without real numbers and below a thousand billions, the sum in ten-thousandths fits into one number.
    const bool isExact = m_realDigits == 0 && m_high >= -1000 && m_high <= 1000;
    const QString sumText = isExact ? dao::currencyText(m_high * kCarry + m_low) : numberText(sum(), digits);
    return u"Count %1   Sum %2   Mean %3   Min %4   Max %5"_s.arg(
               QString::number(m_numbers), sumText, numberText(sum() / double(m_numbers), digits),
               numberText(m_least, digits), numberText(m_largest, digits)) +
           rest;
}

} // namespace query
