#include "ResultExport.h"

#include "CellPrinter.h"
#include "Messages.h"
#include "PlainText.h"
#include "XlsxFile.h"

#include <dao/values/Errors.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>

namespace query {

using namespace Qt::StringLiterals;

namespace {

QStringList columnNames(const QueryResult &result)
{
    QStringList names;
    for (int column = 0; column < result.columnCount(); ++column)
        names.append(result.column(column).name);
    return names;
}

/// In a spreadsheet, a date or number that is wider than its column shows as "####".
QList<int> spreadsheetWidths(const QueryResult &result)
{
    constexpr int kDate = 18;
    constexpr int kNumber = 8;
    QList<int> widths;
    for (int column = 0; column < result.columnCount(); ++column) {
        const db::ColumnFormat &format = result.column(column);
        const int least = format.type == dao::DataType::Date ? kDate : dao::isNumericType(format.type) ? kNumber : 0;
        widths.append(qMax(format.width, least));
    }
    return widths;
}

void countFailures(std::span<const dao::Value> values, dao::CellFailures &failures)
{
    for (const dao::Value &value : values)
        if (value.isError())
            failures.add(int(value.integer()));
}

/// Calls write(row) for every row.
template <typename Write>
void forEachRow(const QueryResult &result, const ExportOrder &order, tarnwick::Progress *progress, Write write)
{
    const qint64 count = order.row ? order.count : result.rowCount();
    tarnwick::ProgressLoop loop(progress, count, u"Exporting"_s);
    for (qint64 place = 0; place < count; ++place) {
        loop.tick(place);
        write(order.row ? order.row(place) : place);
    }
}

/// The lines of a text file of rows.
class TextLines
{
public:
    explicit TextLines(const QueryResult &result)
        : m_result(result)
    {
    }

    QStringView line(std::span<const dao::Value> values)
    {
        m_line = u'|';
        for (int column = 0; column < int(values.size()); ++column) {
            const db::ColumnFormat &format = m_result.column(column);
            append(m_printer.formatted(values[size_t(column)], format.format), format.width);
        }
        m_line += u'\n';
        return m_line;
    }

    QStringView deletedLine()
    {
        m_line = u'|';
        for (int column = 0; column < m_result.columnCount(); ++column)
            append(kDeletedCell, m_result.column(column).width);
        m_line += u'\n';
        return m_line;
    }

private:
    void append(QStringView text, int width)
    {
        m_line.append(size_t(qMax(width - text.size(), qsizetype(0))), u' ');
        m_line.append(text.utf16(), size_t(text.size()));
        m_line += u'|';
    }

    const QueryResult &m_result;
    CellPrinter m_printer;
    std::u16string m_line; // its appends are shorter than those of QString
};

dao::CellFailures writeText(const QueryResult &result, const ExportOrder &order, const QString &machinePath,
                            tarnwick::Progress *progress)
{
    dao::CellFailures failures;
    tarnwick::AtomicFile file(machinePath);
    TextLines lines(result);
    forEachRow(result, order, progress, [&](qint64 row) {
        try {
            const auto values = result.values(row);
            countFailures(values, failures);
            file.write(lines.line(values).toUtf8());
        } catch (const dao::DaoException &exception) {
            if (exception.number() != dao::error::RecordDeleted)
                throw;
            file.write(lines.deletedLine().toUtf8());
        }
    });
    file.commit();
    return failures;
}

dao::CellFailures writeCsv(const QueryResult &result, const ExportOrder &order, const QString &machinePath,
                           tarnwick::Progress *progress)
{
    dao::CellFailures failures;
    tarnwick::AtomicFile file(machinePath);
    file.write(csvLine(columnNames(result)).toUtf8());
    CellPrinter printer;
    QString line;
    forEachRow(result, order, progress, [&](qint64 row) {
        const auto values = result.values(row);
        countFailures(values, failures);
        line.resize(0);
        for (const dao::Value &value : values) {
            tarnwick::appendCsvCell(line, printer.plain(value));
            line += u',';
        }
        line.chop(1);
        line += tarnwick::kCsvLineEnd;
        file.write(line.toUtf8());
    });
    file.commit();
    return failures;
}

dao::CellFailures writeXlsx(const QueryResult &result, const ExportOrder &order, const QString &machinePath,
                            tarnwick::Progress *progress)
{
    dao::CellFailures failures;
    XlsxFile file(machinePath, columnNames(result), spreadsheetWidths(result));
    forEachRow(result, order, progress, [&](qint64 row) {
        const auto values = result.values(row);
        countFailures(values, failures);
        file.row(values);
    });
    file.commit(progress);
    return failures;
}

} // namespace

std::optional<ExportForm> exportFormOf(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == "txt"_L1)
        return ExportForm::Text;
    if (extension == "csv"_L1)
        return ExportForm::Csv;
    if (extension == "xlsx"_L1)
        return ExportForm::Xlsx;
    return std::nullopt;
}

dao::CellFailures exportRows(const QueryResult &result, ExportForm form, const QString &machinePath,
                             tarnwick::Progress *progress, const ExportOrder &order)
{
    switch (form) {
    case ExportForm::Csv:
        return writeCsv(result, order, machinePath, progress);
    case ExportForm::Xlsx:
        return writeXlsx(result, order, machinePath, progress);
    case ExportForm::Text:
        break;
    }
    return writeText(result, order, machinePath, progress);
}

bool exportResult(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                  tarnwick::Progress *progress, const ExportOrder &order)
{
    const auto write = [&] {
        const ExportForm form = exportFormOf(machinePath).value_or(ExportForm::Text);
        const dao::CellFailures failures = exportRows(result, form, machinePath, progress, order);
        if (!failures.isEmpty())
            prompts.information(messages::kCellsFailed, failures.summary());
    };
    const tarnwick::Outcome outcome = attemptCancellable(prompts, write, messages::kExportResults);
    if (outcome == tarnwick::Outcome::Cancelled)
        prompts.status(messages::kCancelled);
    return outcome == tarnwick::Outcome::Done;
}

} // namespace query
