#pragma once
#include "ConnectDatabase.h"
#include "ConversionRequest.h"

namespace db {

/// Brings the session's database up to date and asks through the request. Returns false if none of the changes was
/// kept.
using BringUpToDate = bool (*)(DatabaseSession &session, ConversionRequest &request, const ConnectContext &context);

/// Opens a Jet file for the session; false when the file is none, and nothing was done. Its content is read into a
/// working copy in this program's own format, which can only be read, with its views and aliases up to date; what could
/// not be carried over is told. Where the file and its folder can be written to, and no other program has the file
/// open, the user is asked whether to convert it: on yes it is backed up, its copy is brought up to date beside it, and
/// takes its place in one step. So the file is the old one or the new one, whole, whatever happens. Another program
/// that works on the file is waited for; when it has changed the file, the file is read again, and the user is not
/// asked twice. Throws dao::DaoException for a file that cannot be read whole, dao::DaoCancelled and
/// tarnwick::Cancelled.
bool openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate);

} // namespace db
