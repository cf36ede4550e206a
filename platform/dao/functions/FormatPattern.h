#pragma once
#include "DateInterval.h"

#include <QString>
#include <QStringList>

namespace dao::functions {

/// The kind of a user-defined format, determined by its first placeholder outside quotes.
enum class PatternKind { None, Number, Date, Text };
PatternKind patternKind(QStringView pattern);

/// The sections of a pattern: separated by semicolons outside quotes and escapes.
QStringList patternSections(QStringView pattern);

/// Formats a number with a pattern of up to three sections (positive; negative; zero). 0 and # are digits, "," groups
/// digits or divides by a thousand, "%" multiplies by a hundred, E+ and E- write an exponent; quoted and escaped
/// characters are literals.
QString formatNumber(double number, const QString &pattern);

/// Formats a date. Placeholders: d to dddddd, w, ww, m to mmmm (minutes directly after hours), q, y, yy, yyyy, h, hh,
/// n, nn, s, ss, ttttt, c, AM/PM, am/pm, A/P, a/p, AMPM.
QString formatDate(double date, QStringView pattern, const WeekRule &rule);

/// Formats a text. "@" is a character or a blank, "&" a character or nothing; placeholders are filled from the right,
/// with "!" from the left. "<" and ">" change the case. The second section applies to empty text.
QString formatText(const QString &text, const QString &pattern);

/// The pattern of a named format; empty if the name is unknown. "General Number", "Yes/No" and similar formats have no
/// pattern and are not found here.
QString namedNumberPattern(QStringView name);
QString namedDatePattern(QStringView name);

/// Appends the literal at index (a quoted part or an escaped character) to text and returns the index after it; returns
/// index if there is no literal.
qsizetype takeLiteral(QStringView pattern, qsizetype index, QString &text);

} // namespace dao::functions
