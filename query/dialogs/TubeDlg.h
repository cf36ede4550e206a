#pragma once
#include <query/QueryContext.h>
#include <query/SchemaInfo.h>
#include <query/TubeListing.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QTabWidget;

namespace brannock {
class EntryCheck;
class ReportEditor;
} // namespace brannock

namespace query {

class JQueryWin;

/// "Tube - ...": everything known about one tube: its report entries, a tab for each query of the options, and its
/// results of past outages. A tab's query runs when the tab is shown for the first time.
class TubeDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        db::DatabaseSession &session;
        QueryContext &context;
        const ArvoOptions &options;
        const ellery::SteamGen &steamGen;
        ellery::TubeAddress tube;
        QStringList repairs = {};                         ///< lines shown above the tabs
        QList<brannock::TubeIndication> indications = {}; ///< of past outages; if empty, there is no tab for them
        QWidget *parent = nullptr;
    };
    explicit TubeDlg(const Setup &setup);
    ~TubeDlg() override;

protected:
    QString caption() const override;

private:
    void makeHistoryTab();
    void showTab(int tab);
    void showQuery();
    void print();
    QString queryTitle() const;
    /// The SQL of the current tab; null for the tab of past outages.
    const TubeListing *currentListing() const;
    tarnwick::JMacro printMacros() const;

    Setup m_setup;
    QList<TubeListing> m_listings;
    QTabWidget *m_tabs;
    brannock::ReportEditor *m_report;
    QList<JQueryWin *> m_results; ///< of the listings behind the first
    QList<bool> m_isFilled;       ///< by listing
    TextRows m_history;
    tarnwick::JTableWin *m_historyTable = nullptr;
    tarnwick::TablePrinting m_printing;
};

} // namespace query
