#pragma once
#include <brannock/Project.h>
#include <conversion/ReportConvOptions.h>

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace tarnwick {
class NumberField;
}

namespace conversion {

/// The fields for values that a text may not contain.
class PromptPanel : public QWidget
{
    Q_OBJECT
public:
    /// The lists of analysts, operators, probes and operation types come from the project.
    explicit PromptPanel(const brannock::Project &project, QWidget *parent = nullptr);

    void setPrompts(const ConversionPrompts &prompts);
    ConversionPrompts prompts() const;

private:
    tarnwick::NumberField *addNumber(QFormLayout &form, const QString &label, const QString &name, int least, int most);
    QComboBox *addChoice(QFormLayout &form, const QString &label, const QString &name, const QStringList &choices);

    tarnwick::NumberField *m_cal;
    QComboBox *m_leg;
    tarnwick::NumberField *m_sec;
    QComboBox *m_analyst;
    QComboBox *m_operator;
    QComboBox *m_probe;
    QLineEdit *m_serialNumber;
    QComboBox *m_operType;
    QLabel *m_date;
    tarnwick::JDateTime m_dateTime;
};

} // namespace conversion
