#pragma once
#include "Target.h"

#include <dao/sql/bind/BindContext.h>
#include <dao/sql/plan/Compiled.h>

#include <functional>
#include <optional>
#include <QHash>
#include <QSet>

namespace dao::sql::generate {

struct GroupTest;
struct Reading;

/// Generates SQLite SQL from bound trees. All SQL that depends on a user's text is generated here. The examples above
/// the functions show an Access statement and the resulting SQL, as `arvo-cli explain` prints it. Their tables: t (id
/// COUNTER key, a LONG, b LONG, c TEXT, d DOUBLE), u (k LONG key, e TEXT), v (a LONG, b LONG), w (k SHORT required key,
/// e TEXT). There are two emitters: truth() for conditions, whose results are 1, 0 or Null as in SQLite, and value()
/// for values that the user sees, where True is -1.
class Generator
{
public:
    /// Positions of parameters are final: the context must have bound the whole statement.
    explicit Generator(const bound::BindContext &context);

    SelectPlan select(const bound::Query &query);
    /// If the headings are not fixed, withHeadings() completes the plan when it runs.
    SelectPlan transform(const bound::Transform &transform);
    ActionPlan insert(const bound::Insert &insert);
    ActionPlan update(const bound::Update &update);
    ActionPlan remove(const bound::Delete &statement);
    QString expression(const bound::Expr &expr);
    QString condition(const bound::Expr &expr);

    /// For a result that is displayed: a failed calculated cell becomes a failure value and does not end the statement.
    void keepFailures() { m_keepsFailures = true; }
    /// SQL that is generated after this call reports errors with the place of the failed expression in the user's text.
    /// It runs slower.
    void tellPlaces() { m_tellsPlaces = true; }
    /// A query that reads and calculates the same as the statement and changes nothing.
    QString reading(const bound::Query &query);
    QString reading(const bound::Insert &insert);
    QString reading(const bound::Update &update);
    QString reading(const bound::Delete &statement);

    /// For CHECK clauses: columns are not qualified, and a function of this engine makes isPure() false.
    void setStandalone(bool standalone) { m_standalone = standalone; }
    bool isPure() const { return m_pure; }

private:
    /// A piece of SQL with the rank of its outermost operator. Only necessary parentheses are written, because the
    /// stack of SQLite's parser is small (100 levels).
    struct Piece
    {
        QString text;
        int rank;
    };
    /// Placeholder for the value of a heading that is not known yet.
    static constexpr QChar kHeadingMark = QChar(1);
    /// A select by rank, split where its two lists of columns end.
    struct Ranked
    {
        QString names;
        QString cells; ///< the text between the two lists
        QString rest;
        QString whole() const { return names + cells + rest; }
    };
    /// The columns that identify and order the rows of a TOP: row keys first (_t0 ...), then the values of ORDER BY
    /// (_o0 ...).
    struct FirstRows
    {
        QStringList names;
        QStringList values;
        qsizetype keys = 0; ///< number of names that are row keys
        QStringList order;  ///< terms of ORDER BY, by name
        QString list() const;
    };
    enum class Shape { Plain, Nested, Keys, Subquery, Exists };
    /// Parts of a select's text that can be used again.
    struct Written
    {
        const bound::Select *select = nullptr;
        QString text = {};
        qsizetype listEnd = 0; ///< where FROM begins
        QStringView rest() const { return QStringView(text).sliced(listEnd); }
    };

    // Expressions.cpp
    Piece value(const bound::Expr &expr);
    Piece truth(const bound::Expr &expr);
    QString valueAt(const bound::Expr &expr, int rank);
    QString truthAt(const bound::Expr &expr, int rank);
    QString arguments(const std::vector<bound::ExprPtr> &list);
    QString sortable(const bound::Expr &expr);
    Piece comparable(const bound::Expr &left, const bound::Expr &right);
    QString ownFunction(QStringView name);
    Piece call(QStringView name, const QString &arguments);

