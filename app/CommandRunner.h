#pragma once
#include <functional>
#include <QObject>
#include <tarnwick/Prompts.h>

namespace app {

/// Runs commands of the user. Exceptions are reported in an error box; none reaches the event loop.
class CommandRunner : public QObject
{
    Q_OBJECT
public:
    /// prompts must outlive this object.
    explicit CommandRunner(tarnwick::UserPrompts &prompts, QObject *parent)
        : QObject(parent)
        , m_prompts(prompts)
    {
    }

    /// Handling of the text in the status line when a command starts.
    enum class Words { Forget, Keep };
    using Work = std::function<void()>;

    /// Runs a command.
    void perform(const Work &work, Words words = Words::Forget);
    /// Runs work that is not a command: does not end the editing of a description.
    void attempt(const Work &work);
    /// Runs work and reports exceptions. Sends no signal.
    void guard(const Work &work);

Q_SIGNALS:
    void begins(app::CommandRunner::Words words);
    void ended();

private:
    tarnwick::UserPrompts &m_prompts;
};

} // namespace app
