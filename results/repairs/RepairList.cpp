#include "RepairList.h"

#include "Messages.h"

#include <algorithm>
#include <dao/ProgressScope.h>
#include <QSet>
#include <tarnwick/Failures.h>

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::JDateTime;

namespace {

void addChoice(QStringList &choices, const QString &text)
{
    if (!text.isEmpty() && !choices.contains(text, Qt::CaseInsensitive))
        choices.append(text);
}

/// The day in local time.
std::pair<int, int> dayOf(const JDateTime &time)
{
    const std::tm parts = time.local();
    return {parts.tm_year, parts.tm_yday};
}

bool isDuplicate(const Repair &one, const Repair &other)
{
    return one.address() == other.address() && one.repairType == other.repairType && one.locLand == other.locLand &&
           one.locOff == other.locOff;
}

} // namespace

bool RepairList::open()
{
    if (!db::checkConnected(*m_session))
        return false;
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    const auto outcome = tarnwick::attemptCancellable(
        m_session->prompts(), [this] { read(); }, messages::kFetchRepairs);
    return outcome == tarnwick::Outcome::Done;
}

void RepairList::read()
{
    std::vector<Item> items;
    m_table = std::make_unique<RepairTable>(*m_session, [&](Repair &&repair, const QByteArray &bookmark) {
        Item item;
        item.repair = std::move(repair);
        item.bookmark = bookmark;
        items.push_back(std::move(item));
    });
    m_items = std::move(items);
    m_removed.clear();
    m_changed = false;
    applyFilter();
}

void RepairList::applyFilter()
{
    m_visible.clear();
    for (int place = 0; place < count(); ++place)
        if (m_options->shows(repair(place), isSelected(place)))
            m_visible.append(place);
}

void RepairList::setSelected(int place, bool selected)
{
    m_items[size_t(place)].selected = selected;
}

QStringList RepairList::outageChoices() const
{
    QStringList outages;
    QSet<QString> known;
    for (const Item &item : m_items) {
        if (!known.contains(item.repair.outage)) {
            known.insert(item.repair.outage);
            addChoice(outages, item.repair.outage);
        }
    }
    std::sort(outages.begin(), outages.end());
    outages.prepend(kAllEntries);
    return outages;
}

QStringList RepairList::typeChoices() const
{
    QStringList types{kAllEntries};
    for (const char16_t *text : repairVocabulary(&Repair::repairType))
        types.append(QString::fromUtf16(text));
    QSet<QString> known;
    for (const Item &item : m_items) {
        if (!known.contains(item.repair.repairType)) {
            known.insert(item.repair.repairType);
            addChoice(types, item.repair.repairType);
        }
    }
    return types;
}

RepairList::Counts RepairList::counts() const
{
    Counts counts;
    counts.total = count();
    counts.visible = int(m_visible.size());
    for (const Item &item : m_items) {
        counts.selected += item.selected ? 1 : 0;
        counts.scheduled += item.repair.isScheduled() ? 1 : 0;
        counts.added += item.bookmark.isEmpty() ? 1 : 0;
    }
    return counts;
}

QString RepairList::countsText() const
{
    const Counts now = counts();
    return tarnwick::format(messages::kRepairCounts.text, now.total, now.selected, now.scheduled, now.added,
                            now.visible);
}

void RepairList::selectWhere(const std::function<bool(int place)> &take)
{
    for (int place = 0; place < count(); ++place)
        if (take(place))
            setSelected(place, true);
    applyFilter();
}

void RepairList::selectAll()
{
    for (const int place : std::as_const(m_visible))
        setSelected(place, true);
}

QList<int> RepairList::duplicates() const
{
    QList<int> places;
    for (int place = 1; place < count(); ++place)
        if (isDuplicate(repair(place), repair(place - 1)))
            places.append(place);
    return places;
}

