#pragma once
#include "DatabaseImpl.h"
#include "FindingRows.h"
#include "KeyList.h"
#include "LiveRows.h"

#include <limits>
#include <optional>
#include <span>

namespace dao {

struct CellType
{
    DataType type = DataType::Unknown;
    bool computed =
        false; ///< a stored value is returned unchanged; a computed value is checked against the limits of its type
};

std::vector<CellType> typesOf(const QList<sql::Column> &columns);

/// Random access to the rows of an open recordset by position.
class RowSource
{
public:
    virtual ~RowSource() = default;
    virtual qint64 count() const = 0;
    /// Reads a row into cells. Returns false if the row no longer exists.
    virtual bool read(qint64 row, std::vector<Value> &cells) = 0;
};

/// The rows of an updatable result, as the keys of their base tables: 8 bytes per row and table. The rows and their
/// order are fixed; their values are read on demand.
class KeyedRows : public RowSource
{
public:
    /// Stored instead of a key on the null-supplied side of an outer join.
    static constexpr qint64 kAbsent = std::numeric_limits<qint64>::min();

    /// There are no rows before find().
    KeyedRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters);

    /// Finds the keys of all rows.
    void find(const FoundListener &listener);
    qint64 count() const override { return m_live.count(); }
    bool read(qint64 row, std::vector<Value> &cells) override;
    std::span<const qint64> keys(qint64 row) const { return keysAt(m_live.slotAt(row)); }
    /// Appends a row for a row that was inserted into a source. In a join it gets the rows of the other tables that the
    /// join condition matches, or none.
    void appendAdded(int source, qint64 key);
    void erase(qint64 row) { m_live.remove(m_live.slotAt(row)); }
    /// An identifier of the row that stays the same while other rows are deleted.
    qint64 slotOf(qint64 row) const { return m_live.slotAt(row); }
    /// The position of the row with that slot and those keys; -1 if it was deleted.
    qint64 find(std::span<const qint64> keys, qint64 slot) const;

private:
    DatabaseImpl &m_db;
    std::vector<CellType> m_types;
    QList<Value> m_parameters;
    size_t m_width;
    std::span<const qint64> keysAt(qint64 slot) const { return {m_keys.data() + size_t(slot) * m_width, m_width}; }

    void append(std::span<const qint64> keys);
    void take(const store::Statement &walk);
    store::Statement prepared(const QString &sql) const;
    bool isOutsideJoin(std::span<const qint64> keys) const;

    KeyList m_keys;
    LiveRows m_live;
    store::Statement m_row;
    QList<sql::KeySource> m_sources;
    QString m_keySql;
    QString m_sortedKeySql;
    QString m_addedKeySql;
    QString m_addedRowSql;
    std::optional<store::Statement> m_addedRow; ///< prepared when the first row exists that the join did not return
};

/// Rows that were copied into the scratch database.
class MaterialisedRows : public RowSource
{
public:
    MaterialisedRows(DatabaseImpl &db, const std::vector<CellType> &types);
    ~MaterialisedRows() override;
    MaterialisedRows(const MaterialisedRows &) = delete;
    MaterialisedRows &operator=(const MaterialisedRows &) = delete;

    /// Copies the current row of the statement, if there is one, and all following rows.
    void fill(store::Statement &statement, tarnwick::Progress *progress = nullptr, const FoundListener &listener = {});
    qint64 count() const override { return m_count; }
    bool read(qint64 row, std::vector<Value> &cells) override;

private:
    std::vector<CellType> m_types;
    store::Connection &m_scratch;
    QString m_table;
    qint64 m_count = 0;
    store::Statement m_row;
};

/// One forward pass; each row is read from the running statement.
class ForwardRows : public OpenReader
{
public:
    ForwardRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters);
    ~ForwardRows() override;
    ForwardRows(const ForwardRows &) = delete;
    ForwardRows &operator=(const ForwardRows &) = delete;

    /// Moves to the next row; false at the end.
    bool next();
    bool isOnRow() const { return m_onRow; }
    qint64 rowsRead() const { return m_rowsRead; }
    Value value(int column) const;
    void secure() override;

private:
    DatabaseImpl &m_db;
    std::vector<CellType> m_types;
    store::Statement m_statement;
    bool m_onRow = false;
    qint64 m_rowsRead = 0;
    std::unique_ptr<MaterialisedRows> m_secured;
    qint64 m_securedRow = 0;
    std::vector<Value> m_cells; ///< cells of the current row after secure()
};

} // namespace dao
