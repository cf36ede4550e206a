#include "SchemaInfo.h"

#include "Messages.h"
#include "StoredQueryCommands.h"

#include <db/FieldDefinition.h>
#include <tarnwick/Failures.h>
#include <tarnwick/Format.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::ColumnAlign;
using tarnwick::GridColumn;

namespace {

constexpr tarnwick::ColourRef kGrey(0xE9E9E9);

GridColumn textColumn(const QString &title, int width)
{
    GridColumn column;
    column.title = title;
    column.width = width;
    return column;
}

GridColumn numberColumn(const QString &title, int width)
{
    GridColumn column = textColumn(title, width);
    column.align = ColumnAlign::Right;
    return column;
}

QList<GridColumn> columnsOf(int part)
{
    switch (part) {
    case SchemaInfo::Fields: {
        GridColumn standard = textColumn(u"DEF"_s, 4); // a text that stands to the right
        standard.align = ColumnAlign::Right;
        return {textColumn(u"FIELD NAME"_s, 20),
                numberColumn(u"ORD"_s, 3),
                textColumn(u"TYPE"_s, 15),
                numberColumn(u"SIZE"_s, 4),
                standard,
                textColumn(u"RULE"_s, 15),
                textColumn(u"ATTRIB"_s, 15),
                textColumn(u"ERROR MESSAGE"_s, 20),
                textColumn(u"SOURCE TABLE"_s, 20),
                textColumn(u"SOURCE FIELD"_s, 20)};
    }
    case SchemaInfo::Indexes:
        return {textColumn(u"INDEX NAME"_s, 20), textColumn(u"ATTR"_s, 26), numberColumn(u"FLD#"_s, 4),
                textColumn(u"FIELD"_s, 20)};
    case SchemaInfo::Relations:
        return {textColumn(u"RELATION"_s, 20),      textColumn(u"TABLE"_s, 20),         textColumn(u"FIELD"_s, 20),
                textColumn(u"FOREIGN TABLE"_s, 20), textColumn(u"FOREIGN FIELD"_s, 20), textColumn(u"ATTR"_s, 30)};
    default:
        return {textColumn(u"QUERY"_s, 30), textColumn(u"KIND"_s, 12), textColumn(u"PARAMETERS"_s, 50)};
    }
}

/// The words whose conditions hold, joined.
QString words(std::initializer_list<std::pair<bool, QString>> flags)
{
    QStringList set;
    for (const auto &[isSet, word] : flags)
        if (isSet)
            set.append(word);
    return set.join(u' ');
}

} // namespace

QVariant TextRows::value(int row, int column) const
{
    const QString cell = text(row, column);
    bool isNumber = false;
    const qlonglong number = cell.toLongLong(&isNumber);
    if (m_columns[column].align == ColumnAlign::Right && isNumber)
        return number;
    return cell;
}

tarnwick::RowColours TextRows::colours(int row) const
{
    tarnwick::RowColours colours;
    colours.background = rows[row].background;
    return colours;
}

SchemaInfo::SchemaInfo(db::DatabaseSession &session)
    : m_session(session)
{
    for (int part = 0; part < PartCount; ++part)
        m_parts.emplace_back(columnsOf(part));
}

bool SchemaInfo::open()
{
    if (!db::checkConnected(m_session))
        return false;
    const auto read = [this] {
        constexpr int kNotListed = dao::SystemObject | dao::HiddenObject;
        const dao::Database &database = m_session.database();
        m_tables.clear();
        for (const QString &name : database.tableNames())
            if (!(database.table(name).attributes & kNotListed))
                m_tables.append(name);
        fillQueries();
    };
    return tarnwick::attempt(m_session.prompts(), read, messages::kSchemaInfo);
}

void SchemaInfo::fillQueries()
{
    rows(Queries).rows.clear();
    for (const StoredQueryInfo &query : storedQueries(m_session.database())) {
        TextRows::Row row;
        row.cells = {query.name, query.kind, query.error.isEmpty() ? query.parameters.join(u", "_s) : query.error};
        rows(Queries).rows.append(row);
    }
}

bool SchemaInfo::setTable(const QString &name)
{
    m_table = name;
    for (const Part part : {Fields, Indexes, Relations})
        rows(part).rows.clear();
    if (name.isEmpty())
        return true;
    const auto read = [&] {
        for (const Part part : {Fields, Indexes, Relations})
            fill(rows(part), part, name);
    };
    return tarnwick::attempt(m_session.prompts(), read, messages::kSchemaTable);
}

