#pragma once
#include "ReportConvSpec.h"

#include <tarnwick/GridSource.h>
#include <tarnwick/Prompts.h>

namespace conversion {

/// A table of the format editor: rows whose order matters.
class SpecTable : public tarnwick::GridSource
{
public:
    /// Called after each change.
    std::function<void()> changed;
    /// Moves rows so that they stand before another one, in their order. Returns the new place of the first; -1 if one
    /// of them is an empty row.
    virtual int moveRows(const QList<int> &rows, int before) = 0;

protected:
    void notify() const
    {
        if (changed)
            changed();
    }
};

/// One list of fields of a spec as a table that is edited. Columns count from 0.
class FieldTable : public SpecTable
{
public:
    enum class List { Report, Filename, Comment };

    /// The references must outlive the table.
    FieldTable(ReportConvSpec &spec, List list, tarnwick::UserPrompts &prompts);

    /// Number of empty rows behind the last field, to type further fields into. Call it again after the format was
    /// replaced.
    void setExtraRows(int rows);

    QList<ConvField> &fields() const;
    const QStringList &typeLabels() const;
    /// Adds a field behind the others; its row.
    int add(const ConvField &field);
    void setColumns(int row, int first, int last);
    void setColour(int row, tarnwick::ColourRef colour);

    int rowCount() const override { return std::max(m_rows, int(fields().size())); }
    int columnCount() const override { return int(m_items.size()); }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;
    QString whyNotInsertable() const override { return {}; }
    bool insertRow(int row) override;
    QString whyNotDeletable(int row) const override;
    bool deleteRow(int row) override;
    int moveRows(const QList<int> &rows, int before) override;

private:
    enum class Item { Type, Part, Keyword, First, Last, Colour };
    bool isField(int row) const { return row < fields().size(); }
    const QStringList &partLabels() const;
    QString refusal(ConvField &field, Item item, const QString &text) const;

    ReportConvSpec &m_spec;
    List m_list;
    tarnwick::UserPrompts &m_prompts;
    QList<Item> m_items;
    int m_rows = 0;
};

/// Pairs of texts of a spec as a table that is edited: operation types, or file types.
class PairTable : public SpecTable
{
public:
    /// titles: of the first and the second column. isEntryFirst: the first column shows TextPair::entry.
    PairTable(QList<TextPair> &pairs, const QStringList &titles, bool isEntryFirst)
        : m_pairs(pairs)
        , m_titles(titles)
        , m_isEntryFirst(isEntryFirst)
    {
    }
    int rowCount() const override { return int(m_pairs.size()); }
    int columnCount() const override { return 2; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QString whyNotEditable(int, int) const override { return {}; }
    bool setText(int row, int column, const QString &text) override;
    QString whyNotInsertable() const override { return {}; }
    bool insertRow(int row) override;
    QString whyNotDeletable(int) const override { return {}; }
    bool deleteRow(int row) override;
    int moveRows(const QList<int> &rows, int before) override;

private:
    QString &place(int row, int column) const;

    QList<TextPair> &m_pairs;
    QStringList m_titles;
    bool m_isEntryFirst;
};

} // namespace conversion
