#include "TubeHistory.h"

#include <algorithm>
#include <cmath>
#include <QFileInfo>
#include <tarnwick/Format.h>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

/// Two inspections locate the same flaw at most so far apart, in the component's length unit.
constexpr float kSamePlace = 0.5F;

} // namespace

QString TubeIndication::text() const
{
    QStringList parts;
    const auto add = [&](const QString &part) {
        if (!part.isEmpty())
            parts.append(part);
    };
    add(outage);
    add(defect);
    if (volts != 0)
        add(tarnwick::format(u"%.2f V", volts));
    if (voltsGrowth)
        add(tarnwick::format(u"(%+.2f)", *voltsGrowth));
    if (percent != 0)
        add(tarnwick::format(u"%d%%", percent));
    if (percentGrowth)
        add(tarnwick::format(u"(%+d)", *percentGrowth));
    if (!landmark.isEmpty())
        add(tarnwick::format(u"%S %+.2f", landmark, double(offset)));
    return parts.join(u' ');
}

bool TubeHistory::refresh(const QString &machinePath)
{
    const QFileInfo file(machinePath);
    const qint64 size = file.exists() ? file.size() : -1;
    if (machinePath == m_path && size == m_size && file.lastModified() == m_changed)
        return false;
    m_path = machinePath;
    m_size = size;
    m_changed = file.lastModified();
    m_rows = {};
    m_texts.clear();
    m_numbers.clear();
    if (size < 0)
        return true;
    try {
        read(machinePath);
        return true;
    } catch (...) {
        m_rows = {};
        throw;
    }
}

void TubeHistory::read(const QString &machinePath)
{
    History().read(machinePath, [this](const HistoryEntry &entry) {
        m_rows.push_back({{entry.sec, entry.row, entry.col},
                          qint16(entry.percent),
                          numberOf(entry.outage),
                          numberOf(entry.defect),
                          numberOf(entry.location.landmark),
                          entry.location.offset,
                          entry.volts});
    });
    std::stable_sort(m_rows.begin(), m_rows.end(), [this](const Row &left, const Row &right) {
        if (left.tube != right.tube)
            return left.tube < right.tube;
        return compareTexts(left.outage, right.outage) > 0;
    });
    m_rows.shrink_to_fit();
}

quint32 TubeHistory::numberOf(const QString &text)
{
    const auto known = m_numbers.constFind(text);
    if (known != m_numbers.constEnd())
        return *known;
    const auto number = quint32(m_texts.size());
    m_texts.append(text);
    m_numbers.insert(text, number);
    return number;
}

int TubeHistory::compareTexts(quint32 left, quint32 right) const
{
    return left == right ? 0 : m_texts[left].compare(m_texts[right], Qt::CaseInsensitive);
}

TubeIndication TubeHistory::indicationOf(const Row &row) const
{
    TubeIndication indication;
    indication.outage = m_texts[row.outage];
    indication.defect = m_texts[row.defect];
    indication.volts = row.volts;
    indication.percent = row.percent;
    indication.landmark = m_texts[row.landmark];
    indication.offset = row.offset;
    return indication;
}

void TubeHistory::addGrowth(TubeIndication &indication, const Row &row, std::span<const Row> before) const
{
    const Row *nearest = nullptr;
    float least = kSamePlace;
    for (const Row &other : before) {
        const float away = std::abs(other.offset - row.offset);
        const bool isSame =
            compareTexts(other.defect, row.defect) == 0 && compareTexts(other.landmark, row.landmark) == 0;
        if (!isSame || away > least || (nearest && away == least))
            continue;
        nearest = &other;
        least = away;
    }
    if (!nearest)
        return;
    if (row.volts != 0 && nearest->volts != 0)
        indication.voltsGrowth = row.volts - nearest->volts;
    if (row.percent != 0 && nearest->percent != 0)
        indication.percentGrowth = row.percent - nearest->percent;
}

QList<TubeIndication> TubeHistory::indications(const ellery::TubeAddress &tube) const
{
    const auto isBefore = [](const Row &row, const ellery::TubeAddress &address) { return row.tube < address; };
    auto row = std::lower_bound(m_rows.begin(), m_rows.end(), tube, isBefore);
    const auto endOfOutage = [&](auto first) {
        return std::find_if(first, m_rows.end(), [&](const Row &other) {
            return other.tube != tube || compareTexts(other.outage, first->outage) != 0;
        });
    };
    QList<TubeIndication> found;
    while (row != m_rows.end() && row->tube == tube) {
        const auto end = endOfOutage(row);
        std::span<const Row> before;
        if (end != m_rows.end() && end->tube == tube)
            before = {end, endOfOutage(end)};
        for (; row != end; ++row) {
            found.append(indicationOf(*row));
            addGrowth(found.last(), *row, before);
        }
    }
    return found;
}

QStringList TubeHistory::latestLines(const ellery::TubeAddress &tube, int most) const
{
    QStringList lines;
    const QList<TubeIndication> all = indications(tube);
    for (const TubeIndication &indication : all) {
        if (indication.outage.compare(all.first().outage, Qt::CaseInsensitive) != 0)
            break;
        // Often several analysts have entered the same result.
        if (const QString line = indication.text(); !lines.contains(line))
            lines.append(line);
    }
    if (lines.size() > most) {
        const qsizetype more = lines.size() - most + 1;
        lines.resize(most - 1);
        lines.append(tarnwick::format(u"and %D more of %S", more, all.first().outage));
    }
    return lines;
}

} // namespace brannock
