#include "CommandTable.h"
#include "NamedObjects.h"
#include "TubeFile.h"

#include <db/FieldAccess.h>
#include <plans/storage/TubeSets.h>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;
using dao::DataType;
using plans::ListFillLine;
using plans::ListFillTube;
using plans::TubeListFile;

int runParseList(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional(1, u"FILE"_s);
    Target target(folder, arguments, Target::Takes::Project);
    const QString path = target.pathOf(name);
    const TubeListFile file = TubeListFile::read(path, target.project().steamGen,
                                                 TubeListFile::hasEntryNumbers(path, arguments.has(u"entry-numbers")));
    QJsonArray lines;
    for (const ListFillLine &line : file.lines())
        lines.append(QJsonObject{{u"line"_s, line.line},
                                 {u"text"_s, line.text.toString()},
                                 {u"comment"_s, line.isComment},
                                 {u"entry"_s, line.entryNum},
                                 {u"row"_s, line.row},
                                 {u"col"_s, line.col},
                                 {u"sec"_s, line.sec},
                                 {u"tube"_s, line.tube < 0 ? QJsonValue() : QJsonValue(line.tube)}});
    const QJsonObject parsed{{u"lines"_s, lines}, {u"errors"_s, file.errorCount()}, {u"notes"_s, file.notes()}};
    printData(QJsonDocument(parsed).toJson());
    for (const QString &remark : file.remarks())
        printError(u"warning: "_s + remark + u'\n');
    return Done;
}

int runTubeSets(const Arguments &arguments)
{
    const QList<OutputColumn> columns{
        {u"name"_s, DataType::Text}, {u"entries"_s, DataType::Long}, {u"description"_s, DataType::Memo}};
    return listNamed<plans::TubeSets>(arguments, columns, [](const plans::TubeSets::Info &set) {
        return QList<dao::Value>{db::toValue(set.name), db::toValue(qint32(set.count)), db::toValue(set.description)};
    });
}

int runTubeSet(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString name = arguments.positional(1, u"NAME"_s);
    const auto writer = makeRowWriter(arguments);
    if (arguments.has(u"out") && !arguments.value(u"out").endsWith(u".lst"_s, Qt::CaseInsensitive))
        throw UsageError(u"--out needs a name that ends in .lst."_s);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    const QString out = arguments.has(u"out") ? placeToWrite(target, arguments.value(u"out")) : QString();
    if (!target.connect(Target::Use::Read))
        return Failed;
    ConsoleProgress progress;
    const auto list = plans::TubeSets(target.session(), &progress).fetch(name);
    if (!list)
        return Failed;
    if (!out.isEmpty()) {
        const QString shown = tarnwick::SuitePath::fromMachine(out, target.project().roots()).text();
        const QString text = plans::tubeListText(*list, shown, tarnwick::JDateTime::now(), target.project().steamGen);
        tarnwick::writeFileAtomically(out, text.toUtf8());
        print(u"%1 entries\n"_s.arg(list->entries.size()));
        return Done;
    }
    writer->begin({{u"entry"_s, DataType::Long},
                   {u"sec"_s, DataType::Integer},
                   {u"row"_s, DataType::Integer},
                   {u"col"_s, DataType::Integer},
                   {u"symbol"_s, DataType::Text},
                   {u"colour"_s, DataType::Text}});
    for (const ListFillTube &tube : list->entries) {
        const tarnwick::ColourRef &colour = tube.mark.colour;
        writer->row({db::toValue(tube.entryNum), db::toValue(tube.sec), db::toValue(tube.row), db::toValue(tube.col),
                     db::toValue(tube.mark.symbol.text()),
                     db::toValue(tarnwick::format(u"%02X%02X%02X", colour.red(), colour.green(), colour.blue()))});
    }
    writer->end();
    return Done;
}

int runUploadTubeSet(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString file = arguments.positional(1, u"FILE"_s);
    const QString name = arguments.value(u"name");
    if (name.isEmpty())
        throw UsageError(u"--name is missing: the name of the tube set."_s);
    Target target(folder, arguments, Target::Takes::Project);
    plans::TubeList list = readList(target, file, arguments.has(u"entry-numbers"));
    if (arguments.has(u"desc"))
        list.description = arguments.value(u"desc");
    if (!target.connect(Target::Use::Store))
        return Failed;
    ConsoleProgress progress;
    if (!plans::TubeSets(target.session(), &progress).upload(list, name))
        return Failed;
    print(u"%1 %2 entries\n"_s.arg(target.console().lastStatus()).arg(list.entries.size()));
    return Done;
}

int runDeleteTubeSet(const Arguments &arguments)
{
    return deleteNamed<plans::TubeSets>(arguments);
}

} // namespace cli