int RepairList::selectDuplicates()
{
    const QList<int> found = duplicates();
    if (found.isEmpty()) {
        m_session->prompts().status(messages::kNoDuplicates);
        return -1;
    }
    for (const int place : found)
        setSelected(place, true);
    applyFilter();
    if (!m_visible.contains(found.first())) {
        m_options->resetFilters();
        applyFilter();
    }
    m_session->prompts().status(found.size() > 1 ? messages::kDuplicates : messages::kOneDuplicate, found.size());
    return found.first();
}

void RepairList::selectAllScheduled()
{
    selectWhere([this](int place) { return repair(place).isScheduled(); });
}

void RepairList::selectSameDate(int place)
{
    const JDateTime &wanted = repair(place).dateScheduled;
    if (wanted.isNull())
        return;
    selectWhere([this, day = dayOf(wanted)](int other) {
        const JDateTime &scheduled = repair(other).dateScheduled;
        return !scheduled.isNull() && dayOf(scheduled) == day;
    });
}

void RepairList::selectTubes(const ellery::TubeStates &tubes)
{
    selectWhere([&](int place) {
        const int tube = m_project->steamGen.findTube(repair(place).address());
        return tube >= 0 && tube < tubes.count() && tubes.isSelected(tube);
    });
}

void RepairList::clearSelections()
{
    for (Item &item : m_items)
        item.selected = false;
    applyFilter();
}

QList<int> RepairList::selection() const
{
    QList<int> places;
    for (int place = 0; place < count(); ++place)
        if (isSelected(place))
            places.append(place);
    return places;
}

QList<int> RepairList::scheduledPlaces() const
{
    QList<int> places;
    for (int place = 0; place < count(); ++place)
        if (repair(place).isScheduled())
            places.append(place);
    return places;
}

QString RepairList::tubeName(const Repair &repair) const
{
    return m_project->steamGen.tubeName(repair.address());
}

QList<qint32> RepairList::tubesOf(const QList<int> &places) const
{
    constexpr int kMostNamed = 20;
    QList<qint32> tubes;
    QSet<qint32> known;
    QStringList missing;
    int missingCount = 0;
    for (const int place : places) {
        const int tube = m_project->steamGen.findTube(repair(place).address());
        if (tube < 0 && ++missingCount <= kMostNamed)
            missing.append(tarnwick::format(messages::kTubeMissing.text, tubeName(repair(place))));
        if (tube >= 0 && !known.contains(tube)) {
            known.insert(tube);
            tubes.append(tube);
        }
    }
    if (missingCount > kMostNamed)
        missing.append(tarnwick::format(messages::kMoreTubesMissing.text, missingCount - kMostNamed));
    if (missingCount > 0)
        m_session->prompts().showError(tarnwick::kErrorSeverity, 0, missing.join(u'\n'));
    return tubes;
}

QStringList RepairList::columnTitles(const ellery::SteamGen &steamGen)
{
    QStringList titles{u"ENTRY"_s};
    if (steamGen.hasSections())
        titles.append(steamGen.axisNames[int(ellery::Axis::Sec)]);
    titles += {steamGen.axisNames[int(ellery::Axis::Row)], steamGen.axisNames[int(ellery::Axis::Col)]};
    return titles + QStringList{u"OUTAGE"_s, u"REPAIR TYPE"_s, u"TYPE"_s, u"DATE SCHEDULED"_s, u"DATE COMPLETED"_s};
}

QStringList RepairList::cells(int row) const
{
    const Repair &shown = repair(m_visible[row]);
    const ellery::SteamGen &steamGen = m_project->steamGen;
    QStringList cells{QString::number(row + 1)};
    if (steamGen.hasSections())
        cells.append(steamGen.tubeLabel(ellery::Axis::Sec, shown.sec));
    constexpr QStringView date = u"%{%m/%d/%Y %H:%M}t";
    return cells + QStringList{steamGen.tubeLabel(ellery::Axis::Row, shown.row),
                               steamGen.tubeLabel(ellery::Axis::Col, shown.col),
                               shown.outage,
                               shown.repairType,
                               shown.type,
                               tarnwick::format(date, shown.dateScheduled),
                               tarnwick::format(date, shown.dateCompleted)};
}

} // namespace results
