#pragma once
#include <cstddef>
#include <cstdint>

namespace jet::wire {

/// The stream of the child process: frames, each with a kind (1 byte), the length of its payload (4 bytes) and the
/// payload. Numbers are little-endian; a text is a count of UTF-16 units followed by the units; bytes are a count
/// followed by the bytes. Order of frames: File; any number of Table, Relation and Query; SchemaEnd; for each table
/// TableBegin, any number of Rows, TableEnd; End. Remark may occur anywhere after File. Error is the last frame of a
/// failed stream.
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

/// First number of the File frame, so that a child of another build is detected before any of its data is used.
constexpr std::uint32_t kMagic = 0x4A455431;
constexpr std::size_t kFrameHeader = 5;
/// Exit code of a child that could not restrict its own permissions.
constexpr int kNotConfined = 4;
/// Rows are collected into frames of about this size; a single row with long values may exceed it.
constexpr std::size_t kRowsFrame = 64 * 1024;

/// Encoding of one value of a row; the field's type determines which tags are allowed.
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

/// Reason why a part of a file could not be read.
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

/// Errors that end the reading of a file.
enum class ErrorCode : std::uint16_t { CannotOpen = 1, NotJet, NewerFormat, CutShort, CatalogDamaged, OutOfMemory };

/// Remarks on the content. The texts are in the message table of the library.
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
