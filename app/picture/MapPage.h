#pragma once
#include <brannock/paint/MapPicture.h>
#include <map/MapDocument.h>

namespace app {

/// Text of the footer of each page, with keywords that are replaced when it is printed.
QString footerText();

/// Content of the page around the map: the legend with the counts of the window, the model line, and the header with
/// its keywords replaced.
brannock::PictureContent pageContent(const map::MapHeader &header, const map::MapDocument &document,
                                     const brannock::PageOptions &options, const tarnwick::JMacro &macros);

/// Picture of the page with the present marks. watermark: text behind the tubes, may be empty.
brannock::MapPicture mapPage(const map::MapDocument &document, const brannock::PictureContent &content,
                             const brannock::MapOptions &options, const QString &watermark);

} // namespace app
