#pragma once
#include "JetContent.h"
#include "JetError.h"

#include <jet/wire/Facts.h>

namespace jet {

/// The texts of this subsystem: errors and remarks for the user, made from the codes sent by the reading process.
JetError errorFor(const QString &path, JetError::Reason reason, const QString &detail = {});
JetError errorFor(const QString &path, const wire::Note &note);
Remark remarkFor(const wire::Note &note);

} // namespace jet
