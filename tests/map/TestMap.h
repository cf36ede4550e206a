#pragma once
#include <brannock/Project.h>
#include <gmock/gmock.h>
#include <map/FillRunner.h>
#include <map/MapDocument.h>
#include <support/Printers.h>

namespace map {

/// A result that was recorded: columns, cells, and the colours that a fill gave its records.
class RecordedResult : public plans::QueryRecords
{
public:
    RecordedResult(const QStringList &columns, const QList<QStringList> &rows)
        : m_columns(columns)
        , m_rows(rows)
    {
    }
    int columnCount() const override { return int(m_columns.size()); }
    QString columnName(int column) const override { return m_columns[column]; }
    int rowCount() const override { return int(m_rows.size()); }
    dao::Value value(int row, int column) const override { return dao::Value::fromText(m_rows[row].value(column)); }
    void setColours(int row, const tarnwick::RowColours &rowColours, const QString &) override
    {
        colours.append({row, rowColours});
    }

    QList<std::pair<int, tarnwick::RowColours>> colours;

private:
    QStringList m_columns;
    QList<QStringList> m_rows;
};

/// Answers queries by name from recorded results.
class RecordedQueries : public plans::QuerySource
{
public:
    bool ready = true;
    QHash<QString, RecordedResult *> results; ///< a name without one fails
    QHash<QString, ellery::TubeMark> marks;
    QList<bool> quietCalls;

    bool isReady() const override { return ready; }
    std::unique_ptr<plans::QueryRecords> run(const QString &name, const QString &) override
    {
        const auto found = results.constFind(name);
        return found == results.constEnd() ? nullptr : std::make_unique<RecordedResult>(**found);
    }
    void setQuiet(bool quiet) override { quietCalls.append(quiet); }
    std::optional<ellery::TubeMark> rememberedMark(const QString &name) const override
    {
        const auto found = marks.constFind(name.toLower());
        return found == marks.constEnd() || found->isOpen() ? std::nullopt : std::optional(*found);
    }
    void rememberMark(const QString &name, const ellery::TubeMark &mark) override
    {
        marks.insert(name.toLower(), mark);
    }
};

/// A map of a component of a few tubes; everything said is recorded.
class TestMap
{
public:
    brannock::Project record;
    tarnwick::RecordingPrompts said;
    RecordedQueries source;
    MapDocument document;
    FillRunner runner{source, said};

    /// Rows 1 to rows, columns 1 to cols, pitch 1, in each of the sections from 0.
    explicit TestMap(int rows = 4, int cols = 5, int sections = 1)
    {
        QList<ellery::Tube> tubes;
        for (int sec = 0; sec < sections; ++sec) {
            for (int row = 1; row <= rows; ++row) {
                for (int col = 1; col <= cols; ++col)
                    tubes.append({{qint16(sec), qint16(row), qint16(col)}, float(col + sec * 100), float(row), false});
            }
        }
        record.steamGen.setTubes(tubes);
        document.setProject(&record);
    }

    const plans::MapFill &entry(int place) const { return document.entry(place); }
    void add(std::unique_ptr<plans::MapFill> fill, const QString &label = QStringLiteral("Fill"))
    {
        document.change(label, [&fill](MapEdit &edit) { edit.addEntry(std::move(fill), true); });
    }
    void move(int from, int to)
    {
        document.change(QStringLiteral("Move"), [from, to](MapEdit &edit) { edit.moveEntry(from, to); });
    }
    void setShown(int place, bool shown)
    {
        document.change(QStringLiteral("Show"), [place, shown](MapEdit &edit) { edit.setShown(place, shown); });
    }
    void remove(int place)
    {
        document.change(QStringLiteral("Remove"), [place](MapEdit &edit) { edit.removeEntry(place); });
    }
    void select(const QList<qint32> &tubes)
    {
        document.change(QStringLiteral("Select"), [&tubes](MapEdit &edit) { edit.setSelection(tubes); });
    }
    /// The map's symbols in tube order, "." for an open tube.
    QString picture() const
    {
        QString text;
        for (int i = 0; i < document.tubes().count(); ++i)
            text += document.tubes().isOpen(i) ? QStringLiteral(".") : document.tubes().symbol(i).text();
        return text;
    }
    int tube(int row, int col) const { return tube(0, row, col); }
    int tube(int sec, int row, int col) const
    {
        return record.steamGen.findTube(ellery::TubeAddress::of(sec, row, col));
    }
};

/// A fill whose tubes are given: what the map does with entries is the same for every kind.
class FixedFill : public plans::FillKind<FixedFill>
{
public:
    struct Parameters
    {
        QList<qint32> computed;
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    explicit FixedFill(const QList<qint32> &computed = {})
    {
        typeKey = QStringLiteral("FIXED");
        parameters.computed = computed;
        tubes = computed;
        fillCount = qint32(computed.size());
    }
    /// The symbols on the map become the count.
    plans::FillResult pick(const plans::FillInput &input) const override
    {
        plans::FillResult result;
        result.tubes = parameters.computed;
        result.fillCount = input.tubes.symbolCount();
        return result;
    }
    QString entryLabel() const override { return QStringLiteral("fixed"); }
    QString undoLabel() const override { return QStringLiteral("Fixed Fill"); }

protected:
    QString className() const override { return QStringLiteral("FixedFill"); }
};

inline std::unique_ptr<plans::MapFill> fixed(const QList<qint32> &tubes)
{
    return std::make_unique<FixedFill>(tubes);
}

} // namespace map
