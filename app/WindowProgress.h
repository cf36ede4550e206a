#pragma once
#include <tarnwick/gui/ProgressDialog.h>

namespace app {

/// Long work of a command: the wait cursor over the window at once, and before long a bar with Cancel.
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
