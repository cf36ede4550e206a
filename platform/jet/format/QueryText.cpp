#include "QueryText.h"

#include "JoinText.h"
#include "SqlNames.h"

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

enum Attribute {
    kStatement = 1,
    kParameter,
    kOptions,
    kDatabase,
    kSource,
    kColumn,
    kJoin,
    kWhere,
    kGroupBy,
    kHaving,
    kOrderBy
};
enum Statement { kSelect = 1, kMakeTable, kAppend, kUpdate, kDelete, kCrosstab, kDefinition, kPassThrough, kUnion };
enum Option { kAllFields = 1, kDistinct = 2, kOwnerAccess = 4, kDistinctRow = 8, kTop = 16, kPercent = 32 };
enum CrosstabColumn { kPivotValue = 0, kPivotHead = 1, kRowHead = 2 };
constexpr int kAppendValue = 0x8000;

class StatementText
{
public:
    explicit StatementText(const QList<QueryRow> &rows)
        : m_rows(rows)
    {
    }
    QString build() const;

private:
    QList<QueryRow> rowsOf(int attribute) const;
    /// First row of an attribute, or an empty row.
    QueryRow rowOf(int attribute) const { return rowsOf(attribute).value(0); }
    bool option(int bit) const { return rowOf(kOptions).flag & bit; }

    QString parameters() const;
    QString predicate() const;
    QString outputColumn(const QueryRow &row) const;
    QString columns(const QList<QueryRow> &rows) const;
    QString inDatabase(const QueryRow &row) const;
    QString from() const;
    QString condition(const QString &keyword, int attribute) const;
    QString groupBy(bool crosstab) const;
    QString orderBy() const;
    QString afterColumns(bool crosstab) const;

    QString select() const;
    QString makeTable() const;
    QString append() const;
    QString update() const;
    QString deleteRows() const;
    QString crosstab() const;
    QString unionOf() const;

    const QList<QueryRow> &m_rows;
};

QList<QueryRow> StatementText::rowsOf(int attribute) const
{
    QList<QueryRow> rows;
    for (const QueryRow &row : m_rows) {
        if (row.attribute == attribute)
            rows.append(row);
    }
    return rows;
}

QString parameterType(int flag)
{
    switch (flag) {
    case 1:
        return u"Bit"_s;
    case 2:
        return u"Byte"_s;
    case 3:
        return u"Short"_s;
    case 4:
        return u"Long"_s;
    case 5:
        return u"Currency"_s;
    case 6:
        return u"IEEESingle"_s;
    case 7:
        return u"IEEEDouble"_s;
    case 8:
        return u"DateTime"_s;
    case 9:
        return u"Binary"_s;
    case 10:
        return u"Text"_s;
    case 11:
        return u"LongBinary"_s;
    case 12:
        return u"LongText"_s;
    case 15:
        return u"Guid"_s;
    case 16:
    case 20:
        return u"Decimal"_s;
    default:
        return u"Value"_s;
    }
}

QString StatementText::parameters() const
{
    QStringList declarations;
    for (const QueryRow &row : rowsOf(kParameter))
        declarations.append(sqlName(row.name1) + u' ' + parameterType(row.flag));
    return declarations.isEmpty() ? QString() : u"PARAMETERS "_s + declarations.join(u", "_s) + u";\n"_s;
}

QString StatementText::predicate() const
{
    const QueryRow row = rowOf(kOptions);
    QString text;
    if (row.flag & kDistinct)
        text += u"DISTINCT "_s;
    if (row.flag & kDistinctRow)
        text += u"DISTINCTROW "_s;
    if (row.flag & kTop)
        text += u"TOP "_s + row.name1 + (row.flag & kPercent ? u" PERCENT "_s : u" "_s);
    return text;
}

QString StatementText::outputColumn(const QueryRow &row) const
{
    return row.name1.isEmpty() ? row.expression : row.expression + u" AS "_s + sqlName(row.name1);
}

QString StatementText::columns(const QList<QueryRow> &rows) const
{
    QStringList list;
    for (const QueryRow &row : rows)
        list.append(outputColumn(row));
    if (option(kAllFields))
        list.append(u"*"_s);
    if (list.isEmpty())
        throw Damage(Fault::BadCount);
    return list.join(u", "_s);
}

QString StatementText::inDatabase(const QueryRow &row) const
{
    if (row.name1.isEmpty() && row.expression.isEmpty())
        return {};
    QString text = u" IN "_s + sqlText(row.name1);
    if (!row.expression.isEmpty())
        text += u" ["_s + row.expression + u']';
    return text;
}

QString StatementText::from() const
{
    QList<JoinSource> sources;
    for (const QueryRow &row : rowsOf(kSource))
        sources.append({row.name1, row.name2, row.expression});
    QList<JoinTerm> terms;
    for (const QueryRow &row : rowsOf(kJoin))
        terms.append({row.name1, row.name2, row.expression, row.flag});
    const QString list = joinText(sources, terms);
    return list.isEmpty() ? QString() : list + inDatabase(rowOf(kDatabase));
}

QString StatementText::condition(const QString &keyword, int attribute) const
{
    const QString expression = rowOf(attribute).expression;
    return expression.isEmpty() ? QString() : u'\n' + keyword + u' ' + expression;
}

QString StatementText::groupBy(bool crosstab) const
{
    QStringList list;
    for (const QueryRow &row : rowsOf(kGroupBy)) {
        if (!crosstab || row.flag != kPivotHead)
            list.append(row.expression);
    }
    return list.isEmpty() ? QString() : u"\nGROUP BY "_s + list.join(u", "_s);
}

