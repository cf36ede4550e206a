#include "TableScanner.h"

#include "CellText.h"

#include <cmath>
#include <limits>
#include <QStringDecoder>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using tarnwick::FileError;

namespace fenwright {

namespace {

constexpr int kVersion = 2;
constexpr int kFirstCountedVersion = 2;
constexpr QByteArrayView kRowsLead("!rows\t");

QByteArray asUtf8(const QByteArray &content, const QString &name)
{
    if (content.startsWith("\xEF\xBB\xBF"))
        return content.sliced(3);
    if (content.startsWith("\xFF\xFE") || content.startsWith("\xFE\xFF")) {
        QStringDecoder decoder(QStringDecoder::Utf16);
        const QString text = decoder(content);
        if (decoder.hasError())
            throw FileError(name, 0, u"The text is not valid UTF-16."_s);
        return text.toUtf8();
    }
    return content;
}

void checkUtf8(const QByteArray &content, const QString &name)
{
    if (QUtf8StringView(content.constData(), content.size()).isValidUtf8())
        return;
    int line = 1;
    QByteArrayView rest(content);
    for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
        if (!QUtf8StringView(rest.data(), end).isValidUtf8())
            break;
        rest = rest.sliced(end + 1);
        ++line;
    }
    throw FileError(name, line, u"The text is not UTF-8; save it as Unicode text."_s);
}

} // namespace

TableScanner::TableScanner(const QByteArray &content, const QString &name, const QStringList &requiredColumns)
    : m_name(name)
    , m_content(asUtf8(content, name))
    , m_required(requiredColumns)
{
    checkUtf8(m_content, name);
    readEnd();
    readHeading();
    readVersion();
}

TableScanner TableScanner::open(const QString &path, const QStringList &requiredColumns)
{
    return TableScanner(tarnwick::readFile(path), path, requiredColumns);
}

void TableScanner::readEnd()
{
    const QByteArrayView text = QByteArrayView(m_content).trimmed();
    if (text.isEmpty())
        return;
    if (!m_content.endsWith('\n'))
        throw FileError(m_name, int(m_content.count('\n')) + 1,
                        u"The last line has no line end, so the file may be truncated. If it is complete, add a "
                        u"line end."_s);
    m_end = m_content.size();
    const qsizetype start = text.lastIndexOf('\n') + 1;
    if (!text.sliced(start).startsWith(kRowsLead))
        return;
    const qsizetype offset = text.data() - m_content.constData() + start;
    const std::optional<qint64> stated = cellInteger(text.sliced(start + kRowsLead.size()));
    if (!stated || *stated < 0)
        throw FileError(m_name, int(QByteArrayView(m_content).first(offset).count('\n')) + 1,
                        u"The line with the number of rows contains no number."_s);
    m_statedRows = *stated;
    m_end = offset;
}

bool TableScanner::nextLine(QByteArrayView &line)
{
    while (m_offset < m_end) {
        const qsizetype end = m_content.indexOf('\n', m_offset);
        line = QByteArrayView(m_content).sliced(m_offset, end - m_offset);
        m_offset = end + 1;
        ++m_line;
        if (line.endsWith('\r'))
            line.chop(1);
        if (!line.startsWith('#') && !line.trimmed().isEmpty())
            return true;
    }
    return false;
}

void TableScanner::split(QByteArrayView line)
{
    m_cells.clear();
    qsizetype from = 0;
    while (true) {
        const qsizetype tab = line.indexOf('\t', from);
        m_cells.push_back(line.sliced(from, (tab < 0 ? line.size() : tab) - from));
        if (tab < 0)
            return;
        from = tab + 1;
    }
}

void TableScanner::readHeading()
{
    QByteArrayView line;
    bool found = false;
    while (!found && nextLine(line)) {
        split(line);
        found = !line.startsWith('!');
        if (!found)
            m_properties.insert(cellText(m_cells[0].sliced(1)).trimmed().toLower(),
                                cellText(m_cells.size() > 1 ? m_cells[1] : QByteArrayView()));
    }
    if (!found)
        throw FileError(m_name, 0, u"The file has no heading line with column names."_s);
    for (const QByteArrayView cell : m_cells) {
        const QString name = cellText(cell).trimmed();
        const QString key = name.toCaseFolded();
        if (!name.isEmpty() && m_columnIndex.contains(key))
            throw FileError(m_name, m_line, u"The heading names column '%1' twice."_s.arg(name));
        if (!m_columnIndex.contains(key))
            m_columnIndex.insert(key, int(m_columns.size()));
        m_columns.append(name);
    }
    for (const QString &name : m_required) {
        const int index = column(name);
        if (index < 0)
            throw FileError(m_name, m_line, u"The heading has no column '%1'."_s.arg(name));
        m_lastRequired = std::max(m_lastRequired, index);
    }
}

void TableScanner::readVersion()
{
    const QString text = property(u"version"_s);
    const qint64 version = text.isEmpty() ? 1 : cellInteger(text.toUtf8()).value_or(0);
    if (version < 1)
        throw FileError(m_name, 0, u"Property 'version': '%1' is not a version."_s.arg(text));
    if (version > kVersion)
        throw FileError(
            m_name, 0,
            u"The file is of version %1; this program reads versions up to %2."_s.arg(version).arg(kVersion));
    if (version >= kFirstCountedVersion && !isCounted())
        throw FileError(
            m_name, 0,
            u"The file does not end with the line that contains its number of rows. It is truncated, or lines were "
            u"added behind that line."_s);
}

