#pragma once
#include "MapFill.h"
#include "TubeFilter.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// The generator behind samples: seeds written in old plans must give the same tubes for ever, so it is fixed here and
/// not the machine's own. State = state x 214013 + 2531011 modulo 2^32; each value is bits 16 to 30 of the new state.
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

/// A random sample: a percentage of the qualifying tubes, or a number of them, that its seed reproduces.
class PcntFill : public FillKind<PcntFill>
{
public:
    struct Parameters
    {
        qint32 percent = 0;   ///< 0 to 100, in percent mode
        qint32 tubeCount = 0; ///< in tube-count mode
        TubeFilter filter;
        bool percentMode = true;
        bool randomSeed = true; ///< a fresh seed from the clock at each computation
        quint32 seed = 1;       ///< the last seed used
        bool operator==(const Parameters &) const = default;

        /// Everything but the percentage, which old files hold alone.
        void serializeRest(tarnwick::JFile &file);
    };
    Parameters parameters;

    PcntFill();
    void serialize(tarnwick::JFile &file, int version) override;
    void readOldFormat(tarnwick::JFile &file) override;
    /// With a fresh seed, where one is wanted. Short samples are kept, with a remark.
    FillResult pick(const FillInput &input) const override;
    void take(const FillResult &result) override;
    Need need() const override { return parameters.filter.takesSelection() ? Need::Selection : Need::Nothing; }
    QString entryLabel() const override;
    /// Always with the percentage, in tube-count mode too.
    QString undoLabel() const override;

    /// Random numbers end before this: of more tubes only the first so many can be drawn.
    static constexpr int kReach = 32'768;
    /// Only a part of the tubes that qualified could be drawn.
    static bool isCutShort(const FillResult &result)
    {
        return result.candidateCount > kReach && result.wantedCount > 0;
    }
    /// The seed.
    QString detail() const override;

protected:
    QString className() const override;

private:
    qint32 target(qint64 candidates) const;
    void addRemarks(FillResult &result) const;
};

/// The dialog's values between runs.
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
