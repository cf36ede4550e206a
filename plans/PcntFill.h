#pragma once
#include "MapFill.h"
#include "TubeFilter.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// The random generator of samples. It is defined here because a seed in an old plan must always give the same tubes.
/// State = state x 214013 + 2531011 modulo 2^32; each value is bits 16 to 30 of the new state.
class SampleGenerator
{
public:
    explicit SampleGenerator(quint32 seed = 1)
        : m_state(seed)
    {
    }
    void seed(quint32 value) { m_state = value; }
    /// 0 to 32767
    int next()
    {
        m_state = m_state * 214013U + 2531011U;
        return int((m_state >> 16) & 0x7FFF);
    }

private:
    quint32 m_state;
};

/// Takes a random sample: a percentage or a number of the qualifying tubes. The seed reproduces it.
class PcntFill : public FillKind<PcntFill>
{
public:
    struct Parameters
    {
        qint32 percent = 0;   ///< 0 to 100, in percent mode
        qint32 tubeCount = 0; ///< in tube-count mode
        TubeFilter filter;
        bool percentMode = true;
        bool randomSeed = true; ///< take a new seed from the clock at each computation
        quint32 seed = 1;       ///< the last seed used
        bool operator==(const Parameters &) const = default;

        /// All parameters except the percentage, which is the only one in old files.
        void serializeRest(tarnwick::JFile &file);
    };
    Parameters parameters;

    PcntFill();
    void serialize(tarnwick::JFile &file, int version) override;
    void readOldFormat(tarnwick::JFile &file) override;
    /// Uses a new seed if randomSeed is set. If too few tubes qualify, all are taken, and a remark reports it.
    FillResult pick(const FillInput &input) const override;
    void take(const FillResult &result) override;
    Need need() const override { return parameters.filter.takesSelection() ? Need::Selection : Need::Nothing; }
    QString entryLabel() const override;
    /// Always writes the percentage, also in tube-count mode.
    QString undoLabel() const override;

    /// Random numbers are below this limit, so that only the first tubes up to it can be drawn.
    static constexpr int kReach = 32'768;
    /// Reports that only a part of the qualifying tubes could be drawn.
    static bool isCutShort(const FillResult &result)
    {
        return result.candidateCount > kReach && result.wantedCount > 0;
    }
    /// Takes over the seed that was used.
    QString detail() const override;

protected:
    QString className() const override;

private:
    qint32 target(qint64 candidates) const;
    void addRemarks(FillResult &result) const;
};

/// Values of the dialog, stored for the next time.
class PcntFillOptions : public tarnwick::OptionFile
{
public:
    PcntFillOptions();
    PcntFill::Parameters parameters;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
