#include "StatementMaker.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace fuzz {
namespace {

constexpr int DeepestExpression = 4;
constexpr int DeepestQuery = 3;

} // namespace

QString StatementMaker::pick(std::initializer_list<const char16_t *> choices)
{
    return QString::fromUtf16(choices.begin()[below(int(choices.size()))]);
}

// Of any source in sight, those of outer queries included.
QString StatementMaker::fieldOf(QStringList Source::*kind, const QString &otherwise)
{
    for (int attempt = 0; attempt < 3 && !m_scopes.empty(); ++attempt) {
        const Sources &scope = m_scopes[chance(80) ? m_scopes.size() - 1 : size_t(below(int(m_scopes.size())))];
        if (scope.empty())
            continue;
        const Source &source = scope[size_t(below(int(scope.size())))];
        const QStringList &fields = source.*kind;
        if (!fields.isEmpty())
            return source.alias + u'.' + fields[below(int(fields.size()))];
    }
    return otherwise;
}

QString StatementMaker::statement()
{
    switch (below(8)) {
    case 0:
        return transform();
    case 1:
        return change();
    default:
        return query();
    }
}

QString StatementMaker::query()
{
    QString text = select();
    while (m_depth == 0 && chance(12))
        text += pick({u" UNION ", u" UNION ALL "}) + select();
    return text;
}

QString StatementMaker::table()
{
    Source source;
    source.alias = u"s"_s + QString::number(++m_aliases);
    QString text;
    switch (m_scopes.size() < DeepestQuery ? below(8) : below(5)) {
    case 0:
    case 1:
        text = u"t"_s;
        source.numbers = {u"id"_s, u"a"_s, u"c"_s, u"s"_s};
        source.texts = {u"b"_s, u"desc"_s};
        source.dates = {u"d"_s};
        source.conditions = {u"f"_s};
        break;
    case 2:
        text = u"u"_s;
        source.numbers = {u"id"_s, u"x"_s};
        source.texts = {u"b"_s};
        break;
    case 3:
        text = u"q"_s;
        source.numbers = {u"id"_s, u"twice"_s};
        source.texts = {u"b"_s};
        break;
    case 4:
        text = u"g"_s;
        source.numbers = {u"total"_s};
        source.texts = {u"b"_s};
        break;
    default:
        // Only the queries within can be seen from it.
        const std::vector<Sources> outside = std::exchange(m_scopes, std::vector<Sources>(m_scopes.size()));
        m_scopes.push_back({});
        const QString inner = from();
        text = u"(SELECT "_s + pick({u"", u"DISTINCT ", u"TOP 2 "}) + number() + u" AS n1, "_s + this->text() +
               u" AS v1, "_s + date() + u" AS d1 FROM "_s + inner +
               (chance(50) ? u" WHERE "_s + condition() : QString()) + u')';
        m_scopes = outside;
        source.numbers = {u"n1"_s};
        source.texts = {u"v1"_s};
        source.dates = {u"d1"_s};
        break;
    }
    m_scopes.back().push_back(source);
    return text + u" AS "_s + source.alias;
}

QString StatementMaker::joined()
{
    const size_t first = m_scopes.back().size();
    QString left = table();
    while (chance(35)) {
        const QString kind = pick({u" INNER JOIN ", u" LEFT JOIN ", u" RIGHT JOIN "});
        const bool nests = chance(20);
        const QString right = nests ? u'(' + joined() + u')' : table();
        // Its condition may use the tables under it only.
        Sources all = m_scopes.back();
        m_scopes.back() = Sources(all.begin() + qsizetype(first), all.end());
        const QString on =
            chance(60) ? fieldOf(&Source::numbers, u"1"_s) + u" = "_s + fieldOf(&Source::numbers, u"2"_s) : condition();
        m_scopes.back() = all;
        left = u'(' + left + kind + right + u" ON "_s + on + u')';
    }
    return left;
}

QString StatementMaker::from()
{
    QString text = joined();
    while (chance(15))
        text += u", "_s + joined();
    return text;
}

