#pragma once
#include "DefectList.h"
#include "Report.h"

#include <ellery/SteamGen.h>

namespace brannock {

/// Something in a report entry that an upload would store wrongly, refuse, or ask about.
struct EntryProblem
{
    enum class Kind {
        UnknownTube,
        UnknownLandmark,
        UnknownCode,
        MissingValue,   ///< a measurement that the entry's code requires
        MissingCal,     ///< site, component, operation type, outage or cal number
        MissingAnalyst, ///< or operator
        OutOfRange,     ///< a number that table 'report' does not accept
        TextTooLong     ///< for its field in table 'report'
    };
    Kind kind;
    QString field; ///< name of the field in report files
    QString text;  ///< a sentence

    bool operator==(const EntryProblem &) const = default;
};
/// "unknown tube", "unknown landmark", ...
QString problemName(EntryProblem::Kind kind);

/// Checks report entries against a project's component and its list of codes. The references must outlive the object.
class EntryCheck
{
public:
    EntryCheck(const ellery::SteamGen &steamGen, const DefectList &defects)
        : m_steamGen(steamGen)
        , m_defects(defects)
    {
    }
    /// For entries whose cal, analyst and operator are filled in later if they are missing: that is no problem then.
    void setIsFilledLater() { m_isFilledLater = true; }
    /// In the order of the report's columns. Header and standard entries have none. A component without tubes or
    /// landmarks is not checked against.
    QList<EntryProblem> problems(const ReportEntry &entry) const;
    /// True if problems() would find any; quicker, since no texts are made.
    bool hasProblem(const ReportEntry &entry) const;

private:
    class Findings;
    void check(const ReportEntry &entry, Findings &findings) const;
    void checkCal(const ReportEntry &entry, Findings &findings) const;
    void checkCode(const ReportEntry &entry, Findings &findings) const;
    void checkLocation(const ReportEntry &entry, int tube, const TubeLoc &location, QStringView field,
                       Findings &findings) const;

    const ellery::SteamGen &m_steamGen;
    const DefectList &m_defects;
    bool m_isFilledLater = false;
};

} // namespace brannock
