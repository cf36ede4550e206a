#pragma once
#include "ReportEntry.h"

#include <QList>
#include <QStringList>

namespace brannock {

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
