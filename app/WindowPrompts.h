#pragma once
#include "StatusLine.h"

#include <tarnwick/FailureLog.h>
#include <tarnwick/gui/BoxPrompts.h>

namespace app {

/// The prompts of a window for people: message boxes, the status line, and the log of failures.
class WindowPrompts
{
public:
    WindowPrompts(QWidget *window, StatusLine &line)
        : m_boxes(window,
                  [&line](const QString &text) {
                      line.say(text);
                      line.repaint();
                  })
        , m_logged(m_boxes, QStringLiteral("arvo"))
    {
    }
    tarnwick::UserPrompts &prompts() { return m_logged; }

private:
    tarnwick::BoxPrompts m_boxes;
    tarnwick::LoggedPrompts m_logged;
};

} // namespace app
