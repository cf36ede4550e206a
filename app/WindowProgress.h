#pragma once
#include <tarnwick/gui/ProgressDialog.h>

namespace app {

/// Progress of a command: shows the wait cursor at once, and after a short time a bar with Cancel.
class WindowProgress : public tarnwick::ProgressDialog
{
public:
    WindowProgress(QWidget *window, const QString &title)
        : ProgressDialog(window, title)
        , m_window(window)
    {
        m_window->setCursor(Qt::WaitCursor);
    }
    ~WindowProgress() override { m_window->unsetCursor(); }

private:
    QWidget *m_window;
};

} // namespace app
