#include "CommandLine.h"
#include "CommandTable.h"
#include "MapTarget.h"

#include <app/logic/SystemMacros.h>
#include <app/picture/MapPage.h>
#include <plans/FillCommit.h>
#include <QDir>
#include <QFileInfo>
#include <query/Messages.h>
#include <query/QueryDocument.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDpi = 150;

QSizeF pageInches(const Arguments &arguments)
{
    const QStringList sides = arguments.value(u"size", u"1650x1275"_s).split(u'x');
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

QString outputPath(const QString &path)
{
    const QFileInfo info(path);
    static const QStringList kinds = {u"emf"_s, u"pdf"_s, u"svg"_s, u"bmp"_s, u"png"_s, u"jpg"_s};
    if (!kinds.contains(info.suffix().toLower()))
        throw UsageError(u"--out needs a name that ends in .emf, .pdf, .svg, .bmp, .png or .jpg."_s);
    if (!info.absoluteDir().exists())
        throw tarnwick::Error(u"The folder %1 does not exist."_s.arg(info.absolutePath()));
    return info.absoluteFilePath();
}

void setFlips(const QString &axes, brannock::PictureContent &content)
{
    for (const QChar axis : axes) {
        if (axis != u'h' && axis != u'v')
            throw UsageError(u"--flip is h, v or hv."_s);
        (axis == u'h' ? content.xOrientation : content.yOrientation) = -1;
    }
}

/// Marks the tubes of a query file. False when that failed, which has been said.
bool addQuery(Target &target, const QString &path)
{
    query::QueryDocument document;
    try {
        query::readQueryFile(document, QFileInfo(path).absoluteFilePath(), target.project().roots());
    } catch (const tarnwick::FileError &error) {
        const tarnwick::Message &message = query::messages::kReadFile;
        target.prompts().showError(tarnwick::kErrorSeverity, message.number,
                                   QString::fromUtf16(message.text) + u"\n\n"_s + error.text());
        return false;
    }
    return plans::addFillOfQuery(target, document);
}

} // namespace

int runMap(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString folder = arguments.positional(0, u"DIR"_s);
    if (!arguments.has(u"out"))
        throw UsageError(u"--out is missing."_s);
    const QString out = outputPath(arguments.value(u"out"));
    const QSizeF inches = pageInches(arguments);
    brannock::PictureContent flips;
    setFlips(arguments.value(u"flip"), flips);

    Target target(folder, arguments, Target::Takes::Project);
    if (arguments.has(u"map") && !openMap(target, arguments.value(u"map")))
        return Failed;
    if (arguments.has(u"query") && !target.connect())
        return Failed;
    for (const QString &path : arguments.values(u"query")) {
        if (!addQuery(target, path))
            return Failed;
    }

    app::MapHeader header = target.map().header;
    if (arguments.has(u"header"))
        header = app::readHeaderFile(mapPath(target, arguments.value(u"header")));
    if (arguments.has(u"title"))
        header.upperText = arguments.value(u"title");
    const query::ArvoOptions &options = target.options();
    const tarnwick::JMacro macros = app::printMacros(target.systemMacros(), target.userMacros());
    brannock::PictureContent content = app::pageContent(header, target.legend(), target.steamGen(), options, macros);
    content.xOrientation = flips.xOrientation;
    content.yOrientation = flips.yOrientation;
    app::mapPage(target.steamGen(), content, options, target.project().site.compCode).save(out, inches, kDpi);
    printLegend(target.legend());
    return Done;
}

} // namespace cli
