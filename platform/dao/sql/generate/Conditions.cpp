#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

using namespace Qt::StringLiterals;

namespace dao::sql::generate {
namespace {

using namespace bound;

// SQLite parses a chain of n terms into a tree of depth n and limits the depth to 1000, so long chains are split into
// groups.
constexpr qsizetype kMaxFlatTerms = 64;
// To choose indexes, SQLite compares each term of AND with each other one. It takes a group behind a plus sign for one
// term without an index, so the time stays in proportion to the length of the text.
constexpr qsizetype kMaxPlannedTerms = 1024;

QStringView symbolOf(BinaryOp op)
{
    switch (op) {
    case BinaryOp::Equal:
        return u"=";
    case BinaryOp::NotEqual:
        return u"<>";
    case BinaryOp::Less:
        return u"<";
    case BinaryOp::Greater:
        return u">";
    case BinaryOp::LessEqual:
        return u"<=";
    default:
        return u">=";
    }
}

int rankOf(BinaryOp op)
{
    return op == BinaryOp::Equal || op == BinaryOp::NotEqual ? rank::Equality : rank::Relation;
}

/// True if both are literals and the first is the greater one.
bool isReversed(const Expr &low, const Expr &high)
{
    const Literal *first = low.as<Literal>();
    const Literal *second = high.as<Literal>();
    if (!first || !second || first->value.hasNoValue() || second->value.hasNoValue())
        return false;
    if (first->value.type() == Value::Type::Text)
        return first->value.text().compare(second->value.text(), Qt::CaseInsensitive) > 0;
    return first->value.real() > second->value.real();
}

/// The literal prefix of a pattern in lower case: each match starts with it, ignoring the case of A to Z as SQLite's
/// NOCASE does.
QString plainPrefix(const QString &pattern)
{
    QString prefix;
    for (const QChar c : pattern) {
        const QChar lower = c >= u'A' && c <= u'Z' ? c.toLower() : c;
        const bool plain = (lower >= u'a' && lower <= u'z') || (lower >= u'0' && lower <= u'9');
        if (!plain)
            break;
        prefix += lower;
    }
    return prefix;
}

bool areOrdered(const Expr &low, const Expr &high)
{
    return low.as<Literal>() && high.as<Literal>() && !isReversed(low, high);
}

} // namespace

//     SELECT a FROM t WHERE NOT a > 1
//     SELECT _s1."a" FROM "t" AS _s1 WHERE NOT _s1."a" > 1 ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const bound::Not &node)
{
    return {u"NOT "_s + truthAt(*node.operand, rank::Equality), rank::Not};
}

//     SELECT a FROM t WHERE c = 'x' AND b <> a
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."c" = 'x' AND _s1."b" <> _s1."a" ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const Compare &node)
{
    if (const Source *pruned = m_numberTests.value(&node))
        return {numberTestText(node, *pruned), rank::Primary};
    if (const QString numbers = sameNumbersText(node); !numbers.isEmpty())
        return {numbers, rank::And};
    for (auto hash = m_hashes.cbegin(); hash != m_hashes.cend(); ++hash) {
        if (hash->test == &node) {
            const Expr &other = hash->value == node.left.get() ? *node.right : *node.left;
            return {m_target.sourcePrefix + QString::number(hash.key()) + u"._h = "_s + sortable(other),
                    rank::Equality};
        }
    }
    const int rank = rankOf(node.op);
    const Piece left = comparable(*node.left, *node.right);
    const QString leftText = left.rank > rank ? left.text : u'(' + left.text + u')';
    return {leftText + u' ' + symbolOf(node.op) + u' ' + valueAt(*node.right, rank::Relation + 1), rank};
}

