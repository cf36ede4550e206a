#include "OnScreen.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace tarnwick {

/// The frame's size is known only when the window is shown; before, an estimate is used.
static QSize usualFrame(const QWidget &window)
{
    constexpr int kBorder = 8;
    const int title =
        std::max(window.style()->pixelMetric(QStyle::PM_TitleBarHeight), 2 * window.fontMetrics().height());
    return {2 * kBorder, title + kBorder};
}

QSize sizeOnScreen(const QWidget &window, const QSize &wanted)
{
    return wanted.boundedTo(window.screen()->availableSize() - usualFrame(window));
}

void moveOntoScreen(QWidget &window)
{
    if (window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const QRect room = window.screen()->availableGeometry();
    const QSize frame = window.frameGeometry().size() - window.size();
    const QSize size = window.size().boundedTo(room.size() - frame);
    if (size != window.size())
        window.resize(size);
    const QSize whole = window.size() + frame;
    const QPoint least = room.topLeft();
    const QPoint most(room.right() + 1 - whole.width(), room.bottom() + 1 - whole.height());
    // A window that is still too large starts at the upper left corner of the screen.
    const QPoint place(std::max(std::min(window.x(), most.x()), least.x()),
                       std::max(std::min(window.y(), most.y()), least.y()));
    if (place != window.pos())
        window.move(place);
}

} // namespace tarnwick
