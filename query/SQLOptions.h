#pragma once
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/OptionFile.h>

namespace query {

/// Settings of the SQL editor, per user.
class SQLOptions : public tarnwick::OptionFile
{
public:
    static constexpr int kMaxRecentQueries = 10;

    /// name: "sql" for the editor of the main window, "query_fill" for the editor of the query fill.
    explicit SQLOptions(const QString &name = QStringLiteral("sql"));

    qint32 editorLines = 15;
    qint32 editorCharacters = 80;
    qint32 resultLines = 15;
    /// Heights in lines of the editors of report title, report header, page header, page footer, report footer, report
    /// version.
    struct SectionLines
    {
        qint32 reportTitle = 5;
        qint32 reportHeader = 8;
        qint32 pageHeader = 8;
        qint32 pageFooter = 10;
        qint32 reportFooter = 6;
        qint32 reportVersion = 2;
        bool operator==(const SectionLines &) const = default;
    } sectionLines;
    tarnwick::PrintMargins margins;
    bool drawSeparators = true;
    QStringList queryButtons;  ///< query files, in the suite's form
    QStringList recentQueries; ///< query files, most recent first

    /// Adds a query file to the recent list; other names are ignored.
    void addRecentQuery(const QString &name);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace query
