#pragma once
#include "PlanGrid.h"

#include <plans/storage/ListEditor.h>

namespace plans {

/// The entries of a list as rows of a table. Entry numbers and labels can be typed.
class ListGrid : public EditedGrid
{
public:
    explicit ListGrid(ListEditor &editor)
        : m_editor(editor)
        , m_tube(editor.component())
    {
    }
    int rowCount() const override { return int(m_editor.list().entries.size()); }
    int columnCount() const override { return m_tube.count() + 2; }
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
    const ListFillTube &entry(int row) const { return m_editor.list().entries[row]; }
    bool isTube(int column) const { return column >= 1 && column <= m_tube.count(); }

    ListEditor &m_editor;
    TubeColumns m_tube;
};

/// The lines of a list file as they were parsed. Lines that name no tube are red.
class ParsedLineGrid : public tarnwick::GridSource
{
public:
    explicit ParsedLineGrid(const ListEditor &editor)
        : m_editor(editor)
    {
    }
    int rowCount() const override { return int(m_editor.parsed().lines().size()); }
    int columnCount() const override { return 3; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;

private:
    const ListFillLine &line(int row) const { return m_editor.parsed().lines()[row]; }
    const ListEditor &m_editor;
};

} // namespace plans
