#include "FullScreen.h"

#include <brannock/gui/TubesheetMap.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace app {

FullScreen::FullScreen(const Parts &parts)
    : QObject(parts.window)
    , m_parts(parts)
{
    m_parts.window->installEventFilter(this);
    m_parts.window->menuBar()->installEventFilter(this);
    m_parts.map->installEventFilter(this);
}

void FullScreen::toggle()
{
    m_isOn = !m_isOn;
    if (m_isOn)
        m_sharesBefore = m_parts.splitter->sizes();
    for (QWidget *part : m_parts.hidden)
        part->setVisible(!m_isOn);
    if (!m_isOn)
        m_parts.splitter->setSizes(m_sharesBefore);
    showMenuBar(!m_isOn);
    m_parts.window->setWindowState(m_parts.window->windowState().setFlag(Qt::WindowFullScreen, m_isOn));
    m_parts.map->setFocus();
    // Without the bars, this text is the only hint how to leave the full screen.
    constexpr int kNoticeMs = 4000;
    if (m_isOn)
        QToolTip::showText(m_parts.map->mapToGlobal(QPoint(m_parts.map->width() / 2, 0)),
                           u"Esc leaves the full screen"_s, m_parts.map, {}, kNoticeMs);
}

void FullScreen::showMenuBar(bool shown)
{
    // A hidden menu bar does not receive Alt; one without height does.
    QMenuBar *bar = m_parts.window->menuBar();
    if (shown)
        bar->setMaximumHeight(QWIDGETSIZE_MAX);
    else
        bar->setFixedHeight(0);
    bar->setMinimumHeight(0);
}

bool FullScreen::isEscForFullScreen() const
{
    // Users who close menus and boxes with Esc may press it once too often.
    constexpr int kPauseMs = 600;
    const bool isJustBack = m_sinceReturn.isValid() && m_sinceReturn.elapsed() < kPauseMs;
    return m_parts.window->focusWidget() == m_parts.map && !isJustBack;
}

bool FullScreen::filterWindow(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        const auto *key = static_cast<QKeyEvent *>(event);
        // The key is sent to the widget with the focus instead of the shortcut.
        if (key->key() == Qt::Key_Escape && (key->isAutoRepeat() || !isEscForFullScreen())) {
            event->accept();
            return true;
        }
        return false;
    }
    case QEvent::WindowBlocked:
        m_parts.map->setTipHidden(true);
        return false;
    case QEvent::WindowUnblocked:
        m_parts.map->setTipHidden(false);
        m_sinceReturn.start();
        return false;
    default:
        return false;
    }
}

void FullScreen::filterMap(QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
            m_sinceReturn.start();
    }
    // During a drag on the map, Esc cancels the drag instead.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape &&
        QGuiApplication::mouseButtons() != Qt::NoButton)
        event->accept();
}

bool FullScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_parts.window)
        return filterWindow(event);
    if (watched == m_parts.map)
        filterMap(event);
    const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (isFocus && watched == m_parts.window->menuBar() && m_isOn &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
        showMenuBar(event->type() == QEvent::FocusIn);
    return false;
}

} // namespace app
