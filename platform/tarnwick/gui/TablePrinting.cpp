#include "TablePrinting.h"

#include "FileDialogs.h"
#include "Guarded.h"
#include "JTableWin.h"
#include "PrinterSetup.h"
#include "ProgressDialog.h"
#include "TablePreviewDlg.h"

#include <QDir>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>
#include <tarnwick/Failures.h>
#include <tarnwick/Messages.h>
#include <tarnwick/paint/TablePdf.h>
#include <tarnwick/Paths.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

const QString kPrinterKey = u"tablePrint"_s;

/// Asks for the name of a PDF file; empty if the user cancelled.
QString choosePdf(QWidget *parent, const QString &name)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const std::u16string folder = SuitePath::fromMachine(documents, {}).text().toStdU16String();
    return FileDialogs(parent).saveFile({folder.c_str(), u"PDF Files (*.pdf)", u".pdf", nullptr}, u"Store PDF"_s, {},
                                        validFileName(name) + u".pdf"_s);
}

PrintRows rowsOf(const JTableWin &table, TablePrinting::Rows which)
{
    const GridModel &grid = table.grid();
    if (which == TablePrinting::Rows::Selected) {
        const QList<int> selected = table.selectedSourceRows();
        return {int(selected.size()), [selected](int place) { return selected[place]; }};
    }
    const auto [first, count] = which == TablePrinting::Rows::All ? std::pair(0, grid.rowCount()) : table.rowsInSight();
    return {count, [&grid, start = first](int place) { return grid.sourceRow(start + place); }};
}

} // namespace

TablePrinting::TablePrinting(UserPrompts &prompts, QWidget *parent)
    : m_prompts(prompts)
    , m_parent(parent)
{
}

TablePrinting::~TablePrinting() = default;

QPrinter &TablePrinting::printer()
{
    // Asking the system for printers takes time, so it is done when a table is printed.
    if (!m_printer)
        m_printer = makePrinter(kPrinterKey, false);
    return *m_printer;
}

bool TablePrinting::choosePrinter(const Job &job)
{
    if (printer().outputFormat() == QPrinter::PdfFormat && printer().outputFileName().isEmpty())
        printer().setOutputFileName(validFileName(job.name) + u".pdf"_s);
    QPrintDialog dialog(&printer(), m_parent);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    keepChoice();
    return true;
}

void TablePrinting::keepChoice()
{
    try {
        keepPrinter(printer(), kPrinterKey);
    } catch (const FileError &error) {
        m_prompts.showStatus(error.text()); // the print goes on; only the choice is not remembered
    }
}

void TablePrinting::setUpPage()
{
    QPageSetupDialog dialog(&printer(), m_parent);
    if (dialog.exec() == QDialog::Accepted)
        keepChoice();
}

TablePrint TablePrinting::pages(const Job &job, Rows rows)
{
    const QSizeF paper = printer().pageLayout().fullRect(QPageLayout::Inch).size();
    TablePrint pages(*job.table.grid().source(), rowsOf(job.table, rows), job.layout, job.macros, paper);
    const JTableWin::EntryColumn &entry = job.table.entryColumn();
    if (entry.characters > 0)
        pages.setEntryColumn(entry.title, entry.characters, entry.format);
    return pages;
}

bool TablePrinting::hasRows(const Job &job, Rows rows)
{
    if (rows != Rows::Selected || !job.table.selectedSourceRows().isEmpty())
        return true;
    m_prompts.information(messages::kNoRowsSelected);
    return false;
}

bool TablePrinting::print(const Job &job, Rows rows)
{
    if (!hasRows(job, rows) || !choosePrinter(job) || !printPages(job, rows))
        return false;
    if (printsToPdf())
        m_prompts.status(messages::kStoredPdf, QDir::toNativeSeparators(printer().outputFileName()));
    return true;
}

bool TablePrinting::printsToPdf()
{
    return printer().outputFormat() == QPrinter::PdfFormat && !printer().outputFileName().isEmpty();
}

bool TablePrinting::printPages(const Job &job, Rows rows)
{
    return report([&] {
        ProgressDialog progress(m_parent, job.name);
        const TablePrint all = pages(job, rows);
        printer().setDocName(job.name);
        if (printsToPdf())
            return storeTablePdf(all, printer().outputFileName(), job.name, &progress);
        return all.printOn(printer(), &progress);
    });
}

bool TablePrinting::report(const std::function<qint64()> &print)
{
    qint64 cut = 0;
    const auto work = [&] { cut = print(); };
    if (attemptCancellable(m_prompts, work, messages::kPrintFailed) != Outcome::Done)
        return false;
    if (cut > 0)
        m_prompts.information(messages::kPrintCutCells, cut);
    return true;
}

bool TablePrinting::preview(const Job &job, Rows rows)
{
    if (!hasRows(job, rows))
        return false;
    const TablePrint all = pages(job, rows);
    const auto storeAs = [&] {
        const QString path = choosePdf(m_parent, job.name);
        const auto store = [&] {
            ProgressDialog progress(m_parent, job.name);
            return storeTablePdf(all, path, job.name, &progress);
        };
        if (!path.isEmpty() && report(store))
            m_prompts.status(messages::kStoredPdf, path);
    };
    TablePreviewDlg dialog(all, job.name, storeAs, m_parent);
    return dialog.exec() == QDialog::Accepted && print(job, rows);
}

} // namespace tarnwick
