#pragma once
#include "Prompts.h"

#include <QByteArray>

namespace tarnwick {

/// A text file of the failures that were shown to the user, for support and for later. Each entry has its time, the
/// program, the process, the message number (0: none) and the text, with the lines after the first indented. The file
/// is bounded: when it reaches its limit it is renamed, in place of the one that was renamed before, and a new one
/// begins. Several programs may write to it at the same time.
///
/// A log that cannot be written is left alone without a message, since what it would hold was shown to the user.
class FailureLog
{
public:
    static constexpr qint64 kDefaultLimit = 1024 * 1024;

    /// "arvo/failures.log" in the user's state folder (XDG_STATE_HOME, else .local/state in the home folder).
    static QString defaultPath();

    /// program: what each entry names as its source. limit: bytes.
    explicit FailureLog(const QString &program, const QString &path = defaultPath(), qint64 limit = kDefaultLimit);
    /// Writes how often the last entry was repeated.
    ~FailureLog();
    FailureLog(const FailureLog &) = delete;
    FailureLog &operator=(const FailureLog &) = delete;

    /// Writes an entry. A failure that is the same as the one before is counted, not written again.
    void add(int number, const QString &text);

private:
    void writeRepeats();
    void append(int number, const QString &text);

    QString m_program;
    QString m_path;
    qint64 m_limit;
    int m_lastNumber = 0;
    QString m_lastText;
    qint64 m_repeats = 0;
};

/// Passes everything on to other prompts, and writes every error to the log before it is shown.
class LoggedPrompts : public UserPrompts
{
public:
    /// prompts is borrowed and outlives this.
    LoggedPrompts(UserPrompts &prompts, const QString &program)
        : m_prompts(prompts)
        , m_log(program)
    {
    }

    void showError(int severity, int number, const QString &text) override
    {
        m_log.add(number, text);
        m_prompts.showError(severity, number, text);
    }
    void showInformation(const QString &text) override { m_prompts.showInformation(text); }
    Answer ask(Buttons buttons, const QString &text, int number) override
    {
        return m_prompts.ask(buttons, text, number);
    }
    void showStatus(const QString &text) override { m_prompts.showStatus(text); }

private:
    UserPrompts &m_prompts;
    FailureLog m_log;
};

} // namespace tarnwick
