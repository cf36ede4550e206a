#pragma once
#include "MapDocument.h"

namespace map {

/// Tubes as lines of cells for spreadsheets: section (where the component has sections), row and column, each by its
/// label, in that order of sorting.
class TubeText
{
public:
    enum class Form {
        Tabs, ///< for the clipboard: cells apart by tabs, no titles
        Csv   ///< for files: cells apart by commas, quoted where they have to be, after a line of titles
    };
    TubeText(const ellery::SteamGen &steamGen, Form form)
        : m_steamGen(steamGen)
        , m_form(form)
    {
    }

    QString ofTubes(const QList<qint32> &tubes) const;
    /// The tubes that the entry marks, in every section where it ignores sections, hidden by later entries or not.
    QString ofEntry(const plans::MapFill &fill) const { return ofTubes(fill.markedTubes(m_steamGen)); }
    /// Every tube that carries a symbol, with the symbol, and kind and description of the entry that shows there.
    QString ofMap(const Entries &entries) const;

private:
    QList<qint32> sorted(QList<qint32> tubes) const;
    QStringList address(int tube) const;
    QStringList titles() const;
    QString line(QStringList cells) const;

    const ellery::SteamGen &m_steamGen;
    Form m_form;
};

/// Kind and description of the entry whose mark a tube shows; empty for an open tube.
QString markedBy(const MapDocument &document, int tube);

} // namespace map
