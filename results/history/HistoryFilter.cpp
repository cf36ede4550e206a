#include "HistoryFilter.h"

#include <algorithm>
#include <bit>
#include <QStringList>
#include <tarnwick/Format.h>

namespace results {

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kNotKept = -1;

/// For each text number: the place of that outage in the list if it is marked, else kNotKept.
std::vector<qint32> outagePlaces(const HistoryRows &rows, const QList<OutageChoice> &outages)
{
    std::vector<qint32> places(rows.texts.count(), kNotKept);
    for (qsizetype i = 0; i < outages.size(); ++i) {
        const qint64 number = rows.texts.findFolded(outages[i].outage);
        if (number >= 0 && outages[i].keep)
            places[size_t(number)] = qint32(i);
    }
    for (size_t number = 0; number < places.size(); ++number)
        places[number] = places[rows.texts.folded(quint32(number))];
    return places;
}

/// For each text number: the thresholds of that code; null if it is not kept.
std::vector<const DefectChoice *> codesKept(const HistoryRows &rows, const QList<DefectChoice> &defects)
{
    std::vector<const DefectChoice *> codes(rows.texts.count(), nullptr);
    for (const DefectChoice &choice : defects) {
        const qint64 number = rows.texts.findFolded(choice.code);
        if (number >= 0 && choice.keep)
            codes[size_t(number)] = &choice;
    }
    for (size_t number = 0; number < codes.size(); ++number)
        codes[number] = codes[rows.texts.folded(quint32(number))];
    return codes;
}

bool passes(const HistoryRow &row, const DefectChoice *choice)
{
    return choice && (choice->volts < 0 || row.volts >= choice->volts) &&
           (choice->percent < 0 || row.percent >= choice->percent);
}

/// For each tube the place of the latest marked outage among those of its entries.
std::vector<qint32> latestPlaces(const HistoryRows &rows, const std::vector<qint32> &places)
{
    std::vector<qint32> latest(rows.tubeCount(), kNotKept);
    for (size_t i = 0; i < rows.count(); ++i) {
        const HistoryRow &row = rows[i];
        latest[row.tube] = std::max(latest[row.tube], places[row.outage]);
    }
    return latest;
}

/// Numbers in the order of the doubles, the largest first.
quint64 descending(double value)
{
    constexpr quint64 sign = quint64(1) << 63;
    const auto bits = std::bit_cast<quint64>(value + 0.0); // negative zero becomes zero
    return bits & sign ? bits : ~bits & ~sign;
}

} // namespace

size_t HistoryFilter::apply(HistoryRows &rows) const
{
    const std::vector<qint32> places = outagePlaces(rows, outages);
    const std::vector<const DefectChoice *> codes = codesKept(rows, defects);
    std::vector<qint32> latest;
    if (mode == OutageMode::LatestSelected)
        latest = latestPlaces(rows, places);
    size_t kept = 0;
    for (size_t i = 0; i < rows.count(); ++i) {
        HistoryRow &row = rows[i];
        if (!row.edited) {
            const qint32 place = places[row.outage];
            bool keep = mode == OutageMode::All || place != kNotKept;
            if (mode == OutageMode::LatestSelected)
                keep = keep && place == latest[row.tube];
            row.keep = keep && passes(row, codes[row.defect]);
        }
        kept += row.keep ? 1 : 0;
    }
    return kept;
}

QString HistoryFilter::outagesText() const
{
    if (mode == OutageMode::All)
        return u"all"_s;
    QStringList names;
    for (const OutageChoice &choice : outages) {
        if (choice.keep)
            names.append(choice.outage);
    }
    return (mode == OutageMode::LatestSelected ? u"latest of "_s : QString()) +
           (names.isEmpty() ? u"none"_s : names.join(u", "_s));
}

QString HistoryFilter::codesText() const
{
    QStringList codes;
    for (const DefectChoice &choice : defects) {
        if (!choice.keep)
            continue;
        QString text = choice.code;
        if (choice.volts >= 0)
            text += tarnwick::format(u" volts >= %.2f", choice.volts);
        if (choice.percent >= 0)
            text += tarnwick::format(u" pcnt >= %d%%", choice.percent);
        codes.append(text);
    }
    return codes.isEmpty() ? u"none"_s : codes.join(u", "_s);
}

std::vector<quint32> sortedHistory(const HistoryRows &rows, HistorySort sort)
{
    /// The index as last part of the key makes the order stable.
    struct Key
    {
        quint64 first;
        quint32 second;
        quint32 index;
        auto operator<=>(const Key &) const = default;
    };
    const std::vector<quint32> codes = rows.texts.order();
    const auto keyOf = [&](const HistoryRow &row, quint32 index) -> Key {
        switch (sort) {
        case HistorySort::Tube:
            return {addressKey(row.sec, row.row, row.col), codes[row.defect], index};
        case HistorySort::Column:
            return {addressKey(row.sec, row.col, row.row), codes[row.defect], index};
        case HistorySort::Indication:
            return {codes[row.defect], 0, index};
        case HistorySort::Volts:
            return {descending(row.volts), 0, index};
        case HistorySort::Phase:
            return {descending(row.phase), 0, index};
        case HistorySort::Percent:
            return {descending(row.percent), 0, index};
        case HistorySort::Fetched:
            break;
        }
        return {0, 0, index};
    };
    std::vector<Key> keys;
    keys.reserve(rows.count());
    for (size_t i = 0; i < rows.count(); ++i)
        keys.push_back(keyOf(rows[i], quint32(i)));
    std::sort(keys.begin(), keys.end());
    std::vector<quint32> order(keys.size());
    std::transform(keys.begin(), keys.end(), order.begin(), [](const Key &key) { return key.index; });
    return order;
}

} // namespace results
