#pragma once
#include <plans/storage/PlanOptions.h>
#include <tarnwick/gui/JDialog.h>

class QCheckBox;
class QListWidget;

namespace plans {

/// "Plan Options": what a plan must have before it is stored, and the codes that do not count as analyzing a tube.
class PlanOptionDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Lets the user change the options. Returns false after Cancel.
    static bool edit(PlanOptions &options, tarnwick::UserPrompts &prompts, QWidget *parent);

    PlanOptionDlg(PlanOptions &options, tarnwick::UserPrompts &prompts, QWidget *parent = nullptr);

protected:
    QString caption() const override { return QStringLiteral("Plan Options"); }
    bool store() override;

private:
    void addCode(const QString &code);

    PlanOptions &m_options;
    QCheckBox *m_probe;
    QCheckBox *m_extent;
    QListWidget *m_codes;
};

} // namespace plans
