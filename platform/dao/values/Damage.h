#pragma once
#include <QString>

namespace dao {

/// Something that is not right inside a database file.
struct DamageFinding
{
    QString text;
    bool isDamage = true; ///< false: a value that a rule of its table refuses, which another program has written
    bool operator==(const DamageFinding &) const = default;
};

} // namespace dao
