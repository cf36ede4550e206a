#pragma once
#include <query/QueryButtons.h>
#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>

class QFormLayout;

namespace tarnwick {
class JTableWin;
class NumberField;
} // namespace tarnwick

namespace query {

/// "SQL Options": sizes of the SQL editor's parts, margins of its printed pages, and its query buttons.
class SQLOptionsDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// options: changed by OK; the caller stores them. All references must outlive the dialog.
    SQLOptionsDlg(SQLOptions &options, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts,
                  tarnwick::FileChoice &files, QWidget *parent = nullptr);
    ~SQLOptionsDlg() override;

protected:
    QString caption() const override { return m_options.title(); }
    bool isModified() const override;
    bool store() override;

private:
    QWidget *makeEditors();
    QWidget *makePrint();
    QWidget *makeQueries();
    void addLines(QFormLayout &form, const QString &label, const QString &name, qint32 &value, int least, int most);
    void addMargin(QFormLayout &form, const QString &label, const QString &name, double &value);
    void chooseFile();
    void moveCurrent(int by);
    void showButtons(int row);

    SQLOptions &m_options;
    SQLOptions m_draft;
    tarnwick::PathRoots m_roots;
    tarnwick::FileChoice &m_files;
    QueryButtons m_buttons;
    tarnwick::JTableWin *m_table = nullptr;
};

} // namespace query
