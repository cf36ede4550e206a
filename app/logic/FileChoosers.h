#pragma once
#include <tarnwick/FileChoice.h>

namespace app {

inline constexpr tarnwick::FileChooserInfo kDatabaseChooser{u"arvo", u"Accesss (*.mdb)", u".mdb"};
inline constexpr tarnwick::FileChooserInfo kMetafileChooser{u"temp", u"Metafiles (*.emf)", u".emf",
                                                            u"PDF Files (*.pdf);;SVG Files (*.svg)"};
inline constexpr tarnwick::FileChooserInfo kBitmapChooser{u"temp", u"Bitmaps (*.bmp)", u".bmp", u"PNG Files (*.png)"};

} // namespace app
