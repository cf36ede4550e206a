#include "RunProgress.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace query {

namespace {

constexpr qint64 kPumpEvery = 40; // ms

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::ToolTip:
    case QEvent::WhatsThis:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

RunProgress::RunProgress(QWidget &stop, QAbstractScrollArea &rows, std::function<void(qint64, double)> shown)
    : m_stop(stop)
    , m_table(rows)
    , m_shown(std::move(shown))
{
    m_sinceStart.start();
    m_sincePump.start();
}

RunProgress::~RunProgress()
{
    pump();
}

bool RunProgress::cancelled()
{
    if (m_sincePump.elapsed() >= kPumpEvery)
        pump();
    return m_isStopped;
}

void RunProgress::report(qint64 done, qint64, const QString &)
{
    m_rows = done;
}

void RunProgress::pump()
{
    if (m_isPumping)
        return;
    const QScopedValueRollback guard(m_isPumping, true);
    constexpr double kMilliseconds = 1000;
    m_shown(m_rows, double(m_sinceStart.elapsed()) / kMilliseconds);
    qApp->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    qApp->removeEventFilter(this);
    m_sincePump.restart();
}

bool RunProgress::isScrolling(QObject *watched, QEvent::Type type) const
{
    if (type == QEvent::Wheel && watched == m_table.viewport())
        return true;
    const bool isBar = watched == m_table.verticalScrollBar() || watched == m_table.horizontalScrollBar();
    return isBar && type != QEvent::ContextMenu;
}

bool RunProgress::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    // Windows pass their events on to widgets, which is where they are stopped; shortcuts go to actions.
    if (!isInput(type) || watched == &m_stop || (!watched->isWidgetType() && type != QEvent::Shortcut))
        return false;
    if (isScrolling(watched, type))
        return false;
    if ((type == QEvent::KeyPress || type == QEvent::ShortcutOverride) &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
        m_isStopped = true;
    if (type == QEvent::Close || type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop)
        event->ignore();
    return true;
}

} // namespace query