//     SELECT a FROM t WHERE c LIKE 'ab*'
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."c" >= 'ab' AND _s1."c" < 'ac' AND jet_like('ab*', _s1."c") ORDER BY
//         _s1."id"
Generator::Piece Generator::truthOf(const Like &node)
{
    if (m_standalone) {
        const Piece piece = standaloneLike(node);
        if (!piece.text.isEmpty())
            return piece;
    }
    const Piece match =
        call(node.ansi ? u"alike" : u"like", value(*node.pattern).text + u", "_s + value(*node.text).text);
    const Literal *pattern = node.pattern->as<Literal>();
    const QString prefix = pattern && node.text->as<FieldRef>() ? plainPrefix(pattern->value.text()) : QString();
    if (prefix.isEmpty())
        return match;
    // A range that an index on the field can answer, and the pattern for the rows in it.
    const QString field = value(*node.text).text;
    QString end = prefix;
    end.back() = QChar(char16_t(end.back().unicode() + 1));
    return {field + u" >= '"_s + prefix + u"' AND "_s + field + u" < '"_s + end + u"' AND "_s + match.text, rank::And};
}

// The pattern as SQLite's LIKE (any number of characters and single characters) or GLOB (also digits and classes), for
// CHECK constraints. The rule Like 'ab*' of a field c becomes "c" LIKE 'ab%' ESCAPE '\', and Like '[a-c]*' becomes
// lower("c") GLOB '[a-c]*'. Any other pattern gives no text: the rule then needs jet_like().
Generator::Piece Generator::standaloneLike(const Like &node)
{
    const Literal *literal = node.pattern->as<Literal>();
    if (!literal || literal->value.type() != Value::Type::Text || node.ansi)
        return {};
    const QString pattern = literal->value.text();
    const auto isControl = [](QChar c) { return c < u' '; };
    if (std::any_of(pattern.begin(), pattern.end(), isControl))
        return {};
    const QString text = value(*node.text).text;
    const bool classes = pattern.contains(u'[') || pattern.contains(u'#');
    QString inner;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'*' || c == u'?')
            inner += classes ? c : c == u'*' ? QChar(u'%') : QChar(u'_');
        else if (c == u'#')
            inner += u"[0-9]"_s;
        else if (c == u'[' && i + 1 < pattern.size() && pattern[i + 1] == u'!')
            inner += u"[^"_s, ++i;
        else if (!classes && (c == u'%' || c == u'_' || c == u'\\'))
            inner += u'\\', inner += c;
        else
            inner += c;
    }
    inner.replace(u'\'', u"''"_s);
    if (classes)
        return {u"lower("_s + text + u") GLOB '"_s + inner.toLower() + u'\'', rank::Equality};
    return {text + u" LIKE '"_s + inner + u"' ESCAPE '\\'"_s, rank::Equality};
}

//     SELECT a FROM t WHERE a > 1 IMP b > 1
//     SELECT _s1."a" FROM "t" AS _s1 WHERE NOT _s1."a" > 1 OR _s1."b" > 1 ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const Logic &node)
{
    if (node.op == BinaryOp::Imp)
        return {u"NOT "_s + truthAt(*node.left, rank::Equality) + u" OR "_s + truthAt(*node.right, rank::And),
                rank::Or};
    const QStringView symbol = node.op == BinaryOp::Xor ? u" <> " : u" = ";
    return {truthAt(*node.left, rank::Primary) + symbol + truthAt(*node.right, rank::Primary), rank::Equality};
}

//     SELECT a FROM t WHERE a > 1 AND (b = 2 OR b = 3)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" > 1 AND (_s1."b" = 2 OR _s1."b" = 3) ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const bound::Chain &node)
{
    const int rank = node.isAnd ? rank::And : rank::Or;
    const QString word = node.isAnd ? u" AND "_s : u" OR "_s;
    QStringList terms;
    for (const ExprPtr &term : node.terms)
        terms.append(truthAt(*term, rank + 1));
    while (terms.size() > kMaxFlatTerms) {
        QStringList groups;
        for (qsizetype i = 0; i < terms.size(); i += kMaxFlatTerms)
            groups.append((node.isAnd && i >= kMaxPlannedTerms ? u"+("_s : u"("_s) +
                          terms.sliced(i, std::min(kMaxFlatTerms, terms.size() - i)).join(word) + u')');
        terms = groups;
    }
    return {terms.join(word), rank};
}

