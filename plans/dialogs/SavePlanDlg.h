#pragma once
#include "PlanGrid.h"
#include "TubeEntriesDlg.h"

#include <plans/storage/PlanCheck.h>

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
    /// Shows a plan on the map. outage: the one whose results the flags "analyzed" tell; empty for the present one.
    using AddToMapFunction = std::function<void(const brannock::InspPlan &, const QString &outage)>;
    SavePlanDlg(const DialogSetup &setup, const AddToMapFunction &addToMap);
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
    /// Empty after Cancel, or after reporting that there are no results.
    std::optional<QList<OutageCount>> countOutages(const QString &title);
    void compareOutages();
    void addOutageToMap();

    AddToMapFunction m_addToMap;
    PlanEditor m_editor;
    PlanGrid m_grid;
    QLineEdit *m_probe = nullptr;
    QLineEdit *m_begin = nullptr;
    QLineEdit *m_end = nullptr;
    QPlainTextEdit *m_description;
};

} // namespace plans
