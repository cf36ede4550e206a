#include "Console.h"

#include <csignal>
#include <QHash>
#include <tarnwick/Error.h>
#include <unistd.h>

namespace cli {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

volatile std::sig_atomic_t interrupted = 0;

void onInterrupt(int)
{
    // A second Ctrl+C ends the program at once.
    interrupted = 1;
    std::signal(SIGINT, SIG_DFL);
}

} // namespace

void print(QStringView text)
{
    printBytes(text.toUtf8());
}

void printBytes(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void printError(QStringView text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

void flushOutput()
{
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        throw tarnwick::Error(u"Could not write to the standard output."_s);
}

ConsolePrompts::ConsolePrompts(const QList<Answer> &answers, Tell tell, const QString &advice)
    : m_answers(answers)
    , m_tell(tell)
    , m_advice(advice)
{
}

void ConsolePrompts::say(const QString &text) const
{
    if (m_tell == Tell::AsResult)
        print(text + u'\n');
    else
        printError(text + u'\n');
}

void ConsolePrompts::showError(int, int number, const QString &text)
{
    ++m_errorsShown;
    const QString lead = number > 0 ? u"error %1: "_s.arg(number) : u"error: "_s;
    printError(lead + text + u'\n');
}

void ConsolePrompts::showInformation(const QString &text)
{
    say(text);
}

Answer ConsolePrompts::ask(Buttons buttons, const QString &text, int number)
{
    Answer answer = declined(buttons);
    const bool answered = !m_answers.isEmpty();
    if (answered) {
        answer = m_answers.size() > 1 ? m_answers.takeFirst() : m_answers.first();
        if (buttons == Buttons::OkCancel && answer == Answer::Yes)
            answer = Answer::Ok;
        const bool isRefusal = answer == Answer::No || answer == Answer::Cancel;
        if (isRefusal && buttons != Buttons::YesNoCancel)
            answer = declined(buttons);
    }
    if (m_tell != Tell::Failures || !answered) {
        static const QHash<Answer, QString> names = {
            {Answer::Yes, u"Yes"_s}, {Answer::No, u"No"_s}, {Answer::Cancel, u"Cancel"_s}, {Answer::Ok, u"OK"_s}};
        const QString prefix = number > 0 ? u"question %1: "_s.arg(number) : u"question: "_s;
        say(prefix + text + u"\nanswered: "_s + names[answer] + (answered ? QString() : u" ("_s + m_advice + u')'));
    }
    return answer;
}

void ConsolePrompts::showStatus(const QString &text)
{
    m_lastStatus = text;
    if (m_tell != Tell::Failures)
        say(text);
}

ConsoleProgress::ConsoleProgress()
    : m_shows(isatty(STDERR_FILENO))
{
    std::signal(SIGINT, onInterrupt);
}

ConsoleProgress::~ConsoleProgress()
{
    std::signal(SIGINT, SIG_DFL);
    if (m_shown)
        printError(u"\r\033[K");
}

void ConsoleProgress::report(qint64 done, qint64 total, const QString &what)
{
    if (!m_shows)
        return;
    m_shown = true;
    printError(total > 0 ? u"\r\033[K%1 %2 of %3"_s.arg(what).arg(done).arg(total)
                         : u"\r\033[K%1 %2"_s.arg(what).arg(done));
}

bool ConsoleProgress::cancelled()
{
    return interrupted != 0;
}

} // namespace cli
