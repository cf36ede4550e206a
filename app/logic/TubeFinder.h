#pragma once
#include <ellery/SteamGen.h>

namespace app {

/// Completes typed addresses of tubes, and explains why a tube does not exist.
class TubeFinder
{
public:
    explicit TubeFinder(const ellery::SteamGen &steamGen);

    /// Tube with a typed address, also without separators ("R12C47"); -1 for none.
    int find(QStringView text) const;
    /// Sorted addresses that begin with the typed text, at most that many: whole addresses ("ROW 12 COL 47"), or their
    /// beginnings ("ROW 12 COL ") while row or section is being typed.
    QStringList completions(QStringView text, int most) const;
    /// Reason why an address does not exist: "There is no ROW 99, only ROW 1 to 45.", "ROW 12 has COL 3 to 92.".
    QString hint(QStringView text) const;

private:
    /// Inserts a blank before each axis name or its first letter that follows a digit.
    QString withAxesApart(QStringView text) const;
    /// Length of such a word at this position of the text; 0 for none.
    qsizetype axisWordAt(QStringView text, qsizetype at) const;
    QStringList completionsOf(QStringView text, int most) const;
    QString hintOf(const QStringList &typed) const;
    /// "1 to 45", "1, 3 ... 45", "4, 7, 8"
    QString numbersText(qsizetype place, const QList<int> &numbers) const;
    QStringList words(QStringView text) const;
    bool isAxisWord(QStringView word) const;
    /// The part of a word after an axis name or its first letter ("R12"); the word itself if it is empty.
    QString withoutAxis(const QString &word, int place) const;
    int numberOf(const QString &word, int place) const;
    /// Numbers that tubes have on the axis at this position, given the numbers before it.
    QList<int> numbersInUse(const QList<int> &before) const;
    QString name(const QList<int> &numbers) const;
    QString axisName(qsizetype place) const;

    const ellery::SteamGen &m_steamGen;
    QList<ellery::Axis> m_axes; ///< axes of a typed address, in order
};

} // namespace app
