#pragma once
#include <QWidget>

namespace app {

class ProjectSession;
class TubeNotes;

/// What a double click or Return on a tube of the map does.
class TubeCommands
{
public:
    /// parent: of the dialogs. All references must outlive this object.
    TubeCommands(ProjectSession &session, const TubeNotes &notes, QWidget *parent)
        : m_session(session)
        , m_notes(notes)
        , m_parent(parent)
    {
    }
    /// Shows what is known about a tube. tube: index in the component. parent: null for the window.
    void show(int tube, QWidget *parent = nullptr);

private:
    ProjectSession &m_session;
    const TubeNotes &m_notes;
    QWidget *m_parent;
};

} // namespace app
