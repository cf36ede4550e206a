#include "CommandLine.h"
#include "CommandTable.h"
#include "LegendOutput.h"
#include "Target.h"
#include "TubeFile.h"

#include <app/logic/SelectionCommands.h>
#include <app/logic/WindowCommandTable.h>
#include <map/FillCommit.h>
#include <map/MapFiles.h>
#include <map/Messages.h>
#include <map/TubeText.h>
#include <plans/BoxFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <plans/storage/TubeSets.h>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLockFile>

#include <limits>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

constexpr tarnwick::ColourRef kBlue{0xFF0000};

/// Position of a word in a list of allowed words. Throws UsageError for any other word.
int choice(QStringView option, const QString &word, const QStringList &words)
{
    const qsizetype place = words.indexOf(word);
    if (place < 0)
        throw UsageError(u"--%1 is one of: %2."_s.arg(option.toString(), words.join(u", "_s)));
    return int(place);
}

double radiusOf(const Arguments &arguments)
{
    bool ok = false;
    const double radius = arguments.value(u"radius", u"1"_s).toDouble(&ok);
    if (!ok || !(radius > 0) || radius > 1e6)
        throw UsageError(u"--radius needs a number above 0."_s);
    return radius;
}

/// --tubes names either the tubes to choose from, or an output file for the chosen tubes.
bool isFileName(const QString &word)
{
    return word.contains(u'.');
}

/// Empty if no file is given.
QString tubesFile(const Arguments &arguments)
{
    QString name;
    for (const QString &word : arguments.values(u"tubes")) {
        if (isFileName(word))
            name = word;
    }
    if (!name.isEmpty())
        checkTubesEnding(name);
    return name;
}

plans::TubeFilter filterOf(const Arguments &arguments)
{
    plans::TubeFilter filter;
    filter.region = choice(u"region", arguments.value(u"region", u"map"_s), {u"map"_s, u"selected"_s});
    for (const QString &word : arguments.values(u"tubes")) {
        if (!isFileName(word))
            filter.tube = choice(u"tubes", word, {u"all"_s, u"symbols"_s, u"open"_s});
    }
    return filter;
}

int atLeastOne(const Arguments &arguments, QStringView option, int whenMissing)
{
    constexpr int kMost = 32'767;
    return int(arguments.integer(option, whenMissing, 1, kMost));
}

std::unique_ptr<plans::MapFill> randomFill(const Arguments &arguments)
{
    if (arguments.has(u"percent") && arguments.has(u"count"))
        throw UsageError(u"Only one of --percent and --count can be given."_s);
    auto fill = std::make_unique<plans::PcntFill>();
    constexpr int kMostTubes = 10'000'000;
    fill->parameters.percentMode = !arguments.has(u"count");
    fill->parameters.percent = qint32(arguments.integer(u"percent", 10, 0, 100));
    fill->parameters.tubeCount = qint32(arguments.integer(u"count", 0, 0, kMostTubes));
    fill->parameters.randomSeed = !arguments.has(u"seed");
    fill->parameters.seed = quint32(arguments.integer(u"seed", 1, 1, std::numeric_limits<quint32>::max()));
    fill->parameters.filter = filterOf(arguments);
    return fill;
}

std::unique_ptr<plans::MapFill> boxFill(const Arguments &arguments)
{
    auto fill = std::make_unique<plans::BoxFill>();
    fill->parameters.radius = radiusOf(arguments);
    fill->mark = {ellery::Symbol(u'D'), kBlue};
    return fill;
}

std::unique_ptr<plans::MapFill> patternFill(const Arguments &arguments)
{
    auto fill = std::make_unique<plans::PatternFill>();
    plans::PatternFill::Parameters &pattern = fill->parameters;
    pattern.filter = filterOf(arguments);
    pattern.firstRow = atLeastOne(arguments, u"first-row", 1);
    pattern.firstCol = atLeastOne(arguments, u"first-col", 1);
    pattern.rowIncrement = atLeastOne(arguments, u"row-inc", 2);
    pattern.colIncrement = atLeastOne(arguments, u"col-inc", 2);
    pattern.includeFirstTube = arguments.has(u"first-tube");
    pattern.includeLastTube = arguments.has(u"last-tube");
    fill->mark = {ellery::Symbol(u'D'), kBlue};
    return fill;
}

std::unique_ptr<plans::MapFill> fillOf(const QString &kind, const Arguments &arguments)
{
    if (kind == "random"_L1)
        return randomFill(arguments);
    if (kind == "box"_L1)
        return boxFill(arguments);
    if (kind == "pattern"_L1)
        return patternFill(arguments);
    throw UsageError(u"A fill is random, box, pattern or list, not \"%1\"."_s.arg(kind));
}

/// Reads the list of a file, or fetches a tube set. Null after reporting the failure.
std::unique_ptr<plans::MapFill> listFill(Target &target, const Arguments &arguments)
{
    const QString name = arguments.positional(2, u"FILE or NAME"_s);
    auto fill = std::make_unique<plans::ListFill>();
    const QString ending = QFileInfo(name).suffix().toLower();
    const bool looksLikeFile = ending == "lst"_L1 || ending == "txt"_L1;
    if (looksLikeFile && !isStoredName(target, plans::kTubeSetTables, name)) {
        fill->parameters = readList(target, name, arguments.has(u"entry-numbers"));
        return fill;
    }
    ConsoleProgress progress;
    if (!target.session().isOpen() && !target.connect(Target::Use::Read))
        return nullptr;
    const auto list = plans::TubeSets(target.session(), &progress).fetch(name);
    if (!list)
        return nullptr;
    fill->parameters = *list;
    return fill;
}

