#pragma once
#include "DatabaseSession.h"

#include <optional>

namespace db {

/// The values of a column of a table as text, sorted by the database, without Nulls: the names that ListOpenDlg offers.
/// Without a connection, or if they cannot be read (1061), reports it and returns an empty optional.
std::optional<QStringList> fetchListNames(DatabaseSession &session, const QString &column, const QString &table);

} // namespace db
