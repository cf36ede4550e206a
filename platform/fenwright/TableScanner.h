#pragma once
#include <algorithm>
#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace fenwright {

/// Reads a table text row by row without keeping the rows: UTF-8 (or UTF-16 with byte order mark, as spreadsheets write
/// it), lines of tab-separated cells. Lines that begin with "#" and blank lines are skipped. Lines "!name<TAB>value"
/// before the heading are properties of the whole file. The first other line is the heading with the column names, in
/// any order, ignoring case. Columns that are not requested are ignored.
///
/// A file of version 2 (property "version") ends with the line "!rows<TAB>number", so that a truncated file is
/// detected. In files of version 1, for example tables made by hand, this line is optional. In every file the last line
/// must end with a line end.
///
/// Every error is a tarnwick::FileError with file, line and, if there is one, the column's name.
class TableScanner
{
public:
    /// Reads the heading. Throws if there is none, a column name is repeated, or a required column is missing.
    TableScanner(const QByteArray &content, const QString &name, const QStringList &requiredColumns);
    static TableScanner open(const QString &path, const QStringList &requiredColumns);

    const QString &fileName() const { return m_name; }
    const QStringList &columns() const { return m_columns; }
    int column(QStringView name) const; ///< -1 if there is none
    /// Empty if the file has no such property.
    QString property(const QString &name) const { return m_properties.value(name.toLower()); }

    /// True if the file states its number of rows. If it does not, missing rows cannot be detected.
    bool isCounted() const { return m_statedRows >= 0; }

    /// Moves to the next row; returns false at the end. Throws if a row has more non-blank cells than the heading, and
    /// at the end if the number of rows differs from the stated one.
    bool next();
    int line() const { return m_line; } ///< 1-based line of the row in the file
    qint64 bytesLeft() const { return m_content.size() - std::min(m_offset, m_content.size()); }
    int cellCount() const { return int(m_cells.size()); }
    /// Throws if the row ends before its last required column or has fewer than minimumCells cells.
    void requireCells(int minimumCells = 0) const;

    /// Unchanged bytes of the cell; empty for column -1 and beyond the end of the row. Valid as long as the scanner.
    QByteArrayView raw(int column) const;
    QString text(int column) const;
    /// Throws if the cell is not a whole number within the bounds; an empty cell gives whenEmpty.
    int integer(int column, int minimum, int maximum, int whenEmpty) const;
    /// As above, but an empty cell throws.
    int integer(int column, int minimum, int maximum) const;
    double number(int column, double whenEmpty) const;
    double number(int column) const;
    /// As number(), in single precision.
    float single(int column, float whenEmpty) const;
    float single(int column) const;
    /// yes/no, true/false, 1/0, x or a blank.
    bool flag(int column, bool whenEmpty) const;

    [[noreturn]] void fail(int column, const QString &reason) const;
    [[noreturn]] void fail(const QString &reason) const;

private:
    bool nextLine(QByteArrayView &line);
    void readEnd();
    void readHeading();
    void readVersion();
    void split(QByteArrayView line);

    QString m_name;
    QByteArray m_content;
    qsizetype m_offset = 0;
    qsizetype m_end = 0; ///< end of the rows
    int m_line = 0;
    qint64 m_rows = 0;
    qint64 m_statedRows = -1;
    QStringList m_columns;
    QHash<QString, int> m_columnIndex; ///< by column name in case-folded form
    QStringList m_required;
    int m_lastRequired = -1;
    QHash<QString, QString> m_properties;
    std::vector<QByteArrayView> m_cells;
};

/// Remark for the user about files that do not state their number of rows; empty if there are none.
QString uncountedRemark(const QStringList &files);

/// Writes such a table text in the newest version.
class TableWriter
{
public:
    TableWriter();
    /// Call before the heading.
    void property(const QString &name, const QString &value);
    void heading(const QStringList &columns);
    void cell(QStringView text);
    void cell(int value);
    void cell(double value);
    void cell(float value);
    void endRow();
    /// The whole text, including the line with the number of rows.
    QByteArray bytes() const;
    void write(const QString &path) const;

private:
    void separate();
    QByteArray m_bytes;
    qint64 m_rows = 0;
    bool m_inRow = false;
};

} // namespace fenwright
