#pragma once
#include <dao/Database.h>
#include <db/ColumnFormat.h>
#include <tarnwick/OptionFile.h>

namespace query {

/// Where the program-wide display formats are kept.
extern const QString DEFAULT_DISPLAY_FORMAT;

/// The display formats of every field, by table. Names are matched without regard to case, types exactly.
class FormatList : public tarnwick::OptionFile
{
public:
    struct Table
    {
        QString name;
        QList<db::ColumnFormat> fields;
        bool operator==(const Table &) const = default;
    };

    FormatList();

    QList<Table> tables;

    const db::ColumnFormat *find(QStringView table, QStringView field, dao::DataType type) const;
    /// The format of a query's column, through its source table and field; the type's default for an expression or a
    /// field that is not listed. Its name is the column's.
    db::ColumnFormat formatOf(const dao::FieldInfo &column) const;
    /// Puts back every format that does not suit its type, and widens columns to their titles.
    void revalidate();

    /// Exactly the database's present tables (no system or hidden ones) and fields in order: known ones keep their
    /// formats, others get the default. True when any got one. Throws the engine's exceptions.
    bool rebuild(const dao::Database &database);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override { tables.clear(); }
};

} // namespace query
