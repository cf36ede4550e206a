#include "MapPage.h"

#include <plans/MapFill.h>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

brannock::LegendRow legendRow(const plans::MapFill &fill)
{
    const plans::MapFillType *type = plans::MapFillType::find(fill.typeKey);
    return {fill.symbol,       fill.colour, type ? type->name : fill.typeKey, fill.label, fill.fillCount,
            fill.paintedCount, fill.shown};
}

} // namespace

brannock::MapOptions mapOptions(const query::ArvoOptions &options)
{
    brannock::MapOptions map;
    map.mapColour = options.mapColour;
    map.fillColour = options.fillColour;
    map.tickColour = options.tickColour;
    map.selectColour = options.selectColour;
    map.watermarkColour = options.watermarkColour;
    map.displayTickSize = options.displayTickSize;
    map.printTickSize = options.printTickSize;
    return map;
}

QString footerText()
{
    return tarnwick::format(u"Palomine International Corp., ARVO Rev %U, [CUR DATETIME]", brannock::TOLVENMARK_REV);
}

brannock::PictureContent pageContent(const MapHeader &header, const plans::MapLegend &legend,
                                     const ellery::SteamGen &steamGen, const query::ArvoOptions &options,
                                     const tarnwick::JMacro &macros)
{
    const MapHeader shown = header.expanded(macros);
    brannock::PictureContent content;
    content.title = shown.upperText;
    content.titleFont = QFont(shown.upperFont, shown.upperSize);
    content.subtitle = shown.lowerText;
    content.subtitleFont = QFont(shown.lowerFont, shown.lowerSize);
    content.footer = macros.expand(footerText());
    content.signatures = signatureLine(shown);
    content.footerFont = QFont(shown.footerFont, shown.footerSize);
    content.modelText = brannock::modelText(steamGen);
    for (int i = 0; i < legend.count(); ++i)
        content.legend.append(legendRow(legend.entry(i)));
    content.margins =
        QMarginsF(options.margins.left, options.margins.top, options.margins.right, options.margins.bottom);
    content.titleRect = options.drawTitleRect;
    content.legendRect = options.drawLegendRect;
    content.mapRect = options.drawMapRect;
    return content;
}

brannock::MapPicture mapPage(const ellery::SteamGen &steamGen, const brannock::PictureContent &content,
                             const query::ArvoOptions &options, const QString &watermark)
{
    brannock::MapScene scene(steamGen, mapOptions(options));
    scene.watermark = watermark;
    return brannock::MapPicture(scene, content);
}

} // namespace app
