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

/// The full screen, which shows the map alone, and the key Esc that leads there and back.
class FullScreen : public QObject
{
    Q_OBJECT
public:
    struct Parts
    {
        QMainWindow *window;
        QSplitter *splitter; ///< between the map and what is beside it
        brannock::TubesheetMap *map;
        QList<QWidget *> hidden; ///< in the full screen
    };
    explicit FullScreen(const Parts &parts);

    bool isOn() const { return m_isOn; }
    void toggle();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool filterWindow(QEvent *event);
    void filterMap(QEvent *event);
    void showMenuBar(bool shown);
    /// Esc goes to the full screen and back, and not to something else that has the focus.
    bool isEscForFullScreen() const;

    const Parts m_parts;
    bool m_isOn = false;
    QList<int> m_sharesBefore;   ///< of map and side panel
    QElapsedTimer m_sinceReturn; ///< from a menu or dialog to the window
};

} // namespace app
