#pragma once
#include "Landmark.h"
#include "Tube.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace ellery {

/// Which of a tube's numbers a label stands for.
enum class Axis { Row = 0, Col = 1, Sec = 2, Leg = 3 };

/// The steam generator: its tubes, the labels the plant uses for rows, columns, sections and legs, and its landmarks.
/// How tubes are marked on a map is in TubeStates.
class SteamGen
{
public:
    SteamGen() = default;

    // The model. Set by the reader of component files and by the maker of demo projects.
    QString name;            ///< of the component as warnings call it ("SGA")
    QString modelName;       ///< of the design; maps are bound to it
    bool triangular = false; ///< pitch: triangular or square
    float pitch = 1;         ///< distance of neighbouring tubes
    QList<LandmarkSet> landmarkSets;
    QList<Mark> stayRods;
    QStringList uncountedTables; ///< files it was read from that do not state the number of their rows
    QString axisNames[4] = {QStringLiteral("ROW"), QStringLiteral("COL"), QStringLiteral("SEC"), QStringLiteral("LEG")};
    /// Labels by number; an empty label is a number that does not exist. No list: the number itself is the label, and
    /// legs are called OUTLET, INLET and UBEND.
    QStringList labels[4];

    /// Takes the tubes in their order. Of tubes with the same address the first is found.
    void setTubes(const QList<Tube> &tubes);

    // Tubes.
    int numTube() const { return int(m_tubes.size()); }
    const Tube &operator[](int index) const { return m_tubes[index]; }
    const QList<Tube> &tubes() const { return m_tubes; }
    /// Index of the tube, or -1; constant time.
    int findTube(int row, int col, int sec) const;
    int findTube(const TubeAddress &address) const { return findTube(address.row, address.col, address.sec); }
    /// Indices of all tubes in row, then column order (then section).
    const QList<int> &sortRowCol() const;
    /// More than one section number, or section labels of its own.
    bool hasSections() const { return m_severalSections || !labels[int(Axis::Sec)].isEmpty(); }
    /// Highest section number plus one; at least 1.
    int numSection() const { return m_numSection; }
    int maxNumber(Axis axis) const; ///< highest number in use on the axis; -1 without tubes

    // Labels.
    /// The plant's label of a number: empty when the axis has labels and none for it.
    QString tubeLabel(Axis axis, int number) const;
    /// All labels from number 0 to the highest in use; numbers without one give an empty text.
    QStringList labelList(Axis axis) const;
    /// A typed or read label as its number, blanks around it ignored, case too; a plain number where the axis has no
    /// labels. -1 when it is none.
    int stringToRow(QStringView text) const { return stringToNumber(Axis::Row, text); }
    int stringToCol(QStringView text) const { return stringToNumber(Axis::Col, text); }
    int stringToSec(QStringView text) const { return stringToNumber(Axis::Sec, text); }
    int stringToNumber(Axis axis, QStringView text) const;
    /// The tube's name as people write it: "ROW 12 COL 47", with the section first where there are sections.
    QString tubeName(int row, int col, int sec) const;
    /// A typed address: two numbers or labels (row, col), three where there are sections (sec, row, col), apart by
    /// blanks, commas, dashes or slashes, or with the axis names or their first letters before them ("R12 C47"). Index
    /// or -1.
    int parseTube(QStringView text) const;

    // Landmarks.
    const LandmarkSet *getLandmarkSet(int tubeIndex) const;

private:
    static quint64 key(int row, int col, int sec);
    const QStringList &axisLabels(Axis axis) const;
    bool isAxisWord(Axis axis, QStringView word) const;
    int parseInOrder(const QList<QStringView> &words) const;
    int parseNamed(const QList<QStringView> &words) const;

    QList<Tube> m_tubes;
    QHash<quint64, qint32> m_index;
    mutable QList<int> m_rowCol;
    bool m_severalSections = false;
    int m_numSection = 1;
    // Numbers by lower-case label, and the label lists they were made from.
    mutable QHash<QString, int> m_numbers[4];
    mutable QStringList m_numberedLabels[4];
};

} // namespace ellery
