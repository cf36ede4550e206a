#pragma once
#include "ReportConvSpec.h"

#include <brannock/Project.h>
#include <tarnwick/GridSource.h>

namespace conversion {

/// What a spec makes of one line, as a table with the columns "FIELD", "TEXT" and "RESULT": the fields, the texts cut
/// for them, and the values of the entry; below them the remarks.
class LineResult : public tarnwick::GridSource
{
public:
    /// Converts the line alone: a field that the line is too short for has no earlier value. number: from 1.
    void convert(const brannock::Project &project, const ReportConvSpec &spec, int number, QStringView line);
    /// What the filename fields make of a text's path.
    void convertPath(const ReportConvSpec &spec, const QString &machinePath);
    void clear() { m_rows.clear(); }

    int rowCount() const override { return int(m_rows.size()); }
    int columnCount() const override { return 3; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override { return m_rows[row][column]; }
    QString lineText(int row) const override;

private:
    QList<QStringList> m_rows; ///< three texts; a remark has only the first
};

} // namespace conversion
