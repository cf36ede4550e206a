#pragma once
#include "TubeTable.h"

#include <brannock/Project.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/JDateTime.h>

namespace setup {

/// What a user says about a new project.
struct NewProject
{
    QString folder; ///< must not exist or be empty
    QString site;   ///< codes, which every result in the database has
    QString comp;
    QString outage;           ///< the first outage, which becomes the present one
    QString component;        ///< a table of tubes (see TubeTable), or the folder of a component or of another project
    QString name;             ///< title of the project; empty: made of site and component
    tarnwick::JDateTime date; ///< of the outage; null if not known
    TubePattern pattern;      ///< for a table without positions
};

/// The component of a new project, and what its maker should know about it.
struct NewComponent
{
    ellery::SteamGen steamGen;
    QStringList remarks;

    /// Reads table or folder. Throws TableError and tarnwick::FileError.
    static NewComponent read(const NewProject &wanted);
    /// "3380 tubes, rows 1 to 46, columns 1 to 93".
    QString summary() const;
};

/// What is missing or wrong in the texts of a new project, a sentence each; its component is not read.
QStringList missingOf(const NewProject &wanted);

/// Makes a project with its database, whose tables tubes and landmarks are filled, completely or not at all. Throws
/// tarnwick::Error with everything that is missing, and tarnwick::Cancelled. progress may be null. Returns the
/// component.
NewComponent makeNewProject(const NewProject &wanted, tarnwick::Progress *progress = nullptr);

/// Creates the database of a project without one, with the tubes and landmarks of its component.
void makeDatabase(const brannock::Project &project, tarnwick::Progress *progress);

} // namespace setup
