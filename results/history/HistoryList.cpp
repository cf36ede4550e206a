#include "HistoryList.h"

#include "HistoryColumns.h"
#include "HistoryFetch.h"
#include "Messages.h"

#include <dao/ProgressScope.h>
#include <QDir>
#include <QElapsedTimer>
#include <tarnwick/AskToSave.h>
#include <tarnwick/OptionPrompts.h>
#include <tarnwick/Paths.h>

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

const tarnwick::Message &sortMessage(HistorySort sort)
{
    switch (sort) {
    case HistorySort::Tube:
        return messages::kSortTube;
    case HistorySort::Column:
        return messages::kSortColumn;
    case HistorySort::Indication:
        return messages::kSortIndication;
    case HistorySort::Volts:
        return messages::kSortVolts;
    case HistorySort::Phase:
        return messages::kSortPhase;
    case HistorySort::Percent:
        return messages::kSortPcnt;
    case HistorySort::Fetched:
        break;
    }
    return messages::kSortFetched;
}

} // namespace

bool HistoryList::fetchFilters()
{
    if (!db::checkConnected(*m_session))
        return false;
    tarnwick::UserPrompts &prompts = m_session->prompts();
    const dao::ProgressScope stoppable(m_session->database(), m_progress);
    QList<OutageChoice> outages;
    const auto readOutages = [&] { outages = fetchOutages(m_session->database(), choices().outages); };
    const auto readDefects = [&] { choices().defects = fetchDefects(m_session->database(), choices().defects); };
    if (!tarnwick::attempt(prompts, readOutages, messages::kFetchOutages) ||
        !tarnwick::attempt(prompts, readDefects, messages::kFetchDefects))
        return false;
    choices().outages = outages;
    return true;
}

tarnwick::Outcome HistoryList::fetch()
{
    if (!db::checkConnected(*m_session))
        return tarnwick::Outcome::Failed;
    tarnwick::UserPrompts &prompts = m_session->prompts();
    QElapsedTimer timer;
    timer.start();
    HistoryRows rows;
    const auto read = [&] { fetchHistoryRows(*m_session, rows, m_progress); };
    const auto outcome = tarnwick::attemptCancellable(prompts, read, messages::kFetchHistory);
    if (outcome == tarnwick::Outcome::Cancelled)
        prompts.status(messages::kFetchCancelled);
    if (outcome != tarnwick::Outcome::Done)
        return outcome;
    replace(std::move(rows));
    m_file.clear();
    m_loaded = {};
    m_changed = true;
    applyFilter();
    constexpr double kMsPerSecond = 1000;
    prompts.status(messages::kFetchTime, double(timer.elapsed()) / kMsPerSecond);
    return tarnwick::Outcome::Done;
}

void HistoryList::replace(HistoryRows &&rows)
{
    m_rows = std::move(rows);
    m_order.clear();
    m_isSorted = false;
    m_undo.clear();
    m_kept = m_rows.count();
    m_isFiltered = false;
}

bool HistoryList::open(const QString &machinePath)
{
    HistoryRows rows;
    brannock::History file;
    const auto read = [&] {
        file.read(
            machinePath, [&](brannock::HistoryEntry &entry) { rows.append(rows.packed(entry)); }, m_progress);
    };
    const auto outcome = tarnwick::attemptCancellable(m_session->prompts(), read, messages::kCouldNotLoadHistory);
    if (outcome == tarnwick::Outcome::Cancelled)
        m_session->prompts().status(messages::kOpenCancelled);
    if (outcome != tarnwick::Outcome::Done)
        return false;
    rows.numberInAnyOrder();
    replace(std::move(rows));
    m_file = machinePath;
    m_loaded = file;
    m_changed = false;
    addMissingChoices();
    sort();
    if (!file.isCounted)
        m_session->prompts().information(messages::kHistoryUncounted);
    m_session->prompts().status(messages::kHistoryLoaded);
    return true;
}

