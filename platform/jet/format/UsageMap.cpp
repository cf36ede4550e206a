#include "UsageMap.h"

namespace jet::format {
namespace {

constexpr uchar kInline = 0;
constexpr uchar kByReference = 1;

// In an intact file, a bit beyond the end only marks pages allocated in advance. A table owns only written pages, so
// such a bit means that the file was truncated.
void addPages(OwnedPages &owned, Bytes bitmap, quint64 first, quint32 pageCount)
{
    for (size_t byte = 0; byte < bitmap.size(); ++byte) {
        if (bitmap[byte] == 0)
            continue;
        for (int bit = 0; bit < 8; ++bit) {
            if (!(bitmap[byte] & (1 << bit)))
                continue;
            const quint64 page = first + byte * 8 + size_t(bit);
            if (page < pageCount) {
                owned.pages.push_back(quint32(page));
            } else {
                ++owned.faults;
                if (!owned.firstFault)
                    owned.firstFault = Damage(Fault::PageBeyondEnd, quint32(qMin(page, quint64(0xFFFFFFFF))));
            }
        }
    }
}

void addReferenced(OwnedPages &owned, Pages &pages, quint32 mapPage, quint64 first)
{
    try {
        const Bytes bytes = pages.view(mapPage);
        if (bytes[0] != kMapPage)
            throw Damage(Fault::WrongPageKind, mapPage);
        addPages(owned, bytes.subspan(4), first, pages.count());
    } catch (const Damage &damage) {
        ++owned.faults;
        if (!owned.firstFault)
            owned.firstFault = damage;
    }
}

} // namespace

OwnedPages readOwnedPages(Pages &pages, RowPointer map)
{
    const Bytes page = pages.view(map.page);
    if (page[0] != kDataPage)
        throw Damage(Fault::WrongPageKind, map.page);
    const Bytes row = pages.row(page, map.slot);
    const std::vector<uchar> content(row.begin(), row.end());
    const Bytes bytes(content);

    OwnedPages owned;
    const uchar kind = u8At(bytes, 0);
    if (kind == kInline) {
        addPages(owned, part(bytes, 5, bytes.size() - qMin<size_t>(5, bytes.size())), u32At(bytes, 1), pages.count());
    } else if (kind == kByReference) {
        const quint64 pagesEach = (pages.pageSize() - 4) * 8;
        for (size_t i = 0; 1 + i * 4 + 4 <= bytes.size(); ++i) {
            if (const quint32 mapPage = u32At(bytes, 1 + i * 4))
                addReferenced(owned, pages, mapPage, i * pagesEach);
        }
    } else {
        throw Damage(Fault::BadMap, map.page);
    }
    return owned;
}

} // namespace jet::format
