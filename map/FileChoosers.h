#pragma once
#include <tarnwick/FileChoice.h>

namespace map {

inline constexpr tarnwick::FileChooserInfo kMapChooser{u"maps", u"Maps (*.map)", u".map"};
inline constexpr tarnwick::FileChooserInfo kMapTemplateChooser{u"[PALOMINE_DIR]\\user\\map_templates\\",
                                                               u"Map Template (*.map)", u".map"};
inline constexpr tarnwick::FileChooserInfo kHeaderChooser{u"map_headers", u"Map Header (*.hdr)", u".hdr"};
inline constexpr tarnwick::FileChooserInfo kHeaderTemplateChooser{u"[PALOMINE_DIR]\\user\\map_headers\\",
                                                                  u"Map Header (*.hdr)", u".hdr"};

} // namespace map
