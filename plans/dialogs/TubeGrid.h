#pragma once
#include <functional>
#include <plans/storage/EntriesEditor.h>
#include <tarnwick/GridSource.h>

namespace plans {

/// The entries of a plan or tube list as rows of a table: number, section (if the component has sections), row and
/// column of the tube, and what a derived table adds. Tubes are typed by their labels; those that do not exist are red.
class TubeGrid : public tarnwick::GridSource
{
public:
    /// The editor must outlive the table.
    explicit TubeGrid(EntriesEditor &editor);

    /// Called after the user changed a cell or deleted rows, once for each command.
    std::function<void()> changed;

    int rowCount() const override { return m_editor.count(); }
    int columnCount() const override { return firstFurther() + furtherCount(); }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;
    QString whyNotDeletable(int) const override { return {}; }
    bool deleteRow(int row) override;
    void asOneChange(const std::function<void()> &work) override;

protected:
    static constexpr int kEntry = 0; ///< the column of numbers
    bool isTube(int column) const { return column > kEntry && column < firstFurther(); }
    /// The number of an entry as the table shows it.
    virtual int shownNumber(int row) const = 0;
    virtual int furtherCount() const = 0;
    /// A column behind those of the tube, and its texts. index: from 0.
    virtual tarnwick::GridColumn furtherColumn(int index) const = 0;
    virtual QString furtherText(int row, int index) const = 0;
    /// Reports a change.
    void tell();

private:
    int firstFurther() const { return int(m_axes.size()) + 1; }
    ellery::Axis axis(int column) const { return m_axes[column - 1]; }
    bool exists(int row) const { return m_editor.component().findTube(m_editor.address(row)) >= 0; }

    EntriesEditor &m_editor;
    QList<ellery::Axis> m_axes;
    bool m_isInChange = false;
};

} // namespace plans
