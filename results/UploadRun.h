#pragma once
#include "ReportUpload.h"

#include <brannock/EntryProblems.h>
#include <brannock/ReportLog.h>
#include <db/SessionTransaction.h>
#include <tarnwick/FileStatusList.h>

#include <utility>

namespace results {

/// Uploads files one after another, or checks what an upload would do, as the upload dialog and the command line do:
/// keeps the numbers and problems of each file, and the project's log.
///
/// A check is a dry run: the same uploads within one transaction that is rolled back at the end. So the numbers are
/// those of the uploads that would follow with the same answers, also where several files have the same cal. While a
/// check lasts, other programs cannot write.
class UploadRun
{
public:
    enum class Mode { Store, Check };

    /// progress may be null. prompts: null for those of the session. The references must outlive the run.
    UploadRun(db::DatabaseSession &session, const brannock::Project &project, Mode mode,
              tarnwick::Progress *progress = nullptr, tarnwick::UserPrompts *prompts = nullptr);

    /// Uploads one report; its path names the file. An upload is entered into the log; if that fails, this is reported
    /// and the upload goes on.
    UploadSummary upload(const brannock::Report &report);
    /// Uploads the current file of the list, with the user's edits, and marks it done unless this is a check.
    UploadSummary uploadCurrent(tarnwick::FileStatusList &files, const brannock::Report &report);
    /// Of the files so far, in order.
    const QList<brannock::FileOutcome> &outcomes() const { return m_outcomes; }

private:
    void addOutcome(const brannock::Report &report, const UploadSummary &summary);
    QString beginLog(const brannock::Report &report);
    void endLog(const QString &id, bool isCompleted);

    db::DatabaseSession &m_session;
    const brannock::Project &m_project;
    tarnwick::Progress *m_progress;
    tarnwick::UserPrompts &m_prompts;
    brannock::EntryCheck m_check;
    brannock::ReportLog m_log;
    std::optional<db::SessionTransaction> m_dryRun; ///< in a check; rolled back by its destructor
    QList<brannock::FileOutcome> m_outcomes;
};

/// Answers every question with Yes and shows nothing, for a check in a window. Keeps the last failure.
class CheckPrompts : public tarnwick::UserPrompts
{
public:
    void showError(int, int, const QString &text) override { m_failure = text; }
    void showInformation(const QString &text) override { m_failure = text; }
    tarnwick::Answer ask(tarnwick::Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &) override {}
    /// The text of the last error or information since the last call; empty if there was none.
    QString takeFailure() { return std::exchange(m_failure, {}); }

private:
    QString m_failure;
};

/// For an upload that the log shows as interrupted: whether its entries are in the database. Throws the engine's
/// exceptions. Empty if the log does not tell.
std::optional<bool> wasUploaded(dao::Database &database, const brannock::ReportLog::Entry &entry);

/// The state of logged work in words: "stored", "interrupted, not stored". database: tells what became of an
/// interrupted upload; null: not connected. Throws the engine's exceptions.
QString loggedState(const brannock::ReportLog::Entry &entry, dao::Database *database);

} // namespace results
