#include "ColumnPrinter.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "TubeFile.h"

#include <db/FieldDefinition.h>
#include <query/Messages.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;

namespace {

void printFormats(const query::FormatList &formats)
{
    static const QString alignments[] = {u"CENTER"_s, u"LEFT"_s, u"RIGHT"_s};
    ColumnPrinter printer({u"TABLE"_s, u"NAME"_s, u"TITLE"_s, u"FORMAT"_s, u"WIDTH"_s, u"ALIGN"_s, u"TYPE"_s},
                          {false, false, false, false, true});
    for (const query::FormatList::Table &table : formats.tables)
        for (const db::ColumnFormat &format : table.fields)
            printer.row({table.name, format.name, format.title, format.format, QString::number(format.width),
                         alignments[format.alignment], db::daoTypeName(format.type)});
    printer.end();
}

} // namespace

int runFormats(const Arguments &arguments)
{
    arguments.atMost(1);
    if (arguments.has(u"import") && arguments.has(u"export"))
        throw UsageError(u"Only one of --import and --export can be given."_s);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    query::FormatList &formats = target.queryContext().formats;
    if (arguments.has(u"import")) {
        formats.loadFrom(target.pathOf(arguments.value(u"import")));
        query::showRefused(formats, target.prompts());
    }
    const QString out = arguments.has(u"export") ? placeToWrite(target, arguments.value(u"export")) : QString();
    if (!target.connect(Target::Use::Read))
        return Failed;
    const auto rebuild = [&] { formats.rebuild(target.session().database()); };
    if (!tarnwick::attempt(target.prompts(), rebuild, query::messages::kFormatInfo))
        return Failed;
    if (arguments.has(u"import")) {
        formats.store(target.queryContext().roots);
        print(u"Stored formats.\n");
    } else if (!out.isEmpty()) {
        formats.storeTo(out);
        print(u"Stored formats in %1.\n"_s.arg(out));
    } else {
        printFormats(formats);
    }
    return Done;
}

} // namespace cli
