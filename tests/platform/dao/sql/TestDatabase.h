#pragma once
#include <dao/sql/Compiler.h>
#include <dao/values/Value.h>

#include <memory>
#include <sqlite3.h>
#include <stdexcept>

/// A small database in memory on which compiled statements run, without the catalog of the real one: tables come from a
/// one-line notation, rows from statements.
class TestDatabase : public dao::SchemaView
{
public:
    TestDatabase();
    ~TestDatabase() override;
    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    /// "name field:type[(size)][*][!][=default] ..." where * marks the primary key and ! a required field; types by
    /// their names in the dialect.
    void addTable(const QString &notation);
    void addTable(const dao::TableInfo &table);
    void addQuery(const QString &name, const QString &sql);

    using Parameters = QList<std::pair<QString, dao::Value>>;
    struct Result
    {
        dao::sql::CompiledStatement compiled;
        QList<QStringList> rows; ///< cells as text, by the column's type
        int affected = 0;
    };
    /// Compiles and runs. Where a result is keyed, its rows are also read one by one by their keys, and must be the
    /// same.
    Result run(const QString &sql, const Parameters &parameters = {});
    sqlite3 *handle() const { return m_handle; }

    const dao::TableInfo *findTable(QStringView name) const override;
    const dao::QueryInfo *findQuery(QStringView name) const override;
    QStringList sourceNames() const override;

private:
    struct StatementDeleter
    {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    using StatementPtr = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

    StatementPtr prepare(const QString &sql, const QList<dao::Value> &values);
    int execute(const QString &sql, const QList<dao::Value> &values = {});
    QList<QStringList> read(const QString &sql, const QList<dao::Value> &values,
                            const QList<dao::sql::Column> &columns);
    QList<QStringList> readByKeys(const dao::sql::SelectPlan &plan, const QList<dao::Value> &values);
    [[noreturn]] void fail(const QString &sql) const;
    void materialise(const dao::sql::ActionPlan::Step &step, const QList<dao::Value> &values);
    void carryOut(const dao::sql::Plan &plan, const QList<dao::Value> &values, Result &result);

    sqlite3 *m_handle = nullptr;
    std::vector<std::unique_ptr<dao::TableInfo>> m_tables;
    std::vector<std::unique_ptr<dao::QueryInfo>> m_queries;
};

/// "Text" of a cell: by the column's type.
QString cellText(sqlite3_stmt *statement, int column, dao::DataType type);
