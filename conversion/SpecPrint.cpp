#include "SpecPrint.h"

#include <brannock/Project.h>
#include <tarnwick/Format.h>
#include <tarnwick/JDateTime.h>

namespace conversion {

using namespace Qt::StringLiterals;
using tarnwick::format;

static QString labelOf(const QStringList &labels, int number, const QString &otherwise)
{
    return labels.value(number, otherwise);
}

static QString columns(const ConvField &field)
{
    return format(u"%5d-%-5d", field.firstColumn, field.lastColumn);
}

QString specAsText(const ReportConvSpec &spec, const QString &name)
{
    QString text = u"OPTIONS\n\n"_s;
    text += format(u"Header Lines: %d\n", spec.headerLines);
    text += format(u"Field Type: %S\n", labelOf(fieldLayoutLabels(), spec.layout, u"???"_s));
    for (const TextPair &type : spec.fileTypes)
        text += format(u"File Type: %S (%S)\n", type.from, type.entry);

    text += format(u"\n%S Report Fields\n\n", name);
    for (int i = 0; i < spec.reportFields.size(); ++i) {
        const ConvField &field = spec.reportFields[i];
        text += format(u"%3d  %-16S %S\n", i + 1, reportFieldPrintLabel(field.type), columns(field));
    }
    text += format(u"\n%S Filename Fields\n\n", name);
    for (int i = 0; i < spec.filenameFields.size(); ++i) {
        const ConvField &field = spec.filenameFields[i];
        text += format(u"%3d  %-16S %-10S %S\n", i + 1,
                       labelOf(filenameFieldLabels(), field.type, format(u"Field type %d", field.type)),
                       labelOf(filenamePartLabels(), field.part, u"???"_s), columns(field));
    }
    text += format(u"\n%S Keyword Fields\n\n", name);
    for (int i = 0; i < spec.commentFields.size(); ++i) {
        const ConvField &field = spec.commentFields[i];
        text += format(u"%3d  %-16S %-10S %S %S\n", i + 1,
                       labelOf(commentFieldLabels(), field.type, format(u"Field type %d", field.type)),
                       labelOf(commentPartLabels(), field.part, u"???"_s), columns(field), field.keyword);
    }
    text += format(u"\n%S Operator Types\n\n", name);
    for (const TextPair &pair : spec.operTypes)
        text += format(u"%-8S %S\n", pair.entry, pair.from);
    return text;
}

tarnwick::JTablePrintArg specPrintLayout(const QString &name)
{
    using tarnwick::JTablePrintArg;
    tarnwick::JTablePrintArg layout;
    layout.title = name;
    layout.separators = false;
    layout.sections[JTablePrintArg::ReportBody].font = u"Courier New"_s;
    layout.sections[JTablePrintArg::PageFooter].text =
        format(u"Palomine Tolvenmark %U,  %t", brannock::TOLVENMARK_REV, tarnwick::JDateTime::now());
    return layout;
}

TextLines::TextLines(const QString &text)
    : m_lines(text.split(u'\n'))
{
}

tarnwick::GridColumn TextLines::column(int) const
{
    qsizetype width = 1;
    for (const QString &line : m_lines)
        width = std::max(width, line.size());
    return {.title = {}, .width = int(width)};
}

} // namespace conversion
