#pragma once
#include "MapFill.h"

#include <query/QueryDocument.h>

namespace plans {

class QueryRecords;

/// The tubes that the records of a query against the project database name.
class QueryFill : public FillKind<QueryFill>
{
public:
    /// Highlight of a record whose tube does not exist.
    static constexpr quint32 kInvalidForeground = 0xFFFFFF;
    static constexpr quint32 kInvalidBackground = 0x0000FF;

    struct Parameters
    {
        query::QueryDocument query; ///< its name is the query file, below "queries"
        QString oldText;            ///< of the oldest map files; kept for their sake
        bool operator==(const Parameters &) const = default;
    };
    Parameters parameters;

    QueryFill();
    void serialize(tarnwick::JFile &file, int version) override;
    void readOldFormat(tarnwick::JFile &file) override;
    void symbolChanged(MapHost &host) override;
    /// Runs the query and maps its result. False without a database, when it failed or when its result cannot be
    /// mapped. The tubes are as they were unless columns are missing.
    bool compute(MapHost &host) override;
    /// The file-name part of the query's name.
    QString entryLabel() const override;
    QString undoLabel() const override;

    /// Takes the tubes that the records name by their columns "row", "col" and, where there are sections, "sec", each
    /// tube once. Missing columns are said (1090, answer No); records of tubes that do not exist are highlighted and
    /// asked about (1091: Ok or Cancel). A value that fails when it is read is said, too (1069, answer No); the tubes
    /// are then as they were. Yes when all went well.
    tarnwick::Answer mapResult(MapHost &host, QueryRecords &records);

protected:
    QString className() const override;

private:
    struct AddressColumns;
    /// Returns how many records name a tube that does not exist. Throws the engine's exceptions; nothing is taken then.
    int takeTubes(MapHost &host, QueryRecords &records, const AddressColumns &columns);
};

} // namespace plans
