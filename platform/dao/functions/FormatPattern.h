#pragma once
#include "DateInterval.h"

#include <QString>
#include <QStringList>

namespace dao::functions {

/// What a user-made format is for, by its first placeholder outside quotes.
enum class PatternKind { None, Number, Date, Text };
PatternKind patternKind(QStringView pattern);

/// The parts between semicolons that stand outside quotes and escapes.
QStringList patternSections(QStringView pattern);

/// A number in a pattern of up to three sections (positive; negative; zero): 0 and # are digits, "," groups or divides
/// by a thousand, "%" multiplies by hundred, E+ and E- give an exponent, quoted and escaped characters stand for
/// themselves.
QString formatNumber(double number, const QString &pattern);

/// A date in a pattern: d to dddddd, w, ww, m to mmmm (minutes right after hours), q, y, yy, yyyy, h, hh, n, nn, s, ss,
/// ttttt, c, AM/PM, am/pm, A/P, a/p, AMPM.
QString formatDate(double date, QStringView pattern, const WeekRule &rule);

/// A text in a pattern: "@" a character or a blank, "&" a character or nothing, filled from the right unless "!" stands
/// in it;
/// "<" and ">" change case. The second section is for empty text.
QString formatText(const QString &text, const QString &pattern);

/// A named format as its pattern; empty when the name is none. "General Number", "Yes/No" and their like have no
/// pattern and are not found here.
QString namedNumberPattern(QStringView name);
QString namedDatePattern(QStringView name);

/// One literal at that place of a pattern (a quoted stretch or an escaped character) appended to text; returns the
/// index behind it, or the same index when there is none.
qsizetype takeLiteral(QStringView pattern, qsizetype index, QString &text);

} // namespace dao::functions
