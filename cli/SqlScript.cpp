#include "SqlScript.h"

#include <QRegularExpression>

namespace cli {

namespace {

QChar closingOf(QChar opening)
{
    return opening == u'[' ? QChar(u']') : opening;
}

bool restOfLineIsBlank(QStringView text, qsizetype from)
{
    for (qsizetype i = from; i < text.size() && text[i] != u'\n'; ++i)
        if (!text[i].isSpace())
            return false;
    return true;
}

} // namespace

QList<ScriptStatement> splitScript(const QString &text)
{
    QList<ScriptStatement> statements;
    qsizetype begin = 0;
    QChar closing;
    // These clauses end with a semicolon of their own, which may be at the end of a line.
    static const QRegularExpression clause(QStringLiteral("^(PARAMETERS|PROCEDURE)\\s"),
                                           QRegularExpression::CaseInsensitiveOption);
    const auto add = [&](qsizetype end) {
        const QStringView piece = QStringView(text).mid(begin, end - begin);
        const QStringView trimmed = piece.trimmed();
        const bool declares = clause.match(trimmed.toString()).hasMatch();
        if (declares && trimmed.count(u';') < 2 && end < text.size())
            return;
        if (!trimmed.isEmpty() && trimmed != u";") {
            const qsizetype first = begin + piece.indexOf(trimmed.front());
            statements.append({trimmed.toString(), int(QStringView(text).left(first).count(u'\n')) + 1});
        }
        begin = end;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!closing.isNull()) {
            if (c == closing)
                closing = QChar();
        } else if (c == u'\'' || c == u'"' || c == u'[') {
            closing = closingOf(c);
        } else if (c == u';' && restOfLineIsBlank(text, i + 1)) {
            add(i + 1);
        }
    }
    add(text.size());
    return statements;
}

} // namespace cli
