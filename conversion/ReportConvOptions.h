#pragma once
#include <QString>
#include <tarnwick/JDateTime.h>
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/OptionFile.h>

namespace conversion {

/// Values that the text may not contain, from the dialog's prompts or the command line's flags. The file name and
/// header lines of a text can set some of them.
struct ConversionPrompts
{
    static constexpr qint32 kLeastCal = 1;
    static constexpr qint32 kMostCal = 999;
    static bool isCal(int number) { return number >= kLeastCal && number <= kMostCal; }

    qint32 cal = 1;
    qint32 leg = 1; ///< 0 outlet, 1 inlet; only kept between runs, not written to entries
    qint32 sec = 0;
    QString analyst;
    QString operatorId;
    QString probe;
    QString serialNumber;
    QString operType = QStringLiteral("PRI");
    /// For entries without a time; null: the time of storing. Not kept between runs.
    tarnwick::JDateTime dateTime;
};

/// Settings of the conversion dialog: config\arvo\report_conv.opt.
class ReportConvOptions : public tarnwick::OptionFile
{
public:
    ReportConvOptions();

    QString specFile;      ///< path of the current spec, relative to the project
    QString reportsFolder; ///< start folder of the Open dialog
    tarnwick::JTablePrintArg printArgs;
    qint32 sourceColumns = 80; ///< width of the text view in characters, 4 to 200
    qint32 reportLines = 12;   ///< height of the report editor in lines, 4 to 30
    qint32 extraFields = 0;    ///< 0 to 14
    qint32 fontSize = 9;       ///< font size of the text view in points, 8 to 12
    bool highlightFields = true;
    ConversionPrompts prompts;
    qint32 fileFilterIndex = 0;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace conversion
