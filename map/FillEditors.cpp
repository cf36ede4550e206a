#include "FillEditors.h"

#include <ellery/TubeGrid.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace map {

using plans::PatternFill;
using plans::PcntFill;
using plans::TubeFilter;

namespace {

/// Reason why no tube passes the filter.
QString emptyReason(const TubeFilter &filter, const ellery::TubeStates &states)
{
    if (filter.region == TubeFilter::SelectedTubes && states.selectedCount() == 0)
        return u"No tubes are selected on the map."_s;
    return u"No tubes qualify."_s;
}

} // namespace

PcntFillEditor::PcntFillEditor(const FillEditorContext &context, int place)
    : FillEditorOf(context, place)
{
    // Options that were stored for a large component can be out of range for a small one. The fields must show the
    // values that are used.
    m_fill.parameters.percent = std::clamp(m_fill.parameters.percent, 0, kMaxPercent);
    m_fill.parameters.tubeCount = std::clamp(m_fill.parameters.tubeCount, 0, component().numTube());
    refresh();
}

int PcntFillEditor::maxValue() const
{
    return parameters().percentMode ? kMaxPercent : component().numTube();
}

void PcntFillEditor::setValue(int value)
{
    PcntFill::Parameters now = parameters();
    (now.percentMode ? now.percent : now.tubeCount) = value;
    setParameters(now);
}

QString PcntFillEditor::summary() const
{
    const plans::FillResult &sample = preview().result();
    return tarnwick::format(u"%S of %S", tarnwick::format(u"%D", sample.fillCount), tubeCount(sample.candidateCount));
}

QString PcntFillEditor::warning() const
{
    const plans::FillResult &sample = preview().result();
    if (sample.candidateCount == 0)
        return emptyReason(parameters().filter, tubes());
    if (sample.fillCount < sample.wantedCount)
        return tarnwick::format(u"%S would be too many.", tubeCount(sample.wantedCount));
    if (PcntFill::isCutShort(sample))
        return tarnwick::format(u"Drawn from the first %D of them.", PcntFill::kReach);
    return {};
}

void PcntFillEditor::correctParameters()
{
    if (m_fill.parameters.seed == 0)
        m_fill.parameters.seed = 1;
}

void PcntFillEditor::makeExample(plans::MapFill &fill) const
{
    static_cast<PcntFill &>(fill).parameters.randomSeed = false;
}

BoxFillEditor::BoxFillEditor(const FillEditorContext &context, int place)
    : FillEditorOf(context, place)
{
    if (isNew()) {
        m_fill.mark = {ellery::Symbol(u'D'), tarnwick::ColourRef(0xFF0000)};
    }
    const ellery::TubeGrid grid(component().tubes());
    const ellery::TubeGrid::Bounds &bounds = grid.bounds();
    m_pitch = grid.spacing();
    if (grid.count() > 0)
        m_maxRadius = std::max(1.0, std::ceil(std::hypot(bounds.right - bounds.left, bounds.top - bounds.bottom)));
    m_fill.parameters.radius = std::max(kMinRadius, std::min(m_maxRadius, m_fill.parameters.radius));
    refresh();
}

QString BoxFillEditor::summary() const
{
    return tubeCount(preview().result().fillCount);
}

QString BoxFillEditor::warning() const
{
    if (tubes().selectedCount() == 0)
        return u"No tubes are selected on the map."_s;
    if (preview().result().fillCount == 0 && parameters().radius < m_pitch)
        return tarnwick::format(u"The nearest tubes are %.3f away.", m_pitch);
    return {};
}

PatternFillEditor::PatternFillEditor(const FillEditorContext &context, int place)
    : FillEditorOf(context, place)
{
    if (isNew()) {
        m_fill.mark = {ellery::Symbol(u'D'), tarnwick::ColourRef(0xFF0000)};
    }
    auto &[rows, cols] = m_limits;
    rows = cols = {1, 1};
    for (const ellery::Tube &tube : component().tubes()) {
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
    return tubeCount(preview().result().fillCount);
}

QString PatternFillEditor::warning() const
{
    if (preview().result().fillCount > 0)
        return {};
    return emptyReason(parameters().filter, tubes());
}

void PatternFillEditor::correctParameters()
{
    m_fill.parameters.rowIncrement = std::max(1, m_fill.parameters.rowIncrement);
    m_fill.parameters.colIncrement = std::max(1, m_fill.parameters.colIncrement);
}

} // namespace map
