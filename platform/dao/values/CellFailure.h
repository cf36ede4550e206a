#pragma once
#include <QByteArray>
#include <QString>

namespace dao {

/// What stands in the place of a value that could not be calculated: "#Div/0!", "#Num!" or "#Error".
QString failureWord(int number);
/// Number and text of the error, for the tip of the cell: "11: Division by zero."
QString failureTip(int number);

/// The form in which a failed cell passes through the inner engine, and the number in it; 0 for other bytes.
QByteArray failureBytes(int number);
int failureIn(QByteArrayView bytes);

} // namespace dao
