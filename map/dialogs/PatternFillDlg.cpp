#include "PatternFillDlg.h"

#include "FilterGroup.h"

#include <tarnwick/gui/NumberField.h>

#include <QCheckBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace map {

using ellery::Axis;
using Parameters = plans::PatternFill::Parameters;

PatternFillDlg::PatternFillDlg(PatternFillEditor &editor, const FillDialogContext &context)
    : FillDialog(editor, context, u"patternFillDlg"_s, u"Pattern Fill"_s)
    , m_editor(editor)
    , m_filter(new FilterGroup)
{
    addGroup(m_filter);
    connect(m_filter, &FilterGroup::filterEdited, this, [this] { change(&Parameters::filter, m_filter->filter()); });
    QFormLayout *pattern = addGroup(u"Pattern"_s);
    const auto most = [&](Axis axis) { return std::max(1, editor.maxNumber(axis)); };
    addNumber(pattern, u"&First Row"_s, u"firstRow"_s, editor.minNumber(Axis::Row), most(Axis::Row),
              &Parameters::firstRow);
    addNumber(pattern, u"First &Col"_s, u"firstCol"_s, editor.minNumber(Axis::Col), most(Axis::Col),
              &Parameters::firstCol);
    addNumber(pattern, u"Row &Inc"_s, u"rowInc"_s, 1, most(Axis::Row), &Parameters::rowIncrement);
    addNumber(pattern, u"Col I&nc"_s, u"colInc"_s, 1, most(Axis::Col), &Parameters::colIncrement);
    QFormLayout *options = addGroup(u"Options"_s);
    addOption(options, u"Include First T&ube"_s, u"includeFirst"_s, &Parameters::includeFirstTube);
    addOption(options, u"Include &Last Tube"_s, u"includeLast"_s, &Parameters::includeLastTube);
    finish(m_numbers.first().field);
}

template <typename Value>
void PatternFillDlg::change(Value Parameters::*value, Value now)
{
    Parameters changed = m_editor.parameters();
    changed.*value = now;
    m_editor.setParameters(changed);
}

void PatternFillDlg::addNumber(QFormLayout *form, const QString &label, const QString &name, int least, int most,
                               qint32 Parameters::*value)
{
    auto *field = new tarnwick::NumberField;
    field->setObjectName(name);
    field->setLimits(least, most);
    form->addRow(label, field);
    m_numbers.append({field, value});
    connect(field, &tarnwick::NumberField::numberEdited, this,
            [this, field, value] { change(value, qint32(field->whole())); });
}

void PatternFillDlg::addOption(QFormLayout *form, const QString &text, const QString &name, bool Parameters::*value)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(name);
    form->addRow(box);
    m_options.append({box, value});
    connect(box, &QCheckBox::clicked, this, [this, value](bool on) { change(value, on); });
}

void PatternFillDlg::showFields()
{
    const Parameters &parameters = m_editor.parameters();
    m_filter->setFilter(parameters.filter);
    for (const Number &number : std::as_const(m_numbers))
        number.field->setNumber(parameters.*number.value);
    for (const Option &option : std::as_const(m_options))
        option.box->setChecked(parameters.*option.value);
}

} // namespace map
