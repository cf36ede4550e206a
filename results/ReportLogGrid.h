#pragma once
#include <brannock/ReportLog.h>
#include <dao/Database.h>
#include <tarnwick/GridSource.h>

namespace results {

/// The uploads and conversions of a project's log as rows of a table, the newest first.
class ReportLogGrid : public tarnwick::GridSource
{
public:
    /// database: tells what became of interrupted uploads; null: not connected. Throws tarnwick::FileError and the
    /// engine's exceptions.
    ReportLogGrid(const brannock::ReportLog &log, dao::Database *database);

    /// "12 uploads and conversions: 10 stored, 2 interrupted."
    QString summary() const;

    int rowCount() const override { return int(m_entries.size()); }
    int columnCount() const override;
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override { return text(row, column); }

private:
    QList<brannock::ReportLog::Entry> m_entries;
    QStringList m_states;
    int m_damaged = 0;
};

} // namespace results
