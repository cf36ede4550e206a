#pragma once
#include <dao/values/DataType.h>
#include <QString>
#include <tarnwick/JFile.h>

namespace db {

/// How one column of a result is shown: title, printf-style format, width in characters, alignment.
struct ColumnFormat
{
    enum Alignment : qint32 { Center = 0, Left = 1, Right = 2 };

    QString name; ///< of the field
    QString title;
    dao::DataType type = dao::DataType::Unknown;
    qint32 width = 0;
    /// A JFormatSpec; for dates strftime's rules; for Booleans the words for true and false with a blank between.
    QString format;
    qint32 alignment = Center;

    ColumnFormat() = default;
    /// The default of a field: its name in capitals with blanks for underscores as title, the title's length as width,
    /// the type's own format and alignment.
    ColumnFormat(const QString &fieldName, dao::DataType fieldType);

    /// After an edit of the format or a change of type: the width holds the title, and a format whose conversion does
    /// not suit the type is put back to the type's own.
    void revalidate();

    /// Record version 1: name, title, format, type, width, alignment.
    void serialize(tarnwick::JFile &file);
    bool operator==(const ColumnFormat &) const = default;
};

} // namespace db
