#pragma once
#include <QString>
#include <QStringList>
#include <QVariant>

namespace tarnwick {

/// Horizontal alignment of a column. The numbers are those of stored display formats.
enum class ColumnAlign : qint32 { Center = 0, Left = 1, Right = 2 };

/// One column of a table as it is shown.
struct GridColumn
{
    /// How a cell is edited.
    enum class Editor {
        Line,   ///< a line of text
        Choice, ///< one of choices, or another text where hasFreeText is set
        Check,  ///< a mark; the texts are those of setText(): "1" and "0"
        Date    ///< a line of text with a calendar beside it
    };

    QString title = {};
    int width = 0; ///< in characters; 0 or less: the width of the title, at least 8
    ColumnAlign align = ColumnAlign::Left;
    Editor editor = Editor::Line;
    QStringList choices = {}; ///< of Editor::Choice
    bool hasFreeText = false; ///< Editor::Choice: texts that are not among the choices are taken, too
};

/// Colours of one row, 0x00BBGGRR. Black on white stands for the colours of the theme.
struct RowColours
{
    quint32 foreground = 0x000000;
    quint32 background = 0xFFFFFF;
    bool operator==(const RowColours &) const = default;
};

/// The rows behind a table of the program. Cells are read when they are shown, so a source keeps no texts. Rows and
/// columns count from 0. A source reports failures of changes through the prompts and returns false.
class GridSource
{
public:
    virtual ~GridSource() = default;

    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual GridColumn column(int column) const = 0;

    /// The cell as it is shown, copied and found.
    virtual QString text(int row, int column) const = 0;
    /// The cell as it is sorted, filtered and summed: a number, date, bool or text; invalid for an empty cell.
    virtual QVariant value(int row, int column) const { return text(row, column); }
    /// The text that an editor starts with.
    virtual QString editText(int row, int column) const { return text(row, column); }
    virtual RowColours colours(int) const { return {}; }
    /// More about the cell, shown when the mouse rests on it; empty for none.
    virtual QString tip(int, int) const { return {}; }

    /// Why the cell cannot be edited, as a sentence; empty when it can.
    virtual QString whyNotEditable(int row, int column) const;
    /// Stores an edited text. False when it was refused; the cell is then as before.
    virtual bool setText(int row, int column, const QString &text);
    /// Why no row can be inserted, as a sentence; empty when one can.
    virtual QString whyNotInsertable() const;
    /// Inserts an empty row before `row`; row may be rowCount().
    virtual bool insertRow(int row);
    /// Why the row cannot be deleted, as a sentence; empty when it can.
    virtual QString whyNotDeletable(int row) const;
    /// True when the row has left the source.
    virtual bool deleteRow(int row);
};

} // namespace tarnwick
