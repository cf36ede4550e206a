#pragma once
#include "Meas.h"

#include <ellery/Tube.h>
#include <fenwright/Infos.h>
#include <QString>
#include <tarnwick/JDateTime.h>

namespace brannock {

/// One line of an analysis report: a result for a tube, a header line (raw text), or a line of a calibration standard.
class ReportEntry
{
public:
    enum class Kind { Result, Header, Standard };

    Kind kind = Kind::Result;
    QString headerText; ///< raw line of a header entry

    QString outage;
    fenwright::SiteInfo site;
    int leg = 1;
    int calNumber = 0;
    int fileNumber = 0;
    int id = 0;
    int sec = 0;
    int row = 0;
    int col = 0;
    ellery::TubeAddress address() const { return ellery::TubeAddress::of(sec, row, col); }
    QString channel;
    Meas meas;
    tarnwick::JDateTime entryTime;
    QString defect; ///< the three-letter code; "NDD" for no detectable degradation
    TubeLoc location;
    TubeLoc from;
    TubeLoc to;
    QString beginTest;
    QString endTest;
    fenwright::ProbeInfo probe;
    QString operType; ///< "PRI", "SEC", "RES", ...
    QString analystId;
    QString operatorId;
    QString fileName;
    QString util1;
    QString util2;
    QString plan;
    QString comment;
    int tubeIndex = -1; ///< set by the upload, not stored
    int textLine = 0;   ///< line, from 1, of the text that it was converted from; not stored

    bool isHeader() const { return kind == Kind::Header; }
    bool isStd() const { return kind == Kind::Standard; }
    bool isResult() const { return kind == Kind::Result; }
    bool isNdd() const { return defect == QLatin1String("NDD"); }
    bool operator==(const ReportEntry &) const = default;
};

} // namespace brannock
