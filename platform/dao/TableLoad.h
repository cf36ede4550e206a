#pragma once
#include "Database.h"

namespace dao {

/// Why a row or an index was refused, and which field or index it was.
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

/// Makes a table and fills it with rows from elsewhere: the quickest way in. Rows stay as they are, even those that
/// break a rule of the table, which the table had to admit where they come from; whoever changes such a row is held to
/// the rules. Belongs into a transaction of the program, which is rolled back when any of this throws.
class TableLoad
{
public:
    /// nullFields: required fields in which rows may hold Null.
    TableLoad(Database &database, const TableInfo &table, const QStringList &nullFields = {});
    ~TableLoad();
    TableLoad(const TableLoad &) = delete;
    TableLoad &operator=(const TableLoad &) = delete;

    /// One value for each field in order, of the field's kind or Null (in a Boolean field: False). Errors, with the
    /// field: 3421 another kind of value, 3314 Null in a required field, 3022 an autonumber that was there before.
    void append(const QList<Value> &values);
    qint64 rows() const { return m_rows; }
    /// The autonumber counts on from here, when that is beyond the rows' own.
    void setLastAutoNumber(qint64 number);
    /// Makes the indexes. Error, with the index: 3022 two rows of one key.
    void finish();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
    qint64 m_rows = 0;
};

} // namespace dao
