#pragma once
#include <optional>
#include <QPageSize>
#include <QStringList>

namespace tarnwick {

/// Usual paper of the locale of the session (LC_ALL, LC_PAPER, LANG): Letter in North America and some other countries,
/// otherwise A4. Used if no printer or setting gives a size.
QPageSize defaultPaper();

/// Paper with that name ("A4", "Letter"), compared without case.
std::optional<QPageSize> paperOfName(const QString &name);

} // namespace tarnwick
