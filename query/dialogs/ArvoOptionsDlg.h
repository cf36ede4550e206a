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

/// The program's options: margins, how the map is drawn, listings of the tube dialog, macros. Accepted when they are to
/// be stored, which is the opener's work; rejected, and said so, when they stay as they were.
class ArvoOptionsDlg : public QDialog
{
    Q_OBJECT
public:
    /// chooser: for the colours; like the prompts it outlives the dialog.
    ArvoOptionsDlg(const ArvoOptions &options, const tarnwick::JMacro &systemMacros, tarnwick::UserPrompts &prompts,
                   brannock::ColourChooser &chooser, QWidget *parent = nullptr);
    /// As the controls stand.
    ArvoOptions options() const { return m_edit.result(); }
    void accept() override;
    void reject() override;

Q_SIGNALS:
    /// Something that shows on the map is different: time to try it out there.
    void lookChanged(const query::ArvoOptions &options);

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
