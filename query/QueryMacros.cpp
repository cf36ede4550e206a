#include "QueryMacros.h"

#include "TubeColumns.h"

#include <brannock/Project.h>

namespace query {

using namespace Qt::StringLiterals;

tarnwick::JMacro queryMacros(const QueryDocument &document, const QueryResult &result, const QueryContext &context,
                             const ellery::SteamGen &steamGen)
{
    tarnwick::JMacro macros = context.userMacros;
    macros.merge(context.currentSystemMacros());
    macros.set(u"[QUERY FILE]"_s, document.name);
    macros.set(u"[QUERY NAME]"_s, document.nameInFolder());
    macros.set(u"[QUERY RECORDS]"_s, tarnwick::format(u"%D", result.rowCount()));
    macros.set(u"[TOLVENMARK REV]"_s, brannock::TOLVENMARK_REV);
    macros.set(u"[QUERY TOTAL TUBES]"_s, tarnwick::format(u"%D", totalTubes(result, steamGen)));
    return macros;
}

void applyPrintOptions(QueryDocument &document, const SQLOptions &options)
{
    document.layout.margins = options.margins;
    document.layout.separators = options.drawSeparators;
}

QueryDocument expandedDocument(const QueryDocument &document, const tarnwick::JMacro &macros)
{
    QueryDocument expanded = document;
    expanded.sql = macros.expand(document.sql);
    for (tarnwick::PrintSection &section : expanded.layout.sections)
        section.text = macros.expand(section.text);
    return expanded;
}

} // namespace query
