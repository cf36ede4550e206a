#include "RowSource.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/ValueBinding.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

void bindAll(store::Statement &statement, const QList<Value> &parameters)
{
    const auto count = qMin<qsizetype>(statement.parameterCount(), parameters.size());
    for (int i = 0; i < int(count); ++i)
        store::bindValue(statement, i + 1, parameters[i]);
}

// Only computed cells can fail, so stored ones are read without the check.
Value readCell(const store::Statement &statement, int column, CellType cell)
{
    if (const int failure = cell.computed ? store::failureOf(statement, column, cell.type) : 0)
        return Value::fromError(failure);
    return store::columnValue(statement, column, cell.type);
}

void readCells(const store::Statement &statement, const std::vector<CellType> &types, std::vector<Value> &cells)
{
    cells.resize(types.size());
    for (size_t i = 0; i < types.size(); ++i)
        cells[i] = readCell(statement, int(i), types[i]);
}

qint64 keyIn(const store::Statement &statement, size_t column)
{
    const bool missing = statement.storage(int(column)) == store::Statement::Storage::Null;
    return missing ? KeyedRows::kAbsent : statement.integer(int(column));
}

} // namespace

// A column without a source field is computed.
std::vector<CellType> typesOf(const QList<sql::Column> &columns)
{
    std::vector<CellType> types;
    for (const sql::Column &column : columns)
        types.push_back({column.info.type, column.info.sourceField.isEmpty()});
    return types;
}

KeyedRows::KeyedRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters)
    : m_db(db)
    , m_types(typesOf(plan.columns))
    , m_parameters(parameters)
    , m_width(size_t(plan.sources.size()))
    , m_row(prepared(plan.rowSql))
    , m_sources(plan.sources)
    , m_keySql(plan.keySql)
    , m_sortedKeySql(plan.sortedKeySql)
    , m_addedKeySql(plan.addedKeySql)
    , m_addedRowSql(plan.addedRowSql)
{
}

void KeyedRows::find(const FoundListener &listener)
{
    qint64 rows = 0;
    FindingRows finding(m_db.connection.progress(), listener, [&] { m_live = LiveRows(rows); });
    const bool isSorted = !m_sortedKeySql.isEmpty();
    // In the order of an index the first rows are found at once; sorting all of them is quicker in the end.
    store::Statement walk = prepared(isSorted && !listener ? m_sortedKeySql : m_keySql);
    const qint64 first = isSorted && listener ? FindingRows::kPage : std::numeric_limits<qint64>::max();
    while (rows < first && walk.step()) {
        take(walk);
        finding.found(++rows);
    }
    if (rows == first) {
        store::Statement sorted = prepared(m_sortedKeySql);
        for (qint64 known = 0; sorted.step(); ++known) {
            if (known < first)
                continue;
            take(sorted);
            finding.found(++rows);
        }
    }
    m_keys.shrink_to_fit();
    m_live = LiveRows(rows);
}

void KeyedRows::take(const store::Statement &walk)
{
    for (size_t i = 0; i < m_width; ++i)
        m_keys.push_back(m_sources[qsizetype(i)].nullable ? keyIn(walk, i) : walk.integer(int(i)));
}

// Missing keys are bound as Null, which rowSql turns into Null cells.
bool KeyedRows::read(qint64 row, std::vector<Value> &cells)
{
    m_db.connection.holdRead();
    const std::span<const qint64> wanted = keys(row);
    store::Statement &statement = m_addedRow && isOutsideJoin(wanted) ? *m_addedRow : m_row;
    int parameter = int(m_parameters.size());
    for (const qint64 key : wanted) {
        if (key == kAbsent)
            statement.bindNull(++parameter);
        else
            statement.bind(++parameter, key);
    }
    const bool found = statement.step();
    if (found)
        readCells(statement, m_types, cells);
    statement.reset();
    return found;
}

store::Statement KeyedRows::prepared(const QString &sql) const
{
    store::Statement statement(m_db.connection, sql, store::Access::User);
    bindAll(statement, m_parameters);
    return statement;
}

// An absent key in a table that the join always supplies: the row was inserted but the join does not return it.
bool KeyedRows::isOutsideJoin(std::span<const qint64> keys) const
{
    for (size_t i = 0; i < m_width; ++i) {
        if (keys[i] == kAbsent && !m_sources[qsizetype(i)].nullable)
            return true;
    }
    return false;
}

