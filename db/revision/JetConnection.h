#pragma once
#include "ConnectContext.h"
#include "ConversionRequest.h"

namespace db {

/// Brings the session's database up to date and asks through the request. Returns false if none of the changes was
/// kept.
using BringUpToDate = bool (*)(DatabaseSession &session, ConversionRequest &request, const ConnectContext &context);

/// Opens a Jet file for the session. Returns false, without doing anything, if it is not a Jet file. Its content is
/// read into a read-only working copy in this program's format, with current views and aliases; losses are reported. If
/// the file and its folder are writable and no other program has the file open, the user is asked whether to convert
/// it. If yes, the file is backed up, a copy is converted beside it and replaces it in one step, so the file is always
/// complete, old or new. If another program is working on the file, waits for it; if that program has changed the file,
/// it is read again without asking the user again. Throws dao::DaoException if the file cannot be read completely,
/// tarnwick::Cancelled.
bool openJetFile(DatabaseSession &session, const QString &path, const ConnectContext &context,
                 BringUpToDate bringUpToDate);

} // namespace db
