#include "Fixture.h"

#include <dao/DatabaseImpl.h>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

int collect(void *target, int count, char **values, char **)
{
    QStringList cells;
    for (int i = 0; i < count; ++i)
        cells.append(values[i] ? QString::fromUtf8(values[i]) : u"-"_s);
    static_cast<QStringList *>(target)->append(cells.join(u'|'));
    return 0;
}

} // namespace

StoreTest::StoreTest()
{
    database.create(path(), u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
}

QString StoreTest::path(const QString &name) const
{
    return folder.filePath(name);
}

QString StoreTest::raw(const QString &sql, const QString &file) const
{
    sqlite3 *db = nullptr;
    sqlite3_open((file.isEmpty() ? path() : file).toUtf8().constData(), &db);
    char *message = nullptr;
    sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &message);
    const QString text = QString::fromUtf8(message);
    sqlite3_free(message);
    sqlite3_close(db);
    return text;
}

QString StoreTest::rawRows(const QString &sql) const
{
    sqlite3 *db = nullptr;
    sqlite3_open(path().toUtf8().constData(), &db);
    QStringList found;
    char *message = nullptr;
    sqlite3_exec(db, sql.toUtf8().constData(), &collect, &found, &message);
    if (message)
        found.append(QString::fromUtf8(message));
    sqlite3_free(message);
    sqlite3_close(db);
    return found.join(u' ');
}

void StoreTest::append(const QString &table, const QList<std::pair<QString, dao::Value>> &values)
{
    dao::Recordset rows(database);
    rows.open(dao::Recordset::Type::TableAppend, table);
    rows.addNew();
    for (const auto &[name, value] : values)
        rows.setValue(name, value);
    rows.update();
}

QString StoreTest::rows(const QString &sql)
{
    dao::Recordset set(database);
    QStringList found;
    for (set.open(dao::Recordset::Type::Dynaset, sql); !set.isEof(); set.moveNext()) {
        QStringList cells;
        for (int i = 0; i < set.fieldCount(); ++i)
            cells.append(textOf(set.value(i)));
        found.append(cells.join(u'|'));
    }
    return found.join(u' ');
}

QString textOf(const dao::Value &value)
{
    if (value.hasNoValue())
        return u"-"_s;
    return dao::convertValue(value, dao::DataType::Text).text();
}

void setMaxPageCount(dao::Database &database, int pages)
{
    database.impl().connection.run(u"PRAGMA max_page_count = %1"_s.arg(pages));
}

dao::FieldInfo build::field(const QString &name, dao::DataType type, int size, const char *flags, const QString &rule,
                            const QString &defaultValue)
{
    const QByteArray letters(flags);
    dao::FieldInfo info;
    info.name = name;
    info.type = type;
    info.size = size;
    info.required = letters.contains('R');
    info.allowZeroLength = letters.contains('Z');
    info.attributes = letters.contains('A') ? dao::AutoIncrement : 0;
    info.validationRule = rule;
    info.defaultValue = defaultValue;
    return info;
}

dao::IndexInfo build::index(const QString &name, const QStringList &fields, bool primary, bool unique)
{
    dao::IndexInfo info;
    info.name = name;
    for (const QString &field : fields)
        info.fields.append({field, false});
    info.primary = primary;
    info.unique = unique || primary;
    return info;
}

dao::TableInfo build::table(const QString &name, const QList<dao::FieldInfo> &fields,
                            const QList<dao::IndexInfo> &indexes)
{
    dao::TableInfo info;
    info.name = name;
    info.fields = fields;
    info.indexes = indexes;
    return info;
}

dao::RelationInfo build::relation(const QString &name, const QString &table, const QString &foreignTable,
                                  int attributes, const QString &field, const QString &foreignField)
{
    dao::RelationInfo info;
    info.name = name;
    info.table = table;
    info.foreignTable = foreignTable;
    info.attributes = attributes;
    info.fields = {{field, foreignField}};
    return info;
}
