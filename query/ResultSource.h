#pragma once
#include "QueryResult.h"

#include <tarnwick/GridSource.h>

namespace query {

/// The rows of a result as a table that is only read: for printing.
class ResultSource : public tarnwick::GridSource
{
public:
    /// The result must live as long as this object.
    explicit ResultSource(const QueryResult &result)
        : m_result(&result)
    {
    }

    int rowCount() const override { return int(m_result->rowCount()); }
    int columnCount() const override { return m_result->columnCount(); }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override { return m_result->cellText(row, column); }
    QVariant value(int row, int column) const override;
    QString tip(int row, int column) const override { return m_result->cellTip(row, column); }

private:
    const QueryResult *m_result;
};

} // namespace query
