#include "CommandLine.h"
#include "CommandTable.h"
#include "LegendOutput.h"
#include "Target.h"
#include "TubeFile.h"

#include <app/logic/SystemMacros.h>
#include <app/picture/MapPage.h>
#include <map/FillCommit.h>
#include <map/MapFiles.h>
#include <map/TubeText.h>
#include <QFileInfo>
#include <tarnwick/paint/Paper.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDpi = 150;
constexpr double kMillimetresOfAnInch = 25.4;

QSizeF pageInches(const Arguments &arguments)
{
    if (!arguments.has(u"size")) {
        const std::optional<QPageSize> paper =
            arguments.has(u"paper") ? tarnwick::paperOfName(arguments.value(u"paper")) : tarnwick::defaultPaper();
        if (!paper)
            throw UsageError(u"--paper is the name of a paper: A3, A4, A5, Letter, Legal, Tabloid or another."_s);
        // Landscape, as in the window: the legend is beside the tubesheet.
        const QSizeF upright = paper->size(QPageSize::Millimeter) / kMillimetresOfAnInch;
        return {std::max(upright.width(), upright.height()), std::min(upright.width(), upright.height())};
    }
    if (arguments.has(u"paper"))
        throw UsageError(u"Only one of --paper and --size can be given."_s);
    const QStringList sides = arguments.value(u"size").split(u'x');
    bool widthOk = false;
    bool heightOk = false;
    const int width = sides.value(0).toInt(&widthOk);
    const int height = sides.value(1).toInt(&heightOk);
    constexpr int kLeast = 200;
    constexpr int kMost = 20'000;
    if (sides.size() != 2 || !widthOk || !heightOk || std::min(width, height) < kLeast ||
        std::max(width, height) > kMost)
        throw UsageError(u"--size needs WIDTHxHEIGHT, each from %1 to %2."_s.arg(kLeast).arg(kMost));
    return {double(width) / kDpi, double(height) / kDpi};
}

void checkEnding(const QString &path)
{
    static const QStringList kinds = {u"emf"_s, u"pdf"_s, u"svg"_s, u"bmp"_s, u"png"_s, u"jpg"_s};
    if (!kinds.contains(QFileInfo(path).suffix().toLower()))
        throw UsageError(u"--out needs a name that ends in .emf, .pdf, .svg, .bmp, .png or .jpg."_s);
}

void setFlips(const QString &axes, brannock::PictureContent &content)
{
    for (const QChar axis : axes) {
        if (axis != u'h' && axis != u'v')
            throw UsageError(u"--flip is h, v or hv."_s);
        (axis == u'h' ? content.xOrientation : content.yOrientation) = -1;
    }
}

} // namespace

int runMap(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString folder = arguments.positional(0, u"DIR"_s);
    if (!arguments.has(u"out") && !arguments.has(u"tubes"))
        throw UsageError(u"--out is missing (or --tubes)."_s);
    if (arguments.has(u"out"))
        checkEnding(arguments.value(u"out"));
    if (arguments.has(u"tubes"))
        checkTubesEnding(arguments.value(u"tubes"));
    const QSizeF inches = pageInches(arguments);
    brannock::PictureContent flips;
    setFlips(arguments.value(u"flip"), flips);

    Target target(folder, arguments, Target::Takes::Project);
    QString out;
    if (arguments.has(u"out"))
        out = placeToWrite(target, arguments.value(u"out"));
    if (arguments.has(u"tubes"))
        placeToWrite(target, arguments.value(u"tubes")); // checked before any work is done
    if (arguments.has(u"map") && !map::readMap(target.map(), target.pathOf(arguments.value(u"map")), target.prompts()))
        return Failed;
    if (arguments.has(u"query") && !target.connect())
        return Failed;
    for (const QString &path : arguments.values(u"query")) {
        const auto query = readQuery(target, path);
        if (!query || !map::addFillOfQuery(target.map(), target.fillRunner(), *query))
            return Failed;
    }

    map::MapHeader header = target.map().header();
    if (arguments.has(u"header"))
        header = map::readHeaderFile(target.pathOf(arguments.value(u"header")));
    if (arguments.has(u"title"))
        header.upperText = arguments.value(u"title");
    const query::ArvoOptions &options = target.options();
    const tarnwick::JMacro macros = app::printMacros(target.systemMacros(), target.userMacros());
    brannock::PictureContent content = app::pageContent(header, target.map(), options.page, macros);
    content.xOrientation = flips.xOrientation;
    content.yOrientation = flips.yOrientation;
    content.documentName = target.map().name().isEmpty() ? target.project().name : target.map().name();
    if (!out.isEmpty())
        app::mapPage(target.map(), content, options.map, target.project().site.compCode).save(out, inches, kDpi);
    if (arguments.has(u"tubes")) {
        const map::TubeText text(target.map().component(), map::TubeText::Form::Csv);
        writeTubes(target, arguments.value(u"tubes"), text.ofMap(target.map().entries()));
    }
    printLegend(target.map());
    return Done;
}

} // namespace cli
