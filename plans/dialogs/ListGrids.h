#pragma once
#include "TubeGrid.h"

#include <plans/storage/ListEditor.h>

namespace plans {

/// The entries of a list as rows of a table, with the symbols of the tubes. Entry numbers can be typed, too.
class ListGrid : public TubeGrid
{
public:
    explicit ListGrid(ListEditor &editor)
        : TubeGrid(editor)
        , m_editor(editor)
    {
    }
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

protected:
    int shownNumber(int row) const override { return m_editor.list().entries[row].entryNum; }
    int furtherCount() const override { return 1; }
    tarnwick::GridColumn furtherColumn(int index) const override;
    QString furtherText(int row, int index) const override;

private:
    ListEditor &m_editor;
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