QString StatementMaker::select(bool ofOneNumber)
{
    m_scopes.push_back({});
    ++m_depth;
    const auto leave = qScopeGuard([this] {
        m_scopes.pop_back();
        --m_depth;
    });
    const QString tables = from();
    if (!ofOneNumber && chance(25))
        return grouped(tables);
    QString text = u"SELECT "_s + (ofOneNumber ? pick({u"", u"DISTINCT ", u"TOP 1 "})
                                               : pick({u"", u"", u"", u"DISTINCT ", u"DISTINCTROW ", u"TOP 2 ",
                                                       u"TOP 40 PERCENT ", u"DISTINCT TOP 2 "}));
    QStringList items{ofOneNumber ? number() : chance(15) ? u"*"_s : value()};
    // Unions need as many of all.
    while (!ofOneNumber && items.size() < 3)
        items.append(chance(30) ? value() + u" AS k"_s + QString::number(++m_aliases) : value());
    text += items.join(u", ") + u" FROM "_s + tables;
    if (chance(60))
        text += u" WHERE "_s + condition();
    if (chance(40))
        text += u" ORDER BY "_s +
                (chance(50) ? u"1 DESC, 2"_s.first(ofOneNumber ? 6 : 9) : items[below(int(items.size()))]);
    return text;
}

QString StatementMaker::grouped(const QString &from)
{
    const QString key = value();
    QString text = u"SELECT "_s + key + u", "_s + aggregate() + u" AS m, "_s + aggregate() + u" FROM "_s + from;
    if (chance(40))
        text += u" WHERE "_s + condition();
    text += u" GROUP BY "_s + key;
    if (chance(40))
        text += u" HAVING "_s + aggregate() + u" > "_s + pick({u"1", u"'b'", u"0.5"});
    if (chance(40))
        text += u" ORDER BY 1, 2 DESC"_s;
    return text;
}

QString StatementMaker::transform()
{
    m_scopes.push_back({});
    const QString tables = from();
    const QString key = value();
    QString text =
        u"TRANSFORM "_s + aggregate() + u" SELECT "_s + key + u", "_s + aggregate() + u" AS m FROM "_s + tables;
    if (chance(40))
        text += u" WHERE "_s + condition();
    text += u" GROUP BY "_s + key + u" PIVOT "_s;
    text += chance(50) ? number() : this->text() + pick({u"", u" IN ('x', 'y')"});
    m_scopes.pop_back();
    return text;
}

QString StatementMaker::change()
{
    m_scopes.push_back({});
    const auto leave = qScopeGuard([this] { m_scopes.pop_back(); });
    const QString tables = joined();
    const QString where = chance(60) ? u" WHERE "_s + condition() : QString();
    const QString alias = m_scopes.back().front().alias;
    switch (below(4)) {
    case 0:
        return u"DELETE "_s + alias + u".* FROM "_s + tables + where;
    case 1:
        return u"INSERT INTO t (a, b, d, f) SELECT "_s + number() + u", "_s + this->text() + u", "_s + date() +
               u", "_s + condition() + u" FROM "_s + tables + where;
    case 2:
        return u"SELECT "_s + number() + u" AS n, "_s + this->text() + u" AS v, "_s + value() +
               u" AS w INTO made FROM "_s + tables + where;
    default:
        return u"UPDATE "_s + tables + u" SET "_s + fieldOf(&Source::numbers, u"a"_s) + u" = "_s + number() + u", "_s +
               fieldOf(&Source::texts, u"b"_s) + u" = "_s + this->text() + where;
    }
}

QString StatementMaker::subquery()
{
    if (m_scopes.size() >= DeepestQuery)
        return u"SELECT x FROM u"_s;
    return select(true);
}

QString StatementMaker::value()
{
    switch (below(4)) {
    case 0:
        return number();
    case 1:
        return text();
    case 2:
        return date();
    default:
        return condition();
    }
}

QString StatementMaker::aggregate()
{
    switch (below(6)) {
    case 0:
        return u"Count(*)"_s;
    case 1:
        return pick({u"Count(", u"Min(", u"Max(", u"First(", u"Last("}) + value() + u')';
    default:
        return pick({u"Sum(", u"Avg(", u"StDev(", u"VarP(", u"Min(", u"First("}) + number() + u')';
    }
}

