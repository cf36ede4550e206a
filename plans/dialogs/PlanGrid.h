#pragma once
#include "TubeGrid.h"

#include <plans/storage/PlanEditor.h>

namespace plans {

/// The entries of a plan as rows of a table, with what is acquired and analyzed.
class PlanGrid : public TubeGrid
{
public:
    explicit PlanGrid(PlanEditor &editor)
        : TubeGrid(editor)
        , m_editor(editor)
    {
    }
    QString whyNotEditable(int row, int column) const override;

protected:
    int shownNumber(int row) const override { return entry(row).entryNum + 1; }
    int furtherCount() const override { return 2; }
    tarnwick::GridColumn furtherColumn(int index) const override;
    QString furtherText(int row, int index) const override;

private:
    const brannock::PlanEntry &entry(int row) const { return m_editor.plan().entries[row]; }

    PlanEditor &m_editor;
};

} // namespace plans
