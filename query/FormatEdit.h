#pragma once
#include "QueryContext.h"

#include <db/DatabaseSession.h>
#include <tarnwick/GridSource.h>

namespace query {

/// The display formats while they are edited: a copy of the program's list that holds exactly the tables and fields of
/// the database. Shows the fields of one table as rows.
class FormatEdit : public tarnwick::GridSource
{
public:
    enum Column { Name, Title, Format, Width, Align, Type, ColumnCount };

    /// Both must outlive the object.
    FormatEdit(db::DatabaseSession &session, QueryContext &context);

    /// Takes the copy. Without a database, or if its tables cannot be read (1060), reports it and returns false.
    bool open();

    QStringList tableNames() const;
    int table() const { return m_table; }
    void setTable(int table) { m_table = table; }
    /// True if something was edited, a field had no format yet, or a file was imported.
    bool isModified() const { return m_isModified; }

    /// Makes the formats those of the program and stores them. A failure is reported and false returned; they are then
    /// used until the end of the program.
    bool store();
    /// Takes the formats of a file for the fields that the database has. Failures are reported, and nothing changes.
    bool importFrom(const QString &machinePath);
    bool exportTo(const QString &machinePath);

    int rowCount() const override;
    int columnCount() const override { return ColumnCount; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

private:
    const db::ColumnFormat &format(int row) const { return m_list.tables[m_table].fields[row]; }
    bool rebuild(FormatList &list, bool &isNew);
    bool set(db::ColumnFormat &format, int column, const QString &text);

    db::DatabaseSession &m_session;
    QueryContext &m_context;
    FormatList m_list;
    int m_table = -1;
    bool m_isModified = false;
};

} // namespace query
