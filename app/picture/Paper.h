#pragma once
#include <optional>
#include <QPageSize>
#include <QStringList>

namespace app {

/// The paper that is usual where the user is, by the locale of the session (LC_ALL, LC_PAPER, LANG): Letter in North
/// America and some other countries, else A4. For a page that no printer or setting gives a size.
QPageSize defaultPaper();

/// The paper of that name ("A4", "Letter"), whatever its case.
std::optional<QPageSize> paperOfName(const QString &name);

} // namespace app
