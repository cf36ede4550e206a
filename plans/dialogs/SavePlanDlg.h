#pragma once
#include "DialogSetup.h"
#include "PlanGrid.h"

#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tarnwick {
class JTableWin;
}

namespace plans {

/// "Plan": an inspection plan is filled from the map, edited, checked against the results, and kept in a file or in the
/// database.
class SavePlanDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// addToMap: shows a plan on the map.
    SavePlanDlg(const DialogSetup &setup, const std::function<void(const brannock::InspPlan &)> &addToMap);
    ~SavePlanDlg() override;
    PlanEditor &editor() { return m_editor; }

protected:
    QString caption() const override { return m_editor.caption(); }
    bool isModified() const override { return m_editor.isModified(); }
    bool store() override { return mayReplace(); }
    bool discard() override { return mayReplace(); }
    QByteArray draft() const override { return m_editor.draft(); }
    void restoreDraft(const QByteArray &content) override;
    QString draftName(const QByteArray &content) const override;

private:
    void bindFiles();
    void bindEditing();
    void bindDatabase();
    void makeTitleBar();
    void makeFields();
    QLineEdit *addField(QBoxLayout &layout, const QString &prompt, const QString &name, const QStringList &offered);
    void makeTable();

    /// Shows the plan, with this row first in sight.
    void showPlan(int firstRow = 0);
    void showSummary();
    void takeFields();
    /// Asks about unsaved changes. Returns false if they stay.
    bool mayReplace();
    bool save();
    bool saveAs();
    bool upload(const QString &name);
    bool uploadAs();
    void fetch();
    void combine(Combine how, const QString &title);
    void paste();
    void move(int by);
    void moveRows(const QList<int> &rows, int before);
    void checkAnalyzed();
    void compareOutages();
    void print();
    QString chooseName(const QString &title, const QString &initial);

    DialogSetup m_setup;
    std::function<void(const brannock::InspPlan &)> m_addToMap;
    PlanEditor m_editor;
    PlanGrid m_grid;
    bool m_isShowing = false; ///< the fields are being set by the program
    tarnwick::JTableWin *m_table;
    QComboBox *m_order;
    QLineEdit *m_probe = nullptr;
    QLineEdit *m_begin = nullptr;
    QLineEdit *m_end = nullptr;
    QPlainTextEdit *m_description;
    QLabel *m_summary;
    tarnwick::TablePrinting m_printing;
};

} // namespace plans
