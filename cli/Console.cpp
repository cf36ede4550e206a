#include "Console.h"

#include <csignal>
#include <QCoreApplication>
#include <QRegularExpression>
#include <tarnwick/base/Error.h>
#include <tarnwick/TerminalText.h>
#include <unistd.h>

namespace cli {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace {

const QByteArray kClearLine = QByteArrayLiteral("\r\033[K");

volatile std::sig_atomic_t interrupted = 0;

/// Messages printed of each kind; the others are only counted.
constexpr int kPrintedOfAKind = 10;

/// Reduces a message to its kind, so that messages that differ only in numbers and names are equal: the first line
/// without these, and the number of the engine's error.
QString kindOf(const QString &text)
{
    static const QRegularExpression names(u"\"[^\"]*\""_s);
    static const QRegularExpression numbers(u"[0-9][0-9,.]*"_s);
    static const QRegularExpression engineNumber(u"\\n\\[[0-9]+\\]"_s);
    QString kind = text.section(u'\n', 0, 0);
    // If the first line is a heading, the kind includes the next line.
    if (kind.endsWith(u':'))
        kind = text.section(u'\n', 0, 1).simplified();
    kind.replace(names, u"\"...\""_s).replace(numbers, u"..."_s);
    const QString engine = engineNumber.match(text).captured().trimmed();
    return engine.isEmpty() ? kind : kind + u' ' + engine;
}

void onInterrupt(int)
{
    // With the default handler restored, a second Ctrl+C ends the program at once.
    interrupted = 1;
    std::signal(SIGINT, SIG_DFL);
}

} // namespace

static void write(const QByteArray &bytes, std::FILE *stream)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
}

void print(QStringView text)
{
    write(tarnwick::terminalText(text).toUtf8(), stdout);
}

void printData(const QByteArray &bytes)
{
    static const bool isTerminal = isatty(STDOUT_FILENO);
    if (isTerminal)
        print(QString::fromUtf8(bytes));
    else
        write(bytes, stdout);
}

void printError(QStringView text)
{
    write(tarnwick::terminalText(text).toUtf8(), stderr);
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

ConsolePrompts::~ConsolePrompts()
{
    for (const QString &kind : std::as_const(m_kindsInOrder))
        if (const int more = m_kinds[kind] - kPrintedOfAKind; more > 0)
            printError(u"%1\n    (%2 more like this, not printed)\n"_s.arg(kind).arg(more));
}

bool ConsolePrompts::isPrinted(const QString &lead, const QString &text)
{
    const QString kind = lead + kindOf(text);
    int &count = m_kinds[kind];
    if (++count == 1)
        m_kindsInOrder.append(kind);
    return count <= kPrintedOfAKind;
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
    if (isPrinted(lead, text))
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
        if (isPrinted(prefix, text))
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

QString programName()
{
    return u"arvo-cli "_s + QCoreApplication::arguments().value(1);
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
        write(kClearLine, stderr);
}

void ConsoleProgress::report(qint64 done, qint64 total, const QString &what)
{
    if (!m_shows)
        return;
    m_shown = true;
    QString count = total > 0 ? u"%1 of %2"_s.arg(done).arg(total) : QString::number(done);
    if (total == 0 && done == 0)
        count.clear();
    write(kClearLine, stderr);
    printError(u"%1 %2"_s.arg(what, count));
}

bool ConsoleProgress::cancelled()
{
    return interrupted != 0;
}

} // namespace cli
