#pragma once
#include "QueryDefImpl.h"
#include "RowSource.h"
#include "RowWriter.h"

namespace dao {

/// Implementation of Recordset.
struct RecordsetImpl
{
    explicit RecordsetImpl(std::shared_ptr<DatabaseImpl> owner);

    // Opening (RecordsetOpen.cpp)
    void open(RecordsetType asked, const QString &text);
    void openQuery(std::unique_ptr<QueryDefImpl> definition, const FoundListener &listener = {});
    void openTable(const TableInfo &table);
    void run(const FoundListener &listener = {});
    void runOnce(const FoundListener &listener);
    void findRows(const sql::SelectPlan &plan, const FoundListener &listener);
    void close();
    void prepareWriting();

    // Position
    void requireOpen() const;
    void requireDynaset() const;
    qint64 count() const;
    bool isOnRow() const;
    void requireRow() const;
    void moveTo(qint64 target);
    void step(int direction);
    void dropEdit();
    QByteArray bookmarkOf(qint64 at) const;

    // Values
    void load();
    Value value(int index);
    Value defaultOf(int index);
    int requireField(const QString &name);

    // Changes (RecordsetWrite.cpp)
    enum class Pending { None, Edit, Add };
    void requireUpdatable() const;
    void beginEdit(Pending kind);
    void setValue(int index, const Value &value);
    void update();
    void insertRow();
    void updateRow();
    void deleteRow();
    RowWriter &writer(int sourceIndex);
    int sourceToInsertInto() const;
    void appendNewRow(int sourceIndex, qint64 key);

    std::shared_ptr<DatabaseImpl> db;
    RecordsetType type = RecordsetType::Dynaset;
    bool opened = false;
    std::unique_ptr<QueryDefImpl> query; ///< null for a table-append recordset
    QList<sql::Column> columns;
    QHash<QString, int> places; ///< column indexes by name as written; filled on demand
    QList<sql::KeySource> sources;
    sql::NotUpdatable whyNot = sql::NotUpdatable::No;
    quint64 stamp = 0; ///< identifies this run; bookmarks of other runs are refused

    std::unique_ptr<RowSource> rows;
    KeyedRows *keyed = nullptr; ///< points to rows if they are found by keys, else null
    std::unique_ptr<ForwardRows> forward;

    qint64 row = -1; ///< -1 before the first row, count() after the last
    bool onDeleted =
        false; ///< the current row was deleted through this recordset; row is the position of its successor

    std::vector<Value> cells; ///< cells of the current row
    qint64 loadedRow = -1;
    quint64 loadedAt = 0;

    Pending pendingKind = Pending::None;
    PendingRow pending;
    std::vector<std::unique_ptr<RowWriter>> writers;
    struct ComputedDefault
    {
        int column;
        QString sql;
    };
    std::vector<ComputedDefault> computedDefaults; ///< defaults that SQLite cannot evaluate itself: Date(), Now(), ...
    QByteArray lastModified;
};

} // namespace dao
