#pragma once
#include <QString>

// A table has one validation rule. Named constraints are added to it in the form "(a) And (b) And (c)".

namespace dao::store {

QString withRule(const QString &rules, const QString &added);
/// Removes one condition; the rule is unchanged if it does not contain that condition.
QString withoutRule(const QString &rules, const QString &removed);

} // namespace dao::store
