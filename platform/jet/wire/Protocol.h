#pragma once
#include <cstddef>
#include <cstdint>

namespace jet::wire {

/// The stream of the child: frames, each a kind (1 byte), the length of its payload (4 bytes) and the payload. Numbers
/// are little-endian, text is a count of UTF-16 units and the units, bytes a count and the bytes. The order of frames:
/// File, then Table, Relation and Query in any number, SchemaEnd; for each table TableBegin, Rows in any number,
/// TableEnd; End. Remark may stand anywhere after File; Error is the last frame of a stream that failed.
enum class Frame : std::uint8_t {
    File = 1,
    Table,
    Relation,
    Query,
    SchemaEnd,
    TableBegin,
    Rows,
    TableEnd,
    Remark,
    Error,
    End
};

/// First number of the File frame: a child of another build is recognised before anything of it is believed.
constexpr std::uint32_t kMagic = 0x4A455431;
constexpr std::size_t kFrameHeader = 5;
/// Exit code of a child that could not take from itself what a reader of foreign files must not have.
constexpr int kNotConfined = 4;
/// Rows are gathered into frames of about this size; one row with long values may exceed it.
constexpr std::size_t kRowsFrame = 64 * 1024;

/// How one value of a row is written; the field's type decides which are allowed for it.
enum class Tag : std::uint8_t {
    Null = 0,
    False,
    True,
    Byte,
    Short,
    Long,
    Currency,
    Float,
    Double,
    Date,
    Text,
    Binary,
    Decimal
};

/// Why a part of a file could not be read.
enum class Fault : std::uint16_t {
    None = 0,
    PageBeyondEnd,
    PageUnreadable,
    WrongPageKind,
    EndlessChain,
    BadOffset,
    BadLength,
    BadCount,
    BadName,
    BadType,
    BadMap,
    BadValue,
    Overlapping
};

/// What ends the reading of a file.
enum class ErrorCode : std::uint16_t { CannotOpen = 1, NotJet, NewerFormat, CutShort, CatalogDamaged, OutOfMemory };

/// What is told beside the content. The texts stand in the table of messages of the library.
enum class RemarkCode : std::uint16_t {
    LinkedTable = 1,
    Forms,
    Reports,
    Macros,
    Modules,
    HiddenQueries,
    DeletedObjects,
    SystemTable,
    UnknownObject,
    TableDamaged,
    RowsDamaged,
    PagesDamaged,
    RowCountDiffers,
    ValueDamaged,
    TextDamaged,
    DecimalRounded,
    IndexesDamaged,
    PropertiesDamaged,
    RelationDamaged,
    QueryDamaged,
    QueriesDamaged,
    PassThroughQuery,
    CatalogIncomplete,
    SystemPagesMissing,
    RowsMissing
};

} // namespace jet::wire
