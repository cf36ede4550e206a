#pragma once
#include <query/ArvoOptionsEdit.h>
#include <tarnwick/Prompts.h>

#include <QDialog>

namespace brannock {
class ColourChooser;
}

class QDoubleSpinBox;
class QSpinBox;

namespace query {

class MacroPage;

/// Dialog of the program's options: margins, appearance of the map, listings of the tube dialog, macros. If accepted,
/// the caller stores them. If rejected, the dialog has reported that nothing is stored.
class ArvoOptionsDlg : public QDialog
{
    Q_OBJECT
public:
    /// hasSections: whether tubes of the component have a section. chooser: selects colours. It and the prompts must
    /// outlive the dialog.
    ArvoOptionsDlg(const ArvoOptions &options, const tarnwick::JMacro &systemMacros, bool hasSections,
                   tarnwick::UserPrompts &prompts, brannock::ColourChooser &chooser, QWidget *parent = nullptr);
    /// The options as currently shown in the controls.
    ArvoOptions options() const { return m_edit.result(); }
    void accept() override;
    void reject() override;

Q_SIGNALS:
    /// An option that changes the map's appearance was edited: update the preview on the map.
    void lookChanged(const brannock::MapOptions &options);

private:
    QWidget *makeMargins();
    QWidget *makeOptions();
    QDoubleSpinBox *inches(const QString &name, double &value);
    QSpinBox *points(const QString &name, qint32 &value);
    void finishEditing();
    void noteLook();

    ArvoOptionsEdit m_edit;
    tarnwick::UserPrompts &m_prompts;
    brannock::ColourChooser &m_chooser;
    MacroPage *m_userMacros = nullptr;
};

} // namespace query
