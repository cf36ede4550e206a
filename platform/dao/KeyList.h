#pragma once
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <QtGlobal>
#include <span>

namespace dao {

/// A growing array of row keys for millions of rows. It grows with realloc(), in place where the system can, so
/// collecting keys needs little more memory than keeping them. A std::vector holds both copies while it grows.
class KeyList
{
public:
    const qint64 *data() const { return m_keys.get(); }
    size_t size() const { return m_size; }
    void push_back(qint64 key)
    {
        if (m_size == m_capacity)
            resize(m_capacity + std::max(m_capacity / 2, kFewKeys));
        m_keys.get()[m_size++] = key;
    }
    void append(std::span<const qint64> keys)
    {
        for (const qint64 key : keys)
            push_back(key);
    }
    void shrink_to_fit() { resize(std::max(m_size, size_t(1))); }

private:
    static constexpr size_t kFewKeys = 64;
    struct Free
    {
        void operator()(qint64 *keys) const { std::free(keys); }
    };

    void resize(size_t capacity); ///< throws std::bad_alloc

    std::unique_ptr<qint64, Free> m_keys;
    size_t m_size = 0;
    size_t m_capacity = 0;
};

} // namespace dao