void HistoryList::addMissingChoices()
{
    // By text number.
    std::vector<qint32> outages(m_rows.texts.count());
    std::vector<qint32> codes(m_rows.texts.count());
    for (size_t i = 0; i < m_rows.count(); ++i) {
        ++outages[m_rows.texts.folded(m_rows[i].outage)];
        ++codes[m_rows.texts.folded(m_rows[i].defect)];
    }
    const auto forget = [this](std::vector<qint32> &counts, const QString &text) {
        if (const qint64 number = m_rows.texts.findFolded(text); number >= 0)
            counts[size_t(number)] = 0;
    };
    for (const OutageChoice &known : std::as_const(choices().outages))
        forget(outages, known.outage);
    for (const DefectChoice &known : std::as_const(choices().defects))
        forget(codes, known.code);
    for (quint32 number = 0; number < outages.size(); ++number) {
        if (outages[number] > 0)
            choices().outages.append({m_rows.texts[number], true});
        if (codes[number] > 0) {
            DefectChoice choice;
            choice.code = m_rows.texts[number];
            choice.count = codes[number];
            choices().defects.append(choice);
        }
    }
    // The latest outage of a tube is the one that stands last.
    std::stable_sort(choices().outages.begin(), choices().outages.end(),
                     [](const auto &a, const auto &b) { return a.outage.compare(b.outage, Qt::CaseInsensitive) < 0; });
    std::stable_sort(choices().defects.begin(), choices().defects.end(),
                     [](const auto &a, const auto &b) { return a.code.compare(b.code, Qt::CaseInsensitive) < 0; });
}

bool HistoryList::saveAs(const QString &machinePath)
{
    brannock::History file;
    const bool isLoaded = !m_file.isEmpty();
    file.site = isLoaded ? m_loaded.site : m_project->site;
    if (!isLoaded)
        file.site.outage = m_project->outageName();
    file.origin.database = isLoaded ? m_loaded.origin.database : m_session->path();
    const bool isAsLoaded = isLoaded && !m_isFiltered;
    file.origin.outages = isAsLoaded ? m_loaded.origin.outages : choices().outagesText();
    file.origin.codes = isAsLoaded ? m_loaded.origin.codes : choices().codesText();
    int place = 0;
    brannock::HistoryEntry entry;
    tarnwick::ProgressLoop loop(m_progress, count(), u"Storing history"_s);
    const auto next = [&]() -> const brannock::HistoryEntry * {
        while (place < count() && !isKept(place))
            ++place;
        loop.tick(place); // nothing is written before the last entry was asked for
        if (place == count())
            return nullptr;
        entry = entryAt(place++);
        return &entry;
    };
    const auto write = [&] { file.write(machinePath, next); };
    const auto outcome = tarnwick::attemptCancellable(m_session->prompts(), write, messages::kCouldNotStoreHistory);
    if (outcome == tarnwick::Outcome::Cancelled)
        m_session->prompts().status(messages::kStoreCancelled);
    if (outcome != tarnwick::Outcome::Done)
        return false;
    m_changed = false;
    if (isLoaded)
        m_file = machinePath;
    else
        m_options->historyFile = tarnwick::SuitePath::fromMachine(machinePath, m_project->roots()).text();
    m_session->prompts().status(messages::kHistoryStored, machinePath);
    return true;
}

bool HistoryList::save()
{
    if (!m_file.isEmpty())
        return saveAs(m_file);
    const QString path = m_project->pathOf(m_options->historyFile);
    QDir().mkpath(QFileInfo(path).absolutePath()); // if that fails, writing the file tells it
    return saveAs(path);
}

void HistoryList::clear()
{
    if (m_session->prompts().question(Buttons::NoYes, messages::kClearHistory) != Answer::Yes)
        return;
    m_changed = m_changed || count() > 0;
    replace({});
}

void HistoryList::applyFilter()
{
    if (m_sort != HistorySort::Fetched)
        sort();
    m_kept = choices().apply(m_rows);
    m_isFiltered = true;
    // Without entries there is nothing to store: an existing file must not be replaced by an empty one.
    m_changed = m_changed || count() > 0;
    m_session->prompts().status(messages::kFilterDone);
}

void HistoryList::sortBy(HistorySort order)
{
    m_sort = order;
    m_isSorted = false;
    m_session->prompts().status(sortMessage(order));
    sort();
}

void HistoryList::sort()
{
    if (m_sort == HistorySort::Fetched) {
        m_order.clear();
        return;
    }
    m_session->prompts().status(messages::kSorting);
    if (!m_isSorted)
        m_order = sortedHistory(m_rows, m_sort);
    m_isSorted = true;
    m_session->prompts().status(messages::kDoneSorting);
}

