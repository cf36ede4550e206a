#pragma once
#include "DatabaseImpl.h"
#include "KeyList.h"
#include "LiveRows.h"

#include <limits>
#include <optional>
#include <span>

namespace dao {

struct CellType
{
    DataType type = DataType::Unknown;
    bool computed = false; ///< what the file holds is shown as it is; what is computed keeps to the limits of its type
};

std::vector<CellType> typesOf(const QList<sql::Column> &columns);

/// The rows of an open recordset, found by their position.
class RowSource
{
public:
    virtual ~RowSource() = default;
    virtual qint64 count() const = 0;
    /// Reads a row into cells; false when it is no longer there.
    virtual bool read(qint64 row, std::vector<Value> &cells) = 0;
};

/// The rows of a result that is updatable, by the keys of their base tables: 8 bytes a row and table. Which rows, and
/// their order, is fixed; what is in them is read when it is wanted.
class KeyedRows : public RowSource
{
public:
    /// Stands for the key of the absent side of an outer join.
    static constexpr qint64 absent = std::numeric_limits<qint64>::min();

    KeyedRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters);

    qint64 count() const override { return m_live.count(); }
    bool read(qint64 row, std::vector<Value> &cells) override;
    std::span<const qint64> keys(qint64 row) const { return keysAt(m_live.slotAt(row)); }
    /// A row that was added to a source. In a join it has the others' rows that the join gives it, or none of them.
    void appendAdded(int source, qint64 key);
    void erase(qint64 row) { m_live.remove(m_live.slotAt(row)); }
    /// A number that stays with the row while others are deleted.
    qint64 slotOf(qint64 row) const { return m_live.slotAt(row); }
    /// The row of that number and those keys; -1 when it is gone.
    qint64 find(std::span<const qint64> keys, qint64 slot) const;

private:
    DatabaseImpl &m_db;
    std::vector<CellType> m_types;
    QList<Value> m_parameters;
    size_t m_width;
    std::span<const qint64> keysAt(qint64 slot) const { return {m_keys.data() + size_t(slot) * m_width, m_width}; }

    void append(std::span<const qint64> keys);
    store::Statement prepared(const QString &sql) const;
    bool isOutsideJoin(std::span<const qint64> keys) const;

    KeyList m_keys;
    LiveRows m_live;
    store::Statement m_row;
    QList<sql::KeySource> m_sources;
    QString m_addedKeySql;
    QString m_addedRowSql;
    std::optional<store::Statement> m_addedRow; ///< once there is a row that the join did not return
};

/// Rows kept in the scratch file.
class MaterialisedRows : public RowSource
{
public:
    MaterialisedRows(DatabaseImpl &db, const std::vector<CellType> &types);
    ~MaterialisedRows() override;
    MaterialisedRows(const MaterialisedRows &) = delete;
    MaterialisedRows &operator=(const MaterialisedRows &) = delete;

    /// Takes over the statement's current row, when it stands on one, and all that follow.
    void fill(store::Statement &statement);
    qint64 count() const override { return m_count; }
    bool read(qint64 row, std::vector<Value> &cells) override;

private:
    std::vector<CellType> m_types;
    store::Connection &m_scratch;
    QString m_table;
    qint64 m_count = 0;
    store::Statement m_row;
};

/// One pass forward, each row read from the statement itself.
class ForwardRows : public OpenReader
{
public:
    ForwardRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters);
    ~ForwardRows() override;
    ForwardRows(const ForwardRows &) = delete;
    ForwardRows &operator=(const ForwardRows &) = delete;

    /// False at the end.
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
    std::vector<Value> m_cells; ///< of the current row, once secured
};

} // namespace dao
