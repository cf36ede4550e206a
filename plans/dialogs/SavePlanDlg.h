#pragma once
#include "PlanGrid.h"
#include "TubeEntriesDlg.h"

class QBoxLayout;
class QLineEdit;
class QPlainTextEdit;

namespace plans {

/// "Plan": an inspection plan is filled from the map, edited, checked against the results, and kept in a file or in the
/// database.
class SavePlanDlg : public TubeEntriesDlg
{
    Q_OBJECT
public:
    /// addToMap: shows a plan on the map.
    SavePlanDlg(const DialogSetup &setup, const std::function<void(const brannock::InspPlan &)> &addToMap);
    ~SavePlanDlg() override { releaseGrid(); }
    PlanEditor &editor() { return m_editor; }

protected:
    bool store() override { return mayReplace(); }
    QString whyNot(int condition) const override;
    void showFields() override;

private:
    void bindOwn();
    void makeFields();
    QLineEdit *addField(QBoxLayout &layout, const QString &prompt, const QString &name, const QStringList &offered);
    void takeFields();
    void checkAnalyzed();
    void compareOutages();

    std::function<void(const brannock::InspPlan &)> m_addToMap;
    PlanEditor m_editor;
    PlanGrid m_grid;
    QLineEdit *m_probe = nullptr;
    QLineEdit *m_begin = nullptr;
    QLineEdit *m_end = nullptr;
    QPlainTextEdit *m_description;
};

} // namespace plans
