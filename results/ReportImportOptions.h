#pragma once
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/OptionFile.h>

namespace results {

/// Settings that the upload dialog keeps between runs.
class ReportImportOptions : public tarnwick::OptionFile
{
public:
    ReportImportOptions();

    QString printTitle;
    /// Two settings of the suite's files that this program does not use; they are written back unchanged.
    qint32 firstSetting = 0;
    qint32 secondSetting = 1;
    tarnwick::JTablePrintArg print;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace results
