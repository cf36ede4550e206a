#include "TubeTable.h"

#include "TableLines.h"

#include <ellery/ComponentFile.h>
#include <ellery/TubeGrid.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/TextDecoding.h>

#include <cmath>
#include <limits>

namespace setup {

using namespace Qt::StringLiterals;
using ellery::Tube;

namespace {

constexpr qint64 kLargestFile = 64 * 1024 * 1024;
constexpr qsizetype kMostProblems = 100;

QString addressText(const Tube &tube)
{
    const ellery::TubeAddress &address = tube.address;
    const QString text = u"row %1, column %2"_s.arg(address.row).arg(address.col);
    return address.sec == 0 ? text : u"section %1, "_s.arg(address.sec) + text;
}

/// Reads one table; collects its problems.
class Reader
{
public:
    Reader(const QString &path, const QString &text)
        : m_path(path)
        , m_lines(text)
    {
    }

    TubeTable read(const TubePattern &pattern);

private:
    void findColumns();
    void readRow();
    int number(int column, int whenEmpty);
    float position(int column);
    bool flag(int column);
    void addTube(const Tube &tube);
    void checkPositions();
    void measure(const TubePattern &pattern);
    void place(const TubePattern &pattern);

    void fault(int line, const QString &reason);
    QString nameOf(int column) const { return m_heading[column].trimmed(); }

    QString m_path;
    TableLines m_lines;
    TubeTable m_table;
    QList<int> m_lineOfTube;
    QHash<quint64, int> m_lineOfAddress;
    QStringList m_problems;
    qsizetype m_problemCount = 0;
    bool m_rowIsGood = true;

