#pragma once
#include <QString>

namespace dao {

/// One finding of a damage check.
struct DamageFinding
{
    QString text;
    bool isDamage = true; ///< false: a value that violates a rule of its table, written by another program
    bool operator==(const DamageFinding &) const = default;
};

} // namespace dao
