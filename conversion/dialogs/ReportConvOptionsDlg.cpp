#include "ReportConvOptionsDlg.h"

#include <conversion/Messages.h>
#include <tarnwick/AskToSave.h>
#include <tarnwick/gui/NumberField.h>

#include <QCheckBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace conversion {

ReportConvOptionsDlg::ReportConvOptionsDlg(const ReportConvOptions &options, tarnwick::UserPrompts &prompts,
                                           QWidget *parent)
    : JDialog(prompts, nullptr, u"reportConvOptionsDlg"_s, parent)
    , m_before(options)
    , m_highlight(new QCheckBox(u"&Highlight Fields"_s))
{
    auto *form = new QFormLayout;
    m_sourceColumns = addNumber(*form, u"&Source Cols"_s, u"sourceColumns"_s, 4, 200, options.sourceColumns,
                                u"Width of the text, in characters"_s);
    m_reportLines = addNumber(*form, u"Report &Lines"_s, u"reportLines"_s, 4, 30, options.reportLines,
                              u"Height of the report's entries, in lines"_s);
    m_extraFields =
        addNumber(*form, u"E&xtra Fields"_s, u"extraFields"_s, 0, 14, options.extraFields,
                  u"Empty rows behind the last field in the format's tables, to type further fields into"_s);
    m_fontSize = addNumber(*form, u"Font Si&ze"_s, u"fontSize"_s, 8, 12, options.fontSize, u"Letters of the text"_s);
    m_fontSize->setFormat(u"%d pt"_s);
    m_highlight->setObjectName(u"highlightFields"_s);
    m_highlight->setToolTip(u"Mark the columns of the fields in their colors"_s);
    m_highlight->setChecked(options.highlightFields);
    connect(m_highlight, &QCheckBox::toggled, this, [this] { refresh(); });
    form->addRow(QString(), m_highlight);
    body().addLayout(form);
    body().addStretch(1);
    finish(m_sourceColumns, {320, 240});
}

tarnwick::NumberField *ReportConvOptionsDlg::addNumber(QFormLayout &form, const QString &label, const QString &name,
                                                       int least, int most, int value, const QString &tip)
{
    auto *field = new tarnwick::NumberField;
    field->setObjectName(name);
    field->setFormat(u"%d"_s);
    field->setLimits(least, most);
    field->setNumber(value);
    field->setToolTip(tip);
    connect(field, &tarnwick::NumberField::numberEdited, this, [this] { refresh(); });
    form.addRow(label, field);
    return field;
}

ReportConvOptions ReportConvOptionsDlg::options() const
{
    ReportConvOptions options = m_before;
    options.sourceColumns = qint32(m_sourceColumns->whole());
    options.reportLines = qint32(m_reportLines->whole());
    options.extraFields = qint32(m_extraFields->whole());
    options.fontSize = qint32(m_fontSize->whole());
    options.highlightFields = m_highlight->isChecked();
    return options;
}

bool ReportConvOptionsDlg::isModified() const
{
    const ReportConvOptions now = options();
    return now.sourceColumns != m_before.sourceColumns || now.reportLines != m_before.reportLines ||
           now.extraFields != m_before.extraFields || now.fontSize != m_before.fontSize ||
           now.highlightFields != m_before.highlightFields;
}

bool ReportConvOptionsDlg::store()
{
    return m_isSaved = true;
}

bool ReportConvOptionsDlg::discard()
{
    if (isModified())
        return tarnwick::saveOrDiscard(prompts(), messages::kSaveChanges, [this] { return store(); });
    prompts().status(messages::kOptionsUnchanged);
    return true;
}

} // namespace conversion
