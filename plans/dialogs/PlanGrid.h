#pragma once
#include <functional>
#include <plans/storage/PlanEditor.h>
#include <tarnwick/GridSource.h>

namespace plans {

/// The tube columns of plans and lists: section (where the component has sections), row and column.
class TubeColumns
{
public:
    explicit TubeColumns(const ellery::SteamGen &component);
    int count() const { return int(m_axes.size()); }
    ellery::Axis axis(int index) const { return m_axes[index]; }
    tarnwick::GridColumn column(int index) const;
    /// The label of one number of the address; "?12" if the component has none.
    QString text(const ellery::TubeAddress &address, int index) const;
    static int number(const ellery::TubeAddress &address, ellery::Axis axis);
    bool exists(const ellery::TubeAddress &address) const { return m_component.findTube(address) >= 0; }
    /// The colours and the tip of a row: a tube that does not exist is red.
    tarnwick::RowColours colours(const ellery::TubeAddress &address) const;
    QString tip(const ellery::TubeAddress &address) const;

private:
    const ellery::SteamGen &m_component;
    QList<ellery::Axis> m_axes;
};

/// A table whose dialog wants to know of edits.
class EditedGrid : public tarnwick::GridSource
{
public:
    /// Called after the user changed a cell or deleted rows, once for each command.
    std::function<void()> changed;
    void asOneChange(const std::function<void()> &work) override;

protected:
    void tell();

private:
    bool m_isInChange = false;
};

/// The entries of a plan as rows of a table. Tubes are typed by their labels.
class PlanGrid : public EditedGrid
{
public:
    explicit PlanGrid(PlanEditor &editor)
        : m_editor(editor)
        , m_tube(editor.component())
    {
    }

    int rowCount() const override { return int(m_editor.plan().entries.size()); }
    int columnCount() const override { return m_tube.count() + 3; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override { return m_tube.colours(entry(row).address()); }
    QString tip(int row, int) const override { return m_tube.tip(entry(row).address()); }
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;
    QString whyNotDeletable(int) const override { return {}; }
    bool deleteRow(int row) override;

private:
    const brannock::PlanEntry &entry(int row) const { return m_editor.plan().entries[row]; }
    int acquired() const { return m_tube.count() + 1; }
    bool isTube(int column) const { return column >= 1 && column <= m_tube.count(); }

    PlanEditor &m_editor;
    TubeColumns m_tube;
};

} // namespace plans
