#pragma once
#include <dao/values/Schema.h>

#include <sqlite3.h>
#include <vector>

namespace fuzz {

/// Two tables with some rows and a few stored queries, one of them circular and one with a parameter, on an inner
/// engine in memory that has the functions of ours.
class SmallSchema : public dao::SchemaView
{
public:
    SmallSchema();
    ~SmallSchema() override;
    SmallSchema(const SmallSchema &) = delete;
    SmallSchema &operator=(const SmallSchema &) = delete;

    const dao::TableInfo *findTable(QStringView name) const override;
    const dao::QueryInfo *findQuery(QStringView name) const override;
    QStringList sourceNames() const override;
    sqlite3 *handle() const { return m_handle; }

private:
    void add(const QString &name, std::initializer_list<dao::FieldInfo> fields, const char *rows);
    void run(const QByteArray &sql);

    sqlite3 *m_handle = nullptr;
    std::vector<dao::TableInfo> m_tables;
    std::vector<dao::QueryInfo> m_queries;
};

} // namespace fuzz
