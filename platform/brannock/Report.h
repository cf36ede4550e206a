#pragma once
#include "Meas.h"

#include <ellery/Tube.h>
#include <fenwright/Infos.h>
#include <QList>
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

    bool isHeader() const { return kind == Kind::Header; }
    bool isStd() const { return kind == Kind::Standard; }
    bool isResult() const { return kind == Kind::Result; }
    bool isNdd() const { return defect == QLatin1String("NDD"); }
    bool operator==(const ReportEntry &) const = default;
};

/// The layout of report files: their columns, and how many characters of a header line are kept.
class ReportSchema
{
public:
    /// Number of characters that a header entry keeps of its line, one per column.
    static constexpr int kHeaderColumns = 132;
    /// Column names of a report file, in order.
    static const QStringList &columns();
};

/// An analyst's report file in the suite's format.
class Report
{
public:
    QList<ReportEntry> entries;
    /// Path of the file it was read from; empty for a new report.
    QString path;
    /// False if the file does not state its number of rows.
    bool isCounted = true;

    int numEntry() const { return int(entries.size()); }
    void clear() { entries.clear(); }
    const ReportEntry &operator[](int index) const { return entries[index]; }

    /// Reads a report file (docs/file-formats.md). Throws tarnwick::FileError with line and reason; the report is then
    /// unchanged.
    void loadReport(const QString &machinePath);
    /// mode 1 replaces an existing file. Throws tarnwick::FileError.
    void storeReport(const QString &machinePath, int mode = 1) const;
};

} // namespace brannock
