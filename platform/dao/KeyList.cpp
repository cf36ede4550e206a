#include "KeyList.h"

#include <new>

namespace dao {

void KeyList::resize(size_t capacity)
{
    auto *moved = static_cast<qint64 *>(std::realloc(m_keys.get(), capacity * sizeof(qint64)));
    if (!moved)
        throw std::bad_alloc();
    static_cast<void>(m_keys.release()); // realloc() has taken over the old block
    m_keys.reset(moved);
    m_capacity = capacity;
}

} // namespace dao
