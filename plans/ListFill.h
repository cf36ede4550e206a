#pragma once
#include "MapFill.h"

#include <tarnwick/OptionFile.h>

namespace plans {

/// One entry of a tube list.
struct ListFillTube
{
    qint32 entryNum = 0;
    qint16 row = 0;
    qint16 col = 0;
    qint16 sec = 0;
    ellery::TubeAddress address() const { return {sec, row, col}; }
    ellery::TubeMark mark; ///< not used by the fill: kept as it was read

    void serialize(tarnwick::JFile &file);
    bool operator==(const ListFillTube &) const = default;
};

/// Takes the tubes of a list: a text file of tube addresses, or a tube set of the project database.
class ListFill : public FillKind<ListFill>
{
public:
    struct Parameters
    {
        QString name; ///< the file's path relative to "tube_lists", or the tube set's name
        QList<ListFillTube> entries;
        QString description;
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    ListFill();
    void serialize(tarnwick::JFile &file, int version) override;
    /// Each tube once, in the order of the list; the fill count is the number of list entries. A remark reports tubes
    /// that do not exist.
    FillResult pick(const FillInput &input) const override;
    QString entryLabel() const override;
    QString undoLabel() const override;

protected:
    QString className() const override;
};

/// Values of the dialog, stored for the next time.
class ListFillOptions : public tarnwick::OptionFile
{
public:
    ListFillOptions();
    qint32 fileFilter = 0; ///< index of the file-type filter last used
    bool fileHasEntryNumbers = false;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace plans
