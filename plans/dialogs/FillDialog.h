#pragma once
#include <brannock/gui/ColourChooser.h>
#include <brannock/paint/MapColours.h>
#include <map/FillEditor.h>

#include <QDialog>

class QFormLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace brannock {
class TubesheetMap;
}

namespace plans {

/// What the dialogs of fills get from the window that opens them.
struct FillDialogContext
{
    map::FillEditorContext editing;
    brannock::MapOptions look; ///< of the map, for the preview
    QWidget *parent = nullptr;
};

/// What the dialogs of all kinds of fills share: the kind's own groups of fields, the symbol and colour of the entry, a
/// picture of the map with the fill, what it finds in words, OK and Cancel.
class FillDialog : public QDialog
{
    Q_OBJECT
public:
    ~FillDialog() override;
    void accept() override;

protected:
    /// The editor must live as long as the dialog. name: of the widget, by which its size is remembered.
    FillDialog(map::FillEditor &editor, const FillDialogContext &context, const QString &name, const QString &title);
    /// A framed group of labelled fields below those that are there.
    QFormLayout *addGroup(const QString &title);
    void addGroup(QWidget *group);
    /// To be called when the groups have been made. first: gets the focus.
    void finish(QWidget *first);
    /// Fields from the editor.
    virtual void showFields() = 0;

private:
    QWidget *makeEntryGroup();
    QLayout *makePreview();
    void refresh();
    void chooseSymbol();

    map::FillEditor &m_editor;
    tarnwick::UserPrompts &m_prompts;
    brannock::ColourChooser m_colours;
    brannock::MapOptions m_look;
    QVBoxLayout *m_groups;
    QPushButton *m_symbol;
    QLabel *m_label;
    brannock::TubesheetMap *m_map;
    QLabel *m_summary;
    QLabel *m_warning;
};

} // namespace plans
