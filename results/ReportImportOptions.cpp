#include "ReportImportOptions.h"

namespace results {

using namespace Qt::StringLiterals;

namespace {

constexpr int kVersion = 1;

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
    print = tarnwick::JTablePrintArg::forResults();
}

void ReportImportOptions::serializeBody(tarnwick::JFile &file, int)
{
    file.serialize(printTitle);
    file.serialize(firstSetting);
    file.serialize(secondSetting);
    print.serialize(file);
}

} // namespace results
