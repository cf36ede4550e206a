#pragma once
#include "DemoProject.h"

#include <ellery/SteamGen.h>
#include <QList>

namespace demo {

enum class FlawKind { Dent, BarWear, SupportWear, Crack, Volumetric, Bulge, BuffMark, LoosePart, Noise };

/// Something in a tube that a probe sees, and how it comes on.
struct Flaw
{
    FlawKind kind = FlawKind::Dent;
    QString landmark;
    double offset = 0; ///< inches from the landmark
    double length = 0; ///< of one with an extent; 0: a point
    int since = 0;     ///< index of the outage that finds it first
    int depth = 0;     ///< per cent of the wall then; 0: no depth can be told
    int growth = 0;    ///< per cent from one outage to the next
    double volts = 0;
    int phase = 0;
    bool circumferential = false; ///< of a crack
    bool several = false;         ///< of a crack
    quint64 scatter = 0;          ///< seed of the differences between what it is and what is read

    bool isThere(int outage) const { return outage >= since; }
    int depthAt(int outage) const { return depth == 0 ? 0 : std::min(99, depth + growth * (outage - since)); }
    /// The depth that the resolution reads in that outage; 0 where no depth can be told. Readings of one flaw repeat
    /// within some per cent only, so the difference of two outages may be zero or negative.
    int resolvedDepth(int outage) const;
};

/// Depth at which a tube is plugged.
constexpr int kPluggingLimit = 40;

/// What is in one tube over the years.
struct Condition
{
    bool pluggedBefore = false; ///< before the first outage
    QList<Flaw> flaws;

    /// Whether the tube has been taken out of service before that outage: by an earlier one that found a crack or a
    /// depth at the limit.
    bool isPlugged(int outage) const;
};

/// The conditions of a component's tubes. Each depends on the seed and the tube alone, so nothing is kept.
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
    QString m_tubesheet; // at the inlet, where it is hottest
    QStringList m_supports;
    QStringList m_bars;
};

} // namespace demo
