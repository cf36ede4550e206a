#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <tarnwick/base/Progress.h>
#include <tarnwick/Prompts.h>

#include <cstdio>

namespace cli {

/// Prints UTF-8 to the standard streams for people: control characters are replaced by visible ones
/// (tarnwick::terminalText). If the output is closed or full, that is an error.
void print(QStringView text);
inline void print(const QString &text)
{
    print(QStringView(text));
}
/// Prints UTF-8 for other programs: unchanged, unless the output is a terminal.
void printData(const QByteArray &bytes);
inline void printData(const QString &text)
{
    printData(text.toUtf8());
}
void printError(QStringView text);
inline void printError(const QString &text)
{
    printError(QStringView(text));
}
/// Throws tarnwick::Error if part of the output could not be written.
void flushOutput();

/// The prompts of the command line. Messages go to standard error unless a command selects otherwise. Questions are
/// answered from the command's flags; the program never waits for input.
///
/// A batch can fail thousands of times in the same way. Of each kind of message only the first ones are printed; the
/// others are counted, and the counts are printed at the end.
class ConsolePrompts : public tarnwick::UserPrompts
{
public:
    enum class Tell {
        Failures,   ///< errors, information, and questions without an answer
        Everything, ///< also status lines and answered questions
        AsResult    ///< everything except errors goes to standard output, as the command's result
    };

    /// answers: used in order; the last one answers all further questions. If empty, every question is answered Cancel
    /// (or No if it has no Cancel) and printed as the reason of the failure, with a hint how to answer it.
    explicit ConsolePrompts(const QList<tarnwick::Answer> &answers = {}, Tell tell = Tell::Failures,
                            const QString &advice = {});
    /// Prints how many messages of each kind were not printed.
    ~ConsolePrompts() override;
    ConsolePrompts(const ConsolePrompts &) = delete;
    ConsolePrompts &operator=(const ConsolePrompts &) = delete;

    void showError(int severity, int number, const QString &text) override;
    void showInformation(const QString &text) override;
    tarnwick::Answer ask(tarnwick::Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &text) override;

    int errorsShown() const { return m_errorsShown; }
    const QString &lastStatus() const { return m_lastStatus; }

private:
    void say(const QString &text) const;
    /// Counts a message under its kind. Returns false if enough messages of that kind were printed.
    bool isPrinted(const QString &lead, const QString &text);

    QList<tarnwick::Answer> m_answers;
    Tell m_tell;
    QString m_advice;
    int m_errorsShown = 0;
    QString m_lastStatus;
    QHash<QString, int> m_kinds; ///< number of messages of each kind, printed or not
    QStringList m_kindsInOrder;
};

/// "arvo-cli" and the command: the source name in the log of failures.
QString programName();

/// Writes progress to standard error if that is a terminal. Ctrl+C stops the work at its next check for cancellation.
class ConsoleProgress : public tarnwick::Progress
{
public:
    ConsoleProgress();
    ~ConsoleProgress() override;
    void report(qint64 done, qint64 total, const QString &what) override;
    bool cancelled() override;

private:
    bool m_shows;
    bool m_shown = false;
};

} // namespace cli
