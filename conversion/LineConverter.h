#pragma once
#include "FieldCutter.h"
#include "Remarks.h"
#include "ReportConvOptions.h"
#include "ReportConvSpec.h"

#include <brannock/Project.h>
#include <brannock/Report.h>

namespace conversion {

/// Converts the lines of one text, in order, to report entries. Header lines can change the prompts. The values that
/// were read stay in the fields of the format.
class LineConverter
{
public:
    LineConverter(const brannock::Project &project, ReportConvSpec &spec, ConversionPrompts &prompts, Remarks &remarks,
                  const QString &file);

    /// number: line number in the text, from 1. entry: a new one.
    void convert(int number, QStringView line, brannock::ReportEntry &entry);

private:
    void applyField(brannock::ReportEntry &entry, const ConvField &field);
    void applyPercent(brannock::ReportEntry &entry, const ConvField &field);
    void applyLocation(brannock::ReportEntry &entry, const QString &value);
    int tubeNumber(ellery::Axis axis, const ConvField &field);
    /// Limited to the range that report files allow for the number.
    int integer(const ConvField &field, int least, int most);
    double number(const ConvField &field);
    void convertHeader(QStringView line, brannock::ReportEntry &entry);
    void applyCommentField(ConvField &field, QStringView line);
    /// text: makes the remark's text; not called if the text would not be kept.
    template <typename Text>
    void remark(const QString &kind, const Text &text);
    /// The same about a value of the line, which is only told if the line is a result.
    template <typename Text>
    void remarkOnValue(const Text &text);
    bool needsVolts();
    void remarkOnAddress(const brannock::ReportEntry &entry);
    void remarkOnResult(const brannock::ReportEntry &entry);
    void remarkOnLocations(const brannock::ReportEntry &entry);

    const brannock::Project &m_project;
    ReportConvSpec &m_spec;
    ConversionPrompts &m_prompts;
    Remarks &m_remarks;
    QString m_file;
    FieldCutter m_cutter;

    // State of the line being converted.
    int m_number = 0;
    bool m_hasVolts = false;
    QString m_codeText;
    QStringList m_lineRemarks; ///< added to the remarks only if the line is a result
    QString m_askedCode;       ///< of the last needsVolts()
    bool m_needsVolts = false; ///< and its answer: most lines have the code of the line before
};

} // namespace conversion
