#pragma once
#include <functional>
#include <QObject>
#include <tarnwick/Prompts.h>

namespace app {

/// Runs what the user asks for. Exceptions are reported in an error box; none reaches the event loop.
class CommandRunner : public QObject
{
    Q_OBJECT
public:
    /// prompts must live as long as this object.
    explicit CommandRunner(tarnwick::UserPrompts &prompts, QObject *parent)
        : QObject(parent)
        , m_prompts(prompts)
    {
    }

    /// What becomes of the text in the status line when a command begins.
    enum class Words { Forget, Keep };
    using Work = std::function<void()>;

    /// Runs a command.
    void perform(const Work &work, Words words = Words::Forget);
    /// Runs work that is not a command of its own: a description that is being typed is left alone.
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