// Concatenations of integers with equal separators are equal if the integers are equal, which an index can answer.
//     SELECT t.a FROM t INNER JOIN v ON t.a & '/' & t.b = v.a & '/' & v.b
//     SELECT _s1."a" FROM "t" AS _s1 JOIN "v" AS _s2 ON _s1."a" IS _s2."a" AND _s1."b" IS _s2."b" ORDER BY _s1."id",
//         _s2."rowid"
// Empty: the comparison is no such one.
QString Generator::sameNumbersText(const Compare &node)
{
    const Concatenate *left = node.left->as<Concatenate>();
    const Concatenate *right = node.right->as<Concatenate>();
    if (node.op != BinaryOp::Equal || !left || !right || left->terms.size() != right->terms.size())
        return {};
    const auto numberOf = [](const Expr &term) -> const Expr * {
        const Convert *text = term.as<Convert>();
        const bool whole = text && text->conversion == Conversion::ToText && text->operand->as<FieldRef>() &&
                           (text->operand->type == DataType::Byte || text->operand->type == DataType::Integer ||
                            text->operand->type == DataType::Long);
        return whole ? text->operand.get() : nullptr;
    };
    const auto mustBe = [&](const ExprPtr &term) {
        const Expr *number = numberOf(*term);
        const FieldRef *field = number ? number->as<FieldRef>() : nullptr;
        return !field || field->source->table->fields[field->field].required;
    };
    // An empty term before a "-" separator would make it a minus sign, so all terms must be required numbers.
    const bool required = std::ranges::all_of(left->terms, mustBe) && std::ranges::all_of(right->terms, mustBe);
    QStringList pairs;
    for (size_t i = 0; i < left->terms.size(); ++i) {
        const Expr *number = numberOf(*left->terms[i]);
        const Expr *other = numberOf(*right->terms[i]);
        if (i % 2 == 0 && number && other) {
            pairs.append(value(*number).text + u" IS "_s + value(*other).text);
            continue;
        }
        // A separator that starts like a number could be read as part of one.
        const Literal *separator = left->terms[i]->as<Literal>();
        const Literal *same = right->terms[i]->as<Literal>();
        if (i % 2 == 0 || !separator || !same || separator->value.type() != Value::Type::Text ||
            same->value.type() != Value::Type::Text || separator->value.text() != same->value.text())
            return {};
        const QChar first = separator->value.text().isEmpty() ? u'0' : separator->value.text().front();
        if (first.isDigit() || (first == u'-' && !required))
            return {};
    }
    return pairs.size() > 1 ? pairs.join(u" AND ") : QString();
}

// The dialect accepts the bounds in either order; literal bounds are sorted here, others at run time.
//     SELECT a FROM t WHERE a BETWEEN b AND 3
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" BETWEEN min(_s1."b", 3) AND max(_s1."b", 3) ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const Between &node)
{
    Piece operand = comparable(*node.operand, *node.low);
    QString low = valueAt(*node.low, rank::Relation + 1);
    QString high = valueAt(*node.high, rank::Relation + 1);
    if (isReversed(*node.low, *node.high)) {
        std::swap(low, high);
    } else if (!areOrdered(*node.low, *node.high)) {
        const QString list = u'(' + sortable(*node.low) + u", "_s + high + u')';
        low = m_target.lesser + list;
        high = m_target.greater + list;
        // A field passes its collation on to a comparison, but min() and max() drop it.
        if (familyOf(node.operand->type) == Family::Text)
            operand = {sortable(*node.operand), rank::Collation};
    }
    const QString left = operand.rank > rank::Equality ? operand.text : u'(' + operand.text + u')';
    return {left + (node.negated ? u" NOT BETWEEN "_s : u" BETWEEN "_s) + low + u" AND "_s + high, rank::Equality};
}

