#pragma once
#include "FindingRows.h"
#include "QueryDef.h"

#include <QByteArray>

namespace dao {

struct RecordsetImpl;

/// The rows of a query or a table.
/// A dynaset holds one key per row (8 bytes per row and table) and reads cells on demand: its members and their order
/// are fixed when it is opened, its values are current. A row is read again after each move and after each change made
/// through this database. Other programs can write between two reads; while an event loop runs, all reads until control
/// returns to it (one painting of a grid) see the same state.
/// A snapshot reads forward in one pass; other programs cannot commit until it reaches its end or is closed.
/// A table-append recordset only adds rows.
class Recordset
{
public:
    using Type = RecordsetType;

    explicit Recordset(Database &database);
    ~Recordset();
    Recordset(const Recordset &) = delete;
    Recordset &operator=(const Recordset &) = delete;

    /// sql: a SELECT statement, or the name of a table or stored query. Moves to the first row, if there is one.
    void open(Type type, const QString &sql);
    /// Copies the parameter values of the definition. Errors: 3061 if one has no value, 3219 for an action statement.
    /// listener: called while the rows of a dynaset are being found.
    void open(Type type, const QueryDef &query, const FoundListener &listener = {});
    void close();
    bool isOpen() const;

    // Parameters of the recordset's own copy, used by requery().
    void setParameter(const QString &name, const Value &value);
    void setParameter(int index, const Value &value);
    void requery();

    // Position. Each move discards a pending edit.
    bool isEof() const;
    bool isBof() const;
    void moveFirst();
    void moveNext();
    void movePrevious();
    void moveLast();
    /// The number of rows of a dynaset; for a snapshot the number of rows read so far.
    qint64 recordCount() const;
    /// An opaque value for this recordset only; invalid after requery. Error 3021 without a current row.
    QByteArray bookmark() const;
    void setBookmark(const QByteArray &bookmark); ///< error 3159
    /// The 0-based position of the current row in a dynaset. setPosition() moves there.
    qint64 position() const;
    void setPosition(qint64 row);

    // Fields.
    int fieldCount() const;
    const FieldInfo &field(int index) const;
    const sql::Column &column(int index) const;
    /// Index of the first field with exactly this name (case-sensitive), or -1.
    int fieldIndex(QStringView name) const;
    /// Errors: 3021 no current row, 3167 the row was deleted, 3265 unknown name (matched without regard to case).
    Value value(int index) const;
    Value value(const QString &name) const;
    /// All stored values of the current row, without those that an edit has set. Valid until the recordset is moved,
    /// read or changed. Only for dynasets. Errors: 3021, 3167.
    const std::vector<Value> &storedValues() const;

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
    std::unique_ptr<RecordsetImpl> m_impl;
};

} // namespace dao
