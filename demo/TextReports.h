#pragma once
#include "Inspection.h"

#include <conversion/ReportConvSpec.h>

namespace demo {

/// Report layout of another system: the conversion spec that reads it, and the lines around the fields.
struct TextLayout
{
    enum class Vendor { Plain, Titled };

    Vendor vendor = Vendor::Plain;
    QString folder;   ///< folder of the texts, relative to the project
    QString specFile; ///< file name in report_formats
    conversion::ReportConvSpec spec;
    int width = 0; ///< of a line, in characters
    /// If an entry has no depth, the depth column contains its code.
    bool codeInPercent = false;
};

/// The default layout of the conversion, extended by code, operator, cal and operation in its free columns.
TextLayout plainLayout();
/// A second layout: titled headers with keywords; cal and operation only in the file name.
TextLayout titledLayout();

/// The text of one analyst's results in one cal, and the file name that the layout's spec expects.
QByteArray textReport(const TextLayout &layout, const InspectedCal &cal, Oper oper, const brannock::Project &project);
QString textReportName(const TextLayout &layout, const InspectedCal &cal, Oper oper);

} // namespace demo
