#pragma once
#include <QStringView>

namespace dao::functions {

/// Like: * any run, ? one character, # one digit, [abc] [a-z] [!a-z] classes, in which the other marks stand for
/// themselves. Case does not count. A pattern with an open class or a reversed range matches nothing. ansi: % and _ for
/// * and ?.
bool matchesLike(QStringView text, QStringView pattern, bool ansi = false);

} // namespace dao::functions
