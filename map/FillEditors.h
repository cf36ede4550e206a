#pragma once
#include "FillEditor.h"

#include <plans/BoxFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>

namespace map {

/// What "Random Fill" does.
class PcntFillEditor : public FillEditorOf<plans::PcntFill, plans::PcntFillOptions>
{
public:
    static constexpr int kMaxPercent = 100;

    explicit PcntFillEditor(const FillEditorContext &context, int place = -1);
    /// The most that the field "Value" takes in the mode it is in.
    int maxValue() const;
    /// The percentage or the number of tubes, by the mode.
    int value() const { return parameters().percentMode ? parameters().percent : parameters().tubeCount; }
    void setValue(int value);
    QString summary() const override;
    QString warning() const override;

protected:
    /// A seed of 0 becomes 1.
    void correctParameters() override;
    /// A fresh seed at every key would show another sample each time.
    void makeExample(plans::MapFill &fill) const override;
};

/// What "Box Fill" does.
class BoxFillEditor : public FillEditorOf<plans::BoxFill, plans::BoxFillOptions>
{
public:
    /// Of the radius, in map coordinates.
    static constexpr double kMinRadius = 0.001;

    explicit BoxFillEditor(const FillEditorContext &context, int place = -1);
    /// A box this wide holds the whole map wherever it stands.
    double maxRadius() const { return m_maxRadius; }
    /// Distance of neighbouring tubes on the map; 0 when there is only one.
    double pitch() const { return m_pitch; }
    QString summary() const override;
    QString warning() const override;

private:
    double m_maxRadius = 1;
    double m_pitch = 0;
};

/// What "Pattern Fill" does.
class PatternFillEditor : public FillEditorOf<plans::PatternFill, plans::PatternFillOptions>
{
public:
    explicit PatternFillEditor(const FillEditorContext &context, int place = -1);
    /// Of first row and column, and of the increments; increments begin at 1.
    int minNumber(ellery::Axis axis) const { return m_limits[int(axis)].first; }
    int maxNumber(ellery::Axis axis) const { return m_limits[int(axis)].second; }
    QString summary() const override;
    QString warning() const override;

protected:
    /// Increments of 0, which only a damaged option file can bring, become 1.
    void correctParameters() override;

private:
    std::pair<int, int> m_limits[2];
};

} // namespace map
