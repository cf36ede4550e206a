#pragma once
#include <results/history/HistoryList.h>
#include <tarnwick/GridSource.h>

namespace results {

/// The entries of a history as rows of a table: all of them, or those that are kept.
class HistoryGrid : public tarnwick::GridSource
{
public:
    HistoryGrid(HistoryList &list, const ellery::SteamGen &steamGen, tarnwick::UserPrompts &prompts);

    /// Called after the user has changed an entry.
    std::function<void()> changed;
    void setKeptOnly(bool keptOnly) { m_keptOnly = keptOnly; }
    bool isKeptOnly() const { return m_keptOnly; }
    /// Call after other changes of the entries, the order, or what is kept; before the table is told.
    void refresh();
    int placeOf(int row) const { return m_keptOnly ? int(m_places[size_t(row)]) : row; }
    /// The row of a place, or of the next one that is shown.
    int rowOf(int place) const;
    /// Number of the columns of the address; they come first.
    int addressColumns() const { return m_numbers; }

    int rowCount() const override { return m_keptOnly ? int(m_places.size()) : m_list.count(); }
    int columnCount() const override;
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    QString editText(int row, int column) const override;
    tarnwick::RowColours colours(int row) const override;
    QString tip(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

private:
    const struct HistoryColumn &columnAt(int column) const;
    ellery::Axis axisAt(int column) const;
    int number(int row, int column) const;

    HistoryList &m_list;
    const ellery::SteamGen &m_steamGen;
    tarnwick::UserPrompts &m_prompts;
    int m_numbers; ///< columns of the tube's address
    bool m_keptOnly = false;
    std::vector<quint32> m_places; ///< of the kept entries, if only these are shown
};

/// The outages of the filter: which of them are kept.
class OutageGrid : public tarnwick::GridSource
{
public:
    explicit OutageGrid(HistoryList &list)
        : m_list(list)
    {
    }
    std::function<void()> changed;

    int rowCount() const override { return int(m_list.choices().outages.size()); }
    int columnCount() const override { return 2; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

private:
    HistoryList &m_list;
};

/// The codes of the filter: which of them are kept, and from which thresholds on.
class DefectGrid : public tarnwick::GridSource
{
public:
    DefectGrid(HistoryList &list, tarnwick::UserPrompts &prompts)
        : m_list(list)
        , m_prompts(prompts)
    {
    }
    std::function<void()> changed;

    enum Column { Code, Count, Volts, Percent, Keep };
    int rowCount() const override { return int(m_list.choices().defects.size()); }
    int columnCount() const override { return Keep + 1; }
    tarnwick::GridColumn column(int column) const override;
    QString text(int row, int column) const override;
    QVariant value(int row, int column) const override;
    QString editText(int row, int column) const override;
    QString whyNotEditable(int row, int column) const override;
    bool setText(int row, int column, const QString &text) override;

private:
    HistoryList &m_list;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace results
