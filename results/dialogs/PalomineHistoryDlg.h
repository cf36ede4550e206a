#pragma once
#include "HistoryGrids.h"

#include <tarnwick/FileChoice.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;

namespace tarnwick {
class JTableWin;
}

namespace results {

/// "History": makes a history file of the results in table 'report'. Outages and codes are chosen beside the entries,
/// which can be edited. OK stores the file.
class PalomineHistoryDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        db::DatabaseSession &session;
        const brannock::Project &project;
        tarnwick::FileChoice &files;
        std::function<tarnwick::JMacro()> printMacros;
        QWidget *parent = nullptr;
    };
    explicit PalomineHistoryDlg(const Setup &setup);
    ~PalomineHistoryDlg() override;
    HistoryList &list() { return m_list; }

protected:
    QString caption() const override { return m_list.caption(); }
    bool isModified() const override { return m_list.isChanged(); }
    bool store() override;
    bool discard() override;
    QByteArray draft() const override { return m_list.draft(); }
    void restoreDraft(const QByteArray &content) override;
    QString draftName(const QByteArray &) const override { return QStringLiteral("the history"); }

private:
    void bindCommands();
    void makeTitleBar();
    QWidget *makeEntries();
    QWidget *makeFilters();
    QGroupBox *makeFilter(const QString &title, tarnwick::JTableWin &table, const std::function<void(bool)> &keepAll);
    /// Runs work of the list that takes long, with a progress dialog.
    void runLong(const QString &title, const std::function<void()> &work);
    /// The entries are others.
    void showEntries();
    /// The filter has other rows.
    void showFilters();
    /// Applies the filter and shows what is kept.
    void applyFilter();
    /// Entries, their order, or what is kept have changed; place: of the entry that becomes current.
    void showChanges(int place);
    void showCounter();
    int currentPlace() const;

    void openFile();
    void save();
    void saveAs();
    void fetch();
    void clear();
    void undo();
    void print();

    Setup m_setup;
    ArvoHistoryOptions m_options;
    HistoryList m_list;
    HistoryGrid m_entryGrid;
    OutageGrid m_outageGrid;
    DefectGrid m_defectGrid;
    int m_shownRows = 0; ///< rows of the table when it was told last
    tarnwick::JTableWin *m_entries;
    tarnwick::JTableWin *m_outages;
    tarnwick::JTableWin *m_defects;
    QComboBox *m_mode;
    QComboBox *m_sort;
    QCheckBox *m_keptOnly;
    QLabel *m_counter;
    tarnwick::TablePrinting m_printing;
};

} // namespace results
