#pragma once
#include "FieldCutter.h"
#include "Remarks.h"
#include "ReportConvOptions.h"
#include "ReportConvSpec.h"

#include <brannock/Project.h>
#include <brannock/Report.h>

namespace conversion {

/// Turns the lines of one text, in their order, into report entries. Header lines can change the prompts; the values
/// cut out are kept in the conversion spec's fields.
class LineConverter
{
public:
    LineConverter(const brannock::Project &project, ReportConvSpec &spec, ConversionPrompts &prompts, Remarks &remarks,
                  const QString &file);

    /// number: of the line in the text, from 1.
    brannock::ReportEntry convert(int number, QStringView line);

private:
    void applyField(brannock::ReportEntry &entry, const ConvField &field);
    void applyPercent(brannock::ReportEntry &entry, const ConvField &field);
    void applyLocation(brannock::ReportEntry &entry, const QString &value);
    int tubeNumber(ellery::Axis axis, const ConvField &field);
    /// Held within the bounds that report files have for the number.
    int integer(const ConvField &field, int least, int most);
    double number(const ConvField &field);
    brannock::ReportEntry headerEntry(QStringView line);
    void applyCommentField(ConvField &field, QStringView line);
    void remark(const QString &text);
    void remarkOnAddress(const brannock::ReportEntry &entry);
    void remarkOnResult(const brannock::ReportEntry &entry);

    const brannock::Project &m_project;
    ReportConvSpec &m_spec;
    ConversionPrompts &m_prompts;
    Remarks &m_remarks;
    QString m_file;
    FieldCutter m_cutter;

    // Of the line being converted.
    int m_number = 0;
    bool m_hasVolts = false;
    QString m_codeText;
    QStringList m_lineRemarks; ///< told only when the line is a result
};

} // namespace conversion
