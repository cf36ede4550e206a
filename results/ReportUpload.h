#pragma once
#include "Cal.h"

#include <brannock/Project.h>
#include <brannock/ReportProblems.h>
#include <db/DatabaseSession.h>
#include <tarnwick/base/Progress.h>

namespace db {
class ReportWriter;
class SessionTransaction;
} // namespace db

namespace results {

/// Result of uploading one file. If completed, read = stored + skipped + failed. Otherwise everything was rolled back,
/// and the counts show how far the upload got.
struct UploadSummary
{
    bool completed = false;
    int headers = 0;          ///< header and standard entries, never uploaded
    int read = 0;             ///< result entries processed
    int stored = 0;           ///< rows added
    int skipped = 0;          ///< skipped, since their tube does not exist
    int failed = 0;           ///< could not be stored; the user chose to continue
    int replaced = 0;         ///< old rows of the cal that were deleted first
    QList<int> failedEntries; ///< 1-based positions in the file
    /// What the upload asked about, and why entries could not be stored.
    QList<brannock::ReportProblem> problems;

    /// The number shown to the user. It includes failed entries that the user chose to skip.
    int counted() const { return stored + failed; }
};

/// Uploads one report into table 'report', either all entries or none: checks the tubes, asks about unknown tubes, an
/// existing cal and a different site, and stores the entries in file order in one transaction.
class ReportUpload
{
public:
    /// progress may be null. prompts: null for those of the session. The references must outlive the upload.
    ReportUpload(db::DatabaseSession &session, const brannock::Project &project, tarnwick::Progress *progress = nullptr,
                 tarnwick::UserPrompts *prompts = nullptr);
    ~ReportUpload();

    UploadSummary upload(const brannock::Report &report);

private:
    enum class Next { GoOn, Stop };

    bool checkWritable() const;
    bool checkTubes(const brannock::Report &report);
    QString unknownTubeList(const brannock::Report &report, int &count) const;
    bool isOneCal(const brannock::Report &report) const;
    Next walk(const brannock::Report &report);
    Next enterCal(const brannock::ReportEntry &entry);
    Next testDuplicate(const Cal &cal);
    Next askToReplace(const Cal &cal, qint64 rows);
    Next compareSite(const brannock::ReportEntry &entry);
    void note(const QString &field, const QString &kind, const QString &text);
    Next store(brannock::ReportEntry &entry, int position);
    void setLocationDistance(brannock::ReportEntry &entry) const;
    bool commit(db::SessionTransaction &transaction);
    void undo(db::SessionTransaction &transaction);

    db::DatabaseSession *m_session;
    const brannock::Project *m_project;
    tarnwick::Progress *m_progress;
    tarnwick::UserPrompts &m_prompts;

    // Result of the current upload.
    UploadSummary m_summary;
    std::unique_ptr<db::ReportWriter> m_writer;
    std::vector<qint32> m_tubes; ///< tube index of each entry; empty when the component has no tubes
    bool m_skipUnknownTubes = false;
    bool m_oneCal = false;
    bool m_firstCal = true;
    bool m_siteAsked = false;
    std::optional<Cal> m_cal; ///< current cal
    int m_position = 0;       ///< of the current entry, from 1
};

} // namespace results
