#include "Views.h"

#include "Messages.h"

#include <db/StoredQueries.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

constexpr const char16_t *kViewedTables[] = {u"report", u"repairs", u"plan_entry", u"tube_set_entry", u"tubes"};

/// A field whose number has a label, in the order in which its alias table joins the view.
struct Labelled
{
    const char16_t *field;
    const char16_t *output;
    const char16_t *source;
    const char16_t *condition;
};

constexpr Labelled kLabelled[] = {
    {u"row", u"ra.row", u", row_alias ra", u"r.row = ra.index\n"},
    {u"col", u"ca.col", u", col_alias ca", u"r.col = ca.index\n"},
    {u"sec", u"sa.sec", u", sec_alias sa", u"r.sec = sa.index\n"},
    {u"leg", u"la.leg", u", leg_alias la", u"r.leg = la.index\n"},
};

bool isPlainName(const QString &name)
{
    const auto isPlain = [](QChar c) { return c.isLetterOrNumber() || c == u'_'; };
    return std::all_of(name.begin(), name.end(), isPlain) && !name.at(0).isDigit();
}

QString outputOf(const dao::FieldInfo &field)
{
    for (const Labelled &labelled : kLabelled)
        if (field.name.compare(QStringView(labelled.field), Qt::CaseInsensitive) == 0)
            return QString::fromUtf16(labelled.output);
    return isPlainName(field.name) ? field.name : QString(u'[' + field.name + u']');
}

void makeView(ConversionPass &pass, const QString &table)
{
    dao::Database &database = pass.database();
    const QString name = table + u'#';
    const QString sql = viewSql(database.table(table));
    if (!database.hasQuery(name) || database.query(name).sql != sql)
        pass.change([&] { storeQueryDef(database, name, sql); });
}

} // namespace

QString viewSql(const dao::TableInfo &table)
{
    QStringList outputs;
    for (const dao::FieldInfo &field : table.fields)
        outputs.append(outputOf(field));
    QString from = u"FROM "_s + table.name + u" r"_s;
    QString condition;
    for (const Labelled &labelled : kLabelled) {
        if (!table.field(labelled.field))
            continue;
        from += QStringView(labelled.source);
        condition += (condition.isEmpty() ? u"WHERE "_s : u"AND "_s) + QStringView(labelled.condition);
    }
    return u"SELECT "_s + outputs.join(u", "_s) + u'\n' + from + u'\n' + condition;
}

void makeViews(ConversionPass &pass)
{
    for (const char16_t *tableName : kViewedTables) {
        const QString table = QString::fromUtf16(tableName);
        if (pass.database().hasTable(table))
            pass.guarded([&] { makeView(pass, table); }, messages::kCreateView, QString(table + u'#'));
    }
}

} // namespace db
