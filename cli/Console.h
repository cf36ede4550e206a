#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <tarnwick/Progress.h>
#include <tarnwick/Prompts.h>

#include <cstdio>

namespace cli {

/// UTF-8 to the standard streams, for people: control characters become visible signs (tarnwick::terminalText). A
/// closed or full output is an error, never silence.
void print(QStringView text);
inline void print(const QString &text)
{
    print(QStringView(text));
}
/// UTF-8 for other programs: as it is, unless the output is a terminal.
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
/// Throws tarnwick::Error when something of the output was lost.
void flushOutput();

/// The prompts of the command line. What is said goes to the standard error stream, where a command does not say
/// otherwise; questions are answered from the command's flags, never by waiting.
///
/// A batch may fail thousands of times in the same way: of each kind of message the first ones are printed, the others
/// are counted, and the counts are printed at the end.
class ConsolePrompts : public tarnwick::UserPrompts
{
public:
    enum class Tell {
        Failures,   ///< errors, information, and questions without an answer
        Everything, ///< status lines and answered questions too
        AsResult    ///< everything but errors to the standard output: it is what the command is asked for
    };

    /// answers: given in order, the last one for all further questions; none: every question is answered Cancel, or No
    /// where there is no Cancel, and is shown as the reason of the failure, with the advice how to answer it.
    explicit ConsolePrompts(const QList<tarnwick::Answer> &answers = {}, Tell tell = Tell::Failures,
                            const QString &advice = {});
    /// Prints how many messages of each kind were left out.
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
    /// Counts a message under its kind. False when enough of that kind were printed.
    bool isPrinted(const QString &lead, const QString &text);

    QList<tarnwick::Answer> m_answers;
    Tell m_tell;
    QString m_advice;
    int m_errorsShown = 0;
    QString m_lastStatus;
    QHash<QString, int> m_kinds; ///< messages of each kind, printed or not
    QStringList m_kindsInOrder;
};

/// "arvo-cli" and the command, as the log of failures names its source.
QString programName();

/// Writes progress to standard error when that is a terminal. Ctrl+C stops the work at its next look.
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
