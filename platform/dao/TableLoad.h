#pragma once
#include "Database.h"

namespace dao {

/// The error for a refused row or index, with the name of the field or index.
class LoadError : public DaoException
{
public:
    LoadError(const DaoException &cause, const QString &object)
        : DaoException(cause)
        , m_object(object)
    {
    }
    const QString &object() const { return m_object; }

private:
    QString m_object;
};

/// Creates a table and bulk-loads rows into it. Rows are stored unchanged, even if they break a rule of the table: the
/// source database admitted them. Later changes to such a row must follow the rules. Use it inside a transaction and
/// roll that back when a function throws.
class TableLoad
{
public:
    /// nullFields: required fields in which rows may contain Null.
    TableLoad(Database &database, const TableInfo &table, const QStringList &nullFields = {});
    ~TableLoad();
    TableLoad(const TableLoad &) = delete;
    TableLoad &operator=(const TableLoad &) = delete;

    /// Appends a row: one value per field in field order, of the field's type or Null (False for a Boolean field).
    /// Errors, with the field: 3421 value of another type, 3314 Null in a required field, 3022 duplicate autonumber.
    void append(const QList<Value> &values);
    qint64 rows() const { return m_rows; }
    /// The next autonumber is at least number + 1, more if the rows contain larger ones.
    void setLastAutoNumber(qint64 number);
    /// Creates the indexes. Error, with the index: 3022 two rows have the same key.
    void finish();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
    qint64 m_rows = 0;
};

} // namespace dao
