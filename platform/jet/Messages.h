#pragma once
#include "JetReader.h"

#include <jet/wire/Facts.h>

namespace jet {

/// The texts of this subsystem: each error and remark for the user, made from what the reading process sent.
JetError errorFor(const QString &path, JetError::Reason reason, const QString &detail = {});
JetError errorFor(const QString &path, const wire::Note &note);
Remark remarkFor(const wire::Note &note);

} // namespace jet
