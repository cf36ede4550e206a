#pragma once
#include <tarnwick/gui/FileDialogs.h>
#include <tarnwick/gui/JDialog.h>

#include <setup/NewProject.h>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QPlainTextEdit;

namespace setup {

/// "New Project": name, site, component and outage of a project, and the table of its tubes. What is wrong with the
/// table is listed while the fields are edited; OK makes the project.
class NewProjectDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// References must outlive the dialog.
    struct Context
    {
        tarnwick::UserPrompts &prompts;
        tarnwick::FileDialogs &files;
        tarnwick::PathRoots roots;
        std::function<std::unique_ptr<tarnwick::Progress>(const QString &title)> makeProgress; ///< may be empty
        QWidget *parent = nullptr;
    };
    explicit NewProjectDlg(const Context &context);

    /// Folder of the project that OK has made.
    const QString &folder() const { return m_made; }

protected:
    QString caption() const override { return QStringLiteral("New Project"); }
    bool store() override;

private:
    QLineEdit *addField(QFormLayout &form, const QString &label, const QString &name, const QString &tip,
                        QBoxLayout *row = nullptr);
    void makePattern(QFormLayout &form);
    void chooseFolder();
    void chooseTable();
    void chooseComponentFolder();
    NewProject wanted() const;
    void check();

    Context m_context;
    QLineEdit *m_folder;
    QLineEdit *m_name;
    QLineEdit *m_site;
    QLineEdit *m_comp;
    QLineEdit *m_outage;
    QLineEdit *m_date;
    QLineEdit *m_component;
    QLineEdit *m_pitch = nullptr;
    QComboBox *m_pattern = nullptr;
    QPlainTextEdit *m_found;
    QTimer m_checkDelay;
    bool m_isUsable = false;
    QString m_made;
};

} // namespace setup
