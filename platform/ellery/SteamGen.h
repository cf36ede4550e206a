#pragma once
#include "Landmark.h"
#include "Tube.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace ellery {

/// The kinds of numbers that have labels.
enum class Axis { Row = 0, Col = 1, Sec = 2, Leg = 3 };

/// The steam generator: its tubes, the labels the plant uses for rows, columns, sections and legs, and its landmarks.
/// How tubes are marked on a map is in TubeStates.
class SteamGen
{
public:
    SteamGen() = default;

    // The model. Set by the reader of component files and by the generator of demo projects.
    QString name;            ///< name of the component in warnings ("SGA")
    QString modelName;       ///< name of the design; maps refer to it
    bool triangular = false; ///< pitch: triangular or square
    float pitch = 1;         ///< distance between neighbouring tubes
    QList<LandmarkSet> landmarkSets;
    QList<Mark> stayRods;
    QStringList uncountedTables; ///< files read that do not state their number of rows
    QString axisNames[4] = {QStringLiteral("ROW"), QStringLiteral("COL"), QStringLiteral("SEC"), QStringLiteral("LEG")};
    /// Labels by number; an empty label means that the number does not exist. Without a list the number is its own
    /// label, and legs are called OUTLET, INLET and UBEND.
    QStringList labels[4];

    /// Takes the tubes in their order. Of tubes with the same address the first is found.
    void setTubes(const QList<Tube> &tubes);

    // Tubes.
    int numTube() const { return int(m_tubes.size()); }
    const Tube &operator[](int index) const { return m_tubes[index]; }
    const QList<Tube> &tubes() const { return m_tubes; }
    /// Index of the tube, or -1. Constant time.
    int findTube(const TubeAddress &address) const { return m_index.value(key(address), -1); }
    /// Indices of all tubes, sorted by row, column, section.
    const QList<int> &sortRowCol() const;
    /// True if there is more than one section number, or sections have labels.
    bool hasSections() const { return m_severalSections || !labels[int(Axis::Sec)].isEmpty(); }
    /// Highest section number plus one; at least 1.
    int numSection() const { return m_numSection; }
    int maxNumber(Axis axis) const; ///< highest number used on the axis; -1 if there are no tubes

    // Labels.
    /// The plant's label of a number; empty if the axis has labels but none for this number.
    QString tubeLabel(Axis axis, int number) const;
    /// Labels from number 0 to the highest used; empty text for a number without a label.
    QStringList labelList(Axis axis) const;
    /// Converts a label to its number, ignoring blanks around it and case; without labels a plain number. -1 if it is
    /// not valid.
    int stringToRow(QStringView text) const { return stringToNumber(Axis::Row, text); }
    int stringToCol(QStringView text) const { return stringToNumber(Axis::Col, text); }
    int stringToSec(QStringView text) const { return stringToNumber(Axis::Sec, text); }
    int stringToNumber(Axis axis, QStringView text) const;
    /// Display name of a tube: "ROW 12 COL 47", with the section first if there are sections.
    QString tubeName(const TubeAddress &address) const;
    /// Parses a typed address: two numbers or labels (row, col), or three if there are sections (sec, row, col),
    /// separated by blanks, commas, dashes or slashes, or preceded by the axis names or their first letters ("R12
    /// C47"). Returns the index or -1.
    int parseTube(QStringView text) const;

    // Landmarks.
    const LandmarkSet *getLandmarkSet(int tubeIndex) const;

private:
    static quint64 key(const TubeAddress &address);
    const QStringList &axisLabels(Axis axis) const;
    bool isAxisWord(Axis axis, QStringView word) const;
    int parseInOrder(const QList<QStringView> &words) const;
    int parseNamed(const QList<QStringView> &words) const;

    QList<Tube> m_tubes;
    QHash<quint64, qint32> m_index;
    mutable QList<int> m_rowCol;
    bool m_severalSections = false;
    int m_numSection = 1;
    // Numbers by lower-case label, and the label lists they were built from.
    mutable QHash<QString, int> m_numbers[4];
    mutable QStringList m_numberedLabels[4];
};

} // namespace ellery
