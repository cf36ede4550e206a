#pragma once
#include "MapFill.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// Takes the tubes within a radius around the tubes selected on the map, but not the selected tubes themselves.
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
    /// In the order in which the tubes are first reached: by selected tube, then by index.
    FillResult pick(const FillInput &input) const override;
    Need need() const override { return Need::Selection; }
    QString entryLabel() const override;
    QString undoLabel() const override;

protected:
    QString className() const override;
};

/// Values of the dialog, stored for the next time.
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
