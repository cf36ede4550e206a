// The changes of a RepairList that are not written yet, kept for the case of a crash.
#include "Messages.h"
#include "RepairList.h"

#include <algorithm>
#include <QSet>
#include <tarnwick/TimeInFile.h>

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::JFile;

namespace {

/// A stored repair as it was read, and as it is to be.
struct Edit
{
    Repair asRead;
    Repair repair;
};

void serializePart(JFile &file, tarnwick::JDateTime &time)
{
    tarnwick::serializeTime(file, time);
}

template <typename T>
void serializePart(JFile &file, T &part)
{
    file.serialize(part);
}

void serializeRepair(JFile &file, Repair &repair)
{
    for (const RepairField &field : repairFields())
        std::visit([&](auto member) { serializePart(file, repair.*member); }, field.member);
}

/// What a copy for recovery contains, in both directions.
struct Draft
{
    QList<Repair> added;
    QList<Edit> edited;
    QList<Repair> removed; ///< as they were read

    void serialize(JFile &file)
    {
        constexpr int kVersion = 1;
        constexpr int kSmallest = 90; // numbers, dates, and the byte counts of the texts
        file.header(u"RepairDraft"_s, kVersion);
        file.list(added, kSmallest, serializeRepair);
        file.list(edited, 2 * kSmallest, [](JFile &f, Edit &edit) {
            serializeRepair(f, edit.asRead);
            serializeRepair(f, edit.repair);
        });
        file.list(removed, kSmallest, serializeRepair);
    }
};

} // namespace

QByteArray RepairList::draft() const
{
    if (!m_changed)
        return {};
    Draft draft;
    for (const Item &item : m_items) {
        if (item.bookmark.isEmpty())
            draft.added.append(item.repair);
        else if (item.isEdited())
            draft.edited.append({item.fetched(), item.repair});
    }
    for (const Item &item : m_removed)
        draft.removed.append(item.fetched());
    JFile file = JFile::forWriting({});
    draft.serialize(file);
    return file.bytes();
}

void RepairList::restoreDraft(const QByteArray &content)
{
    JFile file = JFile::fromBytes(content, u"the copy"_s);
    Draft draft;
    draft.serialize(file);
    QMultiHash<quint64, int> places;
    for (int place = 0; place < count(); ++place)
        places.insert(repair(place).tubeKey(), place);
    const auto take = [&](const Repair &asRead) {
        auto [found, end] = places.equal_range(asRead.tubeKey());
        while (found != end && repair(*found) != asRead)
            ++found;
        if (found == end)
            return -1;
        const int place = *found;
        places.erase(found);
        return place;
    };
    std::vector<Item> more;
    for (const Edit &edit : std::as_const(draft.edited)) {
        if (const int place = take(edit.asRead); place >= 0) {
            change(place, edit.repair);
            continue;
        }
        // Another program has changed or deleted the row meanwhile: the user is asked when this one is written.
        Item gone;
        gone.repair = edit.repair;
        gone.bookmark = "gone";
        gone.asRead = std::make_shared<const Repair>(edit.asRead);
        gone.isGone = true;
        more.push_back(std::move(gone));
    }
    QSet<int> removed;
    for (const Repair &asRead : std::as_const(draft.removed)) {
        if (const int place = take(asRead); place >= 0)
            removed.insert(place);
    }
    for (const Repair &added : std::as_const(draft.added)) {
        Item item;
        item.repair = added;
        more.push_back(std::move(item));
    }
    std::vector<Item> left;
    for (int place = 0; place < count(); ++place) {
        Item &item = m_items[size_t(place)];
        (removed.contains(place) ? m_removed : left).push_back(std::move(item));
    }
    std::move(more.begin(), more.end(), std::back_inserter(left));
    m_items = std::move(left);
    m_changed = true;
    sortLikeFetch();
    m_options->resetFilters();
    applyFilter();
    if (const qsizetype kept = draft.removed.size() - removed.size(); kept > 0)
        m_session->prompts().information(messages::kNotDeletedAgain, kept);
}

} // namespace results
