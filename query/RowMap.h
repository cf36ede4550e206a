#pragma once
#include "QueryResult.h"

#include <QHash>
#include <vector>

namespace query {

/// Maps each row of a result to its position in the record set. Uses no memory while row number and position are equal,
/// that is, as long as rows are only deleted together with their records. An inserted row has a negative id until its
/// record is added; every other id is a position.
class QueryResult::RowMap
{
public:
    /// How a row is marked, and why, for those who do not see the colours.
    struct Mark
    {
        RowColours colours = {};
        QString reason = {};
    };
    using Values = QHash<int, dao::Value>;

    explicit RowMap(qint64 count)
        : m_count(count)
    {
    }

    /// Call while rows are being found, before any change.
    void setCount(qint64 count) { m_count = count; }
    qint64 count() const { return m_parted ? qint64(m_ids.size()) : m_count; }
    qint64 id(qint64 row) const { return m_parted ? m_ids[size_t(row)] : row; }
    static bool isInserted(qint64 id) { return id < 0; }

    /// Removes the row but not its record.
    void remove(qint64 row)
    {
        const qint64 gone = id(row);
        part();
        m_ids.erase(m_ids.begin() + row);
        m_marks.remove(gone);
        m_values.remove(gone);
    }

    /// Removes the row and its record: the positions behind it move up.
    void removeWithRecord(qint64 row)
    {
        const qint64 gone = id(row);
        if (m_parted) {
            m_ids.erase(m_ids.begin() + row);
            for (qint64 &other : m_ids)
                if (other > gone)
                    --other;
        } else {
            --m_count;
        }
        m_marks.remove(gone);
        QHash<qint64, Mark> moved;
        for (auto entry = m_marks.cbegin(); entry != m_marks.cend(); ++entry)
            moved.insert(entry.key() > gone ? entry.key() - 1 : entry.key(), entry.value());
        m_marks.swap(moved);
    }

    void insert(qint64 row)
    {
        part();
        m_ids.insert(m_ids.begin() + row, --m_lastInserted);
    }

    /// Sets the position after the record of an inserted row was added.
    void setPlace(qint64 row, qint64 place)
    {
        const qint64 before = id(row);
        if (m_marks.contains(before))
            m_marks.insert(place, m_marks.take(before));
        m_values.remove(before);
        m_ids[size_t(row)] = place;
    }

    Mark mark(qint64 row) const { return m_marks.value(id(row)); }
    void setMark(qint64 row, const Mark &mark) { m_marks.insert(id(row), mark); }
    /// Values typed so far into an inserted row.
    Values &values(qint64 row) { return m_values[id(row)]; }
    const Values values(qint64 row) const { return m_values.value(id(row)); }
    /// Inserted rows with values.
    QList<qint64> unfinished() const
    {
        QList<qint64> rows;
        for (size_t row = 0; !m_values.isEmpty() && row < m_ids.size(); ++row)
            if (m_values.contains(m_ids[row]))
                rows.append(qint64(row));
        return rows;
    }

private:
    void part()
    {
        if (m_parted)
            return;
        m_parted = true;
        m_ids.resize(size_t(m_count));
        for (qint64 i = 0; i < m_count; ++i)
            m_ids[size_t(i)] = i;
    }

    qint64 m_count;
    bool m_parted = false;
    std::vector<qint64> m_ids;
    qint64 m_lastInserted = 0;
    QHash<qint64, Mark> m_marks;
    QHash<qint64, Values> m_values;
};

} // namespace query
