#pragma once
#include <dao/Database.h>
#include <db/ColumnFormat.h>
#include <tarnwick/OptionPrompts.h>

namespace query {

/// Path of the program-wide display formats.
extern const QString DEFAULT_DISPLAY_FORMAT;

/// Display formats of all fields, by table. Names are compared ignoring case, types exactly.
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
    /// Display format of a query's column, found by its source table and field. An expression, or a field that is not
    /// listed, gets the default format of its type. The format's name is the column's name.
    db::ColumnFormat formatOf(const dao::FieldInfo &column) const;
    /// Resets every format that does not fit its type, and widens columns to their titles.
    void revalidate();

    /// Entries of the file last read that were left out because of a fault, each with its table, field and reason. The
    /// other entries of the file are there.
    const QStringList &refused() const { return m_refused; }

    /// Updates the list to the database's current tables (without system and hidden ones) and fields, in order. Known
    /// fields keep their formats, others get the default. Returns true if any field got the default. Throws the
    /// engine's exceptions.
    bool rebuild(const dao::Database &database);

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;

private:
    void serializeTable(tarnwick::JFile &file, Table &table);

    QStringList m_refused;
};

/// Tells which entries of the file last read were refused, if any were.
void showRefused(const FormatList &formats, tarnwick::UserPrompts &prompts);
/// Loads the display formats of the program. A file that cannot be read and entries that were refused are reported.
void loadFormats(FormatList &formats, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts);

} // namespace query
