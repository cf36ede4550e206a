#include "Names.h"

#include <algorithm>

namespace dao {

namespace {

constexpr qsizetype kLongestName = 64;

bool isForbiddenInName(QChar c)
{
    return c.unicode() < 0x20 || QStringView(u".!`[]").contains(c);
}

} // namespace

bool isValidName(QStringView name)
{
    return !name.isEmpty() && name.size() <= kLongestName && name.front() != u' ' &&
           std::none_of(name.begin(), name.end(), isForbiddenInName);
}

} // namespace dao