int TableScanner::column(QStringView name) const
{
    return m_columnIndex.value(name.toString().toCaseFolded(), -1);
}

bool TableScanner::next()
{
    QByteArrayView line;
    if (!nextLine(line)) {
        m_cells.clear();
        if (isCounted() && m_rows != m_statedRows)
            throw FileError(m_name, m_line + 1,
                            u"The line states %1 rows, but the file has %2. If rows were added or removed by hand, "
                            u"correct the number."_s.arg(m_statedRows)
                                .arg(m_rows));
        return false;
    }
    ++m_rows;
    split(line);
    while (cellCount() > m_columns.size() && m_cells.back().trimmed().isEmpty())
        m_cells.pop_back();
    if (cellCount() > m_columns.size())
        fail(u"The line has %1 cells, the heading only %2 columns."_s.arg(cellCount()).arg(m_columns.size()));
    return true;
}

void TableScanner::requireCells(int minimumCells) const
{
    const int needed = std::max(m_lastRequired + 1, minimumCells);
    if (cellCount() < needed)
        fail(u"The line has %1 columns where at least %2 are needed (column '%3' is missing)."_s.arg(cellCount())
                 .arg(needed)
                 .arg(m_columns.value(cellCount())));
}

QByteArrayView TableScanner::raw(int column) const
{
    return column >= 0 && column < cellCount() ? m_cells[size_t(column)] : QByteArrayView();
}

QString TableScanner::text(int column) const
{
    return cellText(raw(column));
}

int TableScanner::integer(int column, int minimum, int maximum, int whenEmpty) const
{
    return raw(column).trimmed().isEmpty() ? whenEmpty : integer(column, minimum, maximum);
}

int TableScanner::integer(int column, int minimum, int maximum) const
{
    const std::optional<qint64> value = cellInteger(raw(column));
    if (!value || *value < minimum || *value > maximum)
        fail(column, u"'%1' is not a whole number from %2 to %3"_s.arg(text(column)).arg(minimum).arg(maximum));
    return int(*value);
}

double TableScanner::number(int column, double whenEmpty) const
{
    return raw(column).trimmed().isEmpty() ? whenEmpty : number(column);
}

double TableScanner::number(int column) const
{
    const std::optional<double> value = cellNumber(raw(column));
    if (!value)
        fail(column, u"'%1' is not a number"_s.arg(text(column)));
    return *value;
}

float TableScanner::single(int column, float whenEmpty) const
{
    return raw(column).trimmed().isEmpty() ? whenEmpty : single(column);
}

float TableScanner::single(int column) const
{
    const double value = number(column);
    if (std::abs(value) > double(std::numeric_limits<float>::max()))
        fail(column, u"'%1' is too large"_s.arg(text(column)));
    return float(value);
}

bool TableScanner::flag(int column, bool whenEmpty) const
{
    const QString word = text(column).trimmed().toLower();
    if (word.isEmpty())
        return whenEmpty;
    if (word == u"1" || word == u"yes" || word == u"true" || word == u"x")
        return true;
    if (word != u"0" && word != u"no" && word != u"false")
        fail(column, u"'%1' is neither yes nor no"_s.arg(word));
    return false;
}

void TableScanner::fail(int column, const QString &reason) const
{
    throw FileError(m_name, m_line, u"Column '%1': %2."_s.arg(m_columns.value(column), reason));
}

void TableScanner::fail(const QString &reason) const
{
    throw FileError(m_name, m_line, reason);
}

QString uncountedRemark(const QStringList &files)
{
    if (files.isEmpty())
        return {};
    return files.join(u", "_s) + u": the number of rows is not stated, so missing rows cannot be detected."_s;
}

TableWriter::TableWriter()
{
    property(u"version"_s, QString::number(kVersion));
}

void TableWriter::property(const QString &name, const QString &value)
{
    m_bytes.append('!').append(name.toUtf8()).append('\t');
    appendCell(m_bytes, value);
    m_bytes.append('\n');
}

void TableWriter::heading(const QStringList &columns)
{
    for (const QString &name : columns)
        cell(name);
    endRow();
    m_rows = 0;
}

void TableWriter::separate()
{
    if (m_inRow)
        m_bytes.append('\t');
    m_inRow = true;
}

void TableWriter::cell(QStringView text)
{
    separate();
    appendCell(m_bytes, text);
}

void TableWriter::cell(int value)
{
    separate();
    m_bytes.append(QByteArray::number(value));
}

void TableWriter::cell(double value)
{
    separate();
    appendCell(m_bytes, value);
}

void TableWriter::cell(float value)
{
    separate();
    appendCell(m_bytes, value);
}

void TableWriter::endRow()
{
    m_bytes.append('\n');
    m_inRow = false;
    ++m_rows;
}

QByteArray TableWriter::bytes() const
{
    return m_bytes + kRowsLead + QByteArray::number(m_rows) + '\n';
}

void TableWriter::write(const QString &path) const
{
    tarnwick::writeFileAtomically(path, bytes());
}

} // namespace fenwright
