#include "Generator.h"
#include "Rank.h"

#include <dao/sql/bind/Types.h>

#include <cmath>

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace dao::sql::generate {
namespace {

using namespace bound;

// SQLite allows at most 127 arguments.
constexpr size_t kMaxArguments = 100;

/// Nodes that are conditions in SQLite.
template <typename Node>
concept Condition = std::is_same_v<Node, bound::Not> || std::is_same_v<Node, Compare> || std::is_same_v<Node, Like> ||
    std::is_same_v<Node, Logic> || std::is_same_v<Node, bound::Chain> || std::is_same_v<Node, Between> ||
    std::is_same_v<Node, InList> || std::is_same_v<Node, InQuery> || std::is_same_v<Node, bound::IsNull> ||
    std::is_same_v<Node, Exists> || std::is_same_v<Node, Quantified> || std::is_same_v<Node, Same>;

QString realText(double number)
{
    QString text = QString::number(number, 'g', 17);
    if (QString::number(number, 'g', 15).toDouble() == number)
        text = QString::number(number, 'g', 15);
    if (!text.contains(u'.') && !text.contains(u'e') && !text.contains(u'n'))
        text += u".0"_s;
    return text;
}

QString textLiteral(const QString &text)
{
    const bool plain = std::none_of(text.begin(), text.end(),
                                    [](QChar c) { return c < u' ' && c != u'\n' && c != u'\r' && c != u'\t'; });
    if (!plain)
        return u"CAST(x'"_s + QString::fromLatin1(text.toUtf8().toHex()) + u"' AS TEXT)"_s;
    QString result = text;
    result.replace(u'\'', u"''"_s);
    return u'\'' + result + u'\'';
}

QStringView textFunction(DataType type)
{
    switch (type) {
    case DataType::Date:
        return u"as_text_date";
    case DataType::Single:
        return u"as_text_single";
    default:
        return u"as_text";
    }
}

QStringView assignFunction(DataType type)
{
    switch (type) {
    case DataType::Boolean:
        return u"to_boolean";
    case DataType::Byte:
        return u"to_byte";
    case DataType::Integer:
        return u"to_integer";
    case DataType::Long:
        return u"to_long";
    case DataType::Currency:
        return u"to_currency";
    case DataType::Single:
        return u"to_single";
    case DataType::Date:
        return u"to_date";
    case DataType::Double:
    case DataType::Decimal:
        return u"to_double";
    default:
        return u"to_binary";
    }
}

} // namespace

Generator::Generator(const BindContext &context)
    : m_context(context)
    , m_target(sqliteTarget())
    , m_positions(context.parameterPositions())
    , m_parameters(context.finalParameters())
{
}

QString Generator::expression(const Expr &expr)
{
    return value(expr).text;
}

QString Generator::condition(const Expr &expr)
{
    return truth(expr).text;
}

// A value as the user sees it: True is -1, so a condition's 1 is negated.
//     SELECT a > 1 AS x FROM t
//     SELECT -(_s1."a" > 1) FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::value(const Expr &expr)
{
    Piece piece = std::visit(
        [&](const auto &node) -> Piece {
            if constexpr (Condition<std::decay_t<decltype(node)>>) {
                const Piece condition = truthOf(node);
                return {u"-("_s + condition.text + u')', rank::Sign};
            } else {
                return valueOf(node, expr);
            }
        },
        expr.node);
    return placed(expr, std::move(piece));
}

// A condition as SQLite needs it: a value is compared with 0.
//     SELECT a FROM t WHERE a
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" <> 0 ORDER BY _s1."id"
Generator::Piece Generator::truth(const Expr &expr)
{
    return std::visit(
        [&](const auto &node) -> Piece {
            if constexpr (Condition<std::decay_t<decltype(node)>>)
                return placed(expr, truthOf(node));
            else
                return {valueAt(expr, rank::Relation) + u" <> 0"_s, rank::Equality};
        },
        expr.node);
}

QString Generator::valueAt(const Expr &expr, int rank)
{
    Piece piece = value(expr);
    return piece.rank >= rank ? std::move(piece.text) : QString(u'(' + piece.text + u')');
}

QString Generator::truthAt(const Expr &expr, int rank)
{
    Piece piece = truth(expr);
    return piece.rank >= rank ? std::move(piece.text) : QString(u'(' + piece.text + u')');
}

QString Generator::arguments(const std::vector<ExprPtr> &list)
{
    QString text;
    for (const ExprPtr &expr : list) {
        if (!text.isEmpty())
            text += u", "_s;
        text += value(*expr).text;
    }
    return text;
}

// Only columns of tables have a collation; other text needs an explicit one.
//     SELECT a FROM t ORDER BY a & c
//     SELECT _s1."a" FROM "t" AS _s1 ORDER BY jet_concatenate(jet_as_text(_s1."a"), _s1."c") COLLATE NOCASE, _s1."id"
QString Generator::sortable(const Expr &expr)
{
    const bool needed = familyOf(expr.type) == Family::Text && !expr.as<FieldRef>();
    return needed ? valueAt(expr, rank::Collation) + m_target.caseless : valueAt(expr, rank::Relation);
}

// Generates the left operand of a comparison with the right one.
//     SELECT a FROM t WHERE a & c = c & a
//     SELECT _s1."a" FROM "t" AS _s1 WHERE jet_concatenate(jet_as_text(_s1."a"), _s1."c") COLLATE NOCASE =
//         jet_concatenate(_s1."c", jet_as_text(_s1."a")) ORDER BY _s1."id"
Generator::Piece Generator::comparable(const Expr &left, const Expr &right)
{
    const bool text = familyOf(left.type) == Family::Text || familyOf(right.type) == Family::Text ||
                      (left.type == DataType::Unknown && right.type == DataType::Unknown);
    if (text && !left.as<FieldRef>() && !right.as<FieldRef>())
        return {valueAt(left, rank::Collation) + m_target.caseless, rank::Collation};
    return value(left);
}

QString Generator::ownFunction(QStringView name)
{
    m_pure = false;
    return QString((m_noting || m_tellsPlaces ? m_target.notingPrefix : m_target.functionPrefix) + name).toLower();
}

Generator::Piece Generator::call(QStringView name, const QString &arguments)
{
    return {ownFunction(name) + u'(' + arguments + u')', rank::Primary};
}

// Dates are numbers of days, as in the dialect.
//     SELECT 'it''s' AS x, #1/2/2024# AS y, True AS z FROM t
//     SELECT 'it''s', 45293.0, -1 FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Literal &node, const Expr &)
{
    const Value &value = node.value;
    QString text;
    switch (value.type()) {
    case Value::Type::Null:
    case Value::Type::Empty:
        return {u"NULL"_s, rank::Primary};
    case Value::Type::Text:
        return {textLiteral(value.text()), rank::Primary};
    case Value::Type::Binary:
        return {u"x'"_s + QString::fromLatin1(value.binary().toHex()) + u'\'', rank::Primary};
    case Value::Type::Float:
    case Value::Type::Double:
    case Value::Type::Currency:
    case Value::Type::Date:
        text = realText(value.real());
        break;
    default:
        text = QString::number(value.integer());
        break;
    }
    return {text, text.startsWith(u'-') ? rank::Sign : rank::Primary};
}

Generator::Piece Generator::valueOf(const FieldRef &node, const Expr &)
{
    const QString &name = node.source->table->fields[node.field].name;
    return {m_standalone ? quotedName(name) : qualifiedName(aliasOf(*node.source), name), rank::Primary};
}

// A cell of a nested query can be a noted failure, which cell_value() raises where the value is used.
//     SELECT x.n FROM (SELECT a AS n FROM t GROUP BY a) AS x
//     SELECT _s2._c0 FROM (SELECT _s1."a" AS _c0 FROM "t" AS _s1 GROUP BY _s1."a") AS _s2
Generator::Piece Generator::valueOf(const Output &node, const Expr &)
{
    const QString cell = aliasOf(*node.source) + u'.' + m_target.columnPrefix + QString::number(node.index);
    if (!node.source->query || !keepsFailure(*node.source->query, size_t(node.index)))
        return {cell, rank::Primary};
    return {(m_noting || m_tellsPlaces ? u"try_cell_value("_s : u"cell_value("_s) + cell + u')', rank::Primary};
}

Generator::Piece Generator::valueOf(const Key &node, const Expr &)
{
    return {keyText(*node.source), rank::Primary};
}

// A parameter has one type; a use that needs another type converts it.
//     SELECT a FROM t WHERE a = [wanted]
//     SELECT _s1."a" FROM "t" AS _s1 WHERE _s1."a" = ?1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const bound::ParameterRef &node, const Expr &expr)
{
    m_usesParameters = true;
    // The value is the same for all rows, so a failed conversion ends the statement and is not noted per cell.
    const QScopedValueRollback outsideCells(m_noting, false);
    const int position = m_positions[node.id];
    const QString text = m_target.parameterPrefix + QString::number(position);
    const DataType type = m_parameters[position - 1].type;
    const Family wanted = familyOf(expr.type);
    if (familyOf(type) == wanted || wanted == Family::Any)
        return {text, rank::Primary};
    if (wanted == Family::Text)
        return call(textFunction(type), text);
    const bool heldText = familyOf(type) == Family::Text;
    return heldText ? call(wanted == Family::Date ? u"as_date" : u"as_number", text) : Piece{text, rank::Primary};
}

//     SELECT -a AS x FROM t
//     SELECT -_s1."a" FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Negate &node, const Expr &)
{
    // Two adjacent minus signs would start a comment.
    const Piece operand = value(*node.operand);
    const bool needed = operand.rank < rank::Sign || operand.text.startsWith(u'-');
    return {u'-' + (needed ? u'(' + operand.text + u')' : operand.text), rank::Sign};
}

Generator::Piece Generator::valueOf(const Arithmetic &node, const Expr &expr)
{
    const Piece result = arithmetic(node);
    return expr.type == DataType::Currency ? call(u"to_currency", result.text) : result;
}

//     SELECT a ^ 2 AS x, a - b AS y FROM t
//     SELECT cell_end(cell_begin(), try_power(_s1."a", 2)), cell_end(cell_begin(), _s1."a" - _s1."b") FROM "t" AS _s1
//         ORDER BY _s1."id"
Generator::Piece Generator::arithmetic(const Arithmetic &node)
{
    const auto infix = [&](QStringView symbol, int rank) -> Piece {
        return {valueAt(*node.left, rank) + u' ' + symbol + u' ' + valueAt(*node.right, rank + 1), rank};
    };
    const auto function = [&](QStringView name) {
        return call(name, value(*node.left).text + u", "_s + value(*node.right).text);
    };
    switch (node.op) {
    case BinaryOp::Add:
        return infix(u"+", rank::Additive);
    case BinaryOp::Subtract:
        return infix(u"-", rank::Additive);
    case BinaryOp::Multiply:
        return infix(u"*", rank::Multiplicative);
    case BinaryOp::IntegerDivide:
        return function(u"int_divide");
    case BinaryOp::Mod:
        return function(u"mod");
    case BinaryOp::Power:
        return function(u"power");
    default:
        break;
    }
    // Division by a constant other than zero cannot fail, except for integer division.
    const Literal *divisor = node.right->as<Literal>();
    if (divisor && divisor->value.real() > 0)
        return {valueAt(*node.left, rank::Multiplicative) + u" / "_s + realText(divisor->value.real()),
                rank::Multiplicative};
    return function(u"divide");
}

//     SELECT c + c AS x FROM t
//     SELECT _s1."c" || _s1."c" FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const JoinText &node, const Expr &)
{
    QStringList terms;
    for (const ExprPtr &term : node.terms)
        terms.append(valueAt(*term, rank::Concatenation + 1));
    return {terms.join(u" || "), rank::Concatenation};
}

//     SELECT a + IIf(a > 1, b, c) AS x FROM t
//     SELECT cell_end(cell_begin(), _s1."a" + try_as_number(CASE WHEN _s1."a" > 1 THEN try_as_text(_s1."b") ELSE
//         _s1."c" END)) FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const AddAny &node, const Expr &)
{
    return call(u"add", value(*node.left).text + u", "_s + value(*node.right).text);
}

//     SELECT a & '-' & c AS x FROM t
//     SELECT jet_concatenate(jet_as_text(_s1."a"), '-', _s1."c") FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Concatenate &node, const Expr &)
{
    QStringList terms;
    for (const ExprPtr &term : node.terms)
        terms.append(value(*term).text);
    while (terms.size() > qsizetype(kMaxArguments)) {
        QStringList groups;
        for (qsizetype i = 0; i < terms.size(); i += kMaxArguments)
            groups.append(
                call(u"concatenate", terms.sliced(i, std::min<qsizetype>(kMaxArguments, terms.size() - i)).join(u", "))
                    .text);
        terms = groups;
    }
    return call(u"concatenate", terms.join(u", "));
}

//     SELECT (SELECT Max(b) FROM v WHERE v.a = t.a) AS x FROM t
//     SELECT (SELECT max(_s2."b") FROM "v" AS _s2 WHERE _s2."a" = _s1."a") FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const ScalarQuery &node, const Expr &)
{
    if ((m_noting && (!node.single || keepsFailure(*node.query, 0))) || (m_tellsPlaces && !node.single))
        return notedQuery(node);
    if (node.single)
        return {u'(' + embedded(*node.query, Shape::Subquery) + u')', rank::Primary};
    // The aggregate raises an error if there is a second row.
    const QString cell = m_target.columnPrefix + u'0';
    const QString inner = embedded(*node.query, Shape::Nested);
    return {u"(SELECT "_s + ownFunction(u"single") + u'(' + cell + u") FROM ("_s + inner + u"))"_s, rank::Primary};
}

// Inside a cell a failure of the subquery becomes the failure of the cell.
//     SELECT (SELECT a / b FROM v WHERE v.a = t.a) AS x FROM t
//     SELECT cell_end(cell_begin(), try_cell_value((SELECT try_single(_c0) FROM (SELECT cell_end(cell_begin(),
//         try_divide(_s2."a", _s2."b")) AS _c0 FROM "v" AS _s2 WHERE _s2."a" = _s1."a")))) FROM "t" AS _s1 ORDER BY
//         _s1."id"
Generator::Piece Generator::notedQuery(const ScalarQuery &node)
{
    const QSet<const Select *> shown = m_shown;
    show(*node.query);
    QString text = embedded(*node.query, node.single ? Shape::Subquery : Shape::Nested);
    m_shown = shown;
    if (!node.single)
        text = u"SELECT try_single("_s + m_target.columnPrefix + u"0) FROM ("_s + text + u')';
    return {u"try_cell_value(("_s + text + u"))"_s, rank::Primary};
}

// Nested IIf calls become one CASE, because SQLite limits the nesting depth: an IIf as "otherwise" adds branches; an
// IIf as value is moved after a branch with the negated condition.
//     SELECT IIf(a > 1, b, c) AS x FROM t
//     SELECT CASE WHEN _s1."a" > 1 THEN jet_as_text(_s1."b") ELSE _s1."c" END FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Case &node, const Expr &)
{
    QString text = u"CASE"_s;
    const Case *part = &node;
    while (true) {
        const Case *next = part->otherwise ? part->otherwise->as<Case>() : nullptr;
        const Expr *only = part->branches.size() == 1 ? part->branches.front().value.get() : nullptr;
        const Case *inside = only ? only->as<Case>() : nullptr;
        if (inside && (!next || only->depth > part->otherwise->depth)) {
            text += u" WHEN "_s + truthAt(*part->branches.front().condition, rank::Relation) + u" IS NOT TRUE THEN "_s +
                    (part->otherwise ? value(*part->otherwise).text : u"NULL"_s);
            part = inside;
            continue;
        }
        for (const When &branch : part->branches)
            text += u" WHEN "_s + truth(*branch.condition).text + u" THEN "_s + value(*branch.value).text;
        if (!next)
            break;
        part = next;
    }
    if (part->otherwise)
        text += u" ELSE "_s + value(*part->otherwise).text;
    return {text + u" END"_s, rank::Primary};
}

//     SELECT Nz(a, 0) AS x FROM t
//     SELECT coalesce(_s1."a", 0) FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Coalesce &node, const Expr &)
{
    return {u"coalesce("_s + value(*node.value).text + u", "_s + value(*node.instead).text + u')', rank::Primary};
}

//     SELECT Len(c) AS x FROM t
//     SELECT cell_end(cell_begin(), try_len(_s1."c")) FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Call &node, const Expr &)
{
    const QStringView name(node.function->name);
    const bool isConstantRnd = name == u"Rnd" && (node.arguments.empty() || node.arguments.front()->as<Literal>());
    const bool once = node.function->kind == FunctionKind::Moment || isConstantRnd;
    const QScopedValueRollback inCell(m_noting, m_noting && !once);
    QString list = arguments(node.arguments);
    if (node.function->kind == FunctionKind::Typed)
        list.prepend(QString::number(int(node.arguments.front()->type)) + u", "_s);
    Piece piece = call(name, list);
    // SQLite evaluates an uncorrelated subquery only once.
    if (once)
        piece.text = u"(SELECT "_s + piece.text + u')';
    return node.refusesNull ? call(u"not_null", piece.text) : piece;
}

// The value of a heading that is not known yet is a mark, at which CrosstabPlan::cell is split.
Generator::Piece Generator::valueOf(const Heading &node, const Expr &)
{
    if (node.value.isEmpty())
        return {QString(kHeadingMark), rank::Primary};
    return {node.value, node.value.startsWith(u'-') ? rank::Sign : rank::Primary};
}

//     SELECT DCount('*', 'v', 'a = ' & a) AS x FROM t
//     SELECT jet_domain('DCount', '*', 'v', jet_concatenate('a = ', jet_as_text(_s1."a"))) FROM "t" AS _s1 ORDER BY
//         _s1."id"
Generator::Piece Generator::valueOf(const DomainCall &node, const Expr &)
{
    const QScopedValueRollback outsideCells(m_noting, false);
    m_pure = false;
    return {m_target.functionPrefix + u"domain("_s + textLiteral(QString::fromUtf16(node.function->name)) + u", "_s +
                arguments(node.arguments) + u')',
            rank::Primary};
}

//     SELECT a + c AS x FROM t
//     SELECT cell_end(cell_begin(), _s1."a" + try_as_number(_s1."c")) FROM "t" AS _s1 ORDER BY _s1."id"
Generator::Piece Generator::valueOf(const Convert &node, const Expr &expr)
{
    const QString operand = value(*node.operand).text;
    switch (node.conversion) {
    case Conversion::ToText:
        return call(textFunction(node.operand->type), operand);
    case Conversion::ToNumber:
        return call(u"as_number", operand);
    case Conversion::ToDate:
        return call(u"as_date", operand);
    case Conversion::ToTruth:
        return call(u"as_truth", operand);
    case Conversion::Fit:
        return call(u"to_text", operand + u", "_s + QString::number(node.size));
    case Conversion::Assign:
        break;
    }
    return call(assignFunction(expr.type), operand);
}

} // namespace dao::sql::generate
