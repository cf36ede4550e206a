#pragma once
#include "MapDocument.h"

#include <functional>
#include <tarnwick/FileChoice.h>
#include <tarnwick/Prompts.h>

namespace map {

/// Edits a copy of the map's header and description for the header dialog. The map changes only in setMapHeader(). A
/// failure is reported, and the header is then unchanged.
class HeaderEditor
{
public:
    /// All must outlive the editor.
    struct Context
    {
        MapDocument &map;
        tarnwick::UserPrompts &prompts;
        tarnwick::FileChoice &choice;
        tarnwick::PathRoots roots;
        std::function<tarnwick::JMacro()> macros; ///< the keywords that a header may contain
    };
    explicit HeaderEditor(const Context &context);

    MapHeader header;
    QString description;

    /// Call after a dialog has changed header or description.
    std::function<void()> edited;

    /// True if header or description differ from those of the map.
    bool isModified() const;
    /// "Map Header - %S%c": the name, then "*" if modified, otherwise a blank.
    QString title() const;
    /// The keywords and their values.
    tarnwick::JMacro macros() const { return m_context.macros(); }
    /// Bracketed words in the texts that are not keywords, each once. They would be printed unchanged.
    QStringList unknownKeywords() const;

    // Header files of the project and of the user folder. These functions return false if the user cancelled or the
    // operation failed. If the texts were edited and not stored, the user is asked before they are replaced. The
    // signatures belong to the map and are not replaced.
    bool open();
    bool save();
    bool saveAs();
    /// Copies a header of the user folder into the project and opens the copy.
    bool importHeader();
    void exportHeader();

    /// Sets header and description in the map, as one change that can be undone.
    void setMapHeader();
    /// Asks about changes, or reports that there are none. Returns false if the dialog shall stay open.
    bool mayClose();

private:
    QString suiteText(const QString &machinePath) const;
    bool read(const QString &machinePath, MapHeader &result);
    bool write(const QString &machinePath);
    bool mayReplace(const QString &machinePath);
    /// If the texts differ from those opened, stored or set last, asks whether to save them. Returns false if they
    /// must not be replaced.
    bool mayReplaceTexts();
    void noteKept();

    const Context m_context;
    MapHeader m_kept; ///< the header as opened, stored or set last, without signatures
    QString m_path;   ///< machine path of the header file opened or saved last
};

} // namespace map
