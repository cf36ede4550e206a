#pragma once
#include <results/CalList.h>
#include <tarnwick/GridSource.h>
#include <tarnwick/gui/JDialog.h>

class QLabel;

namespace tarnwick {
class JTableWin;
}

namespace results {

/// The cals of a list as rows of a table.
class CalGrid : public tarnwick::GridSource
{
public:
    CalGrid(const CalList &list, const ellery::SteamGen &steamGen)
        : m_list(list)
        , m_steamGen(steamGen)
    {
    }
    int rowCount() const override { return int(m_list.rows().size()); }
    int columnCount() const override;
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;

private:
    const CalList &m_list;
    const ellery::SteamGen &m_steamGen;
};

/// The entries of some cals of a list, counted by analyst and date.
class DayCountGrid : public tarnwick::GridSource
{
public:
    explicit DayCountGrid(CalList &list)
        : m_list(list)
    {
    }
    /// rows: of the list.
    void show(const QList<int> &rows);

    int rowCount() const override { return int(m_rows.size()); }
    int columnCount() const override { return 4; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;

private:
    struct Row
    {
        QString analyst;
        tarnwick::JDateTime day;
        int cals = 0;
        int count = 0;
    };
    CalList &m_list;
    QList<Row> m_rows;
};

/// "Cal List": the cals that table 'report' holds, of which the user can delete some. OK stores the deletions, Cancel
/// asks about them.
class CalListDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Shows the dialog until it is closed. Without a database, or if the list cannot be opened, reports it instead.
    static void show(db::DatabaseSession &session, const ellery::SteamGen &steamGen, QWidget *parent);

    /// list: opened; must outlive the dialog.
    CalListDlg(CalList &list, tarnwick::UserPrompts &prompts, const ellery::SteamGen &steamGen,
               QWidget *parent = nullptr);
    ~CalListDlg() override;

protected:
    QString caption() const override { return m_list.caption(); }
    bool isModified() const override { return m_list.isChanged(); }
    int changeCount() const override { return m_list.deletedCount(); }
    bool store() override;
    bool discard() override;

private:
    void deleteSelected();
    /// The selected cals, or the current one.
    QList<int> selectedRows() const;
    void showDayCounts();

    CalList &m_list;
    CalGrid m_grid;
    DayCountGrid m_dayCounts;
    tarnwick::JTableWin *m_table;
    QLabel *m_dayTitle;
    tarnwick::JTableWin *m_dayTable;
};

} // namespace results
