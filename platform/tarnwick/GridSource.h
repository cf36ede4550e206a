#pragma once
#include "ColourRef.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

namespace tarnwick {

/// Horizontal alignment of a column. The numbers are stored in display formats.
enum class ColumnAlign : qint32 { Center = 0, Left = 1, Right = 2 };

/// Display properties of one column of a table.
struct GridColumn
{
    /// Editor used for the cells.
    enum class Editor {
        Line,   ///< a line of text
        Choice, ///< a list of choices; also other texts if hasFreeText is set
        Check,  ///< check box; setText() receives "1" or "0"
        Date    ///< a line of text and a calendar
    };

    QString title = {};
    int width = 0; ///< in characters; 0 or less: width of the title, at least 8
    ColumnAlign align = ColumnAlign::Left;
    Editor editor = Editor::Line;
    QStringList choices = {}; ///< for Editor::Choice
    bool hasFreeText = false; ///< for Editor::Choice: texts other than the choices are accepted
};

/// Data of a table. Cells are read when they are shown, so a source stores no texts. Rows and columns count from 0. A
/// source reports failed changes through the prompts and returns false.
class GridSource
{
public:
    virtual ~GridSource() = default;

    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual GridColumn column(int column) const = 0;

    /// The column as it is for editing one cell; for columns whose cells have different types.
    virtual GridColumn cellEditor(int, int column) const { return this->column(column); }

    /// Text of the cell for display, copying and find.
    virtual QString text(int row, int column) const = 0;
    /// Value of the cell for sorting, filtering and sums: a number, date, bool or text; invalid for an empty cell.
    virtual QVariant value(int row, int column) const { return text(row, column); }
    /// Initial text of the cell's editor.
    virtual QString editText(int row, int column) const { return text(row, column); }
    /// Text that is shown across all columns of a row that has no cells, such as a header line; empty for other rows.
    virtual QString lineText(int) const { return {}; }
    virtual RowColours colours(int) const { return {}; }
    /// Tool tip of the cell; empty for none.
    virtual QString tip(int, int) const { return {}; }

    /// Reason why the cell cannot be edited, as a sentence; empty if it can.
    virtual QString whyNotEditable(int row, int column) const;
    /// Stores an edited text. Returns false if it was refused; the cell is then unchanged.
    virtual bool setText(int row, int column, const QString &text);
    /// Reason why no row can be inserted, as a sentence; empty if one can.
    virtual QString whyNotInsertable() const;
    /// Inserts an empty row before `row`; row may be rowCount().
    virtual bool insertRow(int row);
    /// Reason why the row cannot be deleted, as a sentence; empty if it can.
    virtual QString whyNotDeletable(int row) const;
    /// Returns true if the row was removed from the source.
    virtual bool deleteRow(int row);
    /// Deletes these rows at once. Returns false if the source cannot, having deleted none: the rows are then deleted
    /// by deleteRow(), the last one first.
    virtual bool deleteRows(const QList<int> &) { return false; }
    /// Calls work, which changes several rows for one command of the user. A source with undo makes them one step.
    virtual void asOneChange(const std::function<void()> &work) { work(); }
};

} // namespace tarnwick
