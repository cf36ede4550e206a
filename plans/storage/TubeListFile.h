#pragma once
#include <ellery/SteamGen.h>
#include <plans/ListFill.h>
#include <tarnwick/JDateTime.h>

namespace plans {

/// A list of tubes with its name and notes: a list file, or a tube set of the database.
using TubeList = ListFill::Parameters;

/// One line of a list file as it was parsed.
struct ListFillLine
{
    int line = 0; ///< from 1
    QStringView text;
    bool isComment = false;
    bool isCut = false; ///< longer than kLongestLine
    qint32 entryNum = 0;
    qint16 row = -1;
    qint16 col = -1;
    qint16 sec = -1;
    int tube = -1; ///< index of the tube; -1: there is none

    /// The line is neither a comment nor names a tube.
    bool isError() const { return !isComment && tube < 0; }
};

/// A list file line by line.
class TubeListFile
{
public:
    /// Longer lines are cut: the rest is not parsed, and neither is a word that the cut divides.
    static constexpr int kLongestLine = 999;

    /// hasEntryNumbers: each line begins with the entry's number. Throws FileError if the file cannot be read.
    static TubeListFile read(const QString &machinePath, const ellery::SteamGen &component, bool hasEntryNumbers);
    TubeListFile(const QByteArray &content, const ellery::SteamGen &component, bool hasEntryNumbers);
    TubeListFile() = default;

    /// True if lines of this file begin with entry numbers: always in a ".lst" file, otherwise as the option says.
    static bool hasEntryNumbers(const QString &path, bool option);

    const QList<ListFillLine> &lines() const { return m_lines; }
    /// The text of the lines that begin with "!", each with a line end.
    const QString &notes() const { return m_notes; }
    int errorCount() const { return m_errors; }
    int cutCount() const { return m_cut; }
    /// The file does not end with a line end.
    bool isLastLineOpen() const { return m_isLastLineOpen; }
    /// The lines that found a tube.
    QList<ListFillTube> tubes() const;
    /// Remarks for the user about long lines and an open last line; empty if there are none.
    QStringList remarks() const;

private:
    void parse(const ellery::SteamGen &component, bool hasEntryNumbers);
    void parseLine(ListFillLine &line, const ellery::SteamGen &component, bool hasEntryNumbers);

    QString m_text; ///< of all lines
    QList<ListFillLine> m_lines;
    QString m_notes;
    qint32 m_nextEntry = 0; ///< number of an entry whose line has none
    int m_errors = 0;
    int m_cut = 0;
    bool m_isLastLineOpen = false;
    bool m_hasUnreadNumbers = false; ///< the heading tells of entry numbers, but the lines were read without
};

/// The list in the form of a list file. name: of the file, as it stands in the text.
QString tubeListText(const TubeList &list, const QString &name, const tarnwick::JDateTime &time,
                     const ellery::SteamGen &component);

/// Label of a number as it is shown and stored. A number without a label is shown as "?12", which no component reads as
/// a label.
QString axisLabel(const ellery::SteamGen &component, ellery::Axis axis, int number);

} // namespace plans
