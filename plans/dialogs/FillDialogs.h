#pragma once
#include "FillDialog.h"

namespace plans {

/// Whether fills of that kind have a dialog, by the kind's key.
bool hasFillDialog(QStringView key);
/// Opens the kind's dialog for a new fill. True when the user has ended it with OK.
bool openNewFill(const FillDialogContext &context, QStringView key);
/// Opens the dialog of an entry of the legend.
bool openFill(const FillDialogContext &context, int entry);

} // namespace plans
