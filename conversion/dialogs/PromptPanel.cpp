#include "PromptPanel.h"

#include <tarnwick/Format.h>
#include <tarnwick/gui/NumberField.h>

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace conversion {

static QStringList userIds(const brannock::Project &project)
{
    QStringList ids;
    for (const fenwright::UserInfo &user : project.users)
        ids.append(user.id);
    return ids;
}

static QStringList probeTypes(const brannock::Project &project)
{
    QStringList types;
    for (const fenwright::ProbeInfo &probe : project.probes)
        types.append(probe.type);
    types.removeDuplicates();
    return types;
}

PromptPanel::PromptPanel(const brannock::Project &project, QWidget *parent)
    : QWidget(parent)
{
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    m_cal = addNumber(*form, u"&Cal"_s, u"promptCal"_s, ConversionPrompts::kLeastCal, ConversionPrompts::kMostCal);
    m_leg = addChoice(*form, u"Le&g"_s, u"promptLeg"_s, {u"OUTLET"_s, u"INLET"_s});
    m_leg->setEditable(false);
    constexpr int kMostSec = 999;
    m_sec = addNumber(*form, u"S&ec"_s, u"promptSec"_s, 0, kMostSec);
    m_analyst = addChoice(*form, u"&Analyst"_s, u"promptAnalyst"_s, userIds(project));
    m_operator = addChoice(*form, u"O&perator"_s, u"promptOperator"_s, userIds(project));
    m_probe = addChoice(*form, u"Pro&be"_s, u"promptProbe"_s, probeTypes(project));
    m_serialNumber = new QLineEdit;
    m_serialNumber->setObjectName(u"promptSerialNumber"_s);
    form->addRow(u"S&N"_s, m_serialNumber);
    m_operType = addChoice(*form, u"Oper &Type"_s, u"promptOperType"_s, project.operTypes);
    m_date = new QLabel;
    m_date->setObjectName(u"promptDate"_s);
    m_date->setToolTip(u"Time of entries without one: that of the text's header lines, or the time of storing"_s);
    form->addRow(u"Date"_s, m_date);
    setPrompts({});
}

tarnwick::NumberField *PromptPanel::addNumber(QFormLayout &form, const QString &label, const QString &name, int least,
                                              int most)
{
    auto *field = new tarnwick::NumberField;
    field->setObjectName(name);
    field->setFormat(u"%d"_s);
    field->setLimits(least, most);
    field->setToolTip(u"For entries without one; from %1 to %2"_s.arg(least).arg(most));
    form.addRow(label, field);
    return field;
}

QComboBox *PromptPanel::addChoice(QFormLayout &form, const QString &label, const QString &name,
                                  const QStringList &choices)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    combo->setEditable(true);
    combo->addItems(choices);
    constexpr int kLeastCharacters = 10;
    combo->setMinimumContentsLength(kLeastCharacters);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    form.addRow(label, combo);
    return combo;
}

void PromptPanel::setPrompts(const ConversionPrompts &prompts)
{
    m_cal->setNumber(prompts.cal);
    m_leg->setCurrentIndex(prompts.leg == 0 ? 0 : 1);
    m_sec->setNumber(prompts.sec);
    m_analyst->setEditText(prompts.analyst);
    m_operator->setEditText(prompts.operatorId);
    m_probe->setEditText(prompts.probe);
    m_serialNumber->setText(prompts.serialNumber);
    m_operType->setEditText(prompts.operType);
    m_dateTime = prompts.dateTime;
    m_date->setText(m_dateTime.isNull() ? u"of storing"_s : tarnwick::format(u"%{%m/%d/%Y %H:%M}t", m_dateTime));
}

ConversionPrompts PromptPanel::prompts() const
{
    ConversionPrompts prompts;
    prompts.cal = qint32(m_cal->whole());
    prompts.leg = m_leg->currentIndex();
    prompts.sec = qint32(m_sec->whole());
    prompts.analyst = m_analyst->currentText().trimmed();
    prompts.operatorId = m_operator->currentText().trimmed();
    prompts.probe = m_probe->currentText().trimmed();
    prompts.serialNumber = m_serialNumber->text().trimmed();
    prompts.operType = m_operType->currentText().trimmed();
    prompts.dateTime = m_dateTime;
    return prompts;
}

} // namespace conversion
