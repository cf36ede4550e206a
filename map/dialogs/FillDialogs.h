#pragma once
#include "FillDialog.h"

namespace map {

/// True if the kind with this key has a dialog.
bool hasFillDialog(QStringView key);
/// Opens the dialog of a legend entry.
bool openNewFill(const FillDialogContext &context, QStringView key);
/// Opens the dialog of an entry of the legend.
bool openFill(const FillDialogContext &context, int entry);

} // namespace map
