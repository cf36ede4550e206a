#pragma once
#include <algorithm>
#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace fenwright {

/// Walks a table text row by row without keeping the rows: UTF-8 (a spreadsheet's UTF-16 with its mark is taken too),
/// lines of tab-separated cells. Lines that begin with "#" and blank lines are skipped; lines "!name<TAB>value" before
/// the heading are properties of the whole file; the first other line is the heading with the column names, in any
/// order, case not counting. Columns that nobody asks for are ignored.
///
/// A file of version 2 (property "version") ends with the line "!rows<TAB>number", so that a file that was cut is told
/// from a whole one. Files of version 1, such as tables made by hand, may have that line. In every file the last line
/// has its line end.
///
/// Everything wrong is a tarnwick::FileError with file and line, and the column's name where there is one.
class TableScanner
{
public:
    /// Reads the heading. Throws for no heading, a column name twice, a required column that is missing.
    TableScanner(const QByteArray &content, const QString &name, const QStringList &requiredColumns);
    static TableScanner open(const QString &path, const QStringList &requiredColumns);

    const QString &fileName() const { return m_name; }
    const QStringList &columns() const { return m_columns; }
    int column(QStringView name) const; ///< -1 when it is not there
    /// Empty when the file has no such property.
    QString property(const QString &name) const { return m_properties.value(name.toLower()); }

    /// Whether the file states the number of its rows. Where it does not, missing rows cannot be noticed.
    bool isCounted() const { return m_statedRows >= 0; }

    /// Moves to the next row; false at the end. Throws for a row with more cells than the heading, unless they are
    /// blank, and at the end when the number of rows is not the stated one.
    bool next();
    int line() const { return m_line; } ///< 1-based line of the row in the file
    qint64 bytesLeft() const { return m_content.size() - std::min(m_offset, m_content.size()); }
    int cellCount() const { return int(m_cells.size()); }
    /// Throws when the row ends before its last required column, or has fewer cells than that.
    void requireCells(int minimumCells = 0) const;

    /// The cell's bytes as they stand; empty for column -1 and beyond the row's end. Valid as long as the scanner.
    QByteArrayView raw(int column) const;
    QString text(int column) const;
    /// Throws when it is no whole number within the bounds; an empty cell gives whenEmpty.
    int integer(int column, int minimum, int maximum, int whenEmpty) const;
    /// The same, an empty cell refused.
    int integer(int column, int minimum, int maximum) const;
    double number(int column, double whenEmpty) const;
    double number(int column) const;
    /// The same for single precision.
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
    qsizetype m_end = 0; ///< of the rows
    int m_line = 0;
    qint64 m_rows = 0;
    qint64 m_statedRows = -1;
    QStringList m_columns;
    QHash<QString, int> m_columnIndex; ///< by case-folded name
    QStringList m_required;
    int m_lastRequired = -1;
    QHash<QString, QString> m_properties;
    std::vector<QByteArrayView> m_cells;
};

/// What users are told about files that do not state the number of their rows; empty when there are none.
QString uncountedRemark(const QStringList &files);

/// Makes such a table text, of the newest version.
class TableWriter
{
public:
    TableWriter();
    /// Before the heading, so call it first.
    void property(const QString &name, const QString &value);
    void heading(const QStringList &columns);
    void cell(QStringView text);
    void cell(int value);
    void cell(double value);
    void cell(float value);
    void endRow();
    /// The whole text, with the line that counts the rows.
    QByteArray bytes() const;
    void write(const QString &path) const;

private:
    void separate();
    QByteArray m_bytes;
    qint64 m_rows = 0;
    bool m_inRow = false;
};

} // namespace fenwright
