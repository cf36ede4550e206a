#pragma once
#include "Report.h"

namespace brannock {

/// One past result of a tube.
struct HistoryEntry
{
    qint16 sec = 0;
    qint16 row = 0;
    qint16 col = 0;
    QString channel;
    double volts = 0;
    double phase = 0;
    int percent = 0;
    QString defect;
    int calNumber = 0;
    int leg = 0;
    QString beginTest;
    QString endTest;
    int probeSize = 0;
    QString probeModel;
    QString analystId;
    QString operatorId;
    tarnwick::JDateTime entryTime;
    QString outage;
    TubeLoc location;
    TubeLoc to;
};

/// The results of past outages (*.hst). Stored as a tab-separated table.
class History
{
public:
    fenwright::SiteInfo site;
    QList<HistoryEntry> entries;
    /// False if the file does not state its number of rows.
    bool isCounted = true;

    /// Throw tarnwick::FileError. If loading fails, the history is unchanged.
    void load(const QString &machinePath);
    void store(const QString &machinePath) const;
};

} // namespace brannock
