#pragma once
#include <optional>
#include <QStringView>
#include <QtGlobal>

namespace tarnwick {

/// The whole text (blanks around it allowed) as a number of that type: empty optional when it is not one or out of
/// range. radix 10 accepts a sign; 16 an optional 0x. Numbers are read with a decimal point; comma groups are refused.
/// Instances: qint16, quint16, qint32, quint32, qint64, float, double.
template <typename T>
std::optional<T> string_to_value(QStringView text, int radix = 10);

/// The text's leading integer as the C library's atoi reads it: 0 when it has none, held within 32 bits.
int leadingInteger(QStringView text);

} // namespace tarnwick
