#pragma once
#include <brannock/Meas.h>
#include <QString>
#include <QStringView>

namespace conversion {

/// The content of a location text: one location, or the two ends of a range.
struct LocationText
{
    brannock::TubeLoc location;
    brannock::TubeLoc from;
    brannock::TubeLoc to;
};

/// Takes a location text of an analysis program apart. The first that fits decides:
///   "TSH +1.25 TEH -2.00"  two landmarks with signed offsets: from and to
///   "TSH 1.25 TEH 2.00"    the same without signs apart
///   "TSH +1.25"            a landmark with its offset
///   "01-02"                a range of supports: the whole text is the landmark
///   "TSH 1.25"             a landmark with its offset
///   anything else          the whole text is the landmark
/// Landmarks are runs of upper-case letters and digits. Text behind what fits is not looked at.
LocationText parseLocation(QStringView text);

/// The extent of a test: its first two words.
struct ExtentText
{
    QString begin;
    QString end;
};
ExtentText parseExtent(QStringView text);

/// Parses the decimal number at the beginning of the text like the C library's atof; leading blanks are allowed. length
/// receives the number of characters parsed, 0 if there is no number.
double leadingNumber(QStringView text, qsizetype *length = nullptr);

} // namespace conversion
