#pragma once
#include "Inspection.h"

#include <conversion/ReportConvSpec.h>

namespace demo {

/// A layout in which another system prints its reports: the conversion spec that reads it, and what stands around the
/// fields.
struct TextLayout
{
    enum class Vendor { Plain, Titled };

    Vendor vendor = Vendor::Plain;
    QString folder;   ///< of the texts, relative to the project
    QString specFile; ///< in report_formats
    conversion::ReportConvSpec spec;
    int width = 0; ///< characters of a line
    /// The column of the depth shows the code where there is no depth.
    bool codeInPercent = false;
};

/// The default layout of the conversion, with code, operator, cal and operation added where the default leaves room.
TextLayout plainLayout();
/// Another one: titled headers with keywords, cal and operation only in the file's name.
TextLayout titledLayout();

/// The text of one analyst's results in one cal, and the file name that the layout's spec expects.
QByteArray textReport(const TextLayout &layout, const InspectedCal &cal, Oper oper, const brannock::Project &project);
QString textReportName(const TextLayout &layout, const InspectedCal &cal, Oper oper);

} // namespace demo
