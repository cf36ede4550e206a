#pragma once
#include <array>
#include <QString>

namespace dao::store {

/// Texts that were read lately, shared rather than made anew: a column holds the same few codes in row after row, and
/// making a text takes longer than finding it here.
class TextPool
{
public:
    QString text(const char *utf8, qsizetype length);

private:
    static constexpr size_t slotBits = 9;
    static constexpr qsizetype longest = 32; ///< longer ones seldom come twice

    static size_t slotOf(const char *bytes, qsizetype length);

    std::array<QString, size_t(1) << slotBits> m_slots;
};

} // namespace dao::store
