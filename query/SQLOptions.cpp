#include "SQLOptions.h"

#include "QueryDocument.h"

#include <brannock/SystemOption.h>
#include <tarnwick/Format.h>

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kVersion = 3;
constexpr int kFirstVersionWithMargins = 2;
constexpr int kFirstVersionWithSectionLines = 3;

/// Limits a count of lines or characters to the range of the options dialog.
void serializeCount(tarnwick::JFile &file, qint32 &count, qint32 least, qint32 most)
{
    file.serialize(count);
    count = qBound(least, count, most);
}

} // namespace

SQLOptions::SQLOptions(const QString &name)
    : OptionFile(tarnwick::format(u"config\\arvo\\%s.opt", name), u"SQL Options"_s, kVersion)
{
}

void SQLOptions::addRecentQuery(const QString &name)
{
    if (QueryDocument::isFileName(name))
        brannock::addRecent(recentQueries, name, kMaxRecentQueries);
}

void SQLOptions::resetToDefaults()
{
    const SQLOptions defaults;
    editorLines = defaults.editorLines;
    editorCharacters = defaults.editorCharacters;
    resultLines = defaults.resultLines;
    sectionLines = {};
    margins = {};
    drawSeparators = true;
    queryButtons.clear();
    recentQueries.clear();
}

void SQLOptions::serializeBody(tarnwick::JFile &file, int version)
{
    serializeCount(file, editorLines, 5, 30);
    serializeCount(file, editorCharacters, 50, 120);
    serializeCount(file, resultLines, 5, 40);
    if (version >= kFirstVersionWithSectionLines) {
        for (qint32 *lines : {&sectionLines.reportTitle, &sectionLines.reportHeader, &sectionLines.pageHeader,
                              &sectionLines.pageFooter, &sectionLines.reportFooter, &sectionLines.reportVersion})
            serializeCount(file, *lines, 1, 40);
    }
    if (version < kFirstVersionWithMargins) {
        QString discarded;
        file.serialize(discarded);
        file.serialize(discarded);
        return;
    }
    margins.serialize(file);
    file.serialize(drawSeparators);
    file.serialize(recentQueries);
    file.serialize(queryButtons);
}

} // namespace query
