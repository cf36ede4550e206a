#pragma once
#include "MapDocument.h"

namespace map {

/// Tubes as lines of cells for spreadsheets: labels of section (if the component has sections), row and column, sorted
/// in this order.
class TubeText
{
public:
    enum class Form {
        Tabs, ///< for the clipboard: cells separated by tabs, no titles
        Csv   ///< for files: a line of titles, then cells separated by commas and quoted if necessary
    };
    TubeText(const ellery::SteamGen &steamGen, Form form)
        : m_steamGen(steamGen)
        , m_form(form)
    {
    }

    QString ofTubes(const QList<qint32> &tubes) const;
    /// All tubes that the entry marks, including those hidden by later entries; in every section if the entry ignores
    /// sections.
    QString ofEntry(const plans::MapFill &fill) const { return ofTubes(fill.markedTubes(m_steamGen)); }
    /// All tubes with a symbol: the symbol, and kind and description of the entry that is visible there.
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
