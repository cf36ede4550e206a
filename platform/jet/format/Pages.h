#pragma once
#include "Bytes.h"

#include <array>
#include <jet/wire/Facts.h>
#include <vector>

namespace jet::format {

/// Source of pages; pages of encoded files are already decoded.
class PageSource
{
public:
    virtual ~PageSource() = default;
    virtual wire::FileFacts facts() const = 0;
    /// Fills a buffer of one page. Returns false if the page cannot be read.
    virtual bool read(quint32 page, uchar *buffer) = 0;
};

constexpr uchar kDataPage = 1;
constexpr uchar kDefinitionPage = 2;
constexpr uchar kMapPage = 5;

/// Flags of a row's slot on a data page.
constexpr quint16 kSlotHidden = 0x8000;  ///< the row is only reached through a pointer
constexpr quint16 kSlotPointer = 0x4000; ///< the row was moved: the slot holds a pointer
constexpr quint16 kSlotDeleted = kSlotHidden | kSlotPointer;
constexpr quint16 kSlotOffset = 0x1FFF;

/// Location of a row, page and slot, as stored in the file: the slot is the lowest byte.
struct RowPointer
{
    quint32 page = 0;
    int slot = 0;
    static RowPointer of(quint32 value) { return {value >> 8, int(value & 0xFF)}; }
};

/// The pages of a file with a small cache. A view is valid until the next call.
class Pages
{
public:
    explicit Pages(PageSource &source);

    const wire::FileFacts &facts() const { return m_facts; }
    bool isJet4() const { return m_facts.jetVersion >= 4; }
    size_t pageSize() const { return m_facts.pageSize; }
    quint32 count() const { return m_facts.pageCount; }

    /// Throws Damage if the page is beyond the end or cannot be read.
    Bytes view(quint32 page);
    /// Copies the page into the caller's buffer.
    void copy(quint32 page, std::vector<uchar> &buffer);

    /// Owner of a data page: the definition page of its table, or the mark of long values.
    static quint32 owner(Bytes page) { return u32At(page, 4); }
    int slotCount(Bytes page) const;
    quint16 slot(Bytes page, int slot) const;
    /// The bytes of a slot's row; its flags are ignored.
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

/// Owner value of pages with long values: "LVAL".
constexpr quint32 kLongValueOwner = 0x4C41564C;

} // namespace jet::format
