#pragma once
#include <brannock/MapOptions.h>
#include <map/MapDocument.h>

#include <functional>
#include <QStackedWidget>

namespace brannock {
class TubesheetMap;
}

namespace app {

/// The map of the open project, or the start page if there is none. Follows the document, and changes it when the user
/// selects tubes.
class MapPane : public QStackedWidget
{
    Q_OBJECT
public:
    /// The document must outlive the pane. startPage: shown without a project; becomes a child of the pane.
    MapPane(map::MapDocument &document, QWidget *startPage, QWidget *parent = nullptr);
    ~MapPane() override;

    brannock::TubesheetMap &map() { return *m_map; }
    /// Shows the map, or the start page without a project.
    void setProjectOpen(bool isOpen);
    void setOptions(const brannock::MapOptions &options);
    /// Shows other states of the tubes as a preview; null: those of the document.
    void showTrial(const ellery::TubeStates *tubes);

    /// Further lines of the tip beside the tube under the pointer. Called for each tube that is pointed at.
    void setTubeNotes(std::function<QStringList(int tube)> notes) { m_notes = std::move(notes); }

    /// Selects a tube, makes it visible and moves the cursor to it.
    void showTube(int tube);
    /// Name of the last pointed tube for the status bar; empty for none.
    QString pointedText() const;

Q_SIGNALS:
    /// Emitted if the tube under the pointer or the cursor has changed.
    void pointedAt(int tube);

private:
    void mapChanged(const map::MapEvent &event);
    void select(const QList<qint32> &tubes, ellery::SelectMode mode);

    map::MapDocument &m_document;
    brannock::TubesheetMap *m_map;
    int m_pointed = -1;
    std::function<QStringList(int)> m_notes;
    map::Subscription m_subscription;
};

} // namespace app
