#pragma once
#include "ResultSource.h"

#include <utility>
#include <vector>

namespace query {

/// What the user may do with the rows of a result.
enum class TableMode {
    Read = 1, ///< look, sort, filter, copy, print, export
    Edit = 2  ///< also edit cells, delete and insert rows, as far as the query allows
};

/// The rows of a result as a table on the screen, with edits that go straight to the database. The result's change
/// listener is told about them.
class ResultGrid : public ResultSource
{
public:
    /// The result must live as long as this object.
    ResultGrid(QueryResult &result, TableMode mode, tarnwick::UserPrompts &prompts);

    /// Call when the user begins to edit a cell of the row: what another program changes from now on is not
    /// overwritten. Failures are left to setText().
    void beginEdit(int row);

    // tarnwick::GridSource. A cell that cannot be read shows "#Error" and tells why in its tip.
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    QString editText(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;
    QString whyNotInsertable() const override;
    bool insertRow(int row) override;
    QString whyNotDeletable(int row) const override;
    bool deleteRow(int row) override;
    /// After the first failure the rest of the work changes nothing.
    void asOneChange(const std::function<void()> &work) override;

    /// Call before the rows of another run are shown.
    void forgetShown();
    /// Whether a cell was shown without its text since the last call, because the result could not be read.
    bool takeBlanks() { return std::exchange(m_hasBlanks, false); }

    /// Number of columns from the left that say which tube a row belongs to: "sec", "row", "col".
    int addressColumns() const;

private:
    /// Text of a cell that was shown, for repainting while the result cannot be read.
    struct Shown
    {
        int row = -1;
        int column = -1;
        QString text;
    };

    bool has(int row, int column) const;
    /// Reason why nothing can be changed; empty if rows can be.
    QString whyReadOnly() const;
    QString whyNotEditable(int column) const;
    /// The two words of a Boolean column; empty if its format has none.
    QStringList booleanWords(int column) const;
    Shown &shownCell(int row, int column) const;

    QueryResult &m_result;
    TableMode m_mode;
    tarnwick::UserPrompts &m_prompts;
    bool m_isRefusalShown = false; ///< the status line tells of a text that was not stored
    int m_editedRow = -1;
    QList<dao::Value> m_seen; ///< values of the edited row when the edit began
    bool m_isGrouped = false; ///< within asOneChange()
    bool m_isStopped = false; ///< it has failed
    mutable std::vector<Shown> m_shown;
    mutable bool m_hasBlanks = false;
};

} // namespace query
