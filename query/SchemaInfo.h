#pragma once
#include <db/DatabaseSession.h>
#include <tarnwick/GridSource.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/JTablePrintArg.h>
#include <tarnwick/Paths.h>

namespace query {

/// Rows of plain texts as a table that is only read. Right-aligned columns hold whole numbers.
class TextRows : public tarnwick::GridSource
{
public:
    struct Row
    {
        QStringList cells = {};
        tarnwick::ColourRef background = tarnwick::RowColours().background;
        QString line = {}; ///< shown across the row in place of cells
    };

    explicit TextRows(const QList<tarnwick::GridColumn> &columns)
        : m_columns(columns)
    {
    }

    QList<Row> rows;

    int rowCount() const override { return int(rows.size()); }
    int columnCount() const override { return int(m_columns.size()); }
    tarnwick::GridColumn column(int column) const override { return m_columns[column]; }
    QString text(int row, int column) const override { return rows[row].cells.value(column); }
    QVariant value(int row, int column) const override;
    QString lineText(int row) const override { return rows[row].line; }
    tarnwick::RowColours colours(int row) const override;

private:
    QList<tarnwick::GridColumn> m_columns;
};

/// What the database says about its tables and stored queries, as rows of tables.
class SchemaInfo
{
public:
    enum Part { Fields, Indexes, Relations, Queries, PartCount };
    enum FieldColumn { FieldName, Ordinal, FieldType, FieldSize, FieldDefault, FieldRule, Attributes };

    /// Stands behind the name of a field that an index sorts from the largest to the smallest.
    static constexpr QLatin1StringView kDescending{" (descending)"};

    explicit SchemaInfo(db::DatabaseSession &session);

    /// Reads the names of the tables, without system and hidden ones, and the stored queries. Without a database, or on
    /// a failure (1066), reports it and returns false.
    bool open();
    const QStringList &tableNames() const { return m_tables; }
    /// Reads fields, indexes and relations of a table. A failure is reported (1067), and nothing is shown.
    bool setTable(const QString &name);
    const QString &table() const { return m_table; }
    TextRows &rows(int part) { return m_parts[size_t(part)]; }

    /// The rows of a part for all tables, each below a line with its name.
    TextRows allTables(int part) const;

    /// "Schema - %S" with the path of the database relative to the project's arvo folder.
    QString caption(const tarnwick::PathRoots &roots) const;
    /// The layout of a printed part. table: empty for all tables.
    tarnwick::JTablePrintArg printLayout(int part, const QString &table) const;

private:
    void fillQueries();
    void fill(TextRows &rows, int part, const QString &table) const;
    void fillFields(TextRows &rows, const dao::TableInfo &info) const;
    static void fillIndexes(TextRows &rows, const dao::TableInfo &info);
    void fillRelations(TextRows &rows, const QString &table) const;

    db::DatabaseSession &m_session;
    QStringList m_tables;
    QString m_table;
    std::vector<TextRows> m_parts;
};

} // namespace query
