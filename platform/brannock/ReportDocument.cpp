#include "ReportDocument.h"

#include <algorithm>

namespace brannock {

void ReportDocument::setReport(Report report)
{
    m_report = std::move(report);
    m_steps.clear();
    m_position = m_storedPosition = 0;
    notify({}, false);
}

int ReportDocument::change(const QString &label, const QList<int> &entries,
                           const std::function<void(ReportEntry &)> &edit)
{
    Part part;
    for (const int index : entries) {
        ReportEntry edited = entry(index);
        edit(edited);
        if (edited == entry(index))
            continue;
        part.places.append(index);
        part.before.append(entry(index));
        part.after.append(edited);
    }
    const int count = int(part.places.size());
    if (count > 0)
        push(label, std::move(part));
    return count;
}

void ReportDocument::insert(const QString &label, int index, const QList<ReportEntry> &entries)
{
    Part part{{}, {}, entries};
    for (qsizetype i = 0; i < entries.size(); ++i)
        part.places.append(index + int(i));
    if (!entries.isEmpty())
        push(label, std::move(part));
}

void ReportDocument::remove(const QString &label, const QList<int> &entries)
{
    Part part{entries, {}, {}};
    std::sort(part.places.begin(), part.places.end());
    for (const int index : part.places)
        part.before.append(entry(index));
    if (!entries.isEmpty())
        push(label, std::move(part));
}

void ReportDocument::push(const QString &label, Part part)
{
    apply(part.places, part.before, part.after);
    m_steps.resize(size_t(m_position));
    if (m_storedPosition > m_position)
        m_storedPosition = -1; // the stored state can no longer be reached
    m_steps.push_back({label, std::move(part)});
    if (m_steps.size() > size_t(kMaxLevels)) {
        m_steps.erase(m_steps.begin());
        m_storedPosition = std::max(m_storedPosition - 1, -1);
    }
    m_position = int(m_steps.size());
}

void ReportDocument::undo()
{
    const Part &part = m_steps[size_t(--m_position)].part;
    apply(part.places, part.after, part.before);
}

void ReportDocument::redo()
{
    const Part &part = m_steps[size_t(m_position++)].part;
    apply(part.places, part.before, part.after);
}

void ReportDocument::apply(const QList<int> &places, const QList<ReportEntry> &present,
                           const QList<ReportEntry> &wanted)
{
    QList<ReportEntry> &entries = m_report.entries;
    if (present.size() == wanted.size()) {
        for (qsizetype i = 0; i < places.size(); ++i)
            entries[places[i]] = wanted[i];
        notify(places, true);
        return;
    }
    // Insertions and removals in one pass, so that removing thousands of entries is not quadratic.
    QList<ReportEntry> merged;
    merged.reserve(entries.size() + wanted.size() - present.size());
    qsizetype next = 0;
    qsizetype old = 0;
    while (old < entries.size() || next < wanted.size()) {
        const bool isPlace = next < places.size() && places[next] == (wanted.isEmpty() ? old : merged.size());
        if (isPlace && wanted.isEmpty()) {
            ++old;
            ++next;
        } else if (isPlace) {
            merged.append(wanted[next++]);
        } else {
            merged.append(std::move(entries[old++]));
        }
    }
    entries.swap(merged);
    notify(places, false);
}

void ReportDocument::notify(const QList<int> &places, bool isSameCount) const
{
    if (changed)
        changed(!isSameCount ? kNewNumber : places.size() == 1 ? places.constFirst() : kSeveral);
}

} // namespace brannock
