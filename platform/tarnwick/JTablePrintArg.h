#pragma once
#include "JFile.h"

#include <array>
#include <QString>

namespace tarnwick {

/// One section of a printed table: its text, with bracketed macros, and its font and alignment.
struct PrintSection
{
    enum class Align : qint32 { Left = 0, Right = 1, Center = 2 };

    QString text; ///< lines end with "\n"; unused by the report body, which is the table itself
    QString font = QStringLiteral("Times New Roman");
    qint32 size = 10; ///< points
    ColourRef colour;
    Align align = Align::Left;
    double spacing = 0; ///< between lines, in inches

    void serialize(JFile &file);
    bool operator==(const PrintSection &) const = default;
};

/// Names of the alignments as dialogs show them: "Left", "Right", "Center".
QString printAlignName(PrintSection::Align align);

/// Paper margins in inches.
struct PrintMargins
{
    double left = 0.75;
    double top = 0.5;
    double right = 0.5;
    double bottom = 0.25;

    void serialize(JFile &file);
    bool operator==(const PrintMargins &) const = default;
};

/// Print layout of a table: the texts around it, the margins, and whether cells are separated by lines.
struct JTablePrintArg
{
    enum Section { ReportTitle, ReportHeader, PageHeader, ReportBody, PageFooter, ReportFooter, ReportVersion };
    static constexpr int kSections = 7;
    /// "Report Title", "Report Header", ...
    static QString sectionName(int section);

    QString title; ///< title of the print job
    std::array<PrintSection, kSections> sections;
    PrintMargins margins;
    bool separators = true;

    /// Default layout for lists of results: date at the top, page numbers at the bottom, and a line for the analyst's
    /// signature at the end.
    static JTablePrintArg forResults();

    /// Record version 1: title, the seven sections, the margins (left, top, right, bottom), the separator flag.
    void serialize(JFile &file);
    bool operator==(const JTablePrintArg &) const = default;
};

} // namespace tarnwick
