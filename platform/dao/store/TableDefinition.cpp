#include "TableDefinition.h"

#include "ErrorTranslation.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

QString storageClass(const FieldInfo &field)
{
    switch (field.type) {
    case DataType::Boolean:
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
        return u"INTEGER"_s;
    case DataType::Currency:
    case DataType::Single:
    case DataType::Double:
    case DataType::Date:
    case DataType::Decimal:
        return u"REAL"_s;
    case DataType::Text:
        // NOCASE makes comparisons and indexes ignore the case of A to Z, as the dialect does.
        return u"TEXT(%1) COLLATE NOCASE"_s.arg(field.size);
    case DataType::Memo:
    case DataType::Guid:
        return u"TEXT COLLATE NOCASE"_s;
    default:
        return u"BLOB"_s;
    }
}

// A CHECK condition for the type and range. SQLite's column types only convert values; any value can be stored in any
// column.
QString typeCondition(const FieldInfo &field, const QString &column)
{
    const auto whole = [&](const QString &low, const QString &high) -> QString {
        return u"typeof("_s + column + u") IN ('integer', 'null') AND "_s + column + u" BETWEEN "_s + low + u" AND "_s +
               high;
    };
    // Each condition admits Null, which NOT NULL handles.
    const auto real = [&](const QString &range) -> QString {
        return u"typeof("_s + column + u") IN ('real', 'null') AND "_s + range;
    };
    const QString size = u"abs("_s + column + u')';
    switch (field.type) {
    case DataType::Boolean:
        return column + u" IN (-1, 0)"_s;
    case DataType::Byte:
        return whole(u"0"_s, u"255"_s);
    case DataType::Integer:
        return whole(u"-32768"_s, u"32767"_s);
    case DataType::Long:
        return whole(u"-2147483648"_s, u"2147483647"_s);
    case DataType::Currency: // range of 64-bit ten-thousandths, plus the rounding error of a double
        return real(size + u" < 922337203685478.0"_s);
    case DataType::Single: // largest double that rounds to a finite 32-bit float
        return real(size + u" < 3.4028235677973366e38"_s);
    case DataType::Double:
    case DataType::Decimal:
        return real(size + u" < 9e999"_s); // infinity
    case DataType::Date:                   // from the year 100 to the year 9999
        return real(column + u" > -657435.0 AND "_s + column + u" < 2958466.0"_s);
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return u"typeof("_s + column + u") IN ('text', 'null')"_s;
    default:
        return u"typeof("_s + column + u") IN ('blob', 'null')"_s;
    }
}

// length() stops at a NUL character, so the size in bytes is checked too.
QString sizeCondition(const QString &column, int size)
{
    return u"length(%1) <= %2 AND (instr(CAST(%1 AS BLOB), x'00') = 0 OR length(CAST(%1 AS BLOB)) <= %2)"_s.arg(column)
        .arg(size);
}

QString lateRequiredTriggerName(const QString &table, const QString &field, const QString &event)
{
    return u"required:"_s + table + u'.' + field + u':' + event;
}

} // namespace

// An autonumber is the INTEGER PRIMARY KEY and thus the row key itself.
QString keyColumnFor(const TableInfo &table)
{
    for (const FieldInfo &field : table.fields) {
        if (field.isAutoIncrement())
            return field.name;
    }
    for (const QString &name : {u"rowid"_s, u"_rowid_"_s, u"oid"_s}) {
        if (table.indexOf(name) < 0)
            return name;
    }
    return {};
}

// A Boolean field is never Null. Late required fields use triggers instead (see StoredTable).
bool isNotNull(const StoredTable &table, const FieldInfo &field)
{
    if (field.type == DataType::Boolean)
        return true;
    if (field.required && !table.lateRequired.contains(folded(field.name)))
        return true;
    for (const IndexInfo &index : table.info.indexes) {
        if (!index.primary && !index.required)
            continue;
        for (const IndexField &indexField : index.fields) {
            if (indexField.name.compare(field.name, Qt::CaseInsensitive) == 0)
                return true;
        }
    }
    return false;
}

QString constantDefault(const FieldInfo &field)
{
    if (!field.defaultValue.trimmed().isEmpty()) {
        const sql::DefaultExpression expression = sql::defaultExpression(field.defaultValue, field);
        if (expression.constant)
            return expression.sql;
    }
    return field.type == DataType::Boolean ? u"0"_s : QString();
}

