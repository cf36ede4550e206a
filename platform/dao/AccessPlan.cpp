#include "AccessPlan.h"

#include "DatabaseImpl.h"
#include "Explain.h"

#include <dao/sql/bind/SearchTerms.h>
#include <dao/store/Statistics.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

using Step = AccessPlan::Step;
using Wish = AccessPlan::Wish;
using Kind = Step::Kind;
using sql::bound::SearchTerms;

/// A table with fewer rows is read as fast as it is searched.
constexpr qint64 kFewRows = 500;
constexpr qsizetype kMostIndexFields = 3;

/// "sec=? AND row>?" or "ANY(sec) AND row=?" as names of fields.
QStringList searchedFields(const QString &text)
{
    static const QRegularExpression field(uR"((?:^|AND )(?:ANY\()?([^=<>)]+?)(?:\)|[=<>]| IS ))"_s);
    QStringList fields;
    for (auto match = field.globalMatch(text); match.hasNext();) {
        const QString name = match.next().captured(1);
        if (!fields.contains(name))
            fields.append(name);
    }
    return fields;
}

class PlanReader
{
public:
    PlanReader(Database &database, AccessPlan &out, const QList<SearchTerms> &terms)
        : m_database(database)
        , m_out(out)
        , m_terms(terms)
    {
    }

