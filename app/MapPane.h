#pragma once
#include <brannock/MapOptions.h>
#include <map/MapDocument.h>

#include <QStackedWidget>

namespace brannock {
class TubesheetMap;
}

namespace app {

/// The map of the open project, or what to do without one. Follows the document by itself and turns what the user
/// selects into changes of it.
class MapPane : public QStackedWidget
{
    Q_OBJECT
public:
    /// The document must live as long as the pane.
    explicit MapPane(map::MapDocument &document, QWidget *parent = nullptr);
    ~MapPane() override;

    brannock::TubesheetMap &map() { return *m_map; }
    /// Shows the map, or without a project what to do about it.
    void setProjectOpen(bool isOpen);
    void setOptions(const brannock::MapOptions &options);
    /// Shows other states of the tubes in place of the document's while the user is still choosing; null: the
    /// document's.
    void showTrial(const ellery::TubeStates *tubes);

    /// Selects a tube, brings it into view and leads the cursor to it.
    void showTube(int tube);
    /// The tube that was last pointed at, as the status bar names it; empty for none.
    QString pointedText() const;

Q_SIGNALS:
    /// The tube under the pointer or the cursor is another one.
    void pointedAt(int tube);

private:
    void mapChanged(const map::MapEvent &event);
    void select(const QList<qint32> &tubes, ellery::SelectMode mode);

    map::MapDocument &m_document;
    brannock::TubesheetMap *m_map;
    int m_pointed = -1;
    map::Subscription m_subscription;
};

} // namespace app
