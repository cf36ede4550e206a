#include "StatementWords.h"

#include <dao/AccessPlan.h>
#include <dao/sql/ast/Token.h>
#include <db/Schema.h>
#include <tarnwick/Format.h>

namespace query {

using namespace Qt::StringLiterals;
using Step = dao::AccessPlan::Step;
using Kind = Step::Kind;

namespace {

QString bracketed(const QString &name)
{
    return dao::sql::ast::isPlainName(name) ? name : u'[' + name + u']';
}

QString rowsText(qint64 rows)
{
    return rows == 1 ? u"1 row"_s : tarnwick::format(u"%D rows", rows);
}

/// Tables of the schema, whose indexes belong to it. The rows behind labels are in tables with their own names.
bool isOfProgram(const QString &table)
{
    const auto isNamed = [&](const char16_t *name) {
        return table.compare(QStringView(name), Qt::CaseInsensitive) == 0;
    };
    return std::ranges::any_of(db::tableSpecs(), [&](const db::TableSpec &spec) { return isNamed(spec.name); }) ||
           std::ranges::any_of(db::aliasSpecs(), [&](const db::AliasSpec &spec) { return isNamed(spec.table); });
}

QString searchText(const Step &step)
{
    const QString found = step.expected < 0
                              ? u"the rows in the range, of %1"_s.arg(rowsText(step.rows))
                              : u"about %1 of %2"_s.arg(rowsText(step.expected), tarnwick::format(u"%D", step.rows));
    return u"finds rows of table \"%1\" by its index \"%2\" (%3): %4."_s.arg(step.table, step.index,
                                                                             step.fields.join(u", "_s), found);
}

QString stepText(const Step &step)
{
    const QString rows = rowsText(step.rows);
    switch (step.kind) {
    case Kind::Whole:
        return u"reads all of table \"%1\" (%2)%3%4."_s.arg(
            step.table, rows, step.index.isEmpty() ? QString() : u" in the order of its index \"%1\""_s.arg(step.index),
            step.hasUnused ? u"; to find its rows by an index is expected to take longer"_s : QString());
    case Kind::WholeIndex:
        return u"reads all of index \"%1\" of table \"%2\" (%3); the rows themselves are not needed."_s.arg(
            step.index, step.table, rows);
    case Kind::Search:
        return searchText(step);
    case Kind::Record:
        return u"finds one row of table \"%1\" by its key."_s.arg(step.table);
    case Kind::TemporaryIndex:
        return u"makes an index of table \"%1\" (%2) for this run only, and finds rows by %3."_s.arg(
            step.table, rows, step.fields.join(u", "_s));
    case Kind::Sort:
        return u"sorts the rows that were found."_s;
    case Kind::Group:
        return u"sorts the rows that were found into groups."_s;
    case Kind::Distinct:
        return u"removes equal rows."_s;
    }
    return {};
}

QString sentence(const Step &step)
{
    QString text = stepText(step);
    if (step.isForEach)
        return u"For each of these rows, "_s + text;
    text[0] = text[0].toUpper();
    return text;
}

/// A name for the index that the table does not have yet.
QString indexName(const dao::TableInfo &table, const QStringList &fields)
{
    const QString base = u"by_"_s + fields.join(u'_');
    const auto isTaken = [&](const QString &name) {
        return std::ranges::any_of(table.indexes, [&](const dao::IndexInfo &index) {
            return index.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    QString name = base;
    for (int number = 2; isTaken(name); ++number)
        name = base + QString::number(number);
    return name;
}

StatementWords::Advice adviceOf(const dao::Database &database, const dao::AccessPlan::Wish &wish)
{
    QStringList fields;
    for (const QString &field : wish.fields)
        fields.append(bracketed(field));
    const QString effect = wish.use == dao::AccessPlan::Wish::Use::Order
                               ? u"would give the rows in their order, so that they need not be sorted"_s
                               : u"would find the rows without reading the whole table"_s;
    const QString text =
        u"An index of table \"%1\" over \"%2\" %3."_s.arg(wish.table, wish.fields.join(u"\", \""_s), effect);
    if (isOfProgram(wish.table))
        return {text + u" The table belongs to the program, so its indexes cannot be changed."_s, {}};
    const QString name = bracketed(indexName(database.table(wish.table), wish.fields));
    return {text, u"CREATE INDEX %1 ON %2 (%3)"_s.arg(name, bracketed(wish.table), fields.join(u", "_s))};
}

} // namespace

StatementWords StatementWords::of(dao::Database &database, const QString &sql, std::optional<qint64> foundRows)
{
    const dao::AccessPlan plan = dao::accessPlan(database, sql);
    StatementWords words;
    for (const Step &step : plan.steps)
        words.steps.append(sentence(step));
    if (plan.steps.isEmpty())
        words.steps.append(u"Reads no table."_s);
    if (plan.kind != "SELECT"_L1 && plan.kind != "TRANSFORM"_L1)
        words.steps.append(u"Then: %1."_s.arg(plan.kind));
    if (foundRows)
        words.steps.append(u"When it was executed, it found %1."_s.arg(rowsText(*foundRows)));
    for (const dao::AccessPlan::Wish &wish : plan.wishes)
        words.advice.append(adviceOf(database, wish));
    return words;
}

QString StatementWords::text() const
{
    QString text;
    for (qsizetype i = 0; i < steps.size(); ++i)
        text += u"%1. %2\n"_s.arg(i + 1).arg(steps[i]);
    text += u"\nWhat would make it faster:\n"_s;
    for (const Advice &each : advice)
        text += u"- "_s + each.text + u'\n';
    if (advice.isEmpty())
        text += u"- No further index is expected to help.\n"_s;
    return text;
}

QString textOf(const QList<StatementWords> &statements)
{
    if (statements.size() == 1)
        return statements[0].text();
    QString text;
    for (qsizetype i = 0; i < statements.size(); ++i)
        text += u"Statement %1\n\n%2\n"_s.arg(i + 1).arg(statements[i].text());
    return text;
}

} // namespace query
