#pragma once
#include "QueryDef.h"

#include <QByteArray>

namespace dao {

/// The rows of a query or a table.
/// A dynaset holds one key per row (8 bytes a row for one table) and reads cells on demand: its membership and order
/// are fixed when it is opened, its values are live. A row is read anew after every move, and after every change made
/// through this database. Others can write to the file between the reads; only while an event loop runs is what is read
/// until it is reached again (one painting of a grid) read in one piece.
/// A snapshot reads in one pass forward; others cannot commit until it has come to its end or is closed.
/// A table-append set only adds rows.
class Recordset
{
public:
    enum class Type {
        Dynaset,
        Snapshot,   ///< forward only: moveNext, no bookmarks, the quickest way through many rows
        TableAppend ///< addNew/update on one table, no rows to read
    };

    explicit Recordset(Database &database);
    ~Recordset();
    Recordset(const Recordset &) = delete;
    Recordset &operator=(const Recordset &) = delete;

    /// sql: a select statement, or the name of a table or stored query. Stands on the first row, if there is one.
    void open(Type type, const QString &sql);
    /// The definition's parameter values are copied. Error 3061 when one has none, 3219 for an action statement.
    void open(Type type, const QueryDef &query);
    void close();
    bool isOpen() const;

    // Parameters of the recordset's own copy, for requery().
    void setParameter(const QString &name, const Value &value);
    void setParameter(int index, const Value &value);
    void requery();

    // Position. A pending edit is dropped by every move.
    bool isEof() const;
    bool isBof() const;
    void moveFirst();
    void moveNext();
    void movePrevious();
    void moveLast();
    /// Rows of a dynaset (all of them are known once it is open); rows read so far of a snapshot.
    qint64 recordCount() const;
    /// Opaque, of this recordset only, not valid after requery. Error 3021 without a current row.
    QByteArray bookmark() const;
    void setBookmark(const QByteArray &bookmark); ///< error 3159
    /// 0-based position of the current row in a dynaset, and a move there.
    qint64 position() const;
    void setPosition(qint64 row);

    // Fields.
    int fieldCount() const;
    const FieldInfo &field(int index) const;
    const sql::Column &column(int index) const;
    /// Ordinal of the first field of exactly this name (case counts), or -1.
    int fieldIndex(QStringView name) const;
    /// Errors: 3021 no current row, 3167 the row was deleted, 3265 unknown name (which is matched without regard to
    /// case).
    Value value(int index) const;
    Value value(const QString &name) const;

    // Changes. Errors: 3027 not updatable, 3020 update without edit or addNew, 3021, and those of the constraints.
    sql::NotUpdatable whyNotUpdatable() const;
    bool isUpdatable() const { return whyNotUpdatable() == sql::NotUpdatable::No; }
    void edit();
    void addNew();
    void setValue(int index, const Value &value); ///< 3421 cannot be converted, 3163 too long, 3113 not updatable
    void setValue(const QString &name, const Value &value);
    void update();
    void cancelUpdate();
    void deleteRow();
    QByteArray lastModified() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace dao
