#pragma once
#include "Bytes.h"

#include <array>
#include <jet/wire/Facts.h>
#include <vector>

namespace jet::format {

/// Where pages come from, already decoded where the file is encoded.
class PageSource
{
public:
    virtual ~PageSource() = default;
    virtual wire::FileFacts facts() const = 0;
    /// Fills a buffer of one page's size; false when the page cannot be had.
    virtual bool read(quint32 page, uchar *buffer) = 0;
};

constexpr uchar kDataPage = 1;
constexpr uchar kDefinitionPage = 2;
constexpr uchar kMapPage = 5;

/// Bits of a row's slot on a data page.
constexpr quint16 kSlotHidden = 0x8000;  ///< the row is reached through a pointer only
constexpr quint16 kSlotPointer = 0x4000; ///< the row has moved: its place holds a pointer
constexpr quint16 kSlotDeleted = kSlotHidden | kSlotPointer;
constexpr quint16 kSlotOffset = 0x1FFF;

/// A row by its page and its slot there, as the file writes it: the slot in the lowest byte.
struct RowPointer
{
    quint32 page = 0;
    int slot = 0;
    static RowPointer of(quint32 value) { return {value >> 8, int(value & 0xFF)}; }
};

/// The pages of a file with a small cache. A view lives until the next call.
class Pages
{
public:
    explicit Pages(PageSource &source);

    const wire::FileFacts &facts() const { return m_facts; }
    bool isJet4() const { return m_facts.jetVersion >= 4; }
    size_t pageSize() const { return m_facts.pageSize; }
    quint32 count() const { return m_facts.pageCount; }

    /// Damage when the page lies beyond the end or cannot be read.
    Bytes view(quint32 page);
    /// The same into a buffer of the caller's.
    void copy(quint32 page, std::vector<uchar> &buffer);

    /// The owner of a data page: the page of its table's definition, or the mark of long values.
    static quint32 owner(Bytes page) { return u32At(page, 4); }
    int slotCount(Bytes page) const;
    quint16 slot(Bytes page, int slot) const;
    /// The bytes of a slot's row, without regard to its flags.
    Bytes row(Bytes page, int slot) const;

private:
    struct Slot
    {
        quint32 page = 0;
        bool filled = false;
        std::vector<uchar> bytes;
    };

    size_t slotTable() const { return isJet4() ? 12 : 8; }

    PageSource &m_source;
    wire::FileFacts m_facts;
    std::array<Slot, 64> m_cache;
};

/// What stands in place of the owner on pages that hold long values: "LVAL".
constexpr quint32 kLongValueOwner = 0x4C41564C;

} // namespace jet::format