    Piece valueOf(const bound::Literal &node, const bound::Expr &expr);
    Piece valueOf(const bound::FieldRef &node, const bound::Expr &expr);
    Piece valueOf(const bound::Output &node, const bound::Expr &expr);
    Piece valueOf(const bound::Key &node, const bound::Expr &expr);
    Piece valueOf(const bound::ParameterRef &node, const bound::Expr &expr);
    Piece valueOf(const bound::Negate &node, const bound::Expr &expr);
    Piece valueOf(const bound::Arithmetic &node, const bound::Expr &expr);
    Piece valueOf(const bound::JoinText &node, const bound::Expr &expr);
    Piece valueOf(const bound::AddAny &node, const bound::Expr &expr);
    Piece valueOf(const bound::Concatenate &node, const bound::Expr &expr);
    Piece valueOf(const bound::ScalarQuery &node, const bound::Expr &expr);
    Piece valueOf(const bound::Case &node, const bound::Expr &expr);
    Piece valueOf(const bound::Coalesce &node, const bound::Expr &expr);
    Piece valueOf(const bound::Call &node, const bound::Expr &expr);
    Piece valueOf(const bound::Heading &node, const bound::Expr &expr);
    Piece valueOf(const bound::DomainCall &node, const bound::Expr &expr);
    Piece valueOf(const bound::Convert &node, const bound::Expr &expr);
    Piece arithmetic(const bound::Arithmetic &node);

    // Aggregates.cpp
    Piece valueOf(const bound::Aggregate &node, const bound::Expr &expr);

    // Conditions.cpp
    Piece truthOf(const bound::Not &node);
    Piece truthOf(const bound::Compare &node);
    Piece truthOf(const bound::Like &node);
    Piece truthOf(const bound::Logic &node);
    Piece truthOf(const bound::Chain &node);
    Piece truthOf(const bound::Between &node);
    Piece truthOf(const bound::InList &node);
    Piece truthOf(const bound::InQuery &node);
    Piece truthOf(const bound::IsNull &node);
    Piece truthOf(const bound::Exists &node);
    Piece truthOf(const bound::Quantified &node);
    Piece truthOf(const bound::Same &node);
    Piece standaloneLike(const bound::Like &node);

    // Selects.cpp
    QString queryText(const bound::Query &query, Shape shape);
    QString partsText(const bound::Query &query, Shape shape);
    QString embedded(const bound::Query &query, Shape shape);
    QString withCommon(const std::function<QString()> &text);
    QString selectText(const bound::Select &select, Shape shape);
    QString limitText(const bound::Select &select, const QStringList &cells);
    static QString rankText(const bound::Top &top, const QStringList &order);
    static QString lastRankText(const bound::Top &top);
    Ranked rankedText(const bound::Select &select, const QStringList &cells);
    QStringList cellsOf(const bound::Select &select, Shape shape);
    QString fromToHaving(const bound::Select &select);
    void addFromToHaving(QString &text, const bound::Select &select);
    QString whereText(const bound::Select &select);
    QString allText(const std::vector<bound::ExprPtr> &terms);
    QString fromText(const bound::Select &select);
    QString fromText(const bound::JoinTree &from, bool grouped);
    QString leafText(const bound::Source &source);
    QString orderKeyText(const bound::OrderKey &key);
    QStringList orderOf(const bound::Select &select, Shape shape);
    QStringList tieBreakers(const bound::Select &select) const;
    void markGrouped(const bound::Select &select);
    void markGrouped(const bound::JoinTree &from, bool inside);
    QString keyText(const bound::Source &source) const;
    QString aliasOf(const bound::Source &source) const;

    // Tops.cpp
    bool mayTie(const bound::Select &select) const;
    QString topText(const bound::Select &select, Shape shape);
    QString firstRowsText(const bound::Select &select, const Reading &reading, Shape shape);
    QString firstOfGroupText(const bound::Select &select, const QStringList &cells);
    QString rankedRowsText(const bound::Select &select, Shape shape);
    FirstRows firstRowsOf(const bound::Select &select);
    QString cellsOfRowsText(const bound::Select &select, const FirstRows &first, const QString &rows,
                            const QStringList &order, Shape shape);
    QString rowsByKeyText(const bound::Select &select, const QString &rows, Shape shape);

    // GroupTests.cpp
    void noteTests(const bound::Select &select);
    QString groupTestText(const bound::InQuery &node, const bound::Select &around);
    QString groupsText(const bound::Select &inner, const GroupTest &test);

