#include "XlsxFile.h"

#include "PlainText.h"
#include "XlsxCheck.h"
#include "XlsxPacking.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstring>
#include <db/FieldAccess.h>
#include <optional>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <tarnwick/base/TaskThread.h>
#include <tarnwick/FileWriter.h>
#include <utility>
#include <vector>
#include <xlsxwriter.h>

namespace query {

using namespace Qt::StringLiterals;
using dao::Value;

namespace {

/// The library prints numbers by the locale of the thread; a spreadsheet needs decimal points.
class PointLocale
{
public:
    PointLocale()
        : m_before(::uselocale(plain()))
    {
    }
    ~PointLocale() { ::uselocale(m_before); }
    PointLocale(const PointLocale &) = delete;
    PointLocale &operator=(const PointLocale &) = delete;

private:
    static locale_t plain()
    {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
        return locale;
    }

    locale_t m_before;
};

// "_x000D_" stands for a character that XML cannot have; a text that looks like that has its first "_" written so.
bool looksEscaped(QStringView text, qsizetype at)
{
    constexpr qsizetype kLength = 7;
    if (text.size() - at < kLength || text[at] != u'_' || text[at + 1] != u'x' || text[at + kLength - 1] != u'_')
        return false;
    bool isHex = false;
    (void)text.sliced(at + 2, 4).toUShort(&isHex, 16);
    return isHex && text[at + 2] != u'+' && text[at + 2] != u'-';
}

/// The library escapes the other control characters itself.
QByteArray cellText(const QString &text)
{
    const auto isPlain = [](QChar c) { return !c.isNull() && c < QChar(0xFFFE) && c != u'_'; };
    if (std::ranges::all_of(text, isPlain))
        return text.toUtf8();
    QString escaped;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isNull() || c >= QChar(0xFFFE) || looksEscaped(text, i))
            escaped += u"_x"_s + u"%1"_s.arg(int(c.unicode()), 4, 16, QChar(u'0')).toUpper() + u'_';
        else
            escaped += c;
    }
    return escaped.toUtf8();
}

// Spreadsheets count days from 1900 with a day that never was: only from March 1900 on their dates are the stored ones.
bool isSpreadsheetDate(double days)
{
    constexpr double kFirst = 61;
    constexpr double kEnd = 2'958'466; // the year 10000
    return days >= kFirst && days < kEnd;
}

} // namespace

struct XlsxFile::Impl
{
    Impl(const QString &machinePath, const QStringList &columnTitles)
        : path(machinePath)
        , titles(columnTitles)
    {
    }
    ~Impl()
    {
        writer.reset();
        close();
    }
    Impl(const Impl &) = delete;
    Impl &operator=(const Impl &) = delete;

    void open(const QList<int> &widths);
    void close();
    void handOver();
    void writeRows(std::span<const Value> cells);
    lxw_error cell(lxw_col_t column, const Value &value);
    lxw_error text(lxw_col_t column, const QString &text, lxw_format *format = nullptr);
    void check(lxw_error error) const;
    void checkRows() const;
    void pack(tarnwick::Progress *progress);
    void moveToPlace(tarnwick::Progress *progress) const;

    QString path;
    QStringList titles;
    QTemporaryDir folder{QDir::tempPath() + u"/arvo-XXXXXX"_s};
    QByteArray folderName = QFile::encodeName(folder.path());
    QString workPath = folder.filePath(u"book.xlsx"_s);
    lxw_workbook *book = nullptr;
    lxw_worksheet *sheet = nullptr;
    lxw_format *titleFormat = nullptr;
    lxw_format *dayFormat = nullptr;
    lxw_format *momentFormat = nullptr;
    lxw_format *moneyFormat = nullptr;
    lxw_row_t rows = 0; ///< rows begun, with the row of titles; only for the writer once it runs
    qint64 rowsTaken = 0;
    std::vector<Value> batch;                                  ///< rows taken that the writer does not have yet
    std::optional<tarnwick::TaskThread> writer{std::in_place}; ///< writing a row takes longer than reading it
};

void XlsxFile::Impl::check(lxw_error error) const
{
    if (error != LXW_NO_ERROR)
        throw tarnwick::FileError(path, 0, QString::fromUtf8(lxw_strerror(error)));
}

