#pragma once
#include <array>
#include <QString>

namespace dao::store {

/// A cache of recently read texts: a column contains the same few codes in many rows, and finding a text here is faster
/// than creating a QString.
class TextPool
{
public:
    QString text(const char *utf8, qsizetype length);

private:
    static constexpr size_t kSlotBits = 9;
    static constexpr qsizetype kLongest = 32; ///< longer texts are rarely repeated

    static size_t slotOf(const char *bytes, qsizetype length);

    std::array<QString, size_t(1) << kSlotBits> m_slots;
};

} // namespace dao::store