QList<ColumnCheck> columnChecks(const StoredTable &table, const FieldInfo &field)
{
    const QString column = sql::quotedName(field.name);
    QList<ColumnCheck> checks;
    const auto add = [&](const char16_t *kind, const QString &condition) {
        checks.append({constraint::name(kind, table.info.name, field.name), condition});
    };
    add(constraint::kType, typeCondition(field, column));
    if (field.type == DataType::Text)
        add(constraint::kSize, sizeCondition(column, field.size));
    if (isTextType(field.type) && !field.allowZeroLength)
        add(constraint::kEmpty, column + u" <> ''"_s);
    if (!field.validationRule.trimmed().isEmpty()) {
        if (const auto rule = sql::ruleAsCheck(field.validationRule, field))
            add(constraint::kRule, *rule);
    }
    return checks;
}

QString columnSql(const StoredTable &table, const FieldInfo &field)
{
    const QString column = sql::quotedName(field.name);
    QString sql = column + u' ' + storageClass(field);
    if (field.isAutoIncrement()) {
        sql += u" PRIMARY KEY AUTOINCREMENT"_s;
    } else {
        if (isNotNull(table, field))
            sql += u" NOT NULL"_s;
        const QString defaultSql = constantDefault(field);
        if (!defaultSql.isEmpty())
            sql += u" DEFAULT ("_s + defaultSql + u')';
    }
    for (const ColumnCheck &check : columnChecks(table, field))
        sql += u" CONSTRAINT "_s + sql::quotedName(check.name) + u" CHECK ("_s + check.condition + u')';
    return sql;
}

QString createTableSql(const StoredTable &table, const QString &physicalName)
{
    QStringList columns;
    for (const FieldInfo &field : table.info.fields)
        columns.append(u"  "_s + columnSql(table, field));
    const QString rule = tableRuleCondition(table.info);
    if (!rule.isEmpty())
        columns.append(u"  CONSTRAINT "_s + sql::quotedName(constraint::name(constraint::kRule, table.info.name, {})) +
                       u" CHECK ("_s + rule + u')');
    return u"CREATE TABLE "_s + sql::quotedName(physicalName) + u" (\n"_s + columns.join(u",\n"_s) + u"\n)"_s;
}

QString tableRuleCondition(const TableInfo &table)
{
    if (table.validationRule.trimmed().isEmpty())
        return {};
    return sql::tableRuleAsCheck(table.validationRule, table).value_or(QString());
}

QString indexNameInFile(const QString &table, const QString &index)
{
    // Table names contain no '.', so the names of two tables' indexes cannot be equal.
    return table + u'.' + index;
}

bool isKeptAsIndex(const TableInfo &table, const IndexInfo &index)
{
    if (index.fields.size() != 1 || !(index.unique || index.primary))
        return true;
    const FieldInfo *field = table.field(index.fields.first().name);
    return !field || !field->isAutoIncrement();
}

QString createIndexSql(const TableInfo &table, const IndexInfo &index)
{
    QStringList fields;
    for (const IndexField &field : index.fields)
        fields.append(sql::quotedName(field.name) + (field.descending ? u" DESC"_s : QString()));
    const QString unique = index.unique || index.primary ? u"UNIQUE "_s : QString();
    return u"CREATE "_s + unique + u"INDEX "_s + sql::quotedName(indexNameInFile(table.name, index.name)) + u" ON "_s +
           sql::quotedName(table.name) + u" ("_s + fields.join(u", "_s) + u')';
}

QStringList lateRequiredTriggers(const StoredTable &table)
{
    QStringList triggers;
    for (const FieldInfo &field : table.info.fields) {
        if (!table.lateRequired.contains(folded(field.name)))
            continue;
        const QString text =
            raiseText(error::RequiredField, errorText(error::RequiredField, {table.info.name + u'.' + field.name}));
        for (const QString &event : {u"INSERT"_s, u"UPDATE"_s}) {
            const QString name = lateRequiredTriggerName(table.info.name, field.name, event);
            triggers.append(u"CREATE TRIGGER "_s + sql::quotedName(name) + u" BEFORE "_s + event + u" ON "_s +
                            sql::quotedName(table.info.name) + u" WHEN NEW."_s + sql::quotedName(field.name) +
                            u" IS NULL BEGIN SELECT RAISE(ABORT, "_s + literal(text) + u"); END"_s);
        }
    }
    return triggers;
}

QString literal(const QString &text)
{
    QString quoted = text;
    quoted.replace(u'\'', u"''"_s);
    return u'\'' + quoted + u'\'';
}

} // namespace dao::store