void XlsxFile::Impl::open(const QList<int> &widths)
{
    if (!folder.isValid())
        throw tarnwick::FileError(folder.path(), 0, folder.errorString());
    // Rows go to a temporary file of the library at once; otherwise it would keep all cells in memory.
    lxw_workbook_options options = {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folderName.data();
    errno = 0;
    book = workbook_new_opt(QFile::encodeName(workPath).constData(), &options);
    sheet = book ? workbook_add_worksheet(book, "Query") : nullptr;
    if (!sheet)
        throw tarnwick::WriteError(folder.path(), errno != 0 ? errno : ENOMEM);

    // These numbers stand for the formats of the reader's locale.
    constexpr uint8_t kDay = 14;
    constexpr uint8_t kMoment = 22;
    constexpr uint8_t kMoney = 4;
    titleFormat = workbook_add_format(book);
    format_set_bold(titleFormat);
    dayFormat = workbook_add_format(book);
    format_set_num_format_index(dayFormat, kDay);
    momentFormat = workbook_add_format(book);
    format_set_num_format_index(momentFormat, kMoment);
    moneyFormat = workbook_add_format(book);
    format_set_num_format_index(moneyFormat, kMoney);
    worksheet_freeze_panes(sheet, 1, 0);
    for (lxw_col_t i = 0; i < titles.size(); ++i) {
        constexpr int kWidest = 255;
        check(worksheet_set_column(sheet, i, i, qBound(1, widths.value(i) + 1, kWidest), nullptr));
        check(text(i, titles[i], titleFormat));
    }
    rows = 1;
}

void XlsxFile::Impl::close()
{
    if (sheet && sheet->optimize_tmpfile)
        std::fclose(sheet->optimize_tmpfile);
    if (book)
        lxw_workbook_free(book);
    book = nullptr;
    sheet = nullptr;
}

lxw_error XlsxFile::Impl::text(lxw_col_t column, const QString &text, lxw_format *format)
{
    if (text.size() > kLongestText)
        throw tarnwick::FileError(
            path, 0,
            u"the text in row %1, column %2 has %L3 characters, a cell of a spreadsheet at most %L4; a .csv file takes any length"_s
                .arg(rows)
                .arg(titles[column])
                .arg(text.size())
                .arg(kLongestText));
    return worksheet_write_string(sheet, rows, column, cellText(text).constData(), format);
}

lxw_error XlsxFile::Impl::cell(lxw_col_t column, const Value &value)
{
    switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Null:
        return LXW_NO_ERROR;
    case Value::Type::Boolean:
        return worksheet_write_boolean(sheet, rows, column, value.boolean() ? 1 : 0, nullptr);
    case Value::Type::Byte:
    case Value::Type::Short:
    case Value::Type::Long:
        return worksheet_write_number(sheet, rows, column, double(value.integer()), nullptr);
    case Value::Type::Currency:
        return worksheet_write_number(sheet, rows, column, value.real(), moneyFormat);
    case Value::Type::Float:
        // A Single of 2.1 is not to become 2.09999990463257.
        if (std::isfinite(value.real()))
            return worksheet_write_number(sheet, rows, column, db::decimalOf(value), nullptr);
        break;
    case Value::Type::Double:
        if (std::isfinite(value.real()))
            return worksheet_write_number(sheet, rows, column, value.real(), nullptr);
        break;
    case Value::Type::Date:
        if (isSpreadsheetDate(value.real())) {
            const bool isDay = value.real() == std::floor(value.real());
            return worksheet_write_number(sheet, rows, column, value.real(), isDay ? dayFormat : momentFormat);
        }
        break;
    default:
        break;
    }
    return text(column, plainText(value));
}

void XlsxFile::Impl::handOver()
{
    writer->add([this, cells = std::exchange(batch, {})] { writeRows(cells); });
}

void XlsxFile::Impl::writeRows(std::span<const Value> cells)
{
    const PointLocale point;
    errno = 0;
    lxw_col_t column = 0;
    for (const Value &value : cells) {
        check(cell(column, value));
        if (++column < lxw_col_t(titles.size()))
            continue;
        column = 0;
        ++rows;
    }
    checkRows();
}

// The library does not look whether its rows could be written, but the stream remembers it.
void XlsxFile::Impl::checkRows() const
{
    if (std::ferror(sheet->optimize_tmpfile) != 0)
        throw tarnwick::WriteError(folder.path(), errno != 0 ? errno : EIO);
}

void XlsxFile::Impl::pack(tarnwick::Progress *progress)
{
    constexpr qint64 kLargestPlainEntry = 4'000'000'000;
    errno = 0;
    lxw_worksheet_write_single_row(sheet);
    if (std::fflush(sheet->optimize_tmpfile) != 0)
        throw tarnwick::WriteError(folder.path(), errno);
    checkRows();
    const qint64 rowBytes = ::ftello(sheet->optimize_tmpfile);
    book->options.use_zip64 = rowBytes > kLargestPlainEntry ? LXW_TRUE : LXW_FALSE;
    const auto error = lxw_error(packBook(book, progress));
    close();
    if (error != LXW_NO_ERROR)
        throw tarnwick::FileError(folder.path(), 0, QString::fromUtf8(lxw_strerror(error)));
    checkXlsxFile(workPath, rowBytes, progress);
}

void XlsxFile::Impl::moveToPlace(tarnwick::Progress *progress) const
{
    constexpr qint64 kPiece = 1 << 20;
    QFile made(workPath);
    if (!made.open(QIODevice::ReadOnly))
        throw tarnwick::FileError(workPath, 0, made.errorString());
    tarnwick::AtomicFile file(path);
    tarnwick::ProgressLoop loop(progress, made.size(), u"Storing"_s);
    for (QByteArray piece = made.read(kPiece); !piece.isEmpty(); piece = made.read(kPiece)) {
        loop.tick(made.pos());
        file.write(piece);
    }
    if (made.error() != QFileDevice::NoError || !made.atEnd())
        throw tarnwick::FileError(workPath, 0, made.errorString());
    file.commit();
}

XlsxFile::XlsxFile(const QString &machinePath, const QStringList &titles, const QList<int> &widths)
    : m_impl(std::make_unique<Impl>(machinePath, titles))
{
    const PointLocale point;
    m_impl->open(widths);
}

XlsxFile::~XlsxFile() = default;

void XlsxFile::row(std::span<const Value> cells)
{
    constexpr size_t kBatch = 1000; // cells
    Impl &impl = *m_impl;
    if (impl.rowsTaken == kMostRows)
        throw tarnwick::FileError(impl.path, 0,
                                  u"a spreadsheet has at most %L1 rows; a .csv file takes any number"_s.arg(kMostRows));
    ++impl.rowsTaken;
    impl.batch.insert(impl.batch.end(), cells.begin(), cells.end());
    if (impl.batch.size() >= kBatch)
        impl.handOver();
}

void XlsxFile::commit(tarnwick::Progress *progress)
{
    m_impl->handOver();
    m_impl->writer->finish();
    m_impl->writer.reset();
    const PointLocale point;
    m_impl->pack(progress);
    m_impl->moveToPlace(progress);
}

} // namespace query
