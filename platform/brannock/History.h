#pragma once
#include "Report.h"

#include <functional>

namespace tarnwick {
class Progress;
}

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
    bool edited = false; ///< a user changed it after it came from the database
};

/// The results of past outages (*.hst). Stored as a tab-separated table.
class History
{
public:
    fenwright::SiteInfo site;
    QList<HistoryEntry> entries;
    /// False if the file does not state its number of rows.
    bool isCounted = true;

    /// Where the entries come from, in words: the database, the outages and the codes of indications. May be empty.
    struct Origin
    {
        QString database;
        QString outages;
        QString codes;
    } origin;

    /// Throw tarnwick::FileError. If loading fails, the history is unchanged.
    void load(const QString &machinePath);
    void store(const QString &machinePath) const;

    /// As load() and store(), for histories that are kept in another form: each entry is passed on when it is read, or
    /// asked for when it is written. The entries here are not used. next() returns null after the last one. progress
    /// may be null; reading throws Cancelled if it stops it.
    void read(const QString &machinePath, const std::function<void(HistoryEntry &)> &take,
              tarnwick::Progress *progress = nullptr);
    void write(const QString &machinePath, const std::function<const HistoryEntry *()> &next) const;
};

} // namespace brannock
