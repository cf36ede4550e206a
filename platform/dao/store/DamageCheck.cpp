#include "DamageCheck.h"

#include <dao/values/DaoException.h>
#include <dao/values/Errors.h>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

/// A pattern of a message of PRAGMA integrity_check and the text for the user. The first capture is the name or number
/// in the text.
struct Report
{
    const char16_t *pattern;
    const char16_t *text;
    bool isDamage = true;
};

constexpr Report kReports[] = {
    {u"missing from index (.+)$", u"Index '%1' does not fit the rows of its table. Queries can give wrong results."},
    {u"^wrong # of entries in index (.+)$",
     u"Index '%1' does not fit the rows of its table. Queries can give wrong results."},
    {u"^non-unique entry in index (.+)$", u"Index '%1' holds a key twice that must be there once."},
    {u"^(?:NULL|TEXT|NUMERIC|non-\\w+) value in (.+)$", u"Field '%1' holds a value that its type does not allow."},
    {u"^CHECK constraint failed in (.+)$", u"Table '%1' holds values that its rules do not allow.", false},
    {u"^Page (\\d+) is never used", u"Page %1 of the file belongs to nothing."},
    {u"(?i)page (\\d+)", u"Page %1 of the file is damaged."},
};

// Every row missing in an index is one message; with SQLite's default limit of 100 they would hide all later messages.
constexpr int kMaxLines = 1'000'000;

DamageFinding findingOf(const QString &line)
{
    for (const Report &report : kReports) {
        const auto match = QRegularExpression(QString::fromUtf16(report.pattern)).match(line);
        if (match.hasMatch())
            return {QString::fromUtf16(report.text).arg(match.captured(1)), report.isDamage};
    }
    return {u"The structure of the file is damaged."_s};
}

} // namespace

QList<DamageFinding> findDamage(Connection &connection, bool withIndexes)
{
    QList<DamageFinding> findings;
    const auto add = [&findings](const DamageFinding &finding) {
        if (!findings.contains(finding))
            findings.append(finding);
    };
    connection.releaseRead();
    try {
        Statement check(connection,
                        u"PRAGMA %1(%2)"_s.arg(withIndexes ? u"integrity_check"_s : u"quick_check"_s).arg(kMaxLines));
        while (check.step()) {
            for (const QString &line : check.text(0).split(u'\n', Qt::SkipEmptyParts))
                if (line != "ok"_L1 && !line.startsWith(u"***"))
                    add(findingOf(line));
        }
    } catch (const DaoException &exception) {
        // Severe damage ends the check itself with this error.
        if (exception.number() != error::DatabaseDamaged)
            throw;
        add({u"The structure of the file is damaged."_s});
    }
    return findings;
}

} // namespace dao::store
