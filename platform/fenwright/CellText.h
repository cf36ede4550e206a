#pragma once
#include <optional>
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <tarnwick/JDateTime.h>

namespace fenwright {

/// Parses a cell as a whole number; blanks around it and a leading plus are allowed. Empty optional if it is not one.
std::optional<qint64> cellInteger(QByteArrayView cell);
/// Parses a cell as a finite number with a decimal point.
std::optional<double> cellNumber(QByteArrayView cell);

/// Parses a cell as a date, with or without a time of day: yyyy-mm-dd or mm/dd/yyyy, then after a blank or T hh:mm or
/// hh:mm:ss. Unlike a typed date it does not depend on the user's locale, so a file has the same meaning for every
/// user.
std::optional<tarnwick::JDateTime> cellTime(QByteArrayView cell);

/// Appends a text in the form of a cell: tab, line end, carriage return and backslash become \t, \n, \r, \\. A leading
/// quote, "#" or "!" is preceded by a backslash, so that it does not begin a quoted cell, a comment or a property.
void appendCell(QByteArray &out, QStringView text);
/// Appends the shortest text that gives the same number when read.
void appendCell(QByteArray &out, double value);
void appendCell(QByteArray &out, float value);

/// The text of a cell. If the cell is in double quotes (spreadsheets quote cells with commas or quotes), they are
/// removed.
QString cellText(QByteArrayView cell);

} // namespace fenwright
