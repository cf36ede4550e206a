#include "TableRule.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

/// The index of the parenthesis that closes the one at open, skipping texts and bracketed names; -1 if there is none.
qsizetype closingOf(const QString &text, qsizetype open)
{
    int depth = 0;
    QChar until;
    for (qsizetype i = open; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!until.isNull()) {
            if (c == until)
                until = QChar();
        } else if (c == u'"' || c == u'\'') {
            until = c;
        } else if (c == u'[') {
            until = u']';
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')' && --depth == 0) {
            return i;
        }
    }
    return -1;
}

/// Splits a rule that withRule() combined; returns any other rule unchanged.
QStringList rulesOf(const QString &rules)
{
    static const QString kSeparator = u" And "_s;
    QStringList parts;
    qsizetype start = 0;
    while (start < rules.size() && rules[start] == u'(') {
        const qsizetype end = closingOf(rules, start);
        if (end < 0)
            break;
        parts.append(rules.mid(start + 1, end - start - 1));
        start = end + 1;
        if (start == rules.size())
            return parts.size() > 1 ? parts : QStringList{rules};
        if (QStringView(rules).mid(start, kSeparator.size()) != kSeparator)
            break;
        start += kSeparator.size();
    }
    return rules.trimmed().isEmpty() ? QStringList() : QStringList{rules};
}

QString joined(const QStringList &rules)
{
    return rules.size() > 1 ? QString(u'(' + rules.join(u") And ("_s) + u')') : rules.value(0);
}

} // namespace

QString withRule(const QString &rules, const QString &added)
{
    return joined(rulesOf(rules) << added);
}

QString withoutRule(const QString &rules, const QString &removed)
{
    QStringList all = rulesOf(rules);
    all.removeOne(removed);
    return joined(all);
}

} // namespace dao::store
