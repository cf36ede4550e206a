#pragma once
#include <brannock/History.h>
#include <QVariant>
#include <span>
#include <tarnwick/GridSource.h>

namespace results {

/// A column of the history table: how a field of an entry is shown and edited.
struct HistoryColumn
{
    const char16_t *title;
    int width; ///< in characters
    tarnwick::ColumnAlign align;
    QString (*text)(const brannock::HistoryEntry &entry);
    /// A number, date or text for sorting; invalid if the entry does not have the value.
    QVariant (*value)(const brannock::HistoryEntry &entry);
    /// The text that is edited.
    QString (*editText)(const brannock::HistoryEntry &entry);
    /// Stores a typed text. Returns the reason why it was refused, as a sentence; empty if it was stored. Null: the
    /// column shows the keep mark of the entry.
    QString (*set)(brannock::HistoryEntry &entry, const QString &text);
};

/// The columns behind entry number and address of the tube, in order.
std::span<const HistoryColumn> historyColumns();
/// Names of the legs of a tube, as the column shows them.
const QStringList &historyLegs();

} // namespace results
