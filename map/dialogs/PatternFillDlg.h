#pragma once
#include "FillDialog.h"

#include <map/FillEditors.h>

class QCheckBox;

namespace tarnwick {
class NumberField;
}

namespace map {

class FilterGroup;

/// Dialog "Pattern Fill".
class PatternFillDlg : public FillDialog
{
    Q_OBJECT
public:
    PatternFillDlg(PatternFillEditor &editor, const FillDialogContext &context);

protected:
    void showFields() override;

private:
    /// A field and its parameter.
    struct Number
    {
        tarnwick::NumberField *field;
        qint32 plans::PatternFill::Parameters::*value;
    };
    struct Option
    {
        QCheckBox *box;
        bool plans::PatternFill::Parameters::*value;
    };
    void addNumber(QFormLayout *form, const QString &label, const QString &name, int least, int most,
                   qint32 plans::PatternFill::Parameters::*value);
    void addOption(QFormLayout *form, const QString &text, const QString &name,
                   bool plans::PatternFill::Parameters::*value);
    template <typename Value>
    void change(Value plans::PatternFill::Parameters::*value, Value now);

    PatternFillEditor &m_editor;
    FilterGroup *m_filter;
    QList<Number> m_numbers;
    QList<Option> m_options;
};

} // namespace map