void selectTubes(const Arguments &arguments, map::MapDocument &document)
{
    static const QHash<QString, int> words{{u"all"_s, app::SelectAllTubes},
                                           {u"symbols"_s, app::SelectAllSymbols},
                                           {u"open"_s, app::SelectOpenTubes},
                                           {u"periph"_s, app::SelectPeriph}};
    const ellery::SteamGen &component = document.component();
    ellery::TubeStates tubes = document.tubes();
    for (const QString &text : arguments.values(u"select")) {
        if (const auto word = words.constFind(text); word != words.constEnd()) {
            tubes.setSelection(app::selectionAfter(*word, component, tubes, -1));
            continue;
        }
        const int tube = component.parseTube(text);
        if (tube < 0)
            throw tarnwick::Error(u"There is no tube \"%1\"."_s.arg(text));
        tubes.setSelected(tube, true);
    }
    document.change(u"Select Tubes"_s, [&tubes](map::MapEdit &edit) { edit.setSelection(tubes.selection()); });
}

/// The mark with symbol and colour from the options, if given.
ellery::TubeMark lookOf(const Arguments &arguments, ellery::TubeMark mark)
{
    if (arguments.has(u"symbol")) {
        const QString text = arguments.value(u"symbol");
        if (text.size() != 1 || text[0].isSpace())
            throw UsageError(u"--symbol is one character."_s);
        mark.symbol = ellery::Symbol(text[0].unicode());
    }
    if (arguments.has(u"colour")) {
        const QString text = arguments.value(u"colour");
        bool ok = false;
        const quint32 rgb = text.toUInt(&ok, 16);
        constexpr int kDigits = 6;
        if (!ok || text.size() != kDigits)
            throw UsageError(u"--colour is RRGGBB in hexadecimal digits."_s);
        mark.colour = tarnwick::ColourRef::fromRgb(int(rgb >> 16), int(rgb >> 8 & 0xFF), int(rgb & 0xFF));
    }
    return mark;
}

/// Prevents other runs of the command from changing a map between reading and storing it. Waits for them. Throws
/// tarnwick::Error if the lock cannot be taken, and Cancelled if the user stops the wait.
class MapLock
{
public:
    explicit MapLock(const QString &path)
        : m_lock(path + u".lock"_s)
    {
        constexpr int kPollIntervalMs = 100;
        constexpr int kLockTimeoutMs = 60'000;
        ConsoleProgress progress;
        QElapsedTimer waiting;
        waiting.start();
        // A lock never becomes stale by its age: the other run may take any time.
        m_lock.setStaleLockTime(0);
        while (!m_lock.tryLock(kPollIntervalMs)) {
            if (m_lock.error() == QLockFile::PermissionError)
                throw tarnwick::Error(u"The folder of %1 cannot be written to."_s.arg(path));
            if (m_lock.error() != QLockFile::LockFailedError)
                throw tarnwick::Error(u"The file %1.lock cannot be written; the disk may be full."_s.arg(path));
            if (waiting.hasExpired(kLockTimeoutMs))
                throw tarnwick::Error(u"Another program has %1 locked by the file %1.lock."_s.arg(path));
            if (progress.cancelled())
                throw tarnwick::Cancelled();
            progress.report(0, 0, u"Waiting for another program that changes the map ..."_s);
        }
    }

private:
    QLockFile m_lock;
};

/// Reads the map that is to be replaced. Returns false after reporting why it cannot be read or should not be replaced.
bool readForChange(Target &target, const QString &path)
{
    if (!map::readMap(target.map(), path, target.prompts()))
        return false;
    return !target.map().isOfOtherModel() ||
           target.prompts().question(tarnwick::Buttons::NoYes, map::messages::kAskReplaceOtherModel,
                                     QFileInfo(path).fileName()) == tarnwick::Answer::Yes;
}

} // namespace

int runFill(const Arguments &arguments)
{
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString kind = arguments.positional(1, u"random, box, pattern or list"_s);
    const bool isList = kind == "list"_L1;
    if (isList)
        arguments.positional(2, u"FILE or NAME"_s);
    arguments.atMost(isList ? 3 : 2);
    auto fill = isList ? nullptr : fillOf(kind, arguments);
    if (!arguments.has(u"map"))
        throw UsageError(u"--map is missing: the map to which the fill is added."_s);

    const QString tubes = tubesFile(arguments);
    Target target(folder, arguments, Target::Takes::Project);
    const QString path = placeToWrite(target, arguments.value(u"map"));
    if (!path.endsWith(u".map"_s, Qt::CaseInsensitive))
        throw UsageError(u"--map needs a name that ends in .map."_s);
    if (!tubes.isEmpty())
        placeToWrite(target, tubes);
    if (isList)
        fill = listFill(target, arguments);
    if (!fill)
        return Failed;
    MapLock lock(path);
    if (QFileInfo::exists(path) && !readForChange(target, path))
        return Failed;
    map::MapDocument &document = target.map();
    selectTubes(arguments, document);
    map::addNewFill(document, target.fillRunner(), *fill);
    const int place = document.count() - 1;
    const ellery::TubeMark look = lookOf(arguments, document.entry(place).mark);
    document.change(u"Change Symbol"_s, [&](map::MapEdit &edit) { edit.setMark(place, look); });
    if (!map::storeMap(document, path, target.prompts()))
        return Failed;
    if (!tubes.isEmpty()) {
        const map::TubeText csv(document.component(), map::TubeText::Form::Csv);
        writeTubes(target, tubes, csv.ofEntry(document.entry(place)));
    }
    printLegend(document);
    return Done;
}

} // namespace cli
