#include "AliasTables.h"

#include "Messages.h"

#include <db/FieldAccess.h>
#include <db/Schema.h>
#include <db/SqlText.h>

namespace db {

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace {

struct Alias
{
    qint16 index;
    QString label;
    bool operator==(const Alias &) const = default;
};

Axis axisOf(const AliasSpec &spec)
{
    const QStringView field(spec.labelField);
    return field == u"row" ? Axis::Row : field == u"col" ? Axis::Col : field == u"sec" ? Axis::Sec : Axis::Leg;
}

QList<Alias> wantedRows(const AliasSpec &spec, const ellery::SteamGen &steamGen)
{
    const Axis axis = axisOf(spec);
    QList<Alias> rows;
    const QStringList labels = steamGen.labelList(axis);
    for (int i = 0; i < labels.size(); ++i)
        if (!labels[i].isEmpty())
            rows.append({qint16(i), labels[i]});
    if (axis == Axis::Leg)
        rows.append({-1, u"NONE"_s});
    return rows;
}

QList<Alias> presentRows(dao::Database &database, const AliasSpec &spec)
{
    QList<Alias> rows;
    dao::Recordset table(database);
    table.open(dao::Recordset::Type::Snapshot, u"SELECT [index], [%1] FROM [%2]"_s.arg(
                                                   QStringView(spec.labelField), QStringView(spec.table)));
    for (; !table.isEof(); table.moveNext())
        rows.append({getField<qint16>(table, 0), getField<QString>(table, 1)});
    return rows;
}

void fill(ConversionPass &pass, const AliasSpec &spec, const ellery::SteamGen &steamGen)
{
    dao::Database &database = pass.database();
    const QList<Alias> wanted = wantedRows(spec, steamGen);
    if (presentRows(database, spec) == wanted)
        return;
    pass.change([&] {
        const QString name = QString::fromUtf16(spec.table);
        executeSql(database, u"DELETE FROM "_s + name);
        dao::Recordset table(database);
        table.open(dao::Recordset::Type::TableAppend, name);
        const int index = requireField(table, u"index"_s);
        const int label = requireField(table, QString::fromUtf16(spec.labelField));
        for (const Alias &row : wanted) {
            table.addNew();
            setField(table, index, row.index);
            setField(table, label, row.label);
            table.update();
        }
    });
}

} // namespace

void createAliasTables(ConversionPass &pass)
{
    for (const AliasSpec &spec : aliasSpecs()) {
        const QString name = QString::fromUtf16(spec.table);
        if (pass.database().hasTable(name) || !pass.request(messages::kStepAlias, name))
            continue;
        pass.guarded([&] { pass.change([&] { createAliasTable(pass.prompts(), pass.database(), spec); }); },
                     messages::kCreateAlias, name);
    }
}

void fillAliasTables(ConversionPass &pass, const ellery::SteamGen &steamGen)
{
    for (const AliasSpec &spec : aliasSpecs()) {
        const QString name = QString::fromUtf16(spec.table);
        if (pass.database().hasTable(name))
            pass.guarded([&] { fill(pass, spec, steamGen); }, messages::kModifyAlias, name);
    }
}

} // namespace db
