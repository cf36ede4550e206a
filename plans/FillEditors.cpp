#include "FillEditors.h"

#include <ellery/TubeGrid.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

/// What the filter leaves nothing to choose from for.
QString emptyReason(const TubeFilter &filter, const ellery::TubeStates &states)
{
    if (filter.region == TubeFilter::SelectedTubes && states.selectedCount() == 0)
        return u"No tubes are selected on the map."_s;
    return u"No tubes qualify."_s;
}

} // namespace

PcntFillEditor::PcntFillEditor(MapHost &host, const tarnwick::PathRoots &roots, int entry)
    : FillEditorOf(host, roots, entry)
{
    // Options of a large component may meet a small one; what the fields show must be what is used.
    m_fill.parameters.percent = std::clamp(m_fill.parameters.percent, 0, kMaxPercent);
    m_fill.parameters.tubeCount = std::clamp(m_fill.parameters.tubeCount, 0, steamGen().numTube());
    refresh();
}

int PcntFillEditor::maxValue() const
{
    return parameters().percentMode ? kMaxPercent : steamGen().numTube();
}

void PcntFillEditor::setValue(int value)
{
    PcntFill::Parameters now = parameters();
    (now.percentMode ? now.percent : now.tubeCount) = value;
    setParameters(now);
}

QString PcntFillEditor::summary() const
{
    const auto &sample = static_cast<const PcntFill &>(preview().shown());
    return tarnwick::format(u"%S of %S", tarnwick::format(u"%D", sample.fillCount), tubeCount(sample.candidateCount));
}

QString PcntFillEditor::warning() const
{
    const auto &sample = static_cast<const PcntFill &>(preview().shown());
    if (sample.candidateCount == 0)
        return emptyReason(parameters().filter, tubes());
    if (sample.fillCount < sample.wantedCount)
        return tarnwick::format(u"%S would be too many.", tubeCount(sample.wantedCount));
    if (sample.isCutShort())
        return tarnwick::format(u"Drawn from the first %D of them.", PcntFill::kReach);
    return {};
}

void PcntFillEditor::settle()
{
    if (m_fill.parameters.seed == 0)
        m_fill.parameters.seed = 1;
}

void PcntFillEditor::makeExample(MapFill &fill) const
{
    static_cast<PcntFill &>(fill).parameters.randomSeed = false;
}

BoxFillEditor::BoxFillEditor(MapHost &host, const tarnwick::PathRoots &roots, int entry)
    : FillEditorOf(host, roots, entry)
{
    if (isNew()) {
        m_fill.symbol = u'D';
        m_fill.colour = 0xFF0000;
    }
    const ellery::TubeGrid grid(steamGen().tubes());
    const ellery::TubeGrid::Bounds &bounds = grid.bounds();
    m_pitch = grid.spacing();
    if (grid.count() > 0)
        m_maxRadius = std::max(1.0, std::ceil(std::hypot(bounds.right - bounds.left, bounds.top - bounds.bottom)));
    m_fill.parameters.radius = std::max(kMinRadius, std::min(m_maxRadius, m_fill.parameters.radius));
    refresh();
}

QString BoxFillEditor::summary() const
{
    return tubeCount(preview().shown().fillCount);
}

QString BoxFillEditor::warning() const
{
    if (tubes().selectedCount() == 0)
        return u"No tubes are selected on the map."_s;
    if (preview().shown().fillCount == 0 && parameters().radius < m_pitch)
        return tarnwick::format(u"The nearest tubes are %.3f away.", m_pitch);
    return {};
}

PatternFillEditor::PatternFillEditor(MapHost &host, const tarnwick::PathRoots &roots, int entry)
    : FillEditorOf(host, roots, entry)
{
    if (isNew()) {
        m_fill.symbol = u'D';
        m_fill.colour = 0xFF0000;
    }
    auto &[rows, cols] = m_limits;
    rows = cols = {1, 1};
    for (const ellery::Tube &tube : steamGen().tubes()) {
        rows = {std::min<int>(rows.first, tube.address.row), std::max<int>(rows.second, tube.address.row)};
        cols = {std::min<int>(cols.first, tube.address.col), std::max<int>(cols.second, tube.address.col)};
    }
    PatternFill::Parameters &now = m_fill.parameters;
    now.firstRow = std::clamp(now.firstRow, rows.first, rows.second);
    now.firstCol = std::clamp(now.firstCol, cols.first, cols.second);
    now.rowIncrement = std::clamp(now.rowIncrement, 1, rows.second);
    now.colIncrement = std::clamp(now.colIncrement, 1, cols.second);
    refresh();
}

QString PatternFillEditor::summary() const
{
    return tubeCount(preview().shown().fillCount);
}

QString PatternFillEditor::warning() const
{
    if (preview().shown().fillCount > 0)
        return {};
    return emptyReason(parameters().filter, tubes());
}

void PatternFillEditor::settle()
{
    m_fill.parameters.rowIncrement = std::max(1, m_fill.parameters.rowIncrement);
    m_fill.parameters.colIncrement = std::max(1, m_fill.parameters.colIncrement);
}

} // namespace plans
