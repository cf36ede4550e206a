#include "HistoryRows.h"

#include <algorithm>
#include <bit>
#include <brannock/HistoryFields.h>
#include <numeric>

namespace results {

TextNumbers::TextNumbers()
{
    addNew(QString());
}

quint32 TextNumbers::add(const QString &text)
{
    constexpr quint64 kMixer = 0x9E3779B97F4A7C15u;
    constexpr int kBits = std::countr_zero(std::tuple_size_v<decltype(m_recent)>);
    const auto place = quint64(reinterpret_cast<quintptr>(text.constData()));
    quint32 &recent = m_recent[size_t(place * kMixer >> (64 - kBits))];
    // The text that is kept here holds the memory, so no other text can be in its place.
    if (m_texts[recent].constData() == text.constData() && m_texts[recent].size() == text.size())
        return recent;
    const auto known = m_numbers.constFind(text);
    if (known == m_numbers.constEnd())
        return recent = addNew(text);
    m_texts[*known] = text;
    return recent = *known;
}

quint32 TextNumbers::addNew(const QString &text)
{
    const auto number = quint32(m_texts.size());
    m_texts.push_back(text);
    m_numbers.insert(text, number);
    const QString folded = text.toCaseFolded();
    const auto first = m_foldedNumbers.constFind(folded);
    m_folded.push_back(first == m_foldedNumbers.constEnd() ? number : *first);
    if (m_folded.back() == number)
        m_foldedNumbers.insert(folded, number);
    return number;
}

qint64 TextNumbers::findFolded(const QString &text) const
{
    const auto found = m_foldedNumbers.constFind(text.toCaseFolded());
    return found == m_foldedNumbers.constEnd() ? -1 : qint64(*found);
}

std::vector<quint32> TextNumbers::order() const
{
    std::vector<quint32> numbers(count());
    std::iota(numbers.begin(), numbers.end(), 0);
    const auto compare = [this](quint32 left, quint32 right) {
        return m_texts[left].compare(m_texts[right], Qt::CaseInsensitive);
    };
    std::sort(numbers.begin(), numbers.end(), [&](quint32 left, quint32 right) { return compare(left, right) < 0; });
    std::vector<quint32> places(numbers.size());
    for (size_t i = 1; i < numbers.size(); ++i)
        places[numbers[i]] = places[numbers[i - 1]] + (compare(numbers[i - 1], numbers[i]) < 0 ? 1 : 0);
    return places;
}

quint64 addressKey(qint16 first, qint16 second, qint16 third)
{
    constexpr int bits = 16;
    const auto part = [](qint16 number) { return quint64(quint16(number) ^ 0x8000u); };
    return (part(first) << bits | part(second)) << bits | part(third);
}

void HistoryRows::append(const HistoryRow &row)
{
    if (m_count == m_chunks.size() * kChunk)
        m_chunks.push_back(std::make_unique<HistoryRow[]>(kChunk));
    (*this)[m_count++] = row;
}

namespace {

/// Converts each field of the left entry into that of the right one. Derived: how texts and times are converted.
template <typename Derived>
struct Conversion
{
    template <typename From, typename To>
    void field(QStringView, const From &from, To &to)
    {
        if constexpr (std::is_same_v<From, To>)
            to = from;
        else
            static_cast<Derived *>(this)->convert(from, to);
    }
    /// Numbers whose types differ: the range is that of the narrower type.
    template <typename From, typename To>
    void field(QStringView, const From &from, To &to, brannock::IntRange)
    {
        to = To(from);
    }
    template <typename From, typename To, typename... Range>
    void sparse(QStringView name, const From &from, To &to, Range... range)
    {
        field(name, from, to, range...);
    }
};

struct Unpacking : Conversion<Unpacking>
{
    explicit Unpacking(const TextNumbers &known)
        : texts(known)
    {
    }
    void convert(quint32 number, QString &text) const { text = texts[number]; }
    void convert(qint64 seconds, tarnwick::JDateTime &time) const
    {
        if (seconds != HistoryRow::kNoTime)
            time = tarnwick::JDateTime::fromSeconds(seconds);
    }
    const TextNumbers &texts;
};

struct Packing : Conversion<Packing>
{
    explicit Packing(TextNumbers &known)
        : texts(known)
    {
    }
    void convert(const QString &text, quint32 &number) { number = texts.add(text); }
    void convert(const tarnwick::JDateTime &time, qint64 &seconds) const
    {
        seconds = time.isNull() ? HistoryRow::kNoTime : time.seconds();
    }
    TextNumbers &texts;
};

} // namespace

brannock::HistoryEntry HistoryRows::entry(const HistoryRow &row) const
{
    brannock::HistoryEntry entry;
    Unpacking unpacking(texts);
    brannock::visitHistoryFields(row, entry, unpacking);
    return entry;
}

HistoryRow HistoryRows::packed(const brannock::HistoryEntry &entry)
{
    HistoryRow row;
    Packing packing(texts);
    brannock::visitHistoryFields(entry, row, packing);
    // In files and dialogs an empty number means that nothing was measured.
    row.hasVolts = entry.volts != 0;
    row.hasPhase = entry.phase != 0;
    row.hasPercent = entry.percent != 0;
    return row;
}

template <typename IndexAt>
void HistoryRows::numberBy(IndexAt indexAt)
{
    const HistoryRow *previous = nullptr;
    m_tubes = 0;
    for (size_t i = 0; i < m_count; ++i) {
        HistoryRow &row = (*this)[indexAt(i)];
        const bool sameTube = previous && row.isSameTube(*previous);
        if (!sameTube)
            ++m_tubes;
        row.tube = m_tubes - 1;
        row.rank = 0;
        if (sameTube)
            row.rank = previous->rank + (texts.folded(row.outage) != texts.folded(previous->outage) ? 1 : 0);
        previous = &row;
    }
}

void HistoryRows::number()
{
    numberBy([](size_t i) { return i; });
}

void HistoryRows::numberInAnyOrder()
{
    /// The index as last part of the key makes the order stable.
    struct Key
    {
        quint64 tube;
        quint32 outage;
        quint32 index;
        auto operator<=>(const Key &) const = default;
    };
    const std::vector<quint32> outages = texts.order();
    std::vector<Key> keys;
    keys.reserve(m_count);
    for (size_t i = 0; i < m_count; ++i) {
        const HistoryRow &row = (*this)[i];
        keys.push_back({addressKey(row.sec, row.row, row.col), ~outages[row.outage], quint32(i)}); // the latest first
    }
    if (!std::is_sorted(keys.begin(), keys.end()))
        std::sort(keys.begin(), keys.end());
    numberBy([&](size_t i) { return size_t(keys[i].index); });
}

} // namespace results
