#pragma once
#include <QByteArray>
#include <QMap>
#include <QString>

namespace dao {

/// The text shown instead of a value that could not be calculated: "#Div/0!", "#Num!" or "#Error".
QString failureWord(int number);
/// Number and text of the error for the cell's tool tip: "11: Division by zero."
QString failureTip(int number);

/// Counts the failed cells of a result while they are read.
class CellFailures
{
public:
    void add(int number) { ++m_counts[number]; }
    bool isEmpty() const { return m_counts.isEmpty(); }
    /// One line: "3 cells could not be calculated: 2 by [11] Division by zero, 1 by [6] Overflow."
    QString summary() const;

private:
    QMap<int, qint64> m_counts; ///< count per error number
};

/// Encodes a failed cell as a BLOB that passes through SQLite; failureOf() returns its error number, 0 for other bytes.
QByteArray failureBytes(int number);
int failureIn(QByteArrayView bytes);

} // namespace dao
