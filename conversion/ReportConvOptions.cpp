#include "ReportConvOptions.h"

#include "ReportConvSpec.h"

namespace conversion {

using namespace Qt::StringLiterals;

ReportConvOptions::ReportConvOptions()
    : OptionFile(u"config\\arvo\\report_conv.opt"_s, u"ConvertReport Options"_s, 1)
{
    ReportConvOptions::resetToDefaults();
}

void ReportConvOptions::resetToDefaults()
{
    specFile = QString::fromUtf16(ReportConvSpec::kDefaultPath);
    reportsFolder = u".\\reports"_s;
    printArgs = tarnwick::JTablePrintArg::forResults();
    sourceColumns = 80;
    reportLines = 12;
    extraFields = 0;
    fontSize = 9;
    highlightFields = true;
    prompts = {};
    fileFilterIndex = 0;
}

void ReportConvOptions::serializeBody(tarnwick::JFile &file, int /*version*/)
{
    file.serialize(specFile);
    file.serialize(reportsFolder);
    printArgs.serialize(file);
    file.serialize(sourceColumns);
    file.serialize(reportLines);
    file.serialize(extraFields);
    file.serialize(fontSize);
    file.serialize(highlightFields);
    file.serialize(prompts.cal);
    file.serialize(prompts.leg);
    file.serialize(prompts.sec);
    file.serialize(prompts.analyst);
    file.serialize(prompts.operatorId);
    file.serialize(prompts.probe);
    file.serialize(prompts.serialNumber);
    file.serialize(prompts.operType);
    file.serialize(fileFilterIndex);
}

} // namespace conversion