    // PrunedJoins.cpp
    void notePruned(const bound::Select &select, Shape shape);
    bound::JoinTreePtr withoutPruned(const bound::JoinTreePtr &from) const;
    QString numberTestText(const bound::Compare &node, const bound::Source &pruned);
    QString sameNumbersText(const bound::Compare &node);

    // Hashes.cpp
    void noteHashes(const bound::Select &select);
    void noteHash(const bound::Expr &term, const bound::Select &select, const bound::Source *nullable);
    QString hashedLeafText(const bound::Source &source);
    // Cells.cpp
    QString cellText(const bound::Select &select, size_t index, bool compares);
    QString noting(const std::function<QString()> &text);
    bool keepsFailure(const bound::Select &select, size_t index);
    bool keepsFailure(const bound::Query &query, size_t index);
    bool mayFail(const bound::Expr &expr);
    bool callsOwn(const bound::Expr &expr);
    Piece placed(const bound::Expr &expr, Piece piece);
    void show(const bound::Query &query);
    Piece notedQuery(const bound::ScalarQuery &node);

    // Transforms.cpp
    void planRows(CrosstabPlan &plan, const bound::Select &select);

    // Plans.cpp
    void planColumns(SelectPlan &plan, const bound::Query &query) const;
    void planKeys(SelectPlan &plan, const bound::Select &select);
    static bool isOrderedInPart(const bound::Select &select);
    void planAddedRows(SelectPlan &plan, const bound::Select &select, const bound::Source &addedTo);
    QString rowText(const bound::Select &select, const std::vector<const bound::Source *> &sources, bool anyAbsent);

    // Changes.cpp
    ActionPlan updateJoined(const bound::Update &update);
    ActionPlan::Step refuseAbsent(const bound::AbsentRows &absent, const QString &key) const;
    QString addAbsent(const bound::Update &update, const bound::AbsentRows &absent);
    QString cancellable(const QString &condition) const;
    QString materialised() const;
    ActionPlan::Step materialise(const QString &rows, bool keyed) const;
    ActionPlan::Step dropMaterialised() const;

    const bound::BindContext &m_context;
    const Target &m_target;
    QList<int> m_positions;
    QList<dao::sql::Parameter> m_parameters;
    QSet<int> m_grouped;                 ///< source numbers
    bool m_isIndexed = true;             ///< false: the tables of FROM are read without an index
    std::optional<QStringList> m_common; ///< WITH entries "name AS (query)" of the text that is being generated
    /// Tests in a condition that treats false and unknown alike, with the select of the condition.
    QHash<const bound::InQuery *, const bound::Select *> m_tests;
    /// Tables omitted from FROM, and the terms that refer to them.
    QSet<int> m_pruned;
    QHash<const bound::Compare *, const bound::Source *> m_numberTests;
    /// A value computed once for each row of a table, used as a join key.
    struct Hash
    {
        const bound::Compare *test;
        const bound::Expr *value;
    };
    QHash<int, Hash> m_hashes;                                    ///< by source number of the table
    const bound::Select *m_cancellableSelect = nullptr;           ///< select whose rows call the cancel function
    QHash<std::pair<const bound::Select *, size_t>, bool> m_kept; ///< cached results of keepsFailure()
    bool m_keepsFailures = false;
    bool m_tellsPlaces = false;
    bool m_noting = false;               ///< true while a cell is generated whose functions note failures
    QSet<const bound::Select *> m_shown; ///< selects whose lists can contain failures
    bool m_standalone = false;
    bool m_pure = true;
    bool m_usesParameters = false;
    bool m_inTestOfRows = false; ///< true while aggregates are inside a subquery over other rows
    int m_derived = 0;
    Written m_written;
    mutable QStringList m_aliases; ///< by source number
};

/// The sources of a select that contribute a row to each result row, in order.
std::vector<const bound::Source *> keySources(const bound::Select &select);
/// The reason why the rows of a query cannot be changed. deletable: the source whose row a deletion removes, determined
/// by joins over unique keys; null if rows cannot be deleted.
NotUpdatable whyNotUpdatable(const bound::Query &query, const bound::Source *&deletable);

} // namespace dao::sql::generate
