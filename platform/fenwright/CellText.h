#pragma once
#include <optional>
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <tarnwick/JDateTime.h>

namespace fenwright {

/// A cell's bytes as a whole number: blanks around it and a leading plus allowed. Empty optional when it is none.
std::optional<qint64> cellInteger(QByteArrayView cell);
/// A cell's bytes as a finite number with a decimal point.
std::optional<double> cellNumber(QByteArrayView cell);

/// A cell's bytes as a date, with or without a time of day: yyyy-mm-dd or mm/dd/yyyy, then after a blank or T hh:mm or
/// hh:mm:ss. Unlike a typed date it does not depend on the user's locale, so that a file means the same on every desk.
std::optional<tarnwick::JDateTime> cellTime(QByteArrayView cell);

/// A text as it stands in a cell: tab, line end, carriage return and backslash as \t, \n, \r, \\; a leading quote, "#"
/// or
/// "!" after a backslash, so that it is not taken for a quoted cell, a comment or a property.
void appendCell(QByteArray &out, QStringView text);
/// Shortest text that gives the same number back.
void appendCell(QByteArray &out, double value);
void appendCell(QByteArray &out, float value);

/// The text of a cell. A cell in double quotes, as spreadsheets write cells with commas or quotes, loses them.
QString cellText(QByteArrayView cell);

} // namespace fenwright
