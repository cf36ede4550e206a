#pragma once
#include "ReportConvSpec.h"

#include <tarnwick/GridSource.h>
#include <tarnwick/JTablePrintArg.h>

namespace conversion {

/// All settings of a format as lines of text: the options, and a table of each list under its heading. name: of the
/// format.
QString specAsText(const ReportConvSpec &spec, const QString &name);

/// Print layout of these lines: "Courier New", with the program's revision and the time at the foot of each page.
tarnwick::JTablePrintArg specPrintLayout(const QString &name);

/// Lines of text as a table of one column, for printing.
class TextLines : public tarnwick::GridSource
{
public:
    explicit TextLines(const QString &text);
    int rowCount() const override { return int(m_lines.size()); }
    int columnCount() const override { return 1; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int) const override { return m_lines[row]; }

private:
    QStringList m_lines;
};

} // namespace conversion
