#pragma once
#include <dao/Database.h>
#include <span>
#include <tarnwick/Prompts.h>

/// The schema of a project database, as data, and the builders that create it.
namespace db {

struct FieldSpec
{
    const char16_t *name;
    dao::DataType type;
    int size; ///< characters, Text only; 0 leaves the engine's default in force
    const char16_t *defaultValue;
    const char16_t *validationRule;
    const char16_t *flags; ///< see createField()
};

struct IndexSpec
{
    static constexpr int kMaxFields = 3;

    const char16_t *name;
    int flags;                          ///< bits of IndexFlag
    const char16_t *fields[kMaxFields]; ///< ends at the first null
    /// Rows expected to share the first 1, 2, ... fields in a table of the expected size; all 0: not seeded.
    qint64 rowsPerKey[kMaxFields];

    QStringList fieldNames() const;
};

struct TableSpec
{
    const char16_t *name;
    std::span<const FieldSpec> fields;
    std::span<const IndexSpec> indexes;
    const tarnwick::Message *failure; ///< what is said when the table cannot be created
    qint64 expectedRows;              ///< of a project some outages old; 0: no statistics are seeded
};

struct AliasSpec
{
    const char16_t *table;
    const char16_t *labelField;
};

struct RelationSpec
{
    const char16_t *name;
    const char16_t *table;
    const char16_t *foreignTable;
    const char16_t *field; ///< of both tables
    int attributes;
};

/// The tables in the order of creation, without the alias tables, which follow them.
std::span<const TableSpec> tableSpecs();
/// Throws std::logic_error for a name that is no table of the schema.
const TableSpec &tableSpec(QStringView name);
/// The tables that map the numbers of rows, columns, sections and legs to the plant's labels.
std::span<const AliasSpec> aliasSpecs();
std::span<const RelationSpec> relationSpecs();

/// Builds one table and appends it to the database. A failure is reported under the table's message number, the table
/// is then not there at all, and false is returned. A full or failing disk is not reported here: that exception passes
/// on, since no other table would fare better.
bool createTable(tarnwick::UserPrompts &prompts, dao::Database &database, const TableSpec &spec);
bool createAliasTable(tarnwick::UserPrompts &prompts, dao::Database &database, const AliasSpec &spec);
/// All relations in one guarded block: the first that fails skips the rest.
bool createRelations(tarnwick::UserPrompts &prompts, dao::Database &database);

/// One relation of the schema, by its name. Throws the engine's exception.
void createRelation(dao::Database &database, QStringView name);

/// Builds the whole schema in an empty database: the tables, the alias tables, the relations. A table that fails does
/// not stop the others.
void createSchema(tarnwick::UserPrompts &prompts, dao::Database &database);

/// Gives the planner the sizes and selectivities that project databases have, so that a new file plans its queries well
/// before it holds data.
void seedStatistics(dao::Database &database);
/// The same for one table, as far as it has the indexes of the schema.
void seedStatistics(dao::Database &database, const TableSpec &spec);

} // namespace db
