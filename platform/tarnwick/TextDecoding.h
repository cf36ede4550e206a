#pragma once
#include <QByteArray>
#include <QString>

namespace tarnwick {

/// True if the bytes begin with the byte order mark of UTF-16.
bool isUtf16Text(const QByteArray &bytes);

/// The text of a file that other programs wrote: UTF-16 if it has that byte order mark, UTF-8 if it is valid UTF-8,
/// otherwise code page 1252, which older programs used. A byte order mark is removed.
QString decodedText(const QByteArray &bytes);

} // namespace tarnwick
