#pragma once
#include "Target.h"

#include <query/QueryDocument.h>
#include <query/QueryResult.h>

namespace cli {

/// Writes the rows of a result as a PDF with the print layout of its query, as the window prints it, on the paper of
/// the session's locale. Throws tarnwick::Error and Cancelled.
void writePdf(Target &target, const query::QueryDocument &document, const query::QueryResult &result,
              const QString &path, tarnwick::Progress *progress);

} // namespace cli
