#pragma once
#include "FillInput.h"

#include <memory>
#include <tarnwick/JFile.h>

namespace plans {

/// A legend entry: a rule that picks tubes and marks them with its own symbol and colour. Abstract; one class a kind,
/// derived through FillKind.
class MapFill
{
public:
    virtual ~MapFill() = default;

    QString typeKey;   ///< key of the kind, written before the fill in map files
    bool shown = true; ///< hidden entries are not painted
    ellery::TubeMark mark{ellery::Symbol(u'A'), tarnwick::ColourRef(0x0000FF)};
    QString label;            ///< the entry's description in the legend
    QList<qint32> tubes;      ///< indices into the steam generator's tubes, in the order the fill produced them
    qint32 fillCount = 0;     ///< tubes (records) of the last computation: TUBES in the legend
    bool allSections = false; ///< painting marks the same row and column in every section

    /// Entry version written. Older ones lack the flag of all sections, the oldest the fill count too.
    static constexpr int kVersion = 4;
    /// The common fields; each kind calls this first and then handles its own.
    virtual void serialize(tarnwick::JFile &file, int version);
    /// A deep copy of the same kind.
    virtual std::unique_ptr<MapFill> clone() const = 0;
    /// Whether a user could not tell the two apart. The other must be of the same kind.
    virtual bool isSameAs(const MapFill &other) const = 0;
    /// The kind's parameters from a map file of version 2 or lower. The base refuses by throwing JFileError.
    virtual void readOldFormat(tarnwick::JFile &file);
    /// Picks the tubes by the parameters. Changes nothing; see take(). A fill whose input lacks what it needs picks the
    /// tubes that it has.
    virtual FillResult pick(const FillInput &input) const = 0;
    /// Takes over picked tubes, with the parameters that came of picking them.
    virtual void take(const FillResult &result);

    /// What computing takes beside the component and the symbols on it.
    enum class Need { Nothing, Selection, Database };
    virtual Need need() const { return Need::Nothing; }

    /// The kind as its tool button calls it.
    QString typeName() const;
    /// What the legend calls an entry with these parameters.
    virtual QString entryLabel() const = 0;
    /// What else of the entry a user may want to know, for its tip; empty for nothing.
    virtual QString detail() const { return {}; }
    /// What Undo calls the making of such an entry.
    virtual QString undoLabel() const = 0;
    /// The query whose symbol and colour the entry's are remembered as; empty when they are not remembered.
    virtual QString queryName() const { return {}; }

    /// Gives every open tube of the entry its mark; returns how many. Does nothing when hidden.
    int paint(const ellery::SteamGen &steamGen, ellery::TubeStates &states) const;
    /// The tubes that painting looks at, each once: those of every section where sections are ignored.
    QList<qint32> markedTubes(const ellery::SteamGen &steamGen) const;
    /// Removes tube indices outside the steam generator; returns how many.
    int dropInvalidTubes(int tubeCount);

protected:
    MapFill() = default;
    MapFill(const MapFill &) = default;
    MapFill &operator=(const MapFill &) = default;
    virtual QString className() const = 0;
    bool hasSameFields(const MapFill &other) const;

private:
    template <typename Function>
    void forEachMarked(const ellery::SteamGen &steamGen, Function function) const;
};

/// What every kind of fill has in common: copying, and comparing its Parameters (a struct with ==).
template <typename Kind>
class FillKind : public MapFill
{
public:
    std::unique_ptr<MapFill> clone() const override { return std::make_unique<Kind>(self()); }
    bool isSameAs(const MapFill &other) const override
    {
        return hasSameFields(other) && self().parameters == static_cast<const Kind &>(other).parameters;
    }

private:
    const Kind &self() const { return static_cast<const Kind &>(*this); }
};

/// A kind of fill: its key in files, the label of its tool button, and how to make one.
class MapFillType
{
public:
    virtual ~MapFillType() = default;
    MapFillType(const MapFillType &) = delete;
    MapFillType &operator=(const MapFillType &) = delete;
    virtual std::unique_ptr<MapFill> create() const = 0;

    const QString key;
    const QString name;

    /// In the order of the tool buttons.
    static const QList<const MapFillType *> &all();
    /// Null for a key that no kind has.
    static const MapFillType *find(QStringView key);

protected:
    MapFillType(const QString &typeKey, const QString &typeName)
        : key(typeKey)
        , name(typeName)
    {
    }
};

} // namespace plans
