#pragma once
#include "Arguments.h"

namespace cli {

/// For commands whose option --format is "text" (the default) or "json": true for the latter. Throws UsageError for any
/// other.
inline bool wantsJson(const Arguments &arguments)
{
    const QString form = arguments.value(u"format", QStringLiteral("text"));
    if (form != u"text" && form != u"json")
        throw UsageError(QStringLiteral("--format is text or json."));
    return form == u"json";
}

} // namespace cli
