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

namespace map {

/// References of the window for the dialogs of fills.
struct FillDialogContext
{
    FillEditorContext editing;
    brannock::MapOptions look; ///< appearance of the map, for the preview
    QWidget *parent = nullptr;
};

/// Common parts of the dialogs of all kinds of fills: the groups of fields of the kind, symbol and colour of the entry,
/// a preview of the map, the result as text, OK and Cancel.
class FillDialog : public QDialog
{
    Q_OBJECT
public:
    ~FillDialog() override;
    void accept() override;

protected:
    /// The editor must outlive the dialog. name: object name of the dialog, under which its size is stored.
    FillDialog(FillEditor &editor, const FillDialogContext &context, const QString &name, const QString &title);
    /// Adds a group box of labelled fields below the others.
    QFormLayout *addGroup(const QString &title);
    void addGroup(QWidget *group);
    /// Call after the groups have been added. first: gets the focus.
    void finish(QWidget *first);
    /// Sets the fields from the editor.
    virtual void showFields() = 0;

private:
    QWidget *makeEntryGroup();
    QLayout *makePreview();
    void refresh();
    void chooseSymbol();

    FillEditor &m_editor;
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

} // namespace map
