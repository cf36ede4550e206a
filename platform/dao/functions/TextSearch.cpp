#include "TextSearch.h"

#include <vector>

namespace dao::functions {
namespace {

// Limit of the worst case (text length x part length) for QString::indexOf(), which is faster on ordinary texts.
constexpr qint64 kManySteps = 100 * 1000 * 1000;

bool isLong(const QString &text, const QString &part)
{
    return qint64(text.size()) * part.size() > kManySteps;
}

// Folds the case of a text unless the comparison is case-sensitive.
QString folded(const QString &text, Qt::CaseSensitivity sensitivity)
{
    QString copy = text;
    if (sensitivity == Qt::CaseInsensitive) {
        for (QChar &c : copy)
            c = c.toCaseFolded();
    }
    return copy;
}

// Knuth-Morris-Pratt search: linear in the length of text and part.
qsizetype findLong(const QString &text, const QString &part, qsizetype from)
{
    std::vector<qsizetype> borders(size_t(part.size()) + 1, -1);
    qsizetype border = -1;
    for (qsizetype i = 0; i < part.size(); ++i) {
        while (border >= 0 && part[i] != part[border])
            border = borders[size_t(border)];
        borders[size_t(i) + 1] = ++border;
    }
    qsizetype matched = 0;
    for (qsizetype i = from; i < text.size(); ++i) {
        while (matched >= 0 && text[i] != part[matched])
            matched = borders[size_t(matched)];
        if (++matched == part.size())
            return i + 1 - matched;
    }
    return -1;
}

QString reversed(QString text)
{
    std::reverse(text.begin(), text.end());
    return text;
}

} // namespace

qsizetype findText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity)
{
    if (!isLong(text, part))
        return text.indexOf(part, from, sensitivity);
    return findLong(folded(text, sensitivity), folded(part, sensitivity), from);
}

qsizetype findLastText(const QString &text, const QString &part, qsizetype from, Qt::CaseSensitivity sensitivity)
{
    if (!isLong(text, part))
        return text.lastIndexOf(part, from, sensitivity);
    const qsizetype end = std::min(text.size(), from + part.size());
    const qsizetype found =
        findLong(reversed(folded(text.first(end), sensitivity)), reversed(folded(part, sensitivity)), 0);
    return found < 0 ? -1 : end - found - part.size();
}

} // namespace dao::functions