QString HistoryList::counterText() const
{
    return tarnwick::format(messages::kHistoryCounter.text, m_kept, m_rows.count());
}

QString HistoryList::caption() const
{
    if (!m_file.isEmpty())
        return tarnwick::format(messages::kHistoryCaptionFile.text, m_file);
    if (count() == 0)
        return u"History"_s;
    return tarnwick::format(messages::kHistoryCaptionDatabase.text, m_project->site.siteCode, m_project->site.compCode);
}

QString HistoryList::printHeader() const
{
    const fenwright::SiteInfo &site = m_file.isEmpty() ? m_project->site : m_loaded.site;
    return tarnwick::format(messages::kHistoryPrintHeader.text, site.siteCode, site.compCode);
}

void HistoryList::change(int place, const HistoryRow &changed)
{
    const size_t index = indexOf(place);
    m_undo.push_back({quint32(index), m_rows[index]});
    put(index, changed);
    m_changed = true;
}

void HistoryList::put(size_t index, const HistoryRow &row)
{
    const bool isNumbered = row.isSameTube(m_rows[index]) && row.outage == m_rows[index].outage;
    m_rows[index] = row;
    m_isSorted = false;
    if (!isNumbered)
        m_rows.numberInAnyOrder();
}

void HistoryList::edit(int place, const brannock::HistoryEntry &entry)
{
    const HistoryRow before = rowAt(place);
    HistoryRow row = m_rows.packed(entry);
    row.tube = before.tube;
    row.rank = before.rank;
    row.keep = before.keep;
    row.edited = true;
    change(place, row);
}

void HistoryList::setKept(int place, bool keep)
{
    HistoryRow row = rowAt(place);
    if (row.keep == keep)
        return;
    row.keep = keep;
    row.edited = true;
    change(place, row);
    m_kept += keep ? 1 : -1;
}

/// After a change of entries: the filter may have changed since they were marked.
void HistoryList::countKept()
{
    if (m_isFiltered) {
        m_kept = choices().apply(m_rows);
        return;
    }
    m_kept = 0;
    for (size_t i = 0; i < m_rows.count(); ++i)
        m_kept += m_rows[i].keep ? 1 : 0;
}

int HistoryList::undo()
{
    if (m_undo.empty())
        return -1;
    const Change last = m_undo.back();
    m_undo.pop_back();
    put(last.index, last.before);
    countKept();
    if (m_order.empty())
        return int(last.index);
    return int(std::find(m_order.begin(), m_order.end(), last.index) - m_order.begin());
}

bool HistoryList::closeWithOk()
{
    // A history that was cleared does not replace its file by an empty one.
    if (m_changed && count() > 0 && !save())
        return false;
    tarnwick::storeOptions(*m_options, m_project->roots(), m_session->prompts());
    return true;
}

bool HistoryList::mayReplace()
{
    return !m_changed ||
           tarnwick::saveOrDiscard(m_session->prompts(), messages::kSaveHistory, [this] { return save(); });
}

bool HistoryList::closeWithCancel()
{
    return !m_changed ||
           tarnwick::saveOrDiscard(m_session->prompts(), messages::kSaveHistory, [this] { return closeWithOk(); });
}

QStringList HistoryList::columnTitles(const ellery::SteamGen &steamGen)
{
    QStringList titles{u"ENTRY"_s};
    if (steamGen.hasSections())
        titles.append(steamGen.axisNames[int(ellery::Axis::Sec)]);
    titles += {steamGen.axisNames[int(ellery::Axis::Row)], steamGen.axisNames[int(ellery::Axis::Col)]};
    for (const HistoryColumn &column : historyColumns())
        titles.append(QString::fromUtf16(column.title));
    return titles;
}

QStringList HistoryList::cells(int place) const
{
    const brannock::HistoryEntry entry = entryAt(place);
    const ellery::SteamGen &steamGen = m_project->steamGen;
    QStringList cells{QString::number(place + 1)};
    if (steamGen.hasSections())
        cells.append(steamGen.tubeLabel(ellery::Axis::Sec, entry.sec));
    cells += {steamGen.tubeLabel(ellery::Axis::Row, entry.row), steamGen.tubeLabel(ellery::Axis::Col, entry.col)};
    for (const HistoryColumn &column : historyColumns())
        cells.append(column.text ? column.text(entry) : isKept(place) ? u"X"_s : QString());
    return cells;
}

} // namespace results
