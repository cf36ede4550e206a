#pragma once
#include <conversion/ReportConvOptions.h>
#include <tarnwick/gui/JDialog.h>

class QCheckBox;
class QFormLayout;

namespace tarnwick {
class NumberField;
}

namespace conversion {

/// "Report Convert Options": the look of the conversion dialog.
class ReportConvOptionsDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    ReportConvOptionsDlg(const ReportConvOptions &options, tarnwick::UserPrompts &prompts, QWidget *parent = nullptr);

    /// True after OK, or "Yes" to the question of Cancel: options() are to be used.
    bool isSaved() const { return m_isSaved; }
    ReportConvOptions options() const;

protected:
    QString caption() const override { return QStringLiteral("Report Convert Options"); }
    bool isModified() const override;
    bool store() override;
    bool discard() override;

private:
    tarnwick::NumberField *addNumber(QFormLayout &form, const QString &label, const QString &name, int least, int most,
                                     int value, const QString &tip);

    ReportConvOptions m_before;
    bool m_isSaved = false;
    tarnwick::NumberField *m_sourceColumns;
    tarnwick::NumberField *m_reportLines;
    tarnwick::NumberField *m_extraFields;
    tarnwick::NumberField *m_fontSize;
    QCheckBox *m_highlight;
};

} // namespace conversion
