#pragma once
#include "JetContent.h"
#include "JetError.h"

#include <tarnwick/base/Progress.h>

#include <memory>

namespace jet {

/// Returns true if the file begins like a Jet database, including the newer format; reading such a file then reports
/// why it is not supported.
bool isJetFile(const QString &path);

/// Reads a Jet 3 or Jet 4 file in a separate process with limits on time and memory, so that no damaged file can harm
/// this process. The file is not written to. Missing content is listed in remarks(); a caller must check them before it
/// presents the content as complete.
class JetReader
{
public:
    explicit JetReader(const QString &path, const ReadOptions &options = {});
    ~JetReader();
    JetReader(const JetReader &) = delete;
    JetReader &operator=(const JetReader &) = delete;

    /// Reads the whole file. Throws JetError, or tarnwick::Cancelled if progress (may be null) requests it; it is
    /// checked about ten times a second. If it throws, the data passed to the sink is incomplete and must be discarded.
    void read(Sink &sink, tarnwick::Progress *progress = nullptr);
    /// Reads only the schema; the time does not depend on the file's size. There are no remarks about rows.
    Schema readSchema(tarnwick::Progress *progress = nullptr);

    /// Remarks of the last reading.
    const QList<Remark> &remarks() const { return m_remarks; }
    /// Returns true if there is a remark of that kind.
    bool hasRemark(Remark::Kind kind) const;

private:
    void run(Sink &sink, tarnwick::Progress *progress, bool schemaOnly);

    QString m_path;
    ReadOptions m_options;
    QList<Remark> m_remarks;
};

} // namespace jet
