#pragma once
#include "QueryDocument.h"

#include <optional>

namespace query {

/// What the SQL editor's commands need of the window that shows the query.
class EditorView
{
public:
    virtual ~EditorView() = default;
    virtual QString sql() const = 0;
    /// Replaces the SQL text as a change that the user can undo.
    virtual void setSql(const QString &sql) = 0;
    /// Reads the SQL text and the section texts with their formats from the controls.
    virtual void collect(QueryDocument &document) const = 0;
    /// Shows them.
    virtual void showDocument(const QueryDocument &document) = 0;
    virtual bool isModified() const = 0;
    virtual void setModified(bool isModified) = 0;
    /// Asks for the name of a stored query. Empty if the user cancels.
    virtual std::optional<QString> askName(const QString &suggestion) = 0;
    virtual void beep() = 0;
    /// The list of stored queries or the present name has changed.
    virtual void queriesChanged() = 0;
};

} // namespace query
