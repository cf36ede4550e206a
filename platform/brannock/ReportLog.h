#pragma once
#include <QJsonObject>
#include <QList>
#include <QString>

namespace brannock {

/// The log of a project's uploads and conversions: report_log.jsonl in the project's folder, one JSON object per line.
/// Each piece of work adds a line when it begins and one when it has ended, so that work which was interrupted can be
/// recognised. Several programs may add lines at the same time.
class ReportLog
{
public:
    struct Entry
    {
        enum class State {
            Stored,
            NotStored,  ///< the user or a failure stopped it; nothing was changed
            Interrupted ///< it has not ended: it is running, or its program was killed
        };
        QString id;
        QString time; ///< of the beginning, ISO 8601 in UTC
        QString user; ///< of the system
        QString work; ///< "upload" or "conversion"
        QString file;
        State state = State::Interrupted;
        int entries = 0;
        int stored = 0;
        int skipped = 0;
        int problems = 0;
        QJsonObject mark; ///< what the work noted to find out later whether it was stored
    };

    explicit ReportLog(const QString &projectFolder)
        : m_path(projectFolder + QStringLiteral("/report_log.jsonl"))
    {
    }
    const QString &path() const { return m_path; }

    /// Adds the beginning of some work; returns its id. Throws tarnwick::FileError.
    QString begin(const QString &work, const QString &file, const QJsonObject &mark = {}) const;
    /// Adds the end of the work that entry.id names: its state and numbers. Throws tarnwick::FileError.
    void end(const Entry &entry) const;

    /// In the order in which the work began. Lines that cannot be read are passed over and counted in damaged. Throws
    /// tarnwick::FileError; a missing file is an empty log.
    QList<Entry> entries(int *damaged = nullptr) const;

private:
    QString m_path;
};

/// "stored", "not stored", "interrupted".
QString stateName(ReportLog::Entry::State state);

} // namespace brannock
