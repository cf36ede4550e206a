#pragma once
#include <QString>
#include <tarnwick/JDateTime.h>
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/OptionFile.h>

namespace conversion {

/// The values that a text may not carry, as the dialog's prompts or the command line's flags give them. The file name
/// and header lines of a text can set some of them.
struct ConversionPrompts
{
    qint32 cal = 1;
    qint32 leg = 1; ///< 0 outlet, 1 inlet; kept between runs only, no entry gets it
    qint32 sec = 0;
    QString analyst;
    QString operatorId;
    QString probe;
    QString serialNumber;
    QString operType = QStringLiteral("PRI");
    /// For entries without a time of their own; null: the time of storing. Not kept between runs.
    tarnwick::JDateTime dateTime;
};

/// The settings of the conversion dialog: config\arvo\report_conv.opt.
class ReportConvOptions : public tarnwick::OptionFile
{
public:
    ReportConvOptions();

    QString specFile;      ///< of the conversion spec in use, relative to the project
    QString reportsFolder; ///< where the Open dialog begins
    tarnwick::JTablePrintArg printArgs;
    qint32 sourceColumns = 80; ///< width of the text view in characters, 4 to 200
    qint32 reportLines = 12;   ///< height of the report editor in lines, 4 to 30
    qint32 extraFields = 0;    ///< 0 to 14
    qint32 fontSize = 9;       ///< of the text view in points, 8 to 12
    bool highlightFields = true;
    ConversionPrompts prompts;
    qint32 fileFilterIndex = 0;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace conversion
