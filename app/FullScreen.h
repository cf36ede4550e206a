#pragma once
#include <QElapsedTimer>
#include <QList>
#include <QObject>

class QMainWindow;
class QSplitter;
class QWidget;

namespace brannock {
class TubesheetMap;
}

namespace app {

/// Full screen with only the map, and the key Esc that enters and leaves it.
class FullScreen : public QObject
{
    Q_OBJECT
public:
    struct Parts
    {
        QMainWindow *window;
        QSplitter *splitter; ///< between map and side panel
        brannock::TubesheetMap *map;
        QList<QWidget *> hidden; ///< hidden in the full screen
    };
    explicit FullScreen(const Parts &parts);

    bool isOn() const { return m_isOn; }
    void toggle();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool filterWindow(QEvent *event);
    void filterMap(QEvent *event);
    void showMenuBar(bool shown);
    /// Handles Esc for the full screen, unless another widget with the focus needs it.
    bool isEscForFullScreen() const;

    const Parts m_parts;
    bool m_isOn = false;
    QList<int> m_sharesBefore;   ///< widths of map and side panel
    QElapsedTimer m_sinceReturn; ///< time since a menu or dialog was closed
};

} // namespace app