QString StatementMaker::number()
{
    if (m_depth > DeepestExpression || chance(35))
        return fieldOf(&Source::numbers, u"3"_s);
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    switch (below(14)) {
    case 0:
        return pick({u"0", u"1", u"-2", u"2.5", u"&HFF", u"3000000000", u"Null", u"True", u"[p]"});
    case 1:
    case 2:
        return number() + pick({u" + ", u" - ", u" * ", u" / ", u" \\ ", u" Mod ", u" ^ "}) + number();
    case 3:
        return u'(' + number() + pick({u" + ", u" - ", u" * "}) + number() + u')';
    case 4:
        return u"-("_s + number() + u')';
    case 5:
        return pick({u"Abs(", u"Int(", u"Round(", u"Sgn(", u"CLng(", u"CDbl(", u"Fix(", u"CCur("}) + number() + u')';
    case 6:
        return pick({u"Len(", u"Val("}) + text() + u')';
    case 7:
        return u"IIf("_s + condition() + u", "_s + number() + u", "_s + number() + u')';
    case 8:
        return u"Nz("_s + number() + u", "_s + number() + u')';
    case 9:
        return pick({u"Year(", u"Month(", u"Hour(", u"Weekday("}) + date() + u')';
    case 10:
        return u"(SELECT Max("_s + fieldOf(&Source::numbers, u"x"_s) + u") FROM u)"_s;
    case 11:
        return u'(' + subquery() + u')';
    case 12:
        return u"Switch("_s + condition() + u", "_s + number() + u", True, "_s + number() + u')';
    default:
        return u"DateDiff('d', "_s + date() + u", "_s + date() + u')';
    }
}

QString StatementMaker::text()
{
    if (m_depth > DeepestExpression || chance(40))
        return fieldOf(&Source::texts, u"'x'"_s);
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    switch (below(8)) {
    case 0:
        return pick({u"'x'", u"''", u"'it''s'", u"\"7\"", u"Null", u"[r]"});
    case 1:
        return text() + u" & "_s + value();
    case 2:
        return text() + u" + "_s + text();
    case 3:
        return pick({u"UCase(", u"Trim(", u"StrReverse("}) + text() + u')';
    case 4:
        return u"Left("_s + text() + u", 1)"_s;
    case 5:
        return u"Format("_s + value() + pick({u")", u", '0.0')", u", 'yyyy')", u", '>')"});
    case 6:
        return u"IIf("_s + condition() + u", "_s + text() + u", "_s + value() + u')';
    default:
        return u"Nz("_s + text() + u", "_s + text() + u')';
    }
}

QString StatementMaker::date()
{
    if (m_depth > DeepestExpression || chance(50))
        return fieldOf(&Source::dates, u"#1/2/2003#"_s);
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    switch (below(4)) {
    case 0:
        return u"DateAdd('m', 2, "_s + date() + u')';
    case 1:
        return date() + pick({u" + 1", u" - 0.5"});
    case 2:
        return u"IIf("_s + condition() + u", "_s + date() + u", Null)"_s;
    default:
        return u"DateSerial(2003, 1, "_s + number() + u" Mod 100)"_s;
    }
}

QString StatementMaker::condition()
{
    if (m_depth > DeepestExpression || chance(15))
        return fieldOf(&Source::conditions, u"1 = 1"_s);
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    const auto compare = [this] { return pick({u" = ", u" <> ", u" < ", u" >= "}); };
    switch (below(16)) {
    case 0:
    case 1:
        return number() + compare() + number();
    case 2:
        return text() + compare() + text();
    case 3:
        return date() + compare() + date();
    case 4:
    case 5:
        return condition() + pick({u" And ", u" Or ", u" Xor ", u" Eqv ", u" Imp "}) + condition();
    case 6:
        return u"Not "_s + condition();
    case 7:
        return u'(' + condition() + u')' + compare() + u'(' + condition() + u')';
    case 8:
        return text() + pick({u" Like ", u" Not Like "}) + pick({u"'x*'", u"'*[!a-c]'", u"'?'", u"''"});
    case 9:
        return number() + pick({u" Between ", u" Not Between "}) + number() + u" And "_s + number();
    case 10:
        return text() + pick({u" In (", u" Not In ("}) + text() + u", "_s + text() + u')';
    case 11:
        return number() + pick({u" In (", u" Not In ("}) + subquery() + u')';
    case 12:
        return u'(' + value() + u')' + pick({u" Is Null", u" Is Not Null"});
    case 13:
        return u"Exists ("_s + subquery() + u')';
    case 14:
        return number() + compare() + pick({u"ANY (", u"ALL ("}) + subquery() + u')';
    default:
        return u"IIf("_s + condition() + u", "_s + condition() + u", "_s + condition() + u')';
    }
}

} // namespace fuzz
