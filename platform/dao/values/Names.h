#pragma once
#include <QStringView>

namespace dao {

/// A name as the key of a hash: names that differ only in case are equal. It refers to a text that must exist as long
/// as the hash, so that a lookup allocates nothing.
struct NameKey
{
    QStringView name;

    friend bool operator==(NameKey left, NameKey right)
    {
        return left.name.size() == right.name.size() && left.name.compare(right.name, Qt::CaseInsensitive) == 0;
    }
};
size_t qHash(NameKey key, size_t seed = 0) noexcept;

/// True if the text is a valid name of a table, field, index, relation or query: not too long, no leading blank, no
/// control characters and none of . ! ` [ ].
bool isValidName(QStringView name);

} // namespace dao
