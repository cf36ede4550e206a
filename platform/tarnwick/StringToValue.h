#pragma once
#include <optional>
#include <QStringView>
#include <QtGlobal>

namespace tarnwick {

/// Parses the whole text (leading and trailing blanks allowed) as a number of type T; empty optional if it is not one
/// or is out of range. radix 10 accepts a sign; 16 an optional 0x. The decimal separator is a point; comma groups are
/// refused. Instances: qint16, quint16, qint32, quint32, qint64, float, double.
template <typename T>
std::optional<T> string_to_value(QStringView text, int radix = 10);

/// Parses a leading integer like the C library's atoi: 0 if there is none, limited to 32 bits.
int leadingInteger(QStringView text);

} // namespace tarnwick
