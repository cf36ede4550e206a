#include "TestFiles.h"
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace jet::test {

QString dataFolder()
{
    return qEnvironmentVariable("ARVO_TESTDATA");
}

QString dataFile(const QString &name)
{
    return QDir(dataFolder()).filePath(name);
}

std::vector<std::string> dataFiles()
{
    std::vector<std::string> names;
    if (dataFolder().isEmpty())
        return names;
    const QStringList files = QDir(dataFolder()).entryList({u"*.mdb"_s}, QDir::Files, QDir::Name);
    for (const QString &name : files)
        names.push_back(name.toStdString());
    return names;
}

void Collector::endTable(const dao::TableInfo &table, qint64 rows)
{
    EXPECT_EQ(m_tables.last().info.name, table.name);
    EXPECT_EQ(m_tables.last().rows.size(), rows);
}

const TableContent *Collector::table(const QString &name) const
{
    for (const TableContent &table : m_tables) {
        if (table.info.name == name)
            return &table;
    }
    return nullptr;
}

const Table *Collector::definition(const QString &name) const
{
    for (const Table &table : m_schema.tables) {
        if (table.info.name == name)
            return &table;
    }
    return nullptr;
}

QString Collector::sql(const QString &query) const
{
    for (const dao::QueryInfo &info : m_schema.queries) {
        if (info.name == query)
            return info.sql;
    }
    return {};
}

QString writeFile(const QTemporaryDir &folder, const QByteArray &bytes)
{
    const QString path = folder.filePath(u"damaged.mdb"_s);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path;
}

QByteArray readFile(const QString &path)
{
    return support::readFile(path);
}

} // namespace jet::test
