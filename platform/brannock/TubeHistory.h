#pragma once
#include "History.h"

#include <ellery/Tube.h>
#include <optional>
#include <QDateTime>
#include <QHash>
#include <span>
#include <vector>

namespace brannock {

/// A result of a tube in a history file, with its growth since the tube's outage before.
struct TubeIndication
{
    QString outage;
    QString defect;
    double volts = 0; ///< 0: not measured, as percent
    int percent = 0;
    QString landmark;
    float offset = 0;
    // Nothing if the outage before has no result with this code at this place, or one of the two was not measured.
    std::optional<double> voltsGrowth;
    std::optional<int> percentGrowth;

    /// "R12 WAR 1.20 V (+0.30) 35% (+5) AV2 +0.50"
    QString text() const;
};

/// The results of a history file by tube, for the tip of the map and the tube dialog. Keeps 36 bytes for each.
class TubeHistory
{
public:
    /// Reads the file if it is another one, or was changed, since the last call. Returns false if it was not. Without
    /// a file the history is empty. Throws tarnwick::FileError; the history is then empty until the file is changed
    /// again.
    bool refresh(const QString &machinePath);
    bool isEmpty() const { return m_rows.empty(); }

    /// All results of a tube, the latest outage first. Outages compare as text.
    QList<TubeIndication> indications(const ellery::TubeAddress &tube) const;
    /// Those of its latest outage as texts, equal ones once; no more than most lines, of which the last one counts the
    /// others.
    QStringList latestLines(const ellery::TubeAddress &tube, int most) const;

private:
    struct Row
    {
        ellery::TubeAddress tube;
        qint16 percent;
        quint32 outage;
        quint32 defect;
        quint32 landmark;
        float offset;
        double volts;
    };
    using Rows = std::vector<Row>;

    void read(const QString &machinePath);
    quint32 numberOf(const QString &text);
    int compareTexts(quint32 left, quint32 right) const; ///< without regard to case
    TubeIndication indicationOf(const Row &row) const;
    void addGrowth(TubeIndication &indication, const Row &row, std::span<const Row> before) const;

    QString m_path;
    QDateTime m_changed;
    qint64 m_size = -1;
    Rows m_rows; ///< by tube, then the latest outage first, then as in the file
    QStringList m_texts;
    QHash<QString, quint32> m_numbers;
};

} // namespace brannock
