#pragma once
#include "DemoOptions.h"

#include <ellery/SteamGen.h>
#include <QList>

namespace demo {

enum class FlawKind { Dent, BarWear, SupportWear, Crack, Volumetric, Bulge, BuffMark, LoosePart, Noise };

/// A flaw in a tube that a probe can detect, and its growth.
struct Flaw
{
    FlawKind kind = FlawKind::Dent;
    QString landmark;
    double offset = 0; ///< inches from the landmark
    double length = 0; ///< in inches; 0: a point
    int since = 0;     ///< index of the first outage that finds it
    int depth = 0;     ///< initial depth in per cent of the wall; 0: no depth can be determined
    int growth = 0;    ///< in per cent per outage
    double volts = 0;
    int phase = 0;
    bool circumferential = false; ///< cracks only
    bool several = false;         ///< cracks only
    quint64 scatter = 0;          ///< seed of the differences between the true and the measured values

    bool isThere(int outage) const { return outage >= since; }
    int depthAt(int outage) const { return depth == 0 ? 0 : std::min(99, depth + growth * (outage - since)); }
    /// The depth reported by the resolution in that outage; 0 if no depth can be determined. Readings of one flaw
    /// repeat within some per cent, so the difference between two outages may be zero or negative.
    int resolvedDepth(int outage) const;
};

/// Depth at which a tube is plugged.
constexpr int kPluggingLimit = 40;

/// The flaws of one tube over the years.
struct Condition
{
    bool pluggedBefore = false; ///< before the first outage
    QList<Flaw> flaws;

    /// Returns true if the tube was plugged before that outage, since an earlier one found a crack or a depth at the
    /// limit.
    bool isPlugged(int outage) const;
};

/// The conditions of a component's tubes. Each depends only on the seed and the tube, so nothing is stored.
class Flaws
{
public:
    Flaws(const ellery::SteamGen &gen, const DemoOptions &options);
    Condition of(int tube) const;

private:
    const ellery::SteamGen &m_gen;
    quint64 m_seed;
    int m_outages;
    bool m_onceThrough;
    int m_rows;
    int m_firstBarRow;
    QString m_tubesheet; // at the inlet, the hottest place
    QStringList m_supports;
    QStringList m_bars;
};

} // namespace demo
