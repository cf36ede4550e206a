#include "Messages.h"
#include "RepairList.h"

#include <algorithm>
#include <dao/ProgressScope.h>
#include <db/SessionTransaction.h>
#include <tarnwick/Failures.h>

// The changes of a RepairList, and how they are written.
namespace results {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::JDateTime;

void RepairList::change(int place, const Repair &repair)
{
    Item &item = m_items[size_t(place)];
    if (item.repair == repair)
        return;
    if (!item.bookmark.isEmpty() && !item.asRead)
        item.asRead = std::make_shared<const Repair>(item.repair);
    item.repair = repair;
    m_changed = true;
}

void RepairList::deleteSelected()
{
    if (selection().isEmpty() || m_session->prompts().question(Buttons::NoYes, messages::kDeleteRepairs) != Answer::Yes)
        return;
    std::vector<Item> left;
    for (Item &item : m_items) {
        if (!item.selected)
            left.push_back(std::move(item));
        else if (!item.bookmark.isEmpty())
            m_removed.push_back(std::move(item));
    }
    m_items = std::move(left);
    m_changed = true;
    applyFilter();
}

Repair RepairList::scheduleTemplate() const
{
    Repair pattern;
    pattern.siteCode = m_project->site.siteCode;
    pattern.comp = m_project->site.compCode;
    pattern.outage = m_project->outageName();
    pattern.dateScheduled = JDateTime::now();
    return pattern;
}

bool RepairList::isAcceptable(const Repair &repair) const
{
    if (repair.repairType.trimmed().isEmpty()) {
        m_session->prompts().information(messages::kSelectRepairType);
        return false;
    }
    try {
        checkLengths(repair);
        return true;
    } catch (const tarnwick::Error &error) {
        m_session->prompts().showError(tarnwick::kErrorSeverity, 0, error.text());
        return false;
    }
}

bool RepairList::isAcceptableEdit(const Repair &repair) const
{
    if (!repair.dateScheduled.isNull())
        return isAcceptable(repair);
    m_session->prompts().information(messages::kDateScheduledMissing);
    return false;
}

void RepairList::schedule(const QList<qint32> &tubes, const Repair &pattern)
{
    for (const qint32 tube : tubes) {
        const ellery::TubeAddress address = m_project->steamGen[tube].address;
        Item item;
        item.repair = pattern;
        item.repair.sec = address.sec;
        item.repair.row = address.row;
        item.repair.col = address.col;
        if (item.repair.dateScheduled.isNull())
            item.repair.dateScheduled = JDateTime::now();
        m_items.push_back(std::move(item));
    }
    m_changed = m_changed || !tubes.isEmpty();
    m_session->prompts().status(messages::kRepairsAdded, tubes.size());
    sortLikeFetch();
    m_options->resetFilters();
    applyFilter();
    if (const qsizetype found = duplicates().size(); found > 0)
        m_session->prompts().information(messages::kDuplicatesExist, found);
}

void RepairList::sortLikeFetch()
{
    std::stable_sort(m_items.begin(), m_items.end(), [](const Item &left, const Item &right) {
        const Repair &a = left.repair;
        const Repair &b = right.repair;
        if (a.address() != b.address())
            return a.address() < b.address();
        const int types = a.repairType.compare(b.repairType, Qt::CaseInsensitive);
        return types != 0 ? types < 0 : a.outage.compare(b.outage, Qt::CaseInsensitive) < 0;
    });
}

int RepairList::changeCount() const
{
    const auto isChange = [](const Item &item) { return item.bookmark.isEmpty() || item.isEdited(); };
    return int(m_removed.size()) + int(std::count_if(m_items.begin(), m_items.end(), isChange));
}

int RepairList::complete(const QList<int> &places, const JDateTime &when)
{
    int completed = 0;
    for (const int place : places) {
        Repair done = repair(place);
        if (!done.isScheduled())
            continue;
        done.dateCompleted = when;
        change(place, done);
        ++completed;
    }
    applyFilter();
    m_session->prompts().status(messages::kRepairsCompleted, completed);
    return completed;
}

bool RepairList::pasteHeats(const QString &text)
{
    QStringList lines = text.split(u'\n');
    while (!lines.isEmpty() && lines.last().trimmed().isEmpty())
        lines.removeLast();
    const QList<int> places = selection();
    if (lines.isEmpty() || (lines.size() != 1 && lines.size() != places.size())) {
        m_session->prompts().information(messages::kHeatLines, lines.size(), places.size());
        return false;
    }
    QList<Repair> repairs;
    for (qsizetype i = 0; i < places.size(); ++i) {
        const QStringList heats = lines[lines.size() == 1 ? 0 : i].split(u'\t');
        Repair changed = repair(places[i]);
        if (const QString inlet = heats[0].trimmed(); !inlet.isEmpty())
            changed.heat1 = inlet;
        if (const QString outlet = heats.value(1).trimmed(); !outlet.isEmpty())
            changed.heat2 = outlet;
        if (!isAcceptable(changed))
            return false;
        repairs.append(changed);
    }
    for (qsizetype i = 0; i < places.size(); ++i)
        change(places[i], repairs[i]);
    applyFilter();
    m_session->prompts().status(messages::kHeatsSet, places.size());
    return true;
}

bool RepairList::closeWithOk()
{
    if (!m_changed)
        return true;
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    m_rowsDeleted = false;
    try {
        if (writeInTransaction()) {
            m_changed = false;
            return true;
        }
    } catch (const tarnwick::Cancelled &) {
        m_session->prompts().status(messages::kRepairsCancelled);
    }
    if (m_rowsDeleted)
        findRowsAgain();
    return false;
}

bool RepairList::closeWithCancel()
{
    if (!m_changed)
        return true;
    const Answer answer = m_session->prompts().question(Buttons::YesNoCancel, messages::kSaveRepairs);
    return answer == Answer::No || (answer == Answer::Yes && closeWithOk());
}

bool RepairList::writeInTransaction()
{
    db::SessionTransaction transaction(*m_session);
    if (!transaction.begin())
        return false;
    tarnwick::UserPrompts &prompts = m_session->prompts();
    bool goesOn = true;
    const auto store = [&] { goesOn = write(); };
    const auto remove = [&] { goesOn = removeItems(); };
    if (tarnwick::attempt(prompts, store, messages::kUpdateRepairs) && goesOn &&
        tarnwick::attempt(prompts, remove, messages::kRemoveRepairs) && goesOn)
        return transaction.commit();
    const auto rollBack = [&] {
        while (transaction.isOpen())
            db::rollbackTrans(*m_session, true);
    };
    tarnwick::attempt(prompts, rollBack, messages::kRollbackRepairs);
    return false;
}

bool RepairList::write()
{
    return std::all_of(m_items.begin(), m_items.end(), [this](const Item &item) { return writeItem(item); });
}

std::optional<Repair> RepairList::rowOf(const Item &item)
{
    return item.isGone ? std::nullopt : m_table->find(item.bookmark);
}

RepairList::Meanwhile RepairList::askAbout(const Item &item, const tarnwick::Message &message)
{
    const Answer answer =
        m_session->prompts().question(Buttons::YesNoCancel, message, item.repair.repairType, tubeName(item.repair));
    return answer == Answer::Yes ? Meanwhile::Write : answer == Answer::No ? Meanwhile::Skip : Meanwhile::GoBack;
}

bool RepairList::writeItem(const Item &item)
{
    if (item.bookmark.isEmpty()) {
        m_table->add(item.repair);
        return true;
    }
    if (!item.isEdited())
        return true;
    const std::optional<Repair> now = rowOf(item);
    Meanwhile next = Meanwhile::Write;
    if (!now)
        next = askAbout(item, messages::kRemovedByOther);
    else if (*now != item.fetched())
        next = askAbout(item, messages::kChangedByOther);
    if (next == Meanwhile::Write) {
        if (now)
            m_table->update(item.bookmark, item.repair, *now);
        else
            m_table->add(item.repair);
    }
    return next != Meanwhile::GoBack;
}

bool RepairList::removeItems()
{
    std::vector<const Item *> present;
    int changed = 0;
    for (const Item &item : m_removed) {
        if (const std::optional<Repair> now = rowOf(item)) {
            present.push_back(&item);
            changed += *now != item.fetched() ? 1 : 0;
        }
    }
    if (changed > 0 &&
        m_session->prompts().question(Buttons::NoYes, messages::kDeleteChangedByOther, changed) != Answer::Yes)
        return false;
    m_rowsDeleted = !present.empty();
    for (const Item *item : present)
        m_table->remove(item->bookmark);
    return true;
}

/// After a roll back: the recordset does not know the rows that it deleted. A new one is opened, and each stored repair
/// gets the bookmark of the row that has the content which was fetched.
void RepairList::findRowsAgain()
{
    if (!m_session->isOpen())
        return;
    QMultiHash<quint64, std::pair<Repair, QByteArray>> rows;
    const auto read = [&] {
        m_table = std::make_unique<RepairTable>(*m_session, [&](Repair &&row, const QByteArray &bookmark) {
            const quint64 tube = row.tubeKey();
            rows.insert(tube, {std::move(row), bookmark});
        });
    };
    tarnwick::attempt(m_session->prompts(), read, messages::kFetchRepairs);
    const auto findRow = [&](Item &item) {
        if (item.bookmark.isEmpty() || item.isGone)
            return;
        auto [row, end] = rows.equal_range(item.fetched().tubeKey());
        while (row != end && row->first != item.fetched())
            ++row;
        item.isGone = row == end;
        if (item.isGone)
            return;
        item.bookmark = row->second;
        rows.erase(row);
    };
    std::for_each(m_items.begin(), m_items.end(), findRow);
    std::for_each(m_removed.begin(), m_removed.end(), findRow);
}

} // namespace results