QString StatementText::orderBy() const
{
    QStringList list;
    for (const QueryRow &row : rowsOf(kOrderBy))
        list.append(row.name1.compare(u"D", Qt::CaseInsensitive) == 0 ? row.expression + u" DESC"_s : row.expression);
    return list.isEmpty() ? QString() : u"\nORDER BY "_s + list.join(u", "_s);
}

QString StatementText::afterColumns(bool crosstab) const
{
    const QString sources = from();
    return (sources.isEmpty() ? QString() : u"\nFROM "_s + sources) + condition(u"WHERE"_s, kWhere) +
           groupBy(crosstab) + condition(u"HAVING"_s, kHaving) + orderBy();
}

QString StatementText::select() const
{
    return u"SELECT "_s + predicate() + columns(rowsOf(kColumn)) + afterColumns(false);
}

QString StatementText::makeTable() const
{
    const QueryRow target = rowOf(kStatement);
    return u"SELECT "_s + predicate() + columns(rowsOf(kColumn)) + u" INTO "_s + sqlName(target.name1) +
           inDatabase({0, 0, {}, target.expression, {}, {}}) + afterColumns(false);
}

QString StatementText::append() const
{
    const QueryRow target = rowOf(kStatement);
    const QList<QueryRow> rows = rowsOf(kColumn);
    QStringList fields;
    QStringList values;
    for (const QueryRow &row : rows) {
        if (!row.name2.isEmpty())
            fields.append(sqlPath(row.name2));
        if (row.flag & kAppendValue)
            values.append(row.expression);
    }
    QString text = u"INSERT INTO "_s + sqlName(target.name1) + inDatabase({0, 0, {}, target.expression, {}, {}});
    if (!fields.isEmpty())
        text += u" ("_s + fields.join(u", "_s) + u')';
    if (!values.isEmpty())
        return text + u"\nVALUES ("_s + values.join(u", "_s) + u')';
    return text + u'\n' + select();
}

QString StatementText::update() const
{
    QStringList settings;
    for (const QueryRow &row : rowsOf(kColumn))
        settings.append(sqlPath(row.name2) + u" = "_s + row.expression);
    if (settings.isEmpty())
        throw Damage(Fault::BadCount);
    return u"UPDATE "_s + predicate() + from() + u"\nSET "_s + settings.join(u", "_s) + condition(u"WHERE"_s, kWhere);
}

QString StatementText::deleteRows() const
{
    const QList<QueryRow> rows = rowsOf(kColumn);
    const QString list = rows.isEmpty() && !option(kAllFields) ? QString() : columns(rows) + u'\n';
    const QString predicateText = predicate();
    return u"DELETE "_s + predicateText + list + u"FROM "_s + from() + condition(u"WHERE"_s, kWhere);
}

QString StatementText::crosstab() const
{
    QList<QueryRow> heads;
    QueryRow value;
    QueryRow pivot;
    for (const QueryRow &row : rowsOf(kColumn)) {
        if (row.flag == kRowHead)
            heads.append(row);
        else
            (row.flag == kPivotHead ? pivot : value) = row;
    }
    if (value.expression.isEmpty() || pivot.expression.isEmpty())
        throw Damage(Fault::BadCount);
    return u"TRANSFORM "_s + outputColumn(value) + u"\nSELECT "_s + predicate() + columns(heads) + afterColumns(true) +
           u"\nPIVOT "_s + pivot.expression;
}

QString StatementText::unionOf() const
{
    QStringList parts;
    for (const QueryRow &row : rowsOf(kSource))
        parts.append(row.expression.trimmed());
    if (parts.isEmpty())
        throw Damage(Fault::BadCount);
    return parts.join(option(kDistinct) ? u"\nUNION "_s : u"\nUNION ALL "_s) + orderBy();
}

QString StatementText::build() const
{
    const QueryRow statement = rowOf(kStatement);
    QString text;
    switch (statement.flag) {
    case 0: // no row of this attribute, as written by programs other than Access
        if (rowsOf(kSource).isEmpty() && rowsOf(kColumn).isEmpty())
            throw Damage(Fault::BadCount);
        [[fallthrough]];
    case kSelect:
        text = select();
        break;
    case kMakeTable:
        text = makeTable();
        break;
    case kAppend:
        text = append();
        break;
    case kUpdate:
        text = update();
        break;
    case kDelete:
        text = deleteRows();
        break;
    case kCrosstab:
        text = crosstab();
        break;
    case kUnion:
        text = unionOf();
        break;
    case kDefinition:
    case kPassThrough:
        text = statement.expression;
        break;
    default:
        throw Damage(Fault::BadType);
    }
    text.prepend(parameters());
    if (option(kOwnerAccess))
        text += u"\nWITH OWNERACCESS OPTION"_s;
    return text;
}

// Normalises the line ends and the final semicolon; the file may contain a zero character there.
QString tidy(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s);
    while (!text.isEmpty() && (text.back().isSpace() || text.back().isNull() || text.back() == u';'))
        text.chop(1);
    return text + u';';
}

} // namespace

QString queryText(const QList<QueryRow> &rows)
{
    return tidy(StatementText(rows).build());
}

bool isPassThrough(const QList<QueryRow> &rows)
{
    return std::any_of(rows.begin(), rows.end(),
                       [](const QueryRow &row) { return row.attribute == kStatement && row.flag == kPassThrough; });
}

} // namespace jet::format
