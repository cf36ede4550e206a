#pragma once

namespace dao {

/// The file format that was requested at creation, kept as a property of the file (see docs/decisions): 32 Jet 3.x, 64
/// Jet 4.0. It does not change how the file is stored.
enum class FileFormat : int { Jet3 = 32, Jet4 = 64 };

enum class OpenMode { Update, ReadOnly };

/// AsNeeded takes no lock until something is read or changed. If another program writes between the first read and the
/// first change, the change fails. Use Writing when the transaction is certain to write: it waits for other writers at
/// its start (see tarnwick::Progress) and then holds the write lock.
enum class BeginMode { AsNeeded, Writing };

enum class RecordsetType {
    Dynaset,
    Snapshot,   ///< forward only: moveNext, no bookmarks; the fastest way to read many rows
    TableAppend ///< addNew/update on one table, no rows to read
};

} // namespace dao
