#include "Prompts.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

void RecordingPrompts::showError(int /*severity*/, int number, const QString &text)
{
    m_entries.append({Entry::Kind::Error, number, text});
}

void RecordingPrompts::showInformation(const QString &text)
{
    m_entries.append({Entry::Kind::Information, 0, text});
}

Answer RecordingPrompts::ask(Buttons /*buttons*/, const QString &text, int number)
{
    m_entries.append({Entry::Kind::Question, number, text});
    if (m_answers.isEmpty())
        throw Error(u"No answer was scripted for the question: "_s + text);
    return m_answers.takeFirst();
}

void RecordingPrompts::showStatus(const QString &text)
{
    m_entries.append({Entry::Kind::Status, 0, text});
}

void RecordingPrompts::answerWith(std::initializer_list<Answer> answers)
{
    m_answers.append(answers);
}

QStringList RecordingPrompts::texts(Entry::Kind kind) const
{
    QStringList texts;
    for (const Entry &entry : m_entries) {
        if (entry.kind == kind)
            texts.append(entry.text);
    }
    return texts;
}

QString RecordingPrompts::lastStatus() const
{
    const QStringList all = texts(Entry::Kind::Status);
    return all.isEmpty() ? QString() : all.last();
}

void RecordingPrompts::clear()
{
    m_entries.clear();
    m_answers.clear();
}

} // namespace tarnwick
