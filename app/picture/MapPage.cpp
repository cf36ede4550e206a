#include "MapPage.h"

#include <plans/paint/LegendRows.h>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace app {

QString footerText()
{
    return tarnwick::format(u"Palomine International Corp., ARVO Rev %U, [CUR DATETIME]", brannock::TOLVENMARK_REV);
}

brannock::PictureContent pageContent(const map::MapHeader &header, const map::MapDocument &document,
                                     const brannock::PageOptions &options, const tarnwick::JMacro &macros)
{
    const map::MapHeader shown = header.printed(macros);
    brannock::PictureContent content;
    content.title = shown.upperText;
    content.isStandardTitle = header.upperText.isEmpty() && header.lowerText.isEmpty();
    content.titleFont = QFont(shown.upperFont, shown.upperSize);
    content.subtitle = shown.lowerText;
    content.subtitleFont = QFont(shown.lowerFont, shown.lowerSize);
    content.footer = macros.expand(footerText());
    content.signatures = map::signatureLine(shown);
    content.footerFont = QFont(shown.footerFont, shown.footerSize);
    content.modelText = brannock::modelText(document.component(), document.tubes());
    content.legend = plans::legendRows(document);
    content.margins =
        QMarginsF(options.margins.left, options.margins.top, options.margins.right, options.margins.bottom);
    content.titleRect = options.drawTitleRect;
    content.legendRect = options.drawLegendRect;
    content.mapRect = options.drawMapRect;
    return content;
}

brannock::MapPicture mapPage(const map::MapDocument &document, const brannock::PictureContent &content,
                             const brannock::MapOptions &options, const QString &watermark)
{
    brannock::MapScene scene(document.component(), document.tubes(), options);
    scene.watermark = watermark;
    scene.deselect(); // on paper, selected tubes would look like marked ones
    return brannock::MapPicture(scene, content);
}

} // namespace app
