#pragma once
#include <tarnwick/Paths.h>

#include <QString>

namespace app {

/// How a file is chosen: where the chooser starts, in the suite's form of paths, and what it lists.
struct FileChooserInfo
{
    const char16_t *folder;
    const char16_t *filter;
    const char16_t *extension;
    /// Filters of further kinds of files, apart by ";;"; null for none.
    const char16_t *moreFilters = nullptr;
};

inline constexpr FileChooserInfo kMapChooser{u"maps", u"Maps (*.map)", u".map"};
inline constexpr FileChooserInfo kMapTemplateChooser{u"[PALOMINE_DIR]\\user\\map_templates\\", u"Map Template (*.map)",
                                                     u".map"};
inline constexpr FileChooserInfo kHeaderChooser{u"map_headers", u"Map Header (*.hdr)", u".hdr"};
inline constexpr FileChooserInfo kHeaderTemplateChooser{u"[PALOMINE_DIR]\\user\\map_headers\\", u"Map Header (*.hdr)",
                                                        u".hdr"};
inline constexpr FileChooserInfo kDatabaseChooser{u"arvo", u"Accesss (*.mdb)", u".mdb"};
inline constexpr FileChooserInfo kMetafileChooser{u"temp", u"Metafiles (*.emf)", u".emf",
                                                  u"PDF Files (*.pdf);;SVG Files (*.svg)"};
inline constexpr FileChooserInfo kBitmapChooser{u"temp", u"Bitmaps (*.bmp)", u".bmp", u"PNG Files (*.png)"};

/// Asks for files. The window has dialogs for it, tests a script. Paths are those of the machine; empty when nothing
/// was chosen.
class FileChoice
{
public:
    virtual ~FileChoice() = default;
    virtual QString openFile(const FileChooserInfo &chooser, const QString &title,
                             const tarnwick::PathRoots &roots) = 0;
    /// Adds the extension of the chosen kind to a name without one, and asks before an existing file is chosen. name:
    /// what is offered, without a folder; may be empty.
    virtual QString saveFile(const FileChooserInfo &chooser, const QString &title, const tarnwick::PathRoots &roots,
                             const QString &name = {}) = 0;
};

} // namespace app
