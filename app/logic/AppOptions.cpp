#include "AppOptions.h"

#include <tarnwick/base/Installation.h>

using namespace Qt::StringLiterals;
using tarnwick::OptionSpec;
using tarnwick::UsageError;

namespace app {

namespace {

constexpr OptionSpec kOptions[] = {
    {u"query", u"FILE.qry", u"run this query at the start and mark its tubes on the map; may be repeated", true},
    {u"dark", nullptr, u"dark colors, whatever the settings say"},
    {u"picture", u"FILE", u"write a picture of the window (.png, .jpg or .bmp) and end"},
    {u"size", u"WxH", u"size of the window in the picture (1280x800)"},
    {u"scale", u"N", u"device pixels per pixel of the picture (1)"}};

constexpr tarnwick::CommandText kProgram{
    u"arvo", u"[DIR|FILE.map|FILE.qry|FILE.rep|FILE.pln|FILE.lst|FILE.mdb]... [options]",
    u"database manager of eddy-current inspections of steam-generator tubes",
    u"Opens a project's folder, or files of a project, each in its window: a map, a query in the SQL editor, report "
    u"files "
    u"for the upload, an inspection plan, a tube list, a database, a text of another system for conversion. The "
    u"project "
    u"is the one whose folder the file is in, otherwise the one opened last. Without arguments the project opened last "
    u"is opened.",
    kOptions};

QSize sizeOf(const QString &text)
{
    const QStringList parts = text.split(u'x');
    bool wideOk = false;
    bool highOk = false;
    const QSize size(parts.value(0).toInt(&wideOk), parts.value(1).toInt(&highOk));
    constexpr int kMost = 10'000;
    if (parts.size() != 2 || !wideOk || !highOk || size.width() <= 0 || size.height() <= 0 || size.width() > kMost ||
        size.height() > kMost)
        throw UsageError(text + u" is no value for --size"_s);
    return size;
}

double scaleOf(const QString &text)
{
    constexpr double kMost = 8;
    bool ok = false;
    const double scale = text.toDouble(&ok);
    if (!ok || !(scale > 0) || scale > kMost)
        throw UsageError(text + u" is no value for --scale"_s);
    return scale;
}

} // namespace

AppOptions AppOptions::parse(const QStringList &arguments)
{
    AppOptions options;
    if (tarnwick::asksFor(arguments, u"version")) {
        options.answer = u"arvo "_s + tarnwick::programVersion() + u'\n';
    } else if (tarnwick::asksFor(arguments, u"help") || arguments.value(0) == u"-h"_s) {
        options.answer = tarnwick::commandHelp(u"arvo"_s, kProgram);
    } else {
        try {
            const tarnwick::Arguments parsed(arguments, kOptions);
            options.files = parsed.positional();
            options.queries = parsed.values(u"query");
            options.dark = parsed.has(u"dark");
            options.picture = parsed.value(u"picture");
            if (parsed.has(u"size"))
                options.size = sizeOf(parsed.value(u"size"));
            if (parsed.has(u"scale"))
                options.scale = scaleOf(parsed.value(u"scale"));
        } catch (const UsageError &error) {
            options.error = error.text() + u"\nusage: arvo "_s + kProgram.usage;
        }
    }
    return options;
}

tarnwick::ProgramManual arvoManual()
{
    return {.program = kProgram,
            .commands = {},
            .sections = {{u"EXAMPLES"_s, u"arvo plant: opens the project in the folder plant.\n\n"
                                         u"arvo plant/maps/sample.map: opens the project, then the map.\n\n"
                                         u"arvo plant --query plant/queries/wear.qry --picture wear.png: writes a "
                                         u"picture of the window in which the tubes of the query are marked."_s},
                         {u"HELP"_s, u"F1 opens the user's guide."_s},
                         tarnwick::environmentSection(),
                         tarnwick::filesSection(),
                         {u"SEE ALSO"_s, u"arvo-cli(1)"_s}}};
}

} // namespace app
