#pragma once
#include "Prompts.h"

#include <QByteArray>

namespace tarnwick {

/// Log file of the failures shown to the user, for support. Each entry has the time, the program, the process, the
/// message number (0: none) and the text, with the lines after the first indented. If the file reaches its size limit,
/// it is renamed, replacing the previously renamed one, and a new file is started. Several programs may write to it at
/// the same time.
///
/// If the log cannot be written, this is not reported, since the user has already seen the messages.
class FailureLog
{
public:
    static constexpr qint64 kDefaultLimit = 1024 * 1024;

    /// "arvo/failures.log" in the user's state folder (XDG_STATE_HOME, else .local/state in the home folder).
    static QString defaultPath();

    /// program: source name in each entry. limit: in bytes.
    explicit FailureLog(const QString &program, const QString &path = defaultPath(), qint64 limit = kDefaultLimit);
    /// Writes how often the last entry was repeated.
    ~FailureLog();
    FailureLog(const FailureLog &) = delete;
    FailureLog &operator=(const FailureLog &) = delete;

    /// Writes an entry. If the failure is equal to the previous one, it is only counted.
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

/// Passes all calls on to other prompts, and writes every error to the log before it is shown. A question with a number
/// is a failure too, and is written with its answer.
class LoggedPrompts : public UserPrompts
{
public:
    /// prompts must outlive this object.
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
    Answer ask(Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &text) override { m_prompts.showStatus(text); }

private:
    UserPrompts &m_prompts;
    FailureLog m_log;
};

} // namespace tarnwick
