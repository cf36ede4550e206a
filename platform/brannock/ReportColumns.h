#pragma once
#include "Report.h"

#include <QStringList>
#include <QVariant>
#include <tarnwick/GridSource.h>

namespace brannock {

/// A column of the report editor: how a field of an entry is shown and changed.
struct ReportColumn
{
    const char16_t *field; ///< name of the field in report files; of a location, its landmark
    const char16_t *title;
    int width; ///< in characters
    tarnwick::ColumnAlign align;
    /// A number, date, or text; invalid if the entry does not have the value.
    QVariant (*value)(const ReportEntry &entry);
    QString (*text)(const ReportEntry &entry);
    /// Stores a typed text. Returns the reason why it was refused, as a sentence; empty if it was stored.
    QString (*set)(ReportEntry &entry, const QString &text);
};

/// The columns of the report editor, in order. The first three are the tube's section, row and column.
const QList<ReportColumn> &reportColumns();
/// The column of that field. Terminates the program if there is none.
const ReportColumn &reportColumn(QStringView field);

/// "07H +0.25": landmark and offset; empty without a landmark.
QString locationText(const TubeLoc &location);
/// Reads the form of locationText(); the blank, the sign and the offset may be missing. The distance is unknown then.
TubeLoc parseLocation(const QString &text);

} // namespace brannock
