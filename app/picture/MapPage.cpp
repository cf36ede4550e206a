#include "MapPage.h"

#include <plans/paint/MapLook.h>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace app {

QString footerText()
{
    return tarnwick::format(u"Palomine International Corp., ARVO Rev %U, [CUR DATETIME]", brannock::TOLVENMARK_REV);
}

brannock::PictureContent pageContent(const MapHeader &header, const plans::MapLegend &legend,
                                     const ellery::SteamGen &steamGen, const query::ArvoOptions &options,
                                     const tarnwick::JMacro &macros)
{
    const MapHeader shown = header.printed(macros);
    brannock::PictureContent content;
    content.title = shown.upperText;
    content.isStandardTitle = header.upperText.isEmpty() && header.lowerText.isEmpty();
    content.titleFont = QFont(shown.upperFont, shown.upperSize);
    content.subtitle = shown.lowerText;
    content.subtitleFont = QFont(shown.lowerFont, shown.lowerSize);
    content.footer = macros.expand(footerText());
    content.signatures = signatureLine(shown);
    content.footerFont = QFont(shown.footerFont, shown.footerSize);
    content.modelText = brannock::modelText(steamGen, legend.tubes());
    content.legend = plans::legendRows(legend);
    content.margins =
        QMarginsF(options.margins.left, options.margins.top, options.margins.right, options.margins.bottom);
    content.titleRect = options.drawTitleRect;
    content.legendRect = options.drawLegendRect;
    content.mapRect = options.drawMapRect;
    return content;
}

brannock::MapPicture mapPage(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes,
                             const brannock::PictureContent &content, const query::ArvoOptions &options,
                             const QString &watermark)
{
    brannock::MapScene scene(steamGen, tubes, plans::mapOptions(options));
    scene.watermark = watermark;
    scene.deselect(); // a matter of the screen: on paper its marks would look like a finding
    return brannock::MapPicture(scene, content);
}

} // namespace app
