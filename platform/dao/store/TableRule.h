#pragma once
#include <QString>

// The validation rule of a table may be made of several, as constraints add their own: "(a) And (b) And (c)".

namespace dao::store {

QString withRule(const QString &rules, const QString &added);
/// Without one of them; unchanged when it is not among them.
QString withoutRule(const QString &rules, const QString &removed);

} // namespace dao::store