void SchemaInfo::fill(TextRows &rows, int part, const QString &table) const
{
    if (part == Relations)
        fillRelations(rows, table);
    else if (part == Fields)
        fillFields(rows, m_session.database().table(table));
    else
        fillIndexes(rows, m_session.database().table(table));
}

void SchemaInfo::fillFields(TextRows &rows, const dao::TableInfo &info) const
{
    QList<dao::FieldInfo> fields = info.fields;
    std::stable_sort(fields.begin(), fields.end(),
                     [](const dao::FieldInfo &a, const dao::FieldInfo &b) { return a.ordinal < b.ordinal; });
    for (const dao::FieldInfo &field : fields) {
        const QString attributes = words({{field.isAutoIncrement(), u"AUTO"_s},
                                          {field.required, u"REQ"_s},
                                          {field.allowZeroLength, u"ZERO"_s},
                                          {field.attributes & dao::FixedField, u"FIXED"_s},
                                          {field.attributes & dao::VariableField, u"VAR"_s}});
        TextRows::Row row;
        row.cells = {field.name,
                     QString::number(field.ordinal),
                     db::daoTypeName(field.type),
                     QString::number(field.size),
                     field.defaultValue,
                     field.validationRule,
                     attributes,
                     field.validationText,
                     field.sourceTable.isEmpty() ? info.name : field.sourceTable,
                     field.sourceField.isEmpty() ? field.name : field.sourceField};
        rows.rows.append(row);
    }
}

void SchemaInfo::fillIndexes(TextRows &rows, const dao::TableInfo &info)
{
    bool isGrey = false;
    for (const dao::IndexInfo &index : info.indexes) {
        const QString attributes = words({{index.primary, u"PRIMARY"_s},
                                          {index.unique, u"UNIQUE"_s},
                                          {index.ignoreNulls, u"IGNORE NULLS"_s},
                                          {index.required, u"REQUIRED"_s}});
        for (qsizetype i = 0; i < index.fields.size(); ++i) {
            TextRows::Row row;
            row.cells = {index.name, attributes, QString::number(i + 1),
                         index.fields[i].name + (index.fields[i].descending ? QString(kDescending) : QString())};
            if (isGrey)
                row.background = kGrey;
            rows.rows.append(row);
        }
        isGrey = !isGrey;
    }
}

void SchemaInfo::fillRelations(TextRows &rows, const QString &table) const
{
    for (const dao::RelationInfo &relation : m_session.database().relations()) {
        if (relation.table.compare(table, Qt::CaseInsensitive) != 0 &&
            relation.foreignTable.compare(table, Qt::CaseInsensitive) != 0)
            continue;
        const QString attributes = words({{relation.attributes & dao::RelationUnique, u"UNIQUE"_s},
                                          {relation.attributes & dao::DontEnforce, u"NOT ENFORCED"_s},
                                          {relation.attributes & dao::UpdateCascade, u"UPDATE CASCADE"_s},
                                          {relation.attributes & dao::DeleteCascade, u"DELETE CASCADE"_s}});
        for (const dao::RelationField &field : relation.fields) {
            TextRows::Row row;
            row.cells = {relation.name,         relation.table,     field.field,
                         relation.foreignTable, field.foreignField, attributes};
            rows.rows.append(row);
        }
    }
}

TextRows SchemaInfo::allTables(int part) const
{
    TextRows all(columnsOf(part));
    if (part == Queries)
        return m_parts[Queries];
    const auto read = [&] {
        for (const QString &table : m_tables) {
            TextRows::Row line;
            line.line = u"TABLE "_s + table;
            all.rows.append(line);
            fill(all, part, table);
        }
    };
    tarnwick::attempt(m_session.prompts(), read, messages::kSchemaInfo);
    return all;
}

QString SchemaInfo::caption(const tarnwick::PathRoots &roots) const
{
    return tarnwick::format(u"Schema - %S", tarnwick::SuitePath::fromMachine(m_session.path(), roots).shown(u"arvo"_s));
}

tarnwick::JTablePrintArg SchemaInfo::printLayout(int part, const QString &table) const
{
    static const QString kTitles[PartCount] = {u"Schema"_s, u"Indexes"_s, u"Relations"_s, u"Queries"_s};
    using Layout = tarnwick::JTablePrintArg;
    Layout layout;
    layout.title = kTitles[part];
    const QString database = tarnwick::SuitePath(m_session.path()).baseName();
    layout.sections[Layout::ReportHeader].text =
        part == Queries ? tarnwick::format(u"ARVO %U", database)
                        : tarnwick::format(u"ARVO %U\nTABLE %S", database, table.isEmpty() ? u"(all)"_s : table);
    layout.sections[Layout::PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    return layout;
}

} // namespace query
