#pragma once
#include <dao/values/Schema.h>

#include <QSet>

namespace dao::store {

/// Names are compared without regard to case.
inline QString folded(QStringView name)
{
    return name.toString().toCaseFolded();
}

/// A table as stored in the catalog.
struct StoredTable
{
    qint64 id = 0; ///< in order of creation
    TableInfo info;
    /// Case-folded names of fields that became required while rows had no value in them. These rows are kept; triggers
    /// instead of NOT NULL refuse any later write without a value.
    QSet<QString> lateRequired;
};

} // namespace dao::store
