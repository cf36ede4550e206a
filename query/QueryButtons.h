#pragma once
#include "SQLOptions.h"

#include <tarnwick/GridSource.h>

namespace query {

/// The list of quick-launch buttons as a table: a query file for each button, in the suite's form. Empty entries at the
/// end of the list are not kept.
class QueryButtons : public tarnwick::GridSource
{
public:
    static constexpr int kLeastRows = 10;

    explicit QueryButtons(const QStringList &files);

    /// The list without the empty entries at its end.
    QStringList files() const;
    void setFile(int row, const QString &file);
    void remove(int row) { m_files.removeAt(row); }
    /// Exchanges two entries; returns false if one does not exist.
    bool exchange(int row, int other);

    int rowCount() const override { return qMax(kLeastRows, int(m_files.size()) + 1); }
    int columnCount() const override { return 1; }
    tarnwick::GridColumn column(int column) const override;
    /// Without the folder "queries\"; any other path is shown whole.
    QString text(int row, int column) const override;
    QString editText(int row, int) const override { return m_files.value(row); }
    /// Yellow for a file outside of the folder, grey for an empty entry.
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int, int) const override { return {}; }
    bool setText(int row, int column, const QString &text) override;

private:
    QStringList m_files;
};

} // namespace query
