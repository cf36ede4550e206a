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
    int size; ///< in characters, Text only; 0: the engine's default
    const char16_t *defaultValue;
    const char16_t *validationRule;
    const char16_t *flags; ///< see createField()
};

struct IndexSpec
{
    static constexpr int kMaxFields = 3;

    const char16_t *name;
    int flags;                          ///< bits of IndexFlag
    const char16_t *fields[kMaxFields]; ///< ends at the first null pointer
    /// Expected number of rows that share the first 1, 2, ... fields, in a table of the expected size. All 0: no
    /// statistics are seeded.
    qint64 rowsPerKey[kMaxFields];

    QStringList fieldNames() const;
};

struct TableSpec
{
    const char16_t *name;
    std::span<const FieldSpec> fields;
    std::span<const IndexSpec> indexes;
    const tarnwick::Message *failure; ///< message if the table cannot be created
    qint64 expectedRows;              ///< in a project after some outages; 0: no statistics are seeded
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
    const char16_t *field; ///< same name in both tables
    int attributes;
};

/// The tables in order of creation. The alias tables are created after them.
std::span<const TableSpec> tableSpecs();
/// Throws std::logic_error if the schema has no such table.
const TableSpec &tableSpec(QStringView name);
/// The tables that map the numbers of rows, columns, sections and legs to the plant's labels.
std::span<const AliasSpec> aliasSpecs();
std::span<const RelationSpec> relationSpecs();

/// Creates one table in the database. A failure is reported under the table's message number, leaves no table behind
/// and returns false. A full or failing disk is not reported here: the exception is passed on, since every further
/// table would fail too.
bool createTable(tarnwick::UserPrompts &prompts, dao::Database &database, const TableSpec &spec);
bool createAliasTable(tarnwick::UserPrompts &prompts, dao::Database &database, const AliasSpec &spec);
/// Creates all relations in one guarded block: the first failure skips the rest.
bool createRelations(tarnwick::UserPrompts &prompts, dao::Database &database);

/// Creates one relation of the schema, by name. Throws the engine's exception.
void createRelation(dao::Database &database, QStringView name);

/// Creates the whole schema in an empty database: tables, alias tables, relations. If one table fails, the others are
/// still created.
void createSchema(tarnwick::UserPrompts &prompts, dao::Database &database);

/// Stores typical table sizes and selectivities of project databases in the planner's statistics, so that queries get
/// good plans before the file holds data.
void seedStatistics(dao::Database &database);
/// Seeds one table, as far as it has the indexes of the schema.
void seedStatistics(dao::Database &database, const TableSpec &spec);

} // namespace db