//     SELECT a FROM t WHERE a NOT IN (1, 2)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" NOT IN (1, 2) ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const InList &node)
{
    const QString left = sortable(*node.operand);
    return {left + (node.negated ? u" NOT IN ("_s : u" IN ("_s) + arguments(node.items) + u')', rank::Equality};
}

//     SELECT a FROM t WHERE a IN (SELECT b FROM v)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" IN (SELECT _s2."b" FROM "v" AS _s2) ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const InQuery &node)
{
    if (const Select *around = m_tests.value(&node)) {
        const QString text = groupTestText(node, *around);
        if (!text.isEmpty())
            return {text, rank::Equality};
    }
    const QString left = sortable(*node.operand);
    return {left + (node.negated ? u" NOT IN ("_s : u" IN ("_s) + embedded(*node.query, Shape::Subquery) + u')',
            rank::Equality};
}

//     SELECT a FROM t WHERE a IS NOT NULL
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" IS NOT NULL ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const bound::IsNull &node)
{
    return {valueAt(*node.operand, rank::Relation) + (node.negated ? u" IS NOT NULL"_s : u" IS NULL"_s),
            rank::Equality};
}

//     SELECT a FROM t WHERE EXISTS (SELECT * FROM v WHERE v.a = t.a)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE EXISTS (SELECT 1 FROM "v" AS _s2 WHERE _s2."a" = _s1."a") ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const Exists &node)
{
    const Select *select = node.query->singleSelect();
    const bool plain = select && !select->top && !select->distinct && !select->aggregated;
    return {u"EXISTS ("_s + embedded(*node.query, plain ? Shape::Exists : Shape::Subquery) + u')', rank::Primary};
}

// Finds the rows of one heading of a cross table; a heading can be Null.
//     TRANSFORM Sum(d) SELECT a FROM t GROUP BY a PIVOT b IN (1, 2)
//     SELECT _s1."a", sum(_s1."d") FILTER (WHERE _s1."b" IS 1), sum(_s1."d") FILTER (WHERE _s1."b" IS 2) FROM "t" AS
//         _s1 GROUP BY _s1."a"
Generator::Piece Generator::truthOf(const Same &node)
{
    return {sortable(*node.left) + u" IS "_s + valueAt(*node.right, rank::Relation + 1), rank::Equality};
}

// x > ANY: a row exists for which the comparison is true. x > ALL: no row exists for which it is false or Null.
//     SELECT a FROM t WHERE a > ALL (SELECT a FROM v)
//     SELECT _s1."a" FROM "t" AS _s1 WHERE NOT EXISTS (SELECT 1 FROM (SELECT _s2."a" AS _c0 FROM "v" AS _s2) AS _q1
//         WHERE (_s1."a" > _q1._c0) IS NOT 1) ORDER BY _s1."id"
Generator::Piece Generator::truthOf(const Quantified &node)
{
    const QString derived = u"_q"_s + QString::number(++m_derived);
    const QString cell = derived + u'.' + m_target.columnPrefix + u'0';
    const bool ofGroup = hasAggregate(*node.operand);
    const bool outside = std::exchange(m_inTestOfRows, ofGroup);
    const QString test = sortable(*node.operand) + u' ' + symbolOf(node.op) + u' ' + cell;
    m_inTestOfRows = outside;
    const QString rows = u" FROM ("_s + embedded(*node.query, Shape::Nested) + u") AS "_s + derived;
    // SQLite accepts an aggregate of an outer query in a select list, but not in a condition.
    if (ofGroup)
        return {(node.all ? u"0 NOT IN"_s : u"1 IN"_s) + u" (SELECT ("_s + test + u") IS TRUE"_s + rows + u')',
                rank::Equality};
    if (node.all)
        return {u"NOT EXISTS (SELECT 1"_s + rows + u" WHERE ("_s + test + u") IS NOT 1)"_s, rank::Not};
    return {u"EXISTS (SELECT 1"_s + rows + u" WHERE "_s + test + u')', rank::Primary};
}

} // namespace dao::sql::generate
