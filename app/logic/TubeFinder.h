#pragma once
#include <ellery/SteamGen.h>

namespace app {

/// Helps with typing a tube's address: how it may go on, and why there is no such tube.
class TubeFinder
{
public:
    explicit TubeFinder(const ellery::SteamGen &steamGen);

    /// The tube with a typed address, also where nothing separates its parts ("R12C47"); -1 when there is none.
    int find(QStringView text) const;
    /// Addresses that begin as typed, in order, at most that many: whole ones ("ROW 12 COL 47"), or the beginnings that
    /// lead on ("ROW 12 COL ") while rows or sections are still being typed.
    QStringList completions(QStringView text, int most) const;
    /// What is wrong with an address that is none: "There is no ROW 99, only ROW 1 to 45.", "ROW 12 has COL 3 to 92.".
    QString hint(QStringView text) const;

private:
    /// The text with a blank before each axis name, or its first letter, that directly follows a digit.
    QString withAxesApart(QStringView text) const;
    /// How much of the text from this place on is such a word; 0: none.
    qsizetype axisWordAt(QStringView text, qsizetype at) const;
    QStringList completionsOf(QStringView text, int most) const;
    QString hintOf(const QStringList &typed) const;
    /// "1 to 45", "1, 3 ... 45", "4, 7, 8"
    QString numbersText(qsizetype place, const QList<int> &numbers) const;
    QStringList words(QStringView text) const;
    bool isAxisWord(QStringView word) const;
    /// What stands behind an axis name or its first letter ("R12"); the word itself when nothing does.
    QString withoutAxis(const QString &word, int place) const;
    int numberOf(const QString &word, int place) const;
    /// Numbers in use on the axis at this place, of tubes whose numbers before it are these.
    QList<int> numbersInUse(const QList<int> &before) const;
    QString name(const QList<int> &numbers) const;
    QString axisName(qsizetype place) const;

    const ellery::SteamGen &m_steamGen;
    QList<ellery::Axis> m_axes; ///< of an address as it is typed
};

} // namespace app
