#pragma once
#include <brannock/paint/MapPicture.h>
#include <map/MapDocument.h>

namespace app {

/// What the footer of every page says; keywords are replaced when it is printed.
QString footerText();

/// What stands on the page round the tubes: the legend with the counts that the window shows, the model line, and the
/// header with its keywords replaced.
brannock::PictureContent pageContent(const map::MapHeader &header, const map::MapDocument &document,
                                     const brannock::PageOptions &options, const tarnwick::JMacro &macros);

/// The tubes as they are marked now, on a page. watermark: behind them, may be empty.
brannock::MapPicture mapPage(const map::MapDocument &document, const brannock::PictureContent &content,
                             const brannock::MapOptions &options, const QString &watermark);

} // namespace app