// Looks up the keys of the other tables, so that the new row shows the fields that the join adds.
void KeyedRows::appendAdded(int source, qint64 key)
{
    std::vector<qint64> keys(m_width, kAbsent);
    keys[size_t(source)] = key;
    if (!m_addedKeySql.isEmpty()) {
        store::Statement join = prepared(m_addedKeySql);
        join.bind(int(m_parameters.size()) + 1, key);
        const bool found = join.step();
        for (size_t i = 0; found && i < m_width; ++i)
            keys[i] = keyIn(join, i);
    }
    if (!m_addedRow && isOutsideJoin(keys))
        m_addedRow = prepared(m_addedRowSql);
    append(keys);
}

void KeyedRows::append(std::span<const qint64> keys)
{
    m_keys.append(keys);
    m_live.append(1);
}

qint64 KeyedRows::find(std::span<const qint64> wanted, qint64 slot) const
{
    return m_live.isLive(slot) && std::ranges::equal(keysAt(slot), wanted) ? m_live.positionOf(slot) : -1;
}

MaterialisedRows::MaterialisedRows(DatabaseImpl &db, const std::vector<CellType> &types)
    : m_types(types)
    , m_scratch(db.scratch())
    , m_table(u"r%1"_s.arg(db.nextScratchTable()))
{
    QStringList columns;
    for (size_t i = 0; i < types.size(); ++i)
        columns.append(u"c%1"_s.arg(i));
    // Columns are declared without a type, so SQLite applies no type affinity and stores every value unchanged.
    m_scratch.run(u"CREATE TABLE "_s + m_table + u" ("_s + columns.join(u", "_s) + u')');
    m_row = store::Statement(m_scratch, u"SELECT * FROM "_s + m_table + u" WHERE rowid = ?1"_s);
}

MaterialisedRows::~MaterialisedRows()
{
    m_row = store::Statement();
    if (!m_scratch.isOpen())
        return;
    try {
        m_scratch.run(u"DROP TABLE "_s + m_table);
    } catch (const std::exception &) {
        // If DROP fails, the table is removed with the scratch database.
    }
}

// One transaction for all rows; one per row would be slower.
void MaterialisedRows::fill(store::Statement &statement, tarnwick::Progress *progress, const FoundListener &listener)
{
    store::Savepoint savepoint(m_scratch);
    FindingRows finding(progress, listener);
    store::copyRows(statement, m_scratch, m_table, {}, [&](qint64 rows) {
        m_count = rows;
        finding.found(rows);
    });
    savepoint.release();
}

bool MaterialisedRows::read(qint64 row, std::vector<Value> &cells)
{
    m_row.bind(1, row + 1);
    const bool found = m_row.step();
    if (found)
        readCells(m_row, m_types, cells);
    m_row.reset();
    return found;
}

// Moves to the first row. Registered with the database so that secure() is called before the statement is reset by a
// rollback.
ForwardRows::ForwardRows(DatabaseImpl &db, const sql::SelectPlan &plan, const QList<Value> &parameters)
    : m_db(db)
    , m_types(typesOf(plan.columns))
    , m_statement(db.connection, plan.fullSql, store::Access::User)
{
    bindAll(m_statement, parameters);
    db.adopt(this);
    try {
        next();
    } catch (...) {
        db.release(this);
        throw;
    }
}

ForwardRows::~ForwardRows()
{
    m_db.release(this);
}

bool ForwardRows::next()
{
    if (m_secured) {
        m_onRow = ++m_securedRow < m_secured->count() && m_secured->read(m_securedRow, m_cells);
    } else {
        m_onRow = m_statement.step();
        if (!m_onRow)
            m_statement.reset(); // releases the read lock
    }
    m_rowsRead += m_onRow ? 1 : 0;
    return m_onRow;
}

Value ForwardRows::value(int column) const
{
    if (m_secured)
        return m_cells[size_t(column)];
    return readCell(m_statement, column, m_types[size_t(column)]);
}

// Reads the remaining rows now; afterwards they come from the scratch database.
void ForwardRows::secure()
{
    if (m_secured || !m_onRow)
        return;
    m_secured = std::make_unique<MaterialisedRows>(m_db, m_types);
    m_secured->fill(m_statement);
    m_statement.reset();
    m_secured->read(0, m_cells);
}

} // namespace dao
