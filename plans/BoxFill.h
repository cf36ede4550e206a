#pragma once
#include "MapFill.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// The tubes around those selected on the map, out to a radius. The selected tubes themselves are never among them.
class BoxFill : public FillKind<BoxFill>
{
public:
    struct Parameters
    {
        double radius = 1.0; ///< in map coordinates
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    BoxFill();
    void serialize(tarnwick::JFile &file, int version) override;
    /// In the order in which tubes are first reached: by selected tube, then by index.
    FillResult pick(const FillInput &input) const override;
    Need need() const override { return Need::Selection; }
    QString entryLabel() const override;
    QString undoLabel() const override;

protected:
    QString className() const override;
};

/// The dialog's values between runs.
class BoxFillOptions : public tarnwick::OptionFile
{
public:
    BoxFillOptions();
    BoxFill::Parameters parameters;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
