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

size_t qHash(NameKey key, size_t seed) noexcept
{
    constexpr size_t kFactor = 31;
    size_t hash = seed;
    for (const QChar c : key.name) {
        // Half of a character beyond 16 bits has no case of its own.
        if (!c.isSurrogate())
            hash = hash * kFactor + c.toCaseFolded().unicode();
    }
    return hash;
}

bool isValidName(QStringView name)
{
    return !name.isEmpty() && name.size() <= kLongestName && name.front() != u' ' &&
           std::none_of(name.begin(), name.end(), isForbiddenInName);
}

} // namespace dao
