#pragma once
#include <jet/JetReader.h>

#include <gtest/gtest.h>
#include <QTemporaryDir>

namespace jet::test {

/// The folder of real database files, from the environment variable ARVO_TESTDATA; empty when it is not set.
QString dataFolder();
/// Every database file there, by name.
std::vector<std::string> dataFiles();
QString dataFile(const QString &name);

/// A table as it was given to a sink.
struct TableContent
{
    dao::TableInfo info;
    QList<QList<dao::Value>> rows;
};

/// Keeps everything.
class Collector : public Sink
{
public:
    void schema(const Schema &schema) override { m_schema = schema; }
    void beginTable(const dao::TableInfo &table) override { m_tables.append({table, {}}); }
    void row(const QList<dao::Value> &values) override { m_tables.last().rows.append(values); }
    void endTable(const dao::TableInfo &table, qint64 rows) override;

    const Schema &schema() const { return m_schema; }
    const QList<TableContent> &tables() const { return m_tables; }
    const TableContent *table(const QString &name) const;
    const Table *definition(const QString &name) const;
    QString sql(const QString &query) const;

private:
    Schema m_schema;
    QList<TableContent> m_tables;
};

/// A copy of a file with its bytes changed by the test.
QString writeFile(const QTemporaryDir &folder, const QByteArray &bytes);
QByteArray readFile(const QString &path);

} // namespace jet::test

/// To stand first in tests that need the real files.
#define ARVO_NEEDS_TESTDATA()                                                                                          \
    if (jet::test::dataFolder().isEmpty())                                                                             \
    GTEST_SKIP() << "ARVO_TESTDATA is not set: no real Jet files to read"
