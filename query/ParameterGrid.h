#pragma once
#include "ParameterResolver.h"

#include <tarnwick/GridSource.h>

namespace query {

/// The parameters of a query as rows of a table, whose values can be edited in their types. Values that were given to a
/// parameter of the same name before, also in other queries, are offered.
class ParameterGrid : public tarnwick::GridSource
{
public:
    enum Column { Name, Value, Source, Type, ColumnCount };

    /// All references must outlive the object.
    ParameterGrid(QList<ParameterEntry> &entries, const QString &queryName, const QueryContext &context,
                  tarnwick::UserPrompts &prompts);

    int rowCount() const override { return int(m_entries.size()); }
    int columnCount() const override { return ColumnCount; }
    tarnwick::GridColumn column(int column) const override;
    tarnwick::GridColumn cellEditor(int row, int column) const override;
    QString text(int row, int column) const override;
    /// A value that is missing, or whose text has another type, is marked.
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

    /// First parameter without a value, or 0.
    int firstToAsk() const;
    /// What is wrong with the parameter's value, for the message line; empty if nothing is.
    QString problem(int row) const;

private:
    QList<ParameterEntry> &m_entries;
    QString m_queryName;
    const QueryContext &m_context;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace query
