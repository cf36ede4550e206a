#pragma once
#include "FillInput.h"

#include <memory>
#include <tarnwick/JFile.h>

namespace plans {

/// A legend entry: a rule that picks tubes, and the symbol and colour that it marks them with. Abstract; each kind is a
/// class derived through FillKind.
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

    /// Version of an entry as written. Version 3 lacks allSections, version 2 also fillCount.
    static constexpr int kVersion = 4;
    /// The common fields. Each kind calls this first, then serialises its own fields.
    virtual void serialize(tarnwick::JFile &file, int version);
    /// A deep copy of the same kind.
    virtual std::unique_ptr<MapFill> clone() const = 0;
    /// True if both are equal for a user. The other fill must be of the same kind.
    virtual bool isSameAs(const MapFill &other) const = 0;
    /// Reads the kind's parameters from a map file of version 2 or lower. The base class throws JFileError.
    virtual void readOldFormat(tarnwick::JFile &file);
    /// Picks tubes by the parameters. Does not change the fill; see take(). If the input lacks what the fill needs, the
    /// result is the fill's present tubes.
    virtual FillResult pick(const FillInput &input) const = 0;
    /// Sets the tubes and other results of pick().
    virtual void take(const FillResult &result);

    /// Input that pick() needs besides the component and the marks.
    enum class Need { Nothing, Selection, Database };
    virtual Need need() const { return Need::Nothing; }

    /// Name of the kind, as on its tool button.
    QString typeName() const;
    /// Default label of an entry with these parameters.
    virtual QString entryLabel() const = 0;
    /// Further information for the tool tip of the entry; may be empty.
    virtual QString detail() const { return {}; }
    /// Label of the change that adds such an entry.
    virtual QString undoLabel() const = 0;
    /// Query for which symbol and colour of the entry are stored; empty for none.
    virtual QString queryName() const { return {}; }

    /// Marks all open tubes of the entry and returns their number. Does nothing if the entry is hidden.
    int paint(const ellery::SteamGen &steamGen, ellery::TubeStates &states) const;
    /// The tubes that the entry marks, each once; those of every section if sections are ignored.
    QList<qint32> markedTubes(const ellery::SteamGen &steamGen) const;
    /// Removes tube indices outside of the steam generator and returns their number.
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

/// Common functions of all kinds: copying, and comparing of their Parameters (a struct with ==).
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

/// A kind of fill: its key in files, the text of its tool button, and a function that creates such a fill.
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
    /// Returns null for an unknown key.
    static const MapFillType *find(QStringView key);

protected:
    MapFillType(const QString &typeKey, const QString &typeName)
        : key(typeKey)
        , name(typeName)
    {
    }
};

} // namespace plans
