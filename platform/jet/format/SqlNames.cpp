#include "SqlNames.h"

#include <QSet>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

// Words that must be bracketed as names. A superfluous word only adds brackets; a missing one makes the query invalid.
const QSet<QString> &reservedWords()
{
    static const QSet<QString> words = [] {
        const QString list =
            u"ADD ALL ALTER AND ANY AS ASC AUTOINCREMENT AVG BETWEEN BINARY BIT BOOLEAN BY BYTE CHAR CHARACTER "
            "COLUMN CONSTRAINT COUNT COUNTER CREATE CURRENCY DATABASE DATE DATETIME DELETE DESC DISALLOW "
            "DISTINCT DISTINCTROW DOUBLE DROP EQV EXEC EXECUTE EXISTS FALSE FLOAT FOREIGN FROM GENERAL "
            "GROUP GUID HAVING IGNORE IMP IN INDEX INNER INSERT INT INTEGER INTO IS JOIN KEY LEFT LEVEL "
            "LIKE LOGICAL LONG LONGBINARY LONGTEXT MAX MEMO MIN MOD MONEY NO NOT NULL NUMBER NUMERIC OFF ON "
            "OPTION OR ORDER OUTER OWNERACCESS PARAMETERS PASSWORD PERCENT PIVOT PRIMARY PROCEDURE REAL "
            "REFERENCES RIGHT SELECT SET SHORT SINGLE SMALLINT SOME STDEV STRING SUM TABLE TABLEID TEXT "
            "TIME TIMESTAMP TOP TRANSFORM TRUE UNION UNIQUE UPDATE USER VALUE VALUES VAR WHERE WITH XOR "
            "YES YESNO"_s;
        const QStringList split = list.split(u' ');
        return QSet<QString>(split.begin(), split.end());
    }();
    return words;
}

bool isPlain(QStringView name)
{
    if (name.isEmpty() || !name.front().isLetter())
        return false;
    for (const QChar c : name) {
        if (!c.isLetterOrNumber() && c != u'_')
            return false;
    }
    return !reservedWords().contains(name.toString().toUpper());
}

} // namespace

QString sqlName(const QString &name)
{
    if (isPlain(name) || (name.startsWith(u'[') && name.endsWith(u']')))
        return name;
    return u'[' + name + u']';
}

QString sqlPath(const QString &path)
{
    if (path.contains(u'['))
        return path;
    QStringList parts = path.split(u'.');
    for (QString &part : parts)
        part = sqlName(part);
    return parts.join(u'.');
}

QString sqlText(const QString &text)
{
    QString doubled = text;
    return u'\'' + doubled.replace(u'\'', u"''"_s) + u'\'';
}

} // namespace jet::format
