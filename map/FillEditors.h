#pragma once
#include "FillEditor.h"

#include <plans/BoxFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>

namespace map {

/// Editor of "Random Fill".
class PcntFillEditor : public FillEditorOf<plans::PcntFill, plans::PcntFillOptions>
{
public:
    static constexpr int kMaxPercent = 100;

    explicit PcntFillEditor(const FillEditorContext &context, int place = -1);
    /// Largest number for the field "Value" in the current mode.
    int maxValue() const;
    /// The percentage or the number of tubes, depending on the mode.
    int value() const { return parameters().percentMode ? parameters().percent : parameters().tubeCount; }
    void setValue(int value);
    QString summary() const override;
    QString warning() const override;

protected:
    /// Replaces seed 0 by 1.
    void correctParameters() override;
    /// Fixes the seed: with a new seed after each key the preview would show a different sample each time.
    void makeExample(plans::MapFill &fill) const override;
};

/// Editor of "Box Fill".
class BoxFillEditor : public FillEditorOf<plans::BoxFill, plans::BoxFillOptions>
{
public:
    /// Smallest radius, in map coordinates.
    static constexpr double kMinRadius = 0.001;

    explicit BoxFillEditor(const FillEditorContext &context, int place = -1);
    /// With this radius the box contains the whole map from any tube.
    double maxRadius() const { return m_maxRadius; }
    /// Distance of neighbouring tubes on the map; 0 if there is only one tube.
    double pitch() const { return m_pitch; }
    QString summary() const override;
    QString warning() const override;

private:
    double m_maxRadius = 1;
    double m_pitch = 0;
};

/// Editor of "Pattern Fill".
class PatternFillEditor : public FillEditorOf<plans::PatternFill, plans::PatternFillOptions>
{
public:
    explicit PatternFillEditor(const FillEditorContext &context, int place = -1);
    /// Limits of first row or column; the smallest increment is 1.
    int minNumber(ellery::Axis axis) const { return m_limits[int(axis)].first; }
    int maxNumber(ellery::Axis axis) const { return m_limits[int(axis)].second; }
    QString summary() const override;
    QString warning() const override;

protected:
    /// Replaces increments of 0, which only a damaged option file can contain, by 1.
    void correctParameters() override;

private:
    std::pair<int, int> m_limits[2];
};

} // namespace map
