#include "FailureLog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Maximum length of one entry in characters; longer texts are cut.
constexpr qsizetype kLongestText = 8192;
/// Milliseconds to wait while another program renames the file.
constexpr int kLockWait = 200;

/// Indents all lines after the first, so that no text can look like another entry. Empty lines are removed, and control
/// characters in data become spaces.
QString indented(const QString &text)
{
    QStringList lines;
    for (const QString &line : text.left(kLongestText).split(u'\n', Qt::SkipEmptyParts)) {
        QString cleaned = line;
        for (QChar &c : cleaned)
            if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
                c = u' ';
        if (!cleaned.trimmed().isEmpty())
            lines.append(cleaned.trimmed());
    }
    if (text.size() > kLongestText)
        lines.append(u"... (%1 characters in all)"_s.arg(text.size()));
    return lines.join(u"\n    "_s);
}

/// Renames a full file. Checks its size again under the lock, since another program may have renamed it.
void renameFull(const QString &path, qint64 limit)
{
    if (QFileInfo(path).size() < limit)
        return;
    QLockFile lock(path + u".lock"_s);
    if (!lock.tryLock(kLockWait) || QFileInfo(path).size() < limit)
        return;
    const QString older = path + u".1"_s;
    QFile::remove(older);
    QFile::rename(path, older);
}

} // namespace

QString FailureLog::defaultPath()
{
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state)) // the XDG specification says to ignore relative paths
        state = QDir::homePath() + u"/.local/state"_s;
    return QDir::cleanPath(state) + u"/arvo/failures.log"_s;
}

FailureLog::FailureLog(const QString &program, const QString &path, qint64 limit)
    : m_program(program)
    , m_path(path)
    , m_limit(limit)
{
}

FailureLog::~FailureLog()
{
    writeRepeats();
}

void FailureLog::add(int number, const QString &text)
{
    if (number == m_lastNumber && text == m_lastText) {
        ++m_repeats;
        return;
    }
    writeRepeats();
    m_lastNumber = number;
    m_lastText = text;
    append(number, text);
}

Answer LoggedPrompts::ask(Buttons buttons, const QString &text, int number)
{
    static const QString kNames[] = {u"Yes"_s, u"No"_s, u"Cancel"_s, u"OK"_s}; // by Answer
    const Answer answer = m_prompts.ask(buttons, text, number);
    if (number != 0)
        m_log.add(number, text + u"\nAnswer: "_s + kNames[int(answer)]);
    return answer;
}

void FailureLog::writeRepeats()
{
    if (m_repeats > 0)
        append(m_lastNumber, u"The failure above occurred %1 more times."_s.arg(m_repeats));
    m_repeats = 0;
}

void FailureLog::append(int number, const QString &text)
{
    const QString head = u"%1 %2[%3] %4 "_s.arg(QDateTime::currentDateTime().toString(Qt::ISODateWithMs), m_program)
                             .arg(QCoreApplication::applicationPid())
                             .arg(number);
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    renameFull(m_path, m_limit);
    QFile file(m_path);
    const bool isNew = !file.exists();
    // Unbuffered: each entry is one write, so that entries of several programs do not mix.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return;
    // Private to the user: the texts contain file names and values of the user's data.
    if (isNew)
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(QString(head + indented(text) + u'\n').toUtf8());
}

} // namespace tarnwick
