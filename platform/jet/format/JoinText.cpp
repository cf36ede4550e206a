#include "JoinText.h"

#include "Bytes.h"
#include "SqlNames.h"

#include <algorithm>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

// Sources that are already joined, and the text of their join without its last condition, to which terms may be added.
struct Fragment
{
    QStringList names;
    QString head;
    QStringList conditions;

    QString text() const
    {
        if (conditions.isEmpty())
            return head;
        if (conditions.size() == 1)
            return head + u" ON "_s + conditions.first();
        return head + u" ON ("_s + conditions.join(u") AND ("_s) + u')';
    }
    QString asPart() const { return names.size() > 1 ? u'(' + text() + u')' : text(); }
};

QString sourceText(const JoinSource &source)
{
    QString text;
    if (!source.statement.isEmpty()) {
        QString statement = source.statement.trimmed();
        if (statement.endsWith(u';'))
            statement.chop(1);
        text = u'(' + statement + u')';
    } else if (!source.table.isEmpty()) {
        text = sqlName(source.table);
    } else {
        throw Damage(Fault::BadName);
    }
    return source.alias.isEmpty() ? text : text + u" AS "_s + sqlName(source.alias);
}

QString joinKeyword(int kind)
{
    switch (kind) {
    case 1:
        return u" INNER JOIN "_s;
    case 2:
        return u" LEFT JOIN "_s;
    case 3:
        return u" RIGHT JOIN "_s;
    default:
        throw Damage(Fault::BadType);
    }
}

qsizetype fragmentOf(const QList<Fragment> &fragments, const QString &name)
{
    const auto found = std::find_if(fragments.begin(), fragments.end(), [&](const Fragment &fragment) {
        return fragment.names.contains(name, Qt::CaseInsensitive);
    });
    if (found == fragments.end())
        throw Damage(Fault::BadName);
    return found - fragments.begin();
}

bool samePair(const JoinTerm &a, const JoinTerm &b)
{
    const auto same = [](const QString &x, const QString &y) { return x.compare(y, Qt::CaseInsensitive) == 0; };
    return a.kind == b.kind &&
           ((same(a.left, b.left) && same(a.right, b.right)) || (same(a.left, b.right) && same(a.right, b.left)));
}

// If the sources of a term are already joined through others (a ring of joins), the term is added to the outermost
// join.
void join(QList<Fragment> &fragments, const JoinTerm &term, const QStringList &conditions)
{
    const QString keyword = joinKeyword(term.kind);
    const qsizetype left = fragmentOf(fragments, term.left);
    const qsizetype right = fragmentOf(fragments, term.right);
    if (left == right) {
        fragments[left].conditions += conditions;
        return;
    }
    Fragment joined;
    joined.names = fragments.at(left).names + fragments.at(right).names;
    joined.head = fragments.at(left).asPart() + keyword + fragments.at(right).asPart();
    joined.conditions = conditions;
    fragments[left] = joined;
    fragments.removeAt(right);
}

} // namespace

QString joinText(const QList<JoinSource> &sources, const QList<JoinTerm> &terms)
{
    QList<Fragment> fragments;
    for (const JoinSource &source : sources)
        fragments.append({{source.alias.isEmpty() ? source.table : source.alias}, sourceText(source), {}});
    QList<JoinTerm> open = terms;
    while (!open.isEmpty()) {
        const JoinTerm term = open.first();
        QStringList conditions;
        open.removeIf([&](const JoinTerm &other) {
            if (!samePair(term, other))
                return false;
            conditions.append(other.condition);
            return true;
        });
        join(fragments, term, conditions);
    }
    QStringList list;
    for (const Fragment &fragment : fragments)
        list.append(fragment.text());
    return list.join(u", "_s);
}

} // namespace jet::format
