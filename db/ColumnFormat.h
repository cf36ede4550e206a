#pragma once
#include <dao/values/DataType.h>
#include <QString>
#include <tarnwick/JFile.h>

namespace db {

/// Display format of one result column: title, printf-style format, width in characters, alignment.
struct ColumnFormat
{
    enum Alignment : qint32 { Center = 0, Left = 1, Right = 2 };

    QString name; ///< field name
    QString title;
    dao::DataType type = dao::DataType::Unknown;
    qint32 width = 0;
    /// A JFormatSpec; for dates strftime's rules; for Booleans the words for true and false with a blank between.
    QString format;
    qint32 alignment = Center;

    ColumnFormat() = default;
    /// Default format of a field. Title: the name in capitals, with blanks for underscores. Width: the length of the
    /// title. Format and alignment: those of the type.
    ColumnFormat(const QString &fieldName, dao::DataType fieldType);

    /// Call after the format or the type was changed. Widens the column to its title, and resets a format whose
    /// conversion does not fit the type to the default of the type.
    void revalidate();

    /// Record version 1: name, title, format, type, width, alignment. Takes every width and alignment; see fault().
    void serialize(tarnwick::JFile &file);
    /// What is wrong with a record that was read, as part of a sentence; empty if nothing is.
    QString fault() const;
    bool operator==(const ColumnFormat &) const = default;
};

} // namespace db
