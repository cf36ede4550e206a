#pragma once
#include <results/repairs/Repair.h>
#include <tarnwick/gui/JDialog.h>

#include <optional>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;

namespace ellery {
class SteamGen;
}

namespace results {

/// "Repair Attributes": edits the attributes of one or more repairs, page by page. Nothing is changed before OK.
class RepairInfoDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        tarnwick::UserPrompts &prompts;
        const ellery::SteamGen &steamGen;
        QList<Repair> repairs;
        QStringList outages; ///< choices; others may be typed
        /// Reports what is missing in a repair or wrong with it. Returns true if it can be stored.
        std::function<bool(const Repair &)> isAcceptable;
        QString name = {}; ///< in the caption; empty: the tube of the repair
        bool isReadOnly = false;
        QWidget *parent = nullptr;
    };
    /// The repairs as the user left them; empty if the dialog was cancelled. Without repairs that is told instead.
    static std::optional<QList<Repair>> edit(const Setup &setup);

    explicit RepairInfoDlg(const Setup &setup);
    const QList<Repair> &repairs() const { return m_setup.repairs; }

protected:
    QString caption() const override;
    bool store() override;

private:
    /// A text of the dialog and the field that it belongs to.
    struct Field
    {
        const RepairField *field;
        QLineEdit *line;
        QString shown; ///< the field's present content: only another text is stored
    };

    QLayout *makePages();
    void addChoice(QFormLayout &form, const QString &prompt, QStringView field, const QStringList &choices);
    void addLine(QFormLayout &form, const QString &prompt, QStringView field);
    void addDate(QFormLayout &form, const QString &prompt, QStringView field);
    void addLocation(QFormLayout &form);
    QComboBox *choice(QStringView field, const QStringList &choices);
    QLineEdit *line(QStringView field);
    void showPage(int page);
    /// Takes over what was typed. Returns false after reporting why that is not possible.
    bool takePage();
    QStringList landmarks() const;

    Setup m_setup;
    int m_page = 0;
    QList<Field> m_fields;
    QCheckBox *m_permanent;
    QLabel *m_number;
    QPushButton *m_previous = nullptr;
    QPushButton *m_next = nullptr;
};

} // namespace results
