#pragma once
#include "ChangeListener.h"
#include "ParameterResolver.h"

#include <dao/Recordset.h>
#include <db/DatabaseSession.h>
#include <span>
#include <tarnwick/base/Progress.h>
#include <tarnwick/ColourRef.h>
#include <vector>

namespace query {

/// Stands in the cells of a row that was deleted elsewhere.
inline constexpr QStringView kDeletedCell = u"#Deleted";

/// The rows of an executed select query. Values are not stored: a row is a position in the open record set, and a cell
/// is read when requested. So the time to open a result depends only on the engine finding its keys, not on its
/// columns. Stays open until the next run or clear().
class QueryResult
{
public:
    using RowColours = tarnwick::RowColours;

    QueryResult(db::DatabaseSession &session, QueryContext &context);
    ~QueryResult();
    QueryResult(const QueryResult &) = delete;
    QueryResult &operator=(const QueryResult &) = delete;

    /// Runs a select query. Returns false if no database is connected (reported) or the parameters were refused; the
    /// result is then empty and elapsed() is -1. Throws the engine's exceptions (the result is then empty), and
    /// tarnwick::Cancelled if the progress stops it (the rows from before are then still there).
    bool run(const QString &name, const QString &sql, tarnwick::Progress *progress = nullptr);
    /// Runs a query definition that is already prepared.
    bool run(const QString &name, dao::QueryDef &query, tarnwick::Progress *progress = nullptr);
    /// Clears rows and columns and closes the record set. A failure is reported (1076).
    void clear();

    /// Called by run() while rows are still being found: the result then has the columns of the new run and the rows
    /// found so far, whose cells can be read until the listener returns. If the run is stopped, the rows from before
    /// come back.
    void setFoundListener(const std::function<void()> &listener) { m_found = listener; }
    /// A number for the columns and rows that the result has now: run() and clear() give it another one.
    quint64 runNumber() const { return m_run; }

    /// While it lives, a statement runs on the database: its progress lets windows repaint, but the engine is busy, so
    /// nothing can be changed and cells read as Null. run() uses it itself; everyone else who runs a statement while
    /// the result is shown does too.
    class ReadPause
    {
    public:
        explicit ReadPause(QueryResult &result)
            : m_result(result)
        {
            ++m_result.m_pauses;
        }
        ~ReadPause() { --m_result.m_pauses; }
        ReadPause(const ReadPause &) = delete;
        ReadPause &operator=(const ReadPause &) = delete;

    private:
        QueryResult &m_result;
    };
    bool isPaused() const { return m_pauses > 0; }
    /// Whether cells have their values: always while nothing runs, and within the listener of found rows.
    bool isReadable() const { return !isPaused() || m_isFoundShown; }

    const QString &name() const { return m_name; }
    /// Seconds of the run that found the rows; -1 if there was none.
    double elapsed() const { return m_elapsed; }
    qint64 rowCount() const;
    int columnCount() const { return int(m_columns.size()); }
    const db::ColumnFormat &column(int column) const { return m_columns[column]; }
    db::ColumnFormat &column(int column) { return m_columns[column]; }
    /// The engine's information about the column: source table and field, size, whether it can be written.
    const dao::sql::Column &source(int column) const;
    /// First column of that name, ignoring case, or -1.
    int findColumn(QStringView name) const;

    /// The value in its type; Null in an inserted row that is not stored yet. Throws the engine's exceptions.
    dao::Value value(qint64 row, int column) const;
    /// All values of a row, for those who read many rows. Valid until the result is read again or changed. Throws as
    /// value() does.
    std::span<const dao::Value> values(qint64 row) const;
    /// The value in the column's format; "#Deleted" for a row that was deleted elsewhere.
    QString cellText(qint64 row, int column) const;
    /// Error text of a cell that could not be calculated ("11: Division by zero."), for GridSource::tip(); empty for a
    /// cell with a value.
    QString cellTip(qint64 row, int column) const;
    RowColours colours(qint64 row) const;
    /// Why the row has its colours, as a sentence for tips and screen readers; may be empty.
    QString colourReason(qint64 row) const;
    void setColours(qint64 row, const RowColours &colours, const QString &reason = {});

    /// Told about edited cells and deleted rows. Must outlive the result; null for none.
    void setChangeListener(ChangeListener *listener) { m_listener = listener; }
    ChangeListener *changeListener() const { return m_listener; }

    /// Whether the rows can be changed; if not, the reason.
    dao::sql::NotUpdatable whyNotUpdatable() const;

    /// Stores a typed text in a cell. A text that cannot be converted to the field's type does not change the field. An
    /// empty text becomes Null if the field does not allow zero-length text. In an inserted row the values are
    /// collected until all required fields have one; then the row is added. Failures are reported (1065); returns false
    /// if nothing was stored.
    /// seen: rowValues() as the user saw them; if the record differs from them now, another program has changed it, and
    /// the text is refused (3197). Empty: not compared.
    bool setCell(qint64 row, int column, const QString &text, const QList<dao::Value> &seen = {});
    /// The values of a row's fields that can be compared later. Throws the engine's exceptions.
    QList<dao::Value> rowValues(qint64 row) const;
    /// Deletes the record and removes the row. A failure is reported (1064) and false returned; the row is removed
    /// anyway, unless the change listener refused.
    bool deleteRow(qint64 row);
    /// Inserts an empty row without a record.
    void insertRow(qint64 position);
    /// Whether the row was inserted and has no record yet.
    bool isUnfinished(qint64 row) const;
    /// Inserted rows with values that have no record yet.
    QList<qint64> unfinishedRows() const;
    /// Names of the required fields for which an inserted row has no value yet.
    QStringList lackingFields(qint64 row) const;

private:
    class RowMap;
    struct Found;

    void build(const QString &name, dao::QueryDef &query);
    /// Puts it in place of what the result has, and that into it.
    void exchange(Found &found);
    void close(std::unique_ptr<dao::Recordset> recordset);
    void moveTo(qint64 place) const;
    bool editRecord(qint64 place, int column, const QString &text, const QList<dao::Value> &seen);
    QList<dao::Value> valuesInRecord() const;
    bool editInserted(qint64 row, int column, const QString &text);
    /// Finishes an edit or addNew that was begun; cancels it if it fails.
    void store(const std::function<void()> &setValues);
    bool convert(int column, const QString &text, dao::Value &value) const;
    QStringList lackingFields(const QHash<int, dao::Value> &values) const;

    db::DatabaseSession *m_session;
    QueryContext *m_context;
    QString m_name;
    double m_elapsed = -1;
    QList<db::ColumnFormat> m_columns;
    std::unique_ptr<dao::Recordset> m_recordset;
    std::unique_ptr<RowMap> m_rows;
    ChangeListener *m_listener = nullptr;
    std::function<void()> m_found;
    mutable std::vector<dao::Value> m_unstored; ///< values of the inserted row that was read last
    mutable qint64 m_place = -1;                ///< position of the record set; -1 if unknown
    quint64 m_run = 0;
    quint64 m_runs = 0;
    int m_pauses = 0;
    bool m_isFoundShown = false; ///< within m_found
};

} // namespace query
