#pragma once
#include <query/ParameterGrid.h>
#include <tarnwick/gui/JDialog.h>

namespace tarnwick {
class JTableWin;
}

namespace query {

/// "... Parameters": shows the parameters of a query that is about to run, for the user to confirm or change.
class JParamDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// entries: changed by OK. All references must outlive the dialog.
    JParamDlg(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context,
              tarnwick::UserPrompts &prompts, QWidget *parent = nullptr);
    ~JParamDlg() override;

protected:
    QString caption() const override;
    bool store() override;

private:
    void showProblem();

    QString m_queryName;
    QList<ParameterEntry> &m_result;
    QList<ParameterEntry> m_entries;
    QueryContext &m_context;
    ParameterGrid m_grid;
    tarnwick::JTableWin *m_table;
};

/// Asks for parameters with a JParamDlg above the active window.
class ParameterDialogs : public ParameterPrompt
{
public:
    /// parent: of the dialogs if no dialog is active.
    ParameterDialogs(tarnwick::UserPrompts &prompts, QWidget *parent)
        : m_prompts(prompts)
        , m_parent(parent)
    {
    }
    bool confirm(const QString &queryName, QList<ParameterEntry> &entries, QueryContext &context) override;

private:
    tarnwick::UserPrompts &m_prompts;
    QWidget *m_parent;
};

} // namespace query
