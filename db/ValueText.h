#pragma once
#include <dao/values/Value.h>
#include <tarnwick/JDateTime.h>
#include <tarnwick/Prompts.h>

namespace db {

/// Formats a value as text. Null gives an empty text. An empty format selects the default of the type ("%d", "%f",
/// "%t", "%U", "%u"). Booleans, currency and every other type give "???".
QString valueToText(const dao::Value &value, const QString &format = {});

/// Parses a typed text as a value for a field of that type. If the text cannot be parsed, the value is not changed
/// (callers pass an Empty one). Boolean: NO, N, F, FALSE, OFF and 0, in any case, are false; everything else is true,
/// including the empty text. A currency or date text that cannot be parsed is reported (1058, 1059).
void textToValue(tarnwick::UserPrompts &prompts, dao::Value &value, dao::DataType type, const QString &text);

/// Parses a date-time. If the text is not one, reports it (1057) and returns null.
tarnwick::JDateTime parseDateTime(tarnwick::UserPrompts &prompts, const QString &text);

/// Formats a currency amount in the user's locale.
QString currencyText(const dao::Value &value);
/// Parses an amount in the user's locale, with or without currency sign, or with a decimal point; brackets mean
/// negative. Returns ten-thousandths; empty optional if it is not an amount or out of range.
std::optional<qint64> parseCurrency(const QString &text);

} // namespace db
