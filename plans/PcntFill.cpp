#include "PcntFill.h"

#include "Messages.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

constexpr int kOwnVersion = 3;
constexpr int kMaxDraws = 1'000'000;

quint32 seedFromClock()
{
    return quint32(std::chrono::high_resolution_clock::now().time_since_epoch().count());
}

} // namespace

void PcntFill::Parameters::serializeRest(tarnwick::JFile &file)
{
    file.serialize(tubeCount);
    file.serialize(filter.region);
    file.serialize(filter.tube);
    file.serialize(percentMode);
    file.serialize(randomSeed);
    file.serialize(seed);
}

PcntFill::PcntFill()
{
    typeKey = u"RAND FILL"_s;
}

QString PcntFill::className() const
{
    return u"PcntFill"_s;
}

void PcntFill::serialize(tarnwick::JFile &file, int version)
{
    MapFill::serialize(file, version);
    const int own = file.version(kOwnVersion);
    file.serialize(parameters.percent);
    if (own >= 3)
        parameters.serializeRest(file);
}

void PcntFill::readOldFormat(tarnwick::JFile &file)
{
    file.serialize(parameters.percent);
}

qint32 PcntFill::target(qint64 candidates) const
{
    // 64 bits, because the percentage in a damaged file can be very large.
    return parameters.percentMode ? qint32(parameters.percent * candidates / 100) : parameters.tubeCount;
}

FillResult PcntFill::pick(const FillInput &input) const
{
    QList<qint32> candidates;
    for (int i = 0; i < input.tubes.count(); ++i) {
        if (parameters.filter.accepts(input.tubes, i))
            candidates.append(i);
    }
    FillResult result;
    result.candidateCount = qint32(candidates.size());
    if (candidates.isEmpty())
        return result;

    result.seed = parameters.randomSeed ? seedFromClock() : parameters.seed;
    SampleGenerator generator(*result.seed);

    result.wantedCount = target(candidates.size());
    result.tubes.reserve(std::clamp<qsizetype>(result.wantedCount, 0, candidates.size()));
    std::vector<bool> taken(size_t(candidates.size()));
    for (int draws = 0; result.tubes.size() < result.wantedCount && draws < kMaxDraws; ++draws) {
        const qsizetype drawn = generator.next() % candidates.size();
        if (taken[size_t(drawn)])
            continue;
        taken[size_t(drawn)] = true;
        result.tubes.append(candidates[drawn]);
    }
    result.tubes.squeeze();
    result.fillCount = qint32(result.tubes.size());
    addRemarks(result);
    return result;
}

void PcntFill::addRemarks(FillResult &result) const
{
    using Kind = FillRemark::Kind;
    if (result.fillCount < result.wantedCount)
        result.remarks.append(remark(Kind::Error, messages::kNotEnoughTubes));
    if (isCutShort(result))
        result.remarks.append(remark(Kind::Information, messages::kDrawsFromFirst, kReach, entryLabel().trimmed(),
                                     result.candidateCount));
}

void PcntFill::take(const FillResult &result)
{
    MapFill::take(result);
    if (result.seed)
        parameters.seed = *result.seed;
}

QString PcntFill::entryLabel() const
{
    return parameters.percentMode ? tarnwick::format(u"%3d%% Fill", parameters.percent)
                                  : tarnwick::format(u"%d Tubes Fill", parameters.tubeCount);
}

QString PcntFill::detail() const
{
    return tarnwick::format(u"Seed %u", parameters.seed);
}

QString PcntFill::undoLabel() const
{
    return tarnwick::format(u"Random %d%% Fill", parameters.percent);
}

PcntFillOptions::PcntFillOptions()
    : OptionFile(u"config\\arvo\\random_fill.opt"_s, u"PcntFill Options"_s, 1)
{
    resetToDefaults();
}

void PcntFillOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(parameters.percent);
    parameters.serializeRest(file);
}

void PcntFillOptions::resetToDefaults()
{
    parameters = {};
    parameters.percent = 10;
}

} // namespace plans