    QStringList m_heading;
    int m_sec = -1;
    int m_row = -1;
    int m_col = -1;
    int m_x = -1;
    int m_y = -1;
    int m_periphery = -1;
    int m_commaLine = 0; ///< first line with a decimal comma, and with a decimal point
    int m_pointLine = 0;
};

void Reader::fault(int line, const QString &reason)
{
    m_rowIsGood = false;
    if (++m_problemCount <= kMostProblems)
        m_problems.append(tarnwick::FileError(m_path, line, reason).text());
}

void Reader::findColumns()
{
    m_heading = m_lines.cells();
    const std::pair<QStringView, int *> known[] = {
        {u"row", &m_row},     {u"col", &m_col}, {u"column", &m_col}, {u"sec", &m_sec},
        {u"section", &m_sec}, {u"x", &m_x},     {u"y", &m_y},        {u"periphery", &m_periphery}};
    QStringList others;
    for (int i = 0; i < m_heading.size(); ++i) {
        const QString name = nameOf(i);
        const auto found = std::find_if(std::begin(known), std::end(known), [&](const auto &one) {
            return one.first.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (found == std::end(known)) {
            if (!name.isEmpty())
                others.append(name);
        } else if (*found->second >= 0) {
            fault(m_lines.line(), u"Columns '%1' and '%2' mean the same."_s.arg(nameOf(*found->second), name));
        } else {
            *found->second = i;
        }
    }
    if (m_row < 0 || m_col < 0) {
        const QString missing = m_row >= 0   ? u"column 'col' is"_s
                                : m_col >= 0 ? u"column 'row' is"_s
                                             : u"columns 'row' and 'col' are"_s;
        fault(m_lines.line(), u"The first line must name the columns; %1 missing."_s.arg(missing));
    }
    if ((m_x < 0) != (m_y < 0))
        fault(m_lines.line(), u"Column '%1' is missing; '%2' alone is no position."_s.arg(m_x < 0 ? u"x"_s : u"y"_s,
                                                                                          m_x < 0 ? u"y"_s : u"x"_s));
    if (!others.isEmpty())
        m_table.remarks.append(u"Columns that are not used: %1."_s.arg(others.join(u", "_s)));
}

int Reader::number(int column, int whenEmpty)
{
    const QString cell = m_lines.cell(column).trimmed();
    if (cell.isEmpty() && whenEmpty >= 0)
        return whenEmpty;
    bool ok = false;
    const int value = cell.toInt(&ok);
    if (cell.isEmpty())
        fault(m_lines.line(), u"Column '%1' is empty."_s.arg(nameOf(column)));
    else if (!ok || value < 0 || value > ellery::kMaxTubeNumber)
        fault(m_lines.line(), u"Column '%1': '%2' is not a whole number from 0 to %3."_s.arg(nameOf(column), cell)
                                  .arg(ellery::kMaxTubeNumber));
    return value;
}

float Reader::position(int column)
{
    QString cell = m_lines.cell(column).trimmed();
    if (cell.isEmpty()) {
        fault(m_lines.line(), u"Column '%1' is empty."_s.arg(nameOf(column)));
        return 0;
    }
    const QString shown = cell;
    const bool hasComma = cell.count(u',') == 1 && !cell.contains(u'.') && m_lines.separator() != u',';
    int &line = hasComma ? m_commaLine : m_pointLine;
    if (line == 0 && (hasComma || cell.contains(u'.')))
        line = m_lines.line();
    if (hasComma)
        cell.replace(u',', u'.');
    bool ok = false;
    const float value = float(cell.toDouble(&ok));
    if (!ok || !std::isfinite(value))
        fault(m_lines.line(), u"Column '%1': '%2' is not a number."_s.arg(nameOf(column), shown));
    return value;
}

bool Reader::flag(int column)
{
    const QString cell = m_lines.cell(column).trimmed().toLower();
    const QStringList yes{u"1"_s, u"yes"_s, u"true"_s, u"x"_s};
    const QStringList no{QString(), u"0"_s, u"no"_s, u"false"_s};
    if (!yes.contains(cell) && !no.contains(cell))
        fault(m_lines.line(), u"Column '%1': '%2' is neither yes nor no."_s.arg(nameOf(column), cell));
    return yes.contains(cell);
}

void Reader::readRow()
{
    m_rowIsGood = true;
    const QStringList cells = m_lines.cells();
    for (qsizetype i = m_heading.size(); i < cells.size(); ++i) {
        if (!cells[i].trimmed().isEmpty()) {
            fault(m_lines.line(), u"The line has more cells than the heading."_s);
            return;
        }
    }
    Tube tube;
    if (m_sec >= 0)
        tube.address.sec = qint16(number(m_sec, 0));
    tube.address.row = qint16(number(m_row, -1));
    tube.address.col = qint16(number(m_col, -1));
    if (m_x >= 0) {
        tube.x = position(m_x);
        tube.y = position(m_y);
    }
    if (m_periphery >= 0)
        tube.periphery = flag(m_periphery);
    if (m_rowIsGood)
        addTube(tube);
}

void Reader::addTube(const Tube &tube)
{
    const ellery::TubeAddress &a = tube.address;
    int &line = m_lineOfAddress[quint64(a.sec) << 32 | quint64(a.row) << 16 | quint64(a.col)];
    if (line != 0) {
        fault(m_lines.line(), u"The tube of %1 is in line %2 already."_s.arg(addressText(tube)).arg(line));
        return;
    }
    line = m_lines.line();
    m_table.tubes.append(tube);
    m_lineOfTube.append(line);
}

void Reader::place(const TubePattern &pattern)
{
    if (pattern.pitch <= 0 || !pattern.triangular) {
        fault(0, u"The table has no columns 'x' and 'y': the pitch, and whether the pattern is square or triangular, "
                 u"are needed."_s);
        return;
    }
    m_table.pitch = pattern.pitch;
    m_table.triangular = *pattern.triangular;
    if (m_table.tubes.isEmpty())
        return;
    // In a triangular bundle, some plants count half pitches, so that row + column is always even or always odd;
    // others number the columns of each row in turn, and every other row is shifted by half a pitch.
    const auto parity = [](const Tube &tube) { return (tube.address.row + tube.address.col) & 1; };
    const bool countsHalves = m_table.triangular && m_table.tubes.size() > 1 &&
                              std::all_of(m_table.tubes.cbegin(), m_table.tubes.cend(), [&](const Tube &tube) {
                                  return parity(tube) == parity(m_table.tubes.first());
                              });
    const double rowHeight = m_table.triangular ? m_table.pitch * std::sqrt(3.0) / 2 : m_table.pitch;
    for (Tube &tube : m_table.tubes) {
        const double shift = m_table.triangular && !countsHalves ? (tube.address.row & 1) / 2.0 : 0;
        tube.x = float(m_table.pitch * (countsHalves ? tube.address.col / 2.0 : tube.address.col + shift));
        tube.y = float(rowHeight * tube.address.row);
    }
}

/// Takes pitch and pattern from the positions if they are not given.
void Reader::measure(const TubePattern &pattern)
{
    const ellery::TubeGrid grid(m_table.tubes);
    const double spacing = grid.spacing();
    m_table.pitch = pattern.pitch > 0 ? pattern.pitch : spacing > 0 ? spacing : 1;
    if (pattern.triangular) {
        m_table.triangular = *pattern.triangular;
    } else {
        // A tube inside a triangular pattern has six neighbours at the pitch, in a square one four.
        constexpr double kReach = 1.2;
        constexpr qsizetype kBetween = 5;
        qsizetype six = 0;
        qsizetype four = 0;
        for (const Tube &tube : std::as_const(m_table.tubes)) {
            const qsizetype around = grid.within(double(tube.x), double(tube.y), spacing * kReach).size() - 1;
            six += around > kBetween ? 1 : 0;
            four += around == kBetween - 1 ? 1 : 0;
        }
        m_table.triangular = six > four;
    }
    if (pattern.pitch <= 0 || !pattern.triangular)
        m_table.remarks.append(u"From the positions: pitch %1, %2."_s.arg(m_table.pitch)
                                   .arg(m_table.triangular ? u"triangular"_s : u"square"_s));
}

void Reader::checkPositions()
{
    QHash<std::pair<float, float>, int> lines;
    for (qsizetype i = 0; i < m_table.tubes.size(); ++i) {
        const Tube &tube = m_table.tubes[i];
        int &line = lines[{tube.x, tube.y}];
        if (line != 0)
            fault(m_lineOfTube[i], u"The tube of %1 is at the same place as the tube in line %2%3."_s.arg(
                                       addressText(tube), QString::number(line),
                                       m_x < 0 ? u"; the table needs columns 'x' and 'y'"_s : QString()));
        line = m_lineOfTube[i];
    }
}

TubeTable Reader::read(const TubePattern &pattern)
{
    if (!m_lines.next())
        throw TableError({tarnwick::FileError(m_path, 0, u"The file is empty."_s).text()});
    findColumns();
    if (m_problemCount == 0) {
        while (m_lines.next())
            readRow();
        for (const auto &[line, reason] : m_lines.faults())
            fault(line, reason);
        if (m_commaLine != 0 && m_pointLine != 0)
            fault(m_commaLine, u"A number has a decimal comma, but line %1 has a decimal point."_s.arg(m_pointLine));
        if (m_table.tubes.isEmpty() && m_problemCount == 0)
            fault(0, u"The file lists no tubes."_s);
        if (m_x < 0)
            place(pattern);
        if (m_problemCount == 0)
            checkPositions();
    }
    if (m_problemCount > m_problems.size())
        m_problems.append(u"... and %1 more problems."_s.arg(m_problemCount - m_problems.size()));
    if (m_problemCount > 0)
        throw TableError(m_problems);
    if (m_x >= 0)
        measure(pattern);
    return m_table;
}

} // namespace

TableError::TableError(const QStringList &problems)
    : Error(problems.join(u'\n'))
{
}

TubeTable TubeTable::read(const QString &path, const TubePattern &pattern)
{
    return Reader(path, tarnwick::decodedText(tarnwick::readFile(path, kLargestFile))).read(pattern);
}

} // namespace setup
