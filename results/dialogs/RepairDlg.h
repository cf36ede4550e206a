#pragma once
#include "RepairGrid.h"

#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/TablePrinting.h>

class QComboBox;
class QLabel;

namespace tarnwick {
class JTableWin;
}

namespace results {

/// "Repairs": lists, schedules, edits and deletes the repairs of the tubes. OK writes all changes together.
class RepairDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// All references must outlive the dialog.
    struct Setup
    {
        db::DatabaseSession &session;
        const brannock::Project &project;
        /// The tubes of the map: which are selected, which have a symbol.
        const ellery::TubeStates &tubes;
        /// Adds an entry with these tubes to the legend of the map, as one change. label: of the entry.
        std::function<void(const QString &label, const QList<qint32> &tubes)> showInMap;
        std::function<tarnwick::JMacro()> printMacros;
        QWidget *parent = nullptr;
    };
    /// Shows the dialog until it is closed. Without a database, or if the repairs cannot be read, reports it instead.
    static void showRepairs(const Setup &setup);

    /// Use isOpen() afterwards: the repairs may be unreadable.
    explicit RepairDlg(const Setup &setup);
    ~RepairDlg() override;
    bool isOpen() const { return m_isOpen; }
    RepairList &list() { return m_list; }

protected:
    QString caption() const override { return QStringLiteral("Repairs"); }
    bool isModified() const override { return m_list.isChanged(); }
    int changeCount() const override { return m_list.changeCount(); }
    bool store() override;
    bool discard() override;
    QByteArray draft() const override { return m_list.draft(); }
    void restoreDraft(const QByteArray &content) override;
    QString draftName(const QByteArray &) const override { return QStringLiteral("the list of repairs"); }

private:
    void bindCommands();
    QString whyNot(int condition) const;
    void makeTitleBar();
    void makeTable();
    QComboBox *addFilter(const QString &prompt, const QString &name, int width);
    void fillFilters();
    void takeFilters(const QComboBox *changed);
    /// Shows the visible repairs again; place: of the repair that becomes current.
    void showRows(int place);
    void showCounts();
    int currentPlace() const;
    void changeSelection(const std::function<void()> &change);

    void selectAll();
    void selectDuplicates();
    void toggleRows();
    void editRepairs(const QList<int> &places);
    void schedule(const QList<qint32> &tubes);
    void complete();
    void deleteRepairs();
    void pasteHeats();
    void showInMap(const QString &label, const QList<int> &places);
    void print();
    void storeFilters();

    Setup m_setup;
    RepairOptions m_options;
    RepairList m_list;
    RepairGrid m_grid;
    bool m_isOpen = false;
    QList<int> m_shown; ///< places of the rows that the table shows
    tarnwick::JTableWin *m_table;
    QComboBox *m_outage = nullptr;
    QComboBox *m_type = nullptr;
    QComboBox *m_view = nullptr;
    QLabel *m_counts;
    tarnwick::TablePrinting m_printing;
};

} // namespace results