    void read(const Explanation::Step &step)
    {
        static const QRegularExpression named(uR"x("((?:[^"]|"")+)" AS _s(\d+))x"_s);
        m_tables.clear();
        for (auto match = named.globalMatch(step.sql); match.hasNext();) {
            const QRegularExpressionMatch each = match.next();
            m_tables.insert(each.captured(2).toInt(), QString(each.captured(1)).replace(u"\"\""_s, u"\""_s));
        }
        m_loops.clear();
        m_correlated = -1;
        m_scanned = -1;
        for (const QString &line : step.plan)
            readLine(line);
    }

private:
    void readLine(const QString &indented)
    {
        const QString line = indented.trimmed();
        const int depth = int(indented.size() - line.size());
        m_loops.removeIf([depth](const auto &loop) { return loop.key() > depth; });
        if (m_correlated >= depth)
            m_correlated = -1;
        if (line.startsWith(u"CORRELATED"))
            m_correlated = depth;
        if (line.startsWith(u"USE TEMP B-TREE FOR "))
            return readTemporary(line);
        static const QRegularExpression loop(
            uR"(^(SCAN|SEARCH) (.+?)(?: USING (.+?))?(?: \((.*)\))?(?: LEFT-JOIN)?$)"_s);
        const QRegularExpressionMatch match = loop.match(line);
        if (!match.hasMatch() && !line.startsWith(u"MULTI-INDEX OR"))
            return;
        const bool isInner = m_loops[depth]++ > 0;
        if (match.hasMatch())
            readLoop(match, isInner || m_correlated >= 0, isInner);
    }

    void readTemporary(const QString &line)
    {
        Step step;
        step.kind = line.contains(u"GROUP BY") ? Kind::Group : line.contains(u"DISTINCT") ? Kind::Distinct : Kind::Sort;
        if (m_out.steps.isEmpty() || m_out.steps.last().kind != step.kind)
            m_out.steps.append(step);
        if (step.kind == Kind::Sort)
            wishForOrder();
    }

    void readLoop(const QRegularExpressionMatch &match, bool isForEach, bool isInner)
    {
        const QString name = match.captured(2);
        const int source = name.startsWith(u"_s") ? name.mid(2).toInt() : -1;
        const QString table = m_tables.value(source, name);
        if (!m_database.hasTable(table))
            return; // an intermediate result
        const QString how = match.captured(3);
        Step step;
        step.table = m_database.table(table).name;
        step.rows = rowsOf(step.table);
        step.isForEach = isForEach;
        step.fields = searchedFields(match.captured(4));
        const QString inner = how.section(u"INDEX "_s, 1);
        step.index = inner.mid(inner.indexOf(u'.') + 1);
        const bool isScan = match.captured(1) == "SCAN"_L1;
        if (how.startsWith(u"AUTOMATIC")) {
            step.kind = Kind::TemporaryIndex;
            step.index.clear();
            if (step.rows >= kFewRows)
                wish({step.table, step.fields.first(qMin(step.fields.size(), kMostIndexFields)), Wish::Use::Find});
        } else if (how.startsWith(u"INTEGER PRIMARY KEY") && !isScan) {
            step.kind = Kind::Record;
            step.index.clear();
            step.expected = 1;
        } else if (!isScan) {
            step.kind = Kind::Search;
            step.expected = expectedRows(step, inner, match.captured(4));
        } else {
            step.kind = how.contains(u"COVERING INDEX") ? Kind::WholeIndex : Kind::Whole;
            wishForSearch(step, source, isInner);
        }
        m_out.steps.append(step);
    }

    qint64 rowsOf(const QString &table)
    {
        auto known = m_rows.find(table);
        if (known == m_rows.end()) {
            m_database.impl().prepareStatement();
            known = m_rows.insert(
                table, m_database.impl().connection.number(u"SELECT count(*) FROM "_s + sql::quotedName(table)));
        }
        return *known;
    }

    /// By the statistics of the index: what share of the rows has the same values in its first fields.
    qint64 expectedRows(const Step &step, const QString &innerIndex, const QString &condition)
    {
        const qsizetype equal = condition.count(u'=') + condition.count(u"ANY("_s);
        if (condition.contains(u'<') || condition.contains(u'>') || equal == 0)
            return -1;
        for (const store::StatisticsLine &line : store::readStatistics(m_database.impl().connection, step.table)) {
            const QStringList numbers = line.numbers.split(u' ');
            if (line.index.compare(innerIndex, Qt::CaseInsensitive) != 0 || numbers.size() <= equal)
                continue;
            const double share = numbers[equal].toDouble() / qMax(1.0, numbers[0].toDouble());
            return qBound(qMin(qint64(1), step.rows), qint64(share * double(step.rows)), step.rows);
        }
        return -1;
    }

    const SearchTerms *termsOf(int source) const
    {
        const auto found = std::ranges::find(m_terms, source, &SearchTerms::source);
        return found == m_terms.end() ? nullptr : &*found;
    }

    void wishForSearch(Step &step, int source, bool isInner)
    {
        m_scanned = step.rows >= kFewRows && step.index.isEmpty() ? source : -1;
        const SearchTerms *terms = termsOf(source);
        if (!terms || step.rows < kFewRows)
            return;
        QStringList fields;
        QString range;
        for (const SearchTerms::Term &term : terms->terms) {
            if (!term.isConstant && !isInner)
                continue;
            if (!term.isEqual)
                range = range.isEmpty() ? term.field : range;
            else if (!fields.contains(term.field) && fields.size() < kMostIndexFields)
                fields.append(term.field);
        }
        if (!range.isEmpty() && !fields.contains(range) && fields.size() < kMostIndexFields)
            fields.append(range);
        step.hasUnused = hasIndexFor(step.table, fields);
        if (!fields.isEmpty() && !step.hasUnused)
            wish({step.table, fields, Wish::Use::Find});
    }

    bool hasIndexFor(const QString &table, const QStringList &fields) const
    {
        return std::ranges::any_of(m_database.table(table).indexes, [&](const IndexInfo &index) {
            return !index.fields.isEmpty() && fields.contains(index.fields[0].name, Qt::CaseInsensitive);
        });
    }

    /// An index in the order of the rows, for a table that is read completely and then sorted.
    void wishForOrder()
    {
        const SearchTerms *terms = termsOf(m_scanned);
        if (!terms || terms->order.isEmpty() || terms->order.size() > kMostIndexFields || !terms->terms.isEmpty())
            return;
        const QString table = m_database.table(m_tables.value(m_scanned)).name;
        if (!hasIndexFor(table, terms->order.first(1)))
            wish({table, terms->order, Wish::Use::Order});
    }

    void wish(const Wish &wish)
    {
        if (!m_out.wishes.contains(wish) && !wish.fields.isEmpty())
            m_out.wishes.append(wish);
    }

    Database &m_database;
    AccessPlan &m_out;
    QList<SearchTerms> m_terms;
    QHash<int, QString> m_tables; ///< by the number of the source
    QHash<int, int> m_loops;      ///< loops so far, by the depth of their lines
    QHash<QString, qint64> m_rows;
    int m_correlated = -1; ///< depth of the line that begins a correlated subquery; -1 outside of one
    int m_scanned = -1;    ///< the source that was read completely last
};

/// Whether the editor's result reads its rows by this text: a dynaset finds the keys first.
bool isRead(const Explanation &explanation, const Explanation::Step &step)
{
    const bool hasKeys = std::ranges::any_of(
        explanation.steps, [](const Explanation::Step &each) { return each.purpose == "keys of a dynaset"_L1; });
    const bool isPart = step.purpose == "row of a dynaset"_L1 || step.purpose == "first page of a dynaset"_L1;
    return !isPart && !(hasKeys && step.purpose == "rows"_L1);
}

} // namespace

AccessPlan accessPlan(Database &database, const QString &sql)
{
    const Explanation explanation = explain(database, sql);
    QList<SearchTerms> terms;
    try {
        terms = sql::bound::searchTermsOf(database.schema(), sql);
    } catch (const DaoException &) {
        // It compiles, so it reads a cross table whose columns depend on data: there is nothing to wish for.
    }
    AccessPlan plan;
    plan.kind = explanation.kind;
    PlanReader reader(database, plan, terms);
    for (const Explanation::Step &step : explanation.steps) {
        if (isRead(explanation, step))
            reader.read(step);
    }
    return plan;
}

} // namespace dao
