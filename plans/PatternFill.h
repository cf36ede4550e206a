#pragma once
#include "MapFill.h"
#include "TubeFilter.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// Takes a regular grid of rows and columns.
class PatternFill : public FillKind<PatternFill>
{
public:
    struct Parameters
    {
        TubeFilter filter;
        qint32 firstRow = 1;
        qint32 firstCol = 1;
        bool includeFirstTube = false; ///< the tube in column 1, if the row has one
        bool includeLastTube = false;  ///< the last tube of each selected row
        qint32 rowIncrement = 2;       ///< at least 1
        qint32 colIncrement = 2;       ///< at least 1
        bool operator==(const Parameters &) const = default;

        void serialize(tarnwick::JFile &file);
    };
    Parameters parameters;

    PatternFill();
    void serialize(tarnwick::JFile &file, int version) override;
    /// Without tubes for an increment below 1, which only a damaged file can contain.
    FillResult pick(const FillInput &input) const override;
    Need need() const override { return parameters.filter.takesSelection() ? Need::Selection : Need::Nothing; }
    QString entryLabel() const override;
    QString undoLabel() const override;

protected:
    QString className() const override;
};

/// Values of the dialog, stored for the next time.
class PatternFillOptions : public tarnwick::OptionFile
{
public:
    PatternFillOptions();
    PatternFill::Parameters parameters;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
