#pragma once
#include <tarnwick/paint/TablePrint.h>
#include <tarnwick/Prompts.h>

#include <memory>

class QPrinter;
class QWidget;

namespace tarnwick {

class JTableWin;

/// Prints a table as it is shown, in its order and with its filter: on a printer, as a preview and into a PDF file. All
/// three paint the same pages. Failures are reported through the prompts; long work shows progress with Cancel, and a
/// cancelled or failed PDF leaves an existing file unchanged.
class TablePrinting
{
public:
    enum class Rows { All, CurrentPage, Selected };

    struct Job
    {
        const JTableWin &table;
        JTablePrintArg layout;
        JMacro macros;
        QString name; ///< of the print job and the offered PDF file
    };

    /// parent: of the dialogs.
    TablePrinting(UserPrompts &prompts, QWidget *parent);
    ~TablePrinting();

    /// Lets the user choose paper, orientation and margins of the pages that are printed later.
    void setUpPage();
    /// Lets the user choose a printer and prints. Returns true if the pages were printed or stored.
    bool print(const Job &job, Rows rows);
    /// Shows the pages, the first at once. Prints if the user asks for it.
    bool preview(const Job &job, Rows rows);

private:
    QPrinter &printer();
    /// Returns false after telling that no rows are selected.
    bool hasRows(const Job &job, Rows rows);
    bool choosePrinter(const Job &job);
    void keepChoice();
    TablePrint pages(const Job &job, Rows rows);
    bool printPages(const Job &job, Rows rows);
    /// Whether the chosen printer is a PDF file.
    bool printsToPdf();
    /// Runs a print that returns the number of cells that were cut. Reports these and failures.
    bool report(const std::function<qint64()> &print);

    UserPrompts &m_prompts;
    QWidget *m_parent;
    std::unique_ptr<QPrinter> m_printer;
};

} // namespace tarnwick
