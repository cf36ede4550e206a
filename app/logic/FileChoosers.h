#pragma once
#include <QString>

namespace app {

/// How a file is chosen: where the chooser starts, in the suite's form of paths, and what it lists.
struct FileChooserInfo
{
    const char16_t *folder;
    const char16_t *filter;
    const char16_t *extension;
};

inline constexpr FileChooserInfo kMapChooser{u"maps", u"Maps (*.map)", u".map"};
inline constexpr FileChooserInfo kMapTemplateChooser{u"[PALOMINE_DIR]\\user\\map_templates\\", u"Map Template (*.map)",
                                                     u".map"};
inline constexpr FileChooserInfo kDatabaseChooser{u"arvo", u"Accesss (*.mdb)", u".mdb"};
inline constexpr FileChooserInfo kMetafileChooser{u"temp", u"Metafiles (*.emf)", u".emf"};
inline constexpr FileChooserInfo kBitmapChooser{u"temp", u"Bitmaps (*.bmp)", u".bmp"};

} // namespace app
