#include "ReportImportOptions.h"

namespace results {

using namespace Qt::StringLiterals;
using tarnwick::JTablePrintArg;

namespace {

constexpr int kVersion = 1;

JTablePrintArg defaultPrint()
{
    JTablePrintArg print;
    print.sections[JTablePrintArg::PageHeader].text = u"[DATE]"_s;
    print.sections[JTablePrintArg::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    print.sections[JTablePrintArg::ReportFooter].text =
        u"Analyst ____________________________________________________"_s;
    return print;
}

} // namespace

ReportImportOptions::ReportImportOptions()
    : OptionFile(u"config\\arvo\\report_import.opt"_s, u"ReportImport Options"_s, kVersion)
{
    ReportImportOptions::resetToDefaults();
}

void ReportImportOptions::resetToDefaults()
{
    printTitle = u"Palomine"_s;
    firstSetting = 0;
    secondSetting = 1;
    print = defaultPrint();
}

void ReportImportOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(printTitle);
    file.serialize(firstSetting);
    file.serialize(secondSetting);
    print.serialize(file);
}

} // namespace results
