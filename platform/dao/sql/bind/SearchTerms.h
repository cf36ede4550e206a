#pragma once
#include "Bound.h"

namespace dao::sql::bound {

/// What the conditions of a statement compare the fields of one base table with: the fields by which an index could
/// find its rows.
struct SearchTerms
{
    struct Term
    {
        QString field;
        bool isEqual = false;    ///< compared with single values; false: a range
        bool isConstant = false; ///< with values that are known before rows of other tables are read
    };
    int source = 0; ///< Source::number
    QList<Term> terms;
    /// The fields of ORDER BY, if an index over them could deliver the rows in order.
    QStringList order;
};

/// The terms of all base tables that a SELECT, UPDATE, DELETE or INSERT reads, also in its subqueries. Empty for any
/// other statement. Throws DaoException if the statement cannot be compiled.
QList<SearchTerms> searchTermsOf(const SchemaView &schema, const QString &text);

} // namespace dao::sql::bound
