#include "ResultExport.h"

#include "Messages.h"
#include "PlainText.h"
#include "XlsxFile.h"

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

QList<dao::Value> valuesOf(const QueryResult &result, qint64 row)
{
    QList<dao::Value> values;
    values.reserve(result.columnCount());
    for (int column = 0; column < result.columnCount(); ++column)
        values.append(result.value(row, column));
    return values;
}

void countFailures(const QList<dao::Value> &values, dao::CellFailures &failures)
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

dao::CellFailures writeText(const QueryResult &result, const ExportOrder &order, const QString &machinePath,
                            tarnwick::Progress *progress)
{
    dao::CellFailures failures;
    tarnwick::AtomicFile file(machinePath);
    std::vector<bool> isCalculated;
    for (int column = 0; column < result.columnCount(); ++column)
        isCalculated.push_back(result.source(column).source < 0);
    QString line;
    forEachRow(result, order, progress, [&](qint64 row) {
        line.resize(0);
        line += u'|';
        for (int column = 0; column < result.columnCount(); ++column) {
            const QString text = result.cellText(row, column);
            for (qsizetype i = text.size(); i < result.column(column).width; ++i)
                line += u' ';
            line += text;
            line += u'|';
            if (!isCalculated[size_t(column)])
                continue;
            if (const dao::Value value = result.value(row, column); value.isError())
                failures.add(int(value.integer()));
        }
        line += u'\n';
        file.write(line.toUtf8());
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
    forEachRow(result, order, progress, [&](qint64 row) {
        const QList<dao::Value> values = valuesOf(result, row);
        countFailures(values, failures);
        QStringList cells;
        cells.reserve(values.size());
        for (const dao::Value &value : values)
            cells.append(plainText(value));
        file.write(csvLine(cells).toUtf8());
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
        const QList<dao::Value> values = valuesOf(result, row);
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
