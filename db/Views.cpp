#include "Views.h"

#include "Errors.h"
#include "FieldAccess.h"
#include "FileFailure.h"
#include "Messages.h"
#include "Schema.h"
#include "SqlText.h"
#include "StoredQueries.h"

#include <QMap>

namespace db {

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace {

struct AliasedField
{
    QString field;
    QString alias; ///< of its alias table in a view
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

bool isPlainName(const QString &name)
{
    const auto isPlain = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    return std::all_of(name.begin(), name.end(), isPlain) && !name.front().isDigit();
}

QString selectedField(const QString &name)
{
    for (const AliasedField &aliased : aliasedFields())
        if (name.compare(aliased.field, Qt::CaseInsensitive) == 0)
            return aliased.alias + u'.' + aliased.field;
    return isPlainName(name) ? name : QString(u'[' + name + u']');
}

/// Labels by number, as an alias table holds them.
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

Labels storedLabels(dao::Database &database, const QString &table)
{
    Labels labels;
    dao::Recordset rows(database);
    for (rows.open(dao::Recordset::Type::Snapshot, table); !rows.isEof(); rows.moveNext())
        labels.insert(getField<qint32>(rows, 0), getField<QString>(rows, 1));
    return labels;
}

void storeLabels(DatabaseSession &session, const QString &table, const Labels &labels)
{
    dao::Transaction transaction(session.workspace());
    executeSql(session.database(), sqlText(u"DELETE FROM %S", table));
    dao::Recordset rows(session.database());
    rows.open(dao::Recordset::Type::TableAppend, table);
    for (auto label = labels.cbegin(); label != labels.cend(); ++label) {
        rows.addNew();
        setField(rows, 0, label.key());
        setField(rows, 1, label.value());
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

bool refreshViews(DatabaseSession &session)
{
    dao::Database &database = session.database();
    for (const QString &table : {u"report"_s, u"repairs"_s, u"plan_entry"_s, u"tube_set_entry"_s, u"tubes"_s}) {
        if (!database.hasTable(table))
            continue;
        const QString view = table + u'#';
        try {
            const QString sql = viewSql(database.table(table));
            if (!database.hasQuery(view) || database.query(view).sql != sql)
                storeQueryDef(database, view, sql);
        } catch (const dao::DaoException &exception) {
            showDaoError(session.prompts(), exception, messages::kCreateView, view);
            if (isOfWholeFile(exception))
                return false;
        }
    }
    return true;
}

bool refreshAliases(DatabaseSession &session, const ellery::SteamGen &steamGen)
{
    for (const AliasedField &aliased : aliasedFields()) {
        const QString table = aliased.field + u"_alias"_s;
        if (!session.database().hasTable(table))
            continue;
        try {
            const Labels wanted = wantedLabels(steamGen, aliased.axis);
            if (storedLabels(session.database(), table) != wanted)
                storeLabels(session, table, wanted);
        } catch (const dao::DaoException &exception) {
            showDaoError(session.prompts(), exception, messages::kModifyAlias, table);
            if (isOfWholeFile(exception))
                return false;
        }
    }
    return true;
}

} // namespace db
