#pragma once
#include <brannock/Project.h>
#include <gmock/gmock.h>
#include <plans/MapLegend.h>
#include <plans/QuerySource.h>
#include <support/Printers.h>

#include <QCoreApplication>

namespace plans {

/// A result that was recorded: columns, cells, and the colours that a fill gave its records.
class RecordedResult : public QueryRecords
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
    dao::Value value(int row, int column) override { return dao::Value::fromText(m_rows[row].value(column)); }
    void setColours(int row, quint32 foreground, quint32 background) override
    {
        colours.append({row, foreground, background});
    }

    struct Coloured
    {
        int row;
        quint32 foreground;
        quint32 background;
        bool operator==(const Coloured &) const = default;
    };
    QList<Coloured> colours;

private:
    QStringList m_columns;
    QList<QStringList> m_rows;
};

/// Answers queries by name from recorded results.
class RecordedQueries : public QuerySource
{
public:
    bool ready = true;
    QHash<QString, RecordedResult *> results; ///< a name without one fails
    QHash<QString, FillMark> marks;
    QList<bool> quietCalls;

    bool isReady() const override { return ready; }
    std::unique_ptr<QueryRecords> run(const QString &name, const QString &) override
    {
        const auto found = results.constFind(name);
        return found == results.constEnd() ? nullptr : std::make_unique<RecordedResult>(**found);
    }
    void setQuiet(bool quiet) override { quietCalls.append(quiet); }
    std::optional<FillMark> rememberedMark(const QString &name) const override
    {
        const auto found = marks.constFind(name.toLower());
        return found == marks.constEnd() || found->symbol == 0 ? std::nullopt : std::optional(*found);
    }
    void rememberMark(const QString &name, const FillMark &mark) override { marks.insert(name.toLower(), mark); }
};

/// A main window without a window: a component of a few tubes, everything said recorded.
class TestHost : public MapHost
{
public:
    brannock::Project record;
    tarnwick::RecordingPrompts said;
    RecordedQueries source;
    MapLegend entries{record.steamGen};
    QStringList checkpoints;
    int busy = 0;

    /// Rows 1 to rows, columns 1 to cols, pitch 1, in each of the sections from 0.
    explicit TestHost(int rows = 4, int cols = 5, int sections = 1)
    {
        QList<ellery::Tube> tubes;
        for (int sec = 0; sec < sections; ++sec) {
            for (int row = 1; row <= rows; ++row) {
                for (int col = 1; col <= cols; ++col)
                    tubes.append({{qint16(sec), qint16(row), qint16(col)}, float(col + sec * 100), float(row), false});
            }
        }
        record.steamGen.setTubes(tubes);
        entries.setSteamGen(record.steamGen);
    }

    brannock::Project &project() override { return record; }
    const ellery::SteamGen &steamGen() override { return record.steamGen; }
    ellery::TubeStates &tubes() override { return entries.tubes(); }
    MapLegend &legend() override { return entries; }
    db::DatabaseSession &session() override { qFatal("no database in this test"); }
    tarnwick::UserPrompts &prompts() override { return said; }
    QuerySource &queries() override { return source; }
    void undoCheckpoint(const QString &label) override { checkpoints.append(label); }
    void redrawMap() override {}
    void refreshLegend() override {}
    tarnwick::JMacro systemMacros() override { return {}; }
    tarnwick::JMacro userMacros() override { return {}; }
    void setBusy(bool on) override { busy += on ? 1 : -1; }

    /// The map's symbols in tube order, "." for an open tube.
    QString picture() const
    {
        QString text;
        for (int i = 0; i < record.steamGen.numTube(); ++i)
            text += entries.tubes().isOpen(i) ? u'.' : QChar(entries.tubes().symbol(i));
        return text;
    }
    int tube(int row, int col, int sec = 0) const { return record.steamGen.findTube(row, col, sec); }
};

/// A fill whose tubes are given: what the legend does with entries is the same for every kind.
class FixedFill : public FillKind<FixedFill>
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
    bool compute(MapHost &host) override
    {
        seen.append(host.tubes().symbolCount());
        tubes = parameters.computed;
        return true;
    }
    QString entryLabel() const override { return QStringLiteral("fixed"); }
    QString undoLabel() const override { return QStringLiteral("Fixed Fill"); }

    QList<int> seen; ///< symbols on the map at each computation

protected:
    QString className() const override { return QStringLiteral("FixedFill"); }
};

inline std::unique_ptr<MapFill> fixed(const QList<qint32> &tubes)
{
    return std::make_unique<FixedFill>(tubes);
}

} // namespace plans
