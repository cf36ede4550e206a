#pragma once
#include <QByteArray>
#include <QMap>
#include <QString>

namespace dao {

/// What stands in the place of a value that could not be calculated: "#Div/0!", "#Num!" or "#Error".
QString failureWord(int number);
/// Number and text of the error, for the tip of the cell: "11: Division by zero."
QString failureTip(int number);

/// The failed cells of a result, counted while they are read.
class CellFailures
{
public:
    void add(int number) { ++m_counts[number]; }
    bool isEmpty() const { return m_counts.isEmpty(); }
    /// One line: "3 cells could not be calculated: 2 by [11] Division by zero, 1 by [6] Overflow."
    QString summary() const;

private:
    QMap<int, qint64> m_counts; ///< by number of the error
};

/// The form in which a failed cell passes through the inner engine, and the number in it; 0 for other bytes.
QByteArray failureBytes(int number);
int failureIn(QByteArrayView bytes);

} // namespace dao
