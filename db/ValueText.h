#pragma once
#include <dao/values/Value.h>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Prompts.h>

namespace db {

/// A value as text. Null is empty; an empty format stands for the kind's own ("%d", "%f", "%t", "%U", "%u"). Booleans,
/// currency and every other kind print as "???".
QString valueToText(const dao::Value &value, const QString &format = {});

/// A typed text as a value for a field of that type. Where the text cannot be read the value stays as it was (callers
/// pass an Empty one). Boolean: NO, N, F, FALSE, OFF and 0 in either case are false, everything else true, the empty
/// text too. A currency or date text that cannot be read is reported (1058, 1059).
void textToValue(tarnwick::UserPrompts &prompts, dao::Value &value, dao::DataType type, const QString &text);

/// A free text as a date-time; null, after a report (1057), when it is none.
tarnwick::JDateTime parseDateTime(tarnwick::UserPrompts &prompts, const QString &text);

/// A currency amount as the user's locale writes it.
QString currencyText(const dao::Value &value);
/// Ten-thousandths of an amount typed in the user's locale, with or without its currency sign, or with a decimal point;
/// brackets around it mean minus. Empty optional when it is none or out of range.
std::optional<qint64> parseCurrency(const QString &text);

} // namespace db
