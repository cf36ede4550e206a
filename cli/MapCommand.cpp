#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <brannock/gui/MapPicture.h>
#include <plans/FillCommit.h>
#include <plans/gui/MapLook.h>
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
    static const QStringList kinds = {u"png"_s, u"bmp"_s, u"svg"_s, u"pdf"_s, u"jpg"_s};
    if (!kinds.contains(info.suffix().toLower()))
        throw UsageError(u"--out needs a name that ends in .png, .bmp, .svg, .pdf or .jpg."_s);
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

} // namespace

int runMap(const Arguments &arguments)
{
    arguments.atMost(1);
    const QString folder = arguments.positional(0, u"DIR"_s);
    if (!arguments.has(u"out"))
        throw UsageError(u"--out is missing."_s);
    const QString out = outputPath(arguments.value(u"out"));
    brannock::PictureContent content;
    const QSizeF inches = pageInches(arguments);
    setFlips(arguments.value(u"flip"), content);

    Target target(folder, arguments, Target::Takes::Project);
    if (arguments.has(u"query") && !target.connect())
        return Failed;
    for (const QString &path : arguments.values(u"query")) {
        query::QueryDocument document;
        try {
            query::readQueryFile(document, QFileInfo(path).absoluteFilePath(), target.project().roots());
        } catch (const tarnwick::FileError &error) {
            const tarnwick::Message &message = query::messages::kReadFile;
            target.prompts().showError(tarnwick::kErrorSeverity, message.number,
                                       QString::fromUtf16(message.text) + u"\n\n"_s + error.text());
            return Failed;
        }
        if (!plans::addFillOfQuery(target, document))
            return Failed;
    }

    content.title = arguments.value(u"title");
    content.modelText = brannock::modelText(target.steamGen());
    content.legend = plans::legendRows(target.legend());
    query::ArvoOptions options;
    options.load(target.queryContext().roots);
    const brannock::MapScene scene(target.steamGen(), plans::mapOptions(options));
    brannock::MapPicture(scene, content).save(out, inches, kDpi);
    for (const brannock::LegendRow &row : std::as_const(content.legend))
        print(u"%1  %2  %3  %4  %5\n"_s.arg(QChar(row.symbol))
                  .arg(row.type, -8)
                  .arg(row.description, -30)
                  .arg(row.tubes, 8)
                  .arg(row.hits, 8));
    return Done;
}

} // namespace cli
