#include "NearestName.h"

#include <algorithm>
#include <bit>
#include <QHash>
#include <QVarLengthArray>

using namespace Qt::StringLiterals;

namespace dao::sql {
namespace {

constexpr qsizetype kLongestName = 64;

/// The letters that occur in a text, as bits.
quint32 lettersIn(const QString &text)
{
    constexpr int kBits = 32;
    quint32 letters = 0;
    for (const QChar c : text)
        letters |= 1u << (c.unicode() % kBits);
    return letters;
}

/// The number of changed letters between two texts, or a number that is not below the limit.
int distance(const QString &a, const QString &b, int limit)
{
    constexpr qsizetype kUsualCells = 1024;
    const qsizetype width = b.size() + 1;
    QVarLengthArray<int, kUsualCells> cells((a.size() + 1) * width);
    const auto cell = [&](qsizetype i, qsizetype j) -> int & { return cells[i * width + j]; };
    for (qsizetype i = 0; i <= a.size(); ++i)
        cell(i, 0) = int(i);
    for (qsizetype j = 0; j <= b.size(); ++j)
        cell(0, j) = int(j);
    int leastBefore = 0;
    for (qsizetype i = 1; i <= a.size(); ++i) {
        int least = cell(i, 0);
        for (qsizetype j = 1; j <= b.size(); ++j) {
            const int change = a[i - 1] == b[j - 1] ? 0 : 1;
            cell(i, j) = std::min({cell(i - 1, j) + 1, cell(i, j - 1) + 1, cell(i - 1, j - 1) + change});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped)
                cell(i, j) = std::min(cell(i, j), cell(i - 2, j - 2) + 1);
            least = std::min(least, cell(i, j));
        }
        // The following rows depend on these two only.
        if (std::min(least, leastBefore) >= limit)
            return limit;
        leastBefore = least;
    }
    return cell(a.size(), b.size());
}

} // namespace

QString nearestName(QStringView name, const QStringList &candidates)
{
    if (name.size() < 2 || name.size() > kLongestName)
        return {};
    const QString wanted = name.toString().toLower();
    const quint32 letters = lettersIn(wanted);
    int best = std::max(1, int(wanted.size()) / 3) + 1;
    QString nearest;
    for (const QString &candidate : candidates) {
        if (candidate.size() > kLongestName || std::abs(candidate.size() - wanted.size()) >= best)
            continue;
        // Each letter that only one of the texts has is a change. Few candidates are left to be compared in full.
        const QString other = candidate.toLower();
        const quint32 otherLetters = lettersIn(other);
        if (std::max(std::popcount(letters & ~otherLetters), std::popcount(otherLetters & ~letters)) >= best)
            continue;
        const int found = distance(wanted, other, best);
        if (found > 0 && found < best) {
            best = found;
            nearest = candidate;
        }
    }
    return nearest;
}

QString didYouMean(QStringView name, const QStringList &candidates)
{
    const QString nearest = nearestName(name, candidates);
    return nearest.isEmpty() ? QString() : u"Did you mean '%1'?"_s.arg(nearest);
}

QString didYouMeanFunction(const QString &name, const QStringList &functions)
{
    static const QHash<QString, QString> elsewhere = {
        {u"char"_s, u"Chr"_s},          {u"charindex"_s, u"InStr"_s}, {u"coalesce"_s, u"Nz"_s},
        {u"current_date"_s, u"Date"_s}, {u"getdate"_s, u"Now"_s},     {u"ifnull"_s, u"Nz"_s},
        {u"length"_s, u"Len"_s},        {u"lower"_s, u"LCase"_s},     {u"nvl"_s, u"Nz"_s},
        {u"position"_s, u"InStr"_s},    {u"power"_s, u"^"_s},         {u"sqrt"_s, u"Sqr"_s},
        {u"stddev"_s, u"StDev"_s},      {u"strlen"_s, u"Len"_s},      {u"substr"_s, u"Mid"_s},
        {u"substring"_s, u"Mid"_s},     {u"truncate"_s, u"Fix"_s},    {u"upper"_s, u"UCase"_s},
        {u"variance"_s, u"Var"_s}};
    const QString known = elsewhere.value(name.toLower());
    return known.isEmpty() ? didYouMean(name, functions) : u"Did you mean '%1'?"_s.arg(known);
}

} // namespace dao::sql
