#pragma once
#include <brannock/gui/ReportFilesDlg.h>
#include <conversion/ReportConversion.h>
#include <tarnwick/gui/TablePrinting.h>

class QSplitter;

namespace conversion {

class PromptPanel;
class TextReport;

/// "Convert Reports": converts foreign texts to report files, one by one or all of the list. The current text and its
/// entries are shown together; the entries can be edited before they are stored.
class ReportConvDlg : public brannock::ReportFilesDlg
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        tarnwick::UserPrompts &prompts;
        const brannock::Project &project;
        tarnwick::FileChoice &files;
        std::function<tarnwick::JMacro()> printMacros;
        QWidget *parent = nullptr;
    };
    explicit ReportConvDlg(const Setup &setup);
    ~ReportConvDlg() override;

    TextReport &text() { return *m_text; }
    const ReportConvSpec &spec() const { return m_conversion.spec; }
    /// Converts the current text by other settings of the format.
    void useSpec(const ReportConvSpec &spec);

protected:
    QString caption() const override;
    bool showFile(const QString &path, const brannock::Report *edited) override;
    bool storeShown() override;
    void saveOptions() override;
    void showProblem(int line, int entry) override;

private:
    void makeMiddle();
    void makeButtons();
    void loadSpec();
    void applyOptions();
    void chooseFiles();
    void showConverted(const brannock::Report *edited, tarnwick::Progress &progress);
    void showRemarks();
    void followText(int line);
    void followEntry(int entry);
    void editOptions();
    void editFormat();
    void checkAll();
    void takePrompts();
    void print();

    Setup m_setup;
    ReportConvOptions m_options;
    ReportConversion m_conversion;
    TextSource m_head; ///< shown while the whole text is read
    QSplitter *m_splitter = nullptr;
    QSplitter *m_middle = nullptr;
    TextReport *m_text;
    PromptPanel *m_prompts;
    tarnwick::TablePrinting m_printing;
};

} // namespace conversion
