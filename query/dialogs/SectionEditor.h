#pragma once
#include <brannock/gui/ColourChooser.h>
#include <tarnwick/JTablePrintArg.h>

#include <QGroupBox>
#include <QTextDocument>

class QComboBox;
class QHBoxLayout;
class QPlainTextEdit;

namespace brannock {
class ColourButton;
}

namespace tarnwick {
class NumberField;
}

namespace query {

/// One section of a print layout: its format and, but for the report body, its text.
class SectionEditor : public QGroupBox
{
    Q_OBJECT
public:
    /// section: JTablePrintArg::Section. chooser must outlive the editor.
    SectionEditor(int section, brannock::ColourChooser &chooser, QWidget *parent = nullptr);

    /// Values outside of the fields' ranges are kept until the user changes them.
    const tarnwick::PrintSection &section() const { return m_section; }
    void setSection(const tarnwick::PrintSection &section);
    void setLines(int lines);
    /// Shows another text until endPreview(); the own text keeps its undo.
    void showPreview(const QString &text);
    void endPreview();

Q_SIGNALS:
    /// The user has changed something.
    void changed();

private:
    void makeFields(QHBoxLayout &row);
    void makeText(const QString &name);
    void showLook();

    tarnwick::PrintSection m_section;
    brannock::ColourChooser &m_chooser;
    QComboBox *m_font;
    tarnwick::NumberField *m_size;
    QComboBox *m_align;
    tarnwick::NumberField *m_spacing;
    brannock::ColourButton *m_colour;
    QPlainTextEdit *m_text = nullptr;
    QTextDocument *m_own = nullptr; ///< while a preview is shown
    bool m_isShowing = false;       ///< the program fills the fields: signals of changes are ignored
};

} // namespace query
