#pragma once
#include "ParameterResolver.h"

#include <dao/Recordset.h>
#include <db/DatabaseSession.h>
#include <tarnwick/Progress.h>

namespace query {

/// The rows of an executed select query. No value is held: a row is a place in the open record set, and a cell is read
/// when it is asked for, so a result of any size opens in the time the engine needs to find its keys. Stays open until
/// the next run or clear().
class QueryResult
{
public:
    struct RowColours
    {
        quint32 foreground = 0x000000; ///< 0x00BBGGRR
        quint32 background = 0xFFFFFF;
        bool operator==(const RowColours &) const = default;
    };

    QueryResult(db::DatabaseSession &session, QueryContext &context);
    ~QueryResult();
    QueryResult(const QueryResult &) = delete;
    QueryResult &operator=(const QueryResult &) = delete;

    /// Runs a select query. False when no database is connected (reported) or the parameters were refused; elapsed() is
    /// then -1. Throws the engine's exceptions (the result is then empty), and DaoCancelled when the progress stops it.
    bool run(const QString &name, const QString &sql, tarnwick::Progress *progress = nullptr);
    /// The same for a query definition that is prepared already.
    bool run(const QString &name, dao::QueryDef &query, tarnwick::Progress *progress = nullptr);
    /// Empties rows and columns and closes the record set. A failure is reported (1076).
    void clear();

    const QString &name() const { return m_name; }
    /// Seconds of the last run, -1 when none took place.
    double elapsed() const { return m_elapsed; }
    qint64 rowCount() const;
    int columnCount() const { return int(m_columns.size()); }
    const db::ColumnFormat &column(int column) const { return m_columns[column]; }
    db::ColumnFormat &column(int column) { return m_columns[column]; }
    /// What the engine knows of the column: source table and field, size, whether it can be written.
    const dao::sql::Column &source(int column) const;
    /// First column of that name without regard to case, or -1.
    int findColumn(QStringView name) const;

    /// The value in its type; Null in a row that was inserted and is not stored yet. Throws the engine's exceptions.
    dao::Value value(qint64 row, int column) const;
    /// The value by the column's format; a row that was deleted elsewhere gives "#Deleted".
    QString cellText(qint64 row, int column) const;
    /// The error of a cell that could not be calculated ("11: Division by zero."), for a GridSource's tip(); empty for
    /// a cell with a value.
    QString cellTip(qint64 row, int column) const;
    RowColours colours(qint64 row) const;
    void setColours(qint64 row, const RowColours &colours);

    /// Whether the rows can be changed, and why not.
    dao::sql::NotUpdatable whyNotUpdatable() const;

    /// Stores a typed text in a cell. A text that is no value of the field's type leaves the field as it was; an empty
    /// text is Null where the field takes no zero-length text. In an inserted row values are kept until all required
    /// fields have one, then the row is added. Failures are reported (1065); false when nothing was stored.
    bool setCell(qint64 row, int column, const QString &text);
    /// Deletes the record and removes the row; a failure is reported (1064), the row is removed all the same.
    void deleteRow(qint64 row);
    /// An empty row that has no record yet.
    void insertRow(qint64 position);

private:
    class RowMap;

    void build(dao::QueryDef &query);
    void moveTo(qint64 place) const;
    bool editRecord(qint64 place, int column, const QString &text);
    bool editInserted(qint64 row, int column, const QString &text);
    /// Ends an edit or addNew that was begun; a failure takes it back.
    void store(const std::function<void()> &setValues);
    bool convert(int column, const QString &text, dao::Value &value) const;
    bool hasRequiredValues(const QHash<int, dao::Value> &values) const;

    db::DatabaseSession *m_session;
    QueryContext *m_context;
    QString m_name;
    double m_elapsed = -1;
    QList<db::ColumnFormat> m_columns;
    std::unique_ptr<dao::Recordset> m_recordset;
    std::unique_ptr<RowMap> m_rows;
    mutable qint64 m_place = -1; ///< where the record set stands, -1 when that is not known
};

} // namespace query
