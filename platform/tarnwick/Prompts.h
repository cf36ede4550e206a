#pragma once
#include "Format.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// A numbered message of the program. Each subsystem has a table of its messages; numbers are unique in the program.
struct Message
{
    int number; ///< 0: the message has none
    const char16_t *text;
};

constexpr int kErrorSeverity = 3;

enum class Answer { Yes, No, Cancel, Ok };
enum class Buttons {
    YesNo,
    NoYes, ///< Yes and No with No as default, for questions whose Yes destroys something
    YesNoCancel,
    OkCancel
};
/// The answer if the user gives none: the box was closed, or nobody can be asked.
constexpr Answer declined(Buttons buttons)
{
    return buttons == Buttons::YesNo || buttons == Buttons::NoYes ? Answer::No : Answer::Cancel;
}

/// All error boxes, questions, information boxes and status texts of the program use this interface. The window shows
/// them; the command line prints them and answers from its flags; tests script the answers and check the texts.
class UserPrompts
{
public:
    virtual ~UserPrompts() = default;

    /// Shows an error or warning. severity is 3 for every failure and warning of this program.
    virtual void showError(int severity, int number, const QString &text) = 0;
    virtual void showInformation(const QString &text) = 0;
    /// number 0: the question has none.
    virtual Answer ask(Buttons buttons, const QString &text, int number = 0) = 0;
    virtual void showStatus(const QString &text) = 0;

    template <typename... Args>
    void error(const Message &message, const Args &...args)
    {
        showError(kErrorSeverity, message.number, format(QStringView(message.text), args...));
    }
    template <typename... Args>
    void information(const Message &message, const Args &...args)
    {
        showInformation(format(QStringView(message.text), args...));
    }
    template <typename... Args>
    Answer question(Buttons buttons, const Message &message, const Args &...args)
    {
        return ask(buttons, format(QStringView(message.text), args...), message.number);
    }
    template <typename... Args>
    void status(const Message &message, const Args &...args)
    {
        showStatus(format(QStringView(message.text), args...));
    }
};

/// Records all messages and answers from a script. For tests.
class RecordingPrompts : public UserPrompts
{
public:
    struct Entry
    {
        enum class Kind { Error, Information, Question, Status } kind;
        int number = 0;
        QString text;
    };

    void showError(int severity, int number, const QString &text) override;
    void showInformation(const QString &text) override;
    Answer ask(Buttons buttons, const QString &text, int number) override;
    void showStatus(const QString &text) override;

    /// Sets the next answers, in order. A question without a scripted answer throws Error, so the test fails.
    void answerWith(std::initializer_list<Answer> answers);
    const QList<Entry> &entries() const { return m_entries; }
    /// The texts of one kind, in order.
    QStringList texts(Entry::Kind kind) const;
    QString lastStatus() const;
    bool unusedAnswers() const { return !m_answers.isEmpty(); }
    void clear();

private:
    QList<Entry> m_entries;
    QList<Answer> m_answers;
};

} // namespace tarnwick
