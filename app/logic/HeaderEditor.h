#pragma once
#include "FileChoosers.h"

#include <functional>
#include <map/MapDocument.h>
#include <tarnwick/Prompts.h>

namespace app {

/// What the header dialog works on: a copy of the map's header and description, which reach the map only when they are
/// set. Says what fails; the header is then as before.
class HeaderEditor
{
public:
    /// What an editor works with. All must live as long as the editor.
    struct Context
    {
        map::MapDocument &map;
        tarnwick::UserPrompts &prompts;
        FileChoice &choice;
        tarnwick::PathRoots roots;
        std::function<tarnwick::JMacro()> macros; ///< all that may stand in a header
    };
    explicit HeaderEditor(const Context &context);

    map::MapHeader header;
    QString description;

    /// After changes of header or description in a dialog.
    std::function<void()> edited;

    /// The edited header is not the map's.
    bool isModified() const;
    /// "Map Header - %S%c": name, and "*" or a blank.
    QString title() const;
    /// Everything that keywords may stand for.
    tarnwick::JMacro macros() const { return m_context.macros(); }
    /// Bracketed words in the texts that are no keywords and would be printed as they are, each once.
    QStringList unknownKeywords() const;

    // Header files: the project's and those of the user folder. False when nothing was chosen or done. Before another
    // header takes the place of edited texts that are kept nowhere, the user is asked about them. Signatures belong to
    // the map and stay.
    bool open();
    bool save();
    bool saveAs();
    /// Copies a header of the user folder into the project and opens the copy.
    bool importHeader();
    void exportHeader();

    /// The map gets the edited header. Can be undone.
    void setMapHeader();
    /// Asks about changes, or says that there are none. False: go on editing.
    bool mayClose();

private:
    QString suiteText(const QString &machinePath) const;
    bool read(const QString &machinePath, map::MapHeader &result);
    bool write(const QString &machinePath);
    bool mayReplace(const QString &machinePath);
    /// Asks about texts that are neither the map's nor in a header file. False: stay with them.
    bool mayReplaceTexts();
    void noteKept();

    const Context m_context;
    map::MapHeader m_kept; ///< without signatures: as it was opened, stored or set last
    QString m_path;        ///< of the header file opened or saved last, on this machine
};

} // namespace app
