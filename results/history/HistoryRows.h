#pragma once
#include <brannock/History.h>
#include <QHash>

#include <array>
#include <limits>
#include <memory>
#include <vector>

namespace results {

/// Texts that occur many times: each is kept once and has a number. Number 0 is the empty text.
class TextNumbers
{
public:
    TextNumbers();

    quint32 add(const QString &text);
    /// Number of a text, or of one that differs from it only in case; -1 if there is none. See folded().
    qint64 findFolded(const QString &text) const;
    const QString &operator[](quint32 number) const { return m_texts[number]; }
    /// The same number for texts that differ only in case: that of the first of them. The engine compares texts so.
    quint32 folded(quint32 number) const { return m_folded[number]; }
    size_t count() const { return m_texts.size(); }
    /// For each number the place of its text among all texts, without regard to case.
    std::vector<quint32> order() const;

private:
    quint32 addNew(const QString &text);

    std::vector<QString> m_texts;
    std::vector<quint32> m_folded;
    QHash<QString, quint32> m_numbers;
    QHash<QString, quint32> m_foldedNumbers; ///< by the text in case-folded form
    std::array<quint32, 1 << 10> m_recent{}; ///< by the place of the text in memory: the engine shares equal texts
};

/// Whole numbers that sort as three numbers of an address do.
quint64 addressKey(qint16 first, qint16 second, qint16 third);

/// One entry of a history in a compact form, for histories of millions of entries. Its fields are named as those of
/// brannock::HistoryEntry (see brannock::visitHistoryFields()). Texts are numbers of TextNumbers.
struct HistoryRow
{
    static constexpr qint64 kNoTime = std::numeric_limits<qint64>::min();

    struct Location
    {
        quint32 landmark = 0;
        float offset = 0;
        qint32 point = 0;
        float dist = 0;
    };

    double volts = 0;
    double phase = 0;
    qint64 entryTime = kNoTime; ///< seconds
    quint32 tube = 0;           ///< number of the tube, from 0
    quint32 rank = 0;           ///< number of the outage within the tube; 0 is the latest
    quint32 outage = 0;
    quint32 defect = 0;
    quint32 channel = 0;
    quint32 beginTest = 0;
    quint32 endTest = 0;
    quint32 probeModel = 0;
    quint32 analystId = 0;
    quint32 operatorId = 0;
    Location location;
    Location to;
    qint16 sec = 0;
    qint16 row = 0;
    qint16 col = 0;
    qint16 percent = 0;
    qint16 leg = 0;
    qint16 probeSize = 0;
    quint16 calNumber = 0;
    bool edited = false;
    bool keep : 1 = true;
    // The field of table 'report' has a value. Without one the number here is 0.
    bool hasVolts : 1 = true;
    bool hasPhase : 1 = true;
    bool hasPercent : 1 = true;

    bool isSameTube(const HistoryRow &other) const { return sec == other.sec && row == other.row && col == other.col; }
};

/// The entries of a history, in the order of fetch or of the file.
class HistoryRows
{
public:
    TextNumbers texts;

    size_t count() const { return m_count; }
    HistoryRow &operator[](size_t index) { return m_chunks[index / kChunk][index % kChunk]; }
    const HistoryRow &operator[](size_t index) const { return m_chunks[index / kChunk][index % kChunk]; }
    void append(const HistoryRow &row);

    brannock::HistoryEntry entry(size_t index) const { return entry((*this)[index]); }
    brannock::HistoryEntry entry(const HistoryRow &row) const;
    /// The entry in compact form. The numbers of tube and outage are 0.
    HistoryRow packed(const brannock::HistoryEntry &entry);

    /// Numbers the tubes and the outages within each tube, in the order of the entries. Outages that differ only in
    /// case are one.
    void number();
    /// The same for entries in any order, as a file may have them: as if they were sorted by tube, the latest outage
    /// first.
    void numberInAnyOrder();
    quint32 tubeCount() const { return m_tubes; }

private:
    /// The entries are kept in pieces, so that a growing list never exists twice.
    static constexpr size_t kChunk = 10'000;

    template <typename IndexAt>
    void numberBy(IndexAt indexAt);

    std::vector<std::unique_ptr<HistoryRow[]>> m_chunks;
    size_t m_count = 0;
    quint32 m_tubes = 0;
};

} // namespace results
