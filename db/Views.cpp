#include "Views.h"

#include "Errors.h"
#include "FieldAccess.h"
#include "FileFailure.h"
#include "Messages.h"
#include "Schema.h"
#include "SqlText.h"
#include "StoredQueries.h"

#include <algorithm>
#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <dao/sql/ast/PrintText.h>
#include <optional>
#include <QMap>

namespace db {

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace {

struct AliasedField
{
    QString field;
    QString alias; ///< alias of its alias table in the view
    Axis axis;
};

const QList<AliasedField> &aliasedFields()
{
    static const QList<AliasedField> fields{
        {u"row"_s, u"ra"_s, Axis::Row},
        {u"col"_s, u"ca"_s, Axis::Col},
        {u"sec"_s, u"sa"_s, Axis::Sec},
        {u"leg"_s, u"la"_s, Axis::Leg},
    };
    return fields;
}

/// Field of an alias table that holds the number. The label's field has the name of the field that it replaces.
const QString kNumberField = u"index"_s;

const QStringList kViewedTables{u"report"_s, u"repairs"_s, u"plan_entry"_s, u"tube_set_entry"_s, u"tubes"_s};

QString viewOf(const QString &table)
{
    return table + u'#';
}

bool isViewCurrent(dao::Database &database, const QString &table, const QString &sql)
{
    return database.hasQuery(viewOf(table)) && database.query(viewOf(table)).sql == sql;
}

/// Brackets the name if a field list would not accept the bare word as a name.
QString listedName(const QString &name)
{
    namespace ast = dao::sql::ast;
    const QString safe = ast::nameText(name);
    if (safe == name)
        return name;
    const auto list = [](const QString &field) {
        return ast::printStatement(ast::Parser(u"SELECT %1, %1 FROM r"_s.arg(field)).parseStatement());
    };
    try {
        return list(name) == list(safe) ? name : safe;
    } catch (const dao::DaoException &) {
        return safe;
    }
}

QString selectedField(const QString &name)
{
    for (const AliasedField &aliased : aliasedFields())
        if (name.compare(aliased.field, Qt::CaseInsensitive) == 0)
            return aliased.alias + u'.' + aliased.field;
    // The alias tables also have a field of this name.
    const bool isAmbiguous = name.compare(kNumberField, Qt::CaseInsensitive) == 0;
    return isAmbiguous ? u"r."_s + name : listedName(name);
}

/// Labels by number, as stored in an alias table.
using Labels = QMap<qint32, QString>;

Labels wantedLabels(const ellery::SteamGen &steamGen, Axis axis)
{
    Labels labels;
    const QStringList list = steamGen.labelList(axis);
    for (qsizetype i = 0; i < list.size(); ++i)
        if (!list[i].isEmpty())
            labels.insert(qint32(i), list[i]);
    if (axis == Axis::Leg)
        labels.insert(-1, u"NONE"_s);
    return labels;
}

QString tableOf(const AliasedField &aliased)
{
    return aliased.field + u"_alias"_s;
}

/// Fields are found by name, since tables of other origin have another order. Returns nothing if a row has no number or
/// a number occurs twice: such labels were not written by this program.
std::optional<Labels> storedLabels(dao::Database &database, const AliasedField &aliased)
{
    Labels labels;
    dao::Recordset rows(database);
    for (rows.open(dao::Recordset::Type::Snapshot, tableOf(aliased)); !rows.isEof(); rows.moveNext()) {
        const qint32 number = getField<qint32>(rows, kNumberField);
        if (rows.value(kNumberField).isNull() || labels.contains(number))
            return std::nullopt;
        labels.insert(number, getField<QString>(rows, aliased.field));
    }
    return labels;
}

void storeLabels(DatabaseSession &session, const AliasedField &aliased, const Labels &labels)
{
    dao::Transaction transaction(session.workspace());
    executeSql(session.database(), sqlText(u"DELETE FROM %S", tableOf(aliased)));
    dao::Recordset rows(session.database());
    rows.open(dao::Recordset::Type::TableAppend, tableOf(aliased));
    const int number = requireField(rows, kNumberField);
    const int text = requireField(rows, aliased.field);
    for (auto label = labels.cbegin(); label != labels.cend(); ++label) {
        rows.addNew();
        setField(rows, number, label.key());
        setField(rows, text, label.value());
        rows.update();
    }
    rows.close();
    transaction.commit();
}

} // namespace

QString viewSql(const dao::TableInfo &table)
{
    QStringList fields;
    for (const dao::FieldInfo &field : table.fields)
        fields.append(selectedField(field.name));
    QString sources = tarnwick::format(u"FROM %U r", table.name);
    QString conditions;
    for (const AliasedField &aliased : aliasedFields()) {
        if (!table.field(aliased.field))
            continue;
        sources += tarnwick::format(u", %S_alias %S", aliased.field, aliased.alias);
        conditions += tarnwick::format(u"%Sr.%S = %S.index\n", conditions.isEmpty() ? u"WHERE "_s : u"AND "_s,
                                       aliased.field, aliased.alias);
    }
    return tarnwick::format(u"SELECT %S\n", fields.join(u", ")) + sources + tarnwick::format(u"\n%S", conditions);
}

bool areViewsCurrent(dao::Database &database)
{
    try {
        return std::all_of(kViewedTables.begin(), kViewedTables.end(), [&](const QString &table) {
            return !database.hasTable(table) || isViewCurrent(database, table, viewSql(database.table(table)));
        });
    } catch (const dao::DaoException &) {
        return false; // making them says why
    }
}

bool areAliasesCurrent(dao::Database &database, const ellery::SteamGen &steamGen)
{
    try {
        return std::all_of(aliasedFields().begin(), aliasedFields().end(), [&](const AliasedField &aliased) {
            return !database.hasTable(tableOf(aliased)) ||
                   storedLabels(database, aliased) == wantedLabels(steamGen, aliased.axis);
        });
    } catch (const dao::DaoException &) {
        return false;
    }
}

bool refreshViews(DatabaseSession &session)
{
    dao::Database &database = session.database();
    for (const QString &table : kViewedTables) {
        if (!database.hasTable(table))
            continue;
        const QString view = viewOf(table);
        const auto refresh = [&] {
            const QString sql = viewSql(database.table(table));
            if (!isViewCurrent(database, table, sql))
                storeQueryDef(database, view, sql);
        };
        if (attemptStep(session.prompts(), refresh, messages::kCreateView, view) == StepOutcome::FileFailed)
            return false;
    }
    return true;
}

bool refreshAliases(DatabaseSession &session, const ellery::SteamGen &steamGen)
{
    for (const AliasedField &aliased : aliasedFields()) {
        const QString table = tableOf(aliased);
        if (!session.database().hasTable(table))
            continue;
        const auto refresh = [&] {
            const Labels wanted = wantedLabels(steamGen, aliased.axis);
            if (storedLabels(session.database(), aliased) != wanted)
                storeLabels(session, aliased, wanted);
        };
        if (attemptStep(session.prompts(), refresh, messages::kModifyAlias, table) == StepOutcome::FileFailed)
            return false;
    }
    return true;
}

} // namespace db
