#pragma once
#include <results/repairs/RepairList.h>
#include <tarnwick/GridSource.h>

namespace results {

/// The visible repairs of a list as rows of a table. The first column selects them.
class RepairGrid : public tarnwick::GridSource
{
public:
    static constexpr int kSelected = 0;

    RepairGrid(RepairList &list, const ellery::SteamGen &steamGen);

    /// Called after the user has selected or deselected a repair in the table.
    std::function<void()> selectionChanged;

    int rowCount() const override { return int(m_list.visible().size()); }
    int columnCount() const override { return int(m_titles.size()); }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

    int placeOf(int row) const { return row >= 0 && row < rowCount() ? m_list.visible()[row] : -1; }

private:
    bool hasTube(int row) const;

    RepairList &m_list;
    const ellery::SteamGen &m_steamGen;
    QStringList m_titles; ///< without that of the entry number, which is the table's own
    int m_numbers;        ///< columns of the tube's numbers; they follow the first column
};

} // namespace results
