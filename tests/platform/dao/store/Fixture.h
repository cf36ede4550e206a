#pragma once
#include <dao/Database.h>
#include <dao/Recordset.h>

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <support/Printers.h>

/// A database in a temporary folder, and functions that fill and read it without the engine.
class StoreTest : public ::testing::Test
{
protected:
    StoreTest();

    QString path(const QString &name = QStringLiteral("test.mdb")) const;
    /// Runs statements on the file as any SQLite tool would; returns its error text, empty when all went well.
    QString raw(const QString &sql, const QString &file = {}) const;
    /// The rows of a select through raw(): fields separated by '|', rows by blanks; Null is "-".
    QString rawRows(const QString &sql) const;

    /// Adds one row; fields in pairs of name and value.
    void append(const QString &table, const QList<std::pair<QString, dao::Value>> &values);
    /// The rows of a select through a dynaset, in the form of rawRows().
    QString rows(const QString &sql);

    QTemporaryDir folder;
    dao::Workspace workspace;
    dao::Database database{workspace};
};

namespace build {

/// flags: 'R' required, 'Z' zero length allowed, 'A' autonumber.
dao::FieldInfo field(const QString &name, dao::DataType type, int size = 0, const char *flags = "",
                     const QString &rule = {}, const QString &defaultValue = {});
dao::IndexInfo index(const QString &name, const QStringList &fields, bool primary = false, bool unique = false);
dao::TableInfo table(const QString &name, const QList<dao::FieldInfo> &fields,
                     const QList<dao::IndexInfo> &indexes = {});
dao::RelationInfo relation(const QString &name, const QString &table, const QString &foreignTable, int attributes,
                           const QString &field, const QString &foreignField);

} // namespace build

QString textOf(const dao::Value &value);

/// Limits the number of pages of the file: the next page that is needed causes a full disk.
void setMaxPageCount(dao::Database &database, int pages);

inline dao::Value text(const QString &value)
{
    return dao::Value::fromText(value);
}
inline dao::Value number(int value)
{
    return dao::Value::fromLong(value);
}

/// The error that an action raises, as "number source: description"; empty when it raises none.
template <typename Action>
QString errorOf(Action &&action)
{
    try {
        action();
    } catch (const dao::DaoException &e) {
        return QString::number(e.number()) + QLatin1Char(' ') + e.source() + QLatin1String(": ") + e.description();
    } catch (const tarnwick::Cancelled &) {
        return QStringLiteral("cancelled");
    }
    return {};
}

template <typename Action>
int numberOf(Action &&action)
{
    try {
        action();
    } catch (const dao::DaoException &e) {
        return e.number();
    } catch (const tarnwick::Cancelled &) {
        return -1;
    }
    return 0;
}
