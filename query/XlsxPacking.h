#pragma once
#include <tarnwick/base/Progress.h>

struct lxw_workbook;

namespace query {

/// Packs a workbook into its file. That takes many seconds inside the library, so a copy of this process does it: this
/// one reports to the progress (which may be null), and ends the copy if it is stopped (tarnwick::Cancelled). Returns
/// the library's error number, 0 for none. The workbook must still be freed.
int packBook(lxw_workbook *book, tarnwick::Progress *progress);

} // namespace query
