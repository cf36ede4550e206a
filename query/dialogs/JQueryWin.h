#pragma once
#include <query/MarkedCells.h>
#include <query/ResultGrid.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/TablePrinting.h>

#include <memory>
#include <optional>

namespace query {

/// The table of a query's rows. Its owner calls refresh() after each run, and while a run finds rows. Columns that the
/// user has widened keep their width for this query.
class JQueryWin : public tarnwick::JTableWin
{
    Q_OBJECT
public:
    /// result: shown; must outlive the table. Null: the table makes one of its own.
    JQueryWin(db::DatabaseSession &session, QueryContext &context, TableMode mode, QWidget *parent = nullptr,
              QueryResult *result = nullptr);
    ~JQueryWin() override;

    using JTableWin::edit; // hidden by the override

    QueryResult &result() { return *m_result; }
    const QueryResult &result() const { return *m_result; }
    ResultGrid &rows() { return m_rows; }

    /// Call after every run, also after one that failed or was stopped: shows the columns and the first row.
    void rebuild();
    /// The same if the result is that of another run than the one shown; if not, shows rows found since.
    void refresh();

    /// Sum, mean, least, largest and number of the marked cells (MarkedCells::text()); empty for fewer than two.
    const QString &figures() const { return m_figures; }

    /// Stores the rows in a file: text, or CSV or XLSX by its extension, in the order and with the
    /// filter of the table. Shows progress with
    /// Cancel. A failure is reported (1063), and an existing file is then unchanged. Returns true if the file was
    /// stored.
    bool exportTo(const QString &machinePath);

    /// Print as shown: in this order and with this filter. macros: of the sections of the layout. name: of the print
    /// job. Returns true if the pages were printed.
    bool print(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros, const QString &name,
               tarnwick::TablePrinting::Rows rows = tarnwick::TablePrinting::Rows::All);
    bool preview(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros, const QString &name,
                 tarnwick::TablePrinting::Rows rows = tarnwick::TablePrinting::Rows::All);

Q_SIGNALS:
    /// figures() has changed.
    void figuresChanged(const QString &text);

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;

private:
    tarnwick::TablePrinting::Job job(const tarnwick::JTablePrintArg &layout, const tarnwick::JMacro &macros,
                                     const QString &name) const;
    void beginFigures();
    void readFigures();
    void showFigures(const QString &text);
    QString widthsKey() const;
    void keepWidths();
    void restoreWidths();

    tarnwick::UserPrompts &m_prompts;
    std::unique_ptr<QueryResult> m_own;
    QueryResult *m_result;
    ResultGrid m_rows;
    tarnwick::TablePrinting m_printing;
    QTimer m_figuresTimer;
    std::optional<MarkedCells> m_marked; ///< being read
    QString m_figures;
    quint64 m_shownRun = 0;     ///< QueryResult::runNumber()
    QString m_shownName;        ///< query whose columns are shown
    QStringList m_shownColumns; ///< their names
    QList<int> m_shownWidths;   ///< widths before the user changed them
};

} // namespace query
