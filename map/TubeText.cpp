#include "TubeText.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace map {

QList<qint32> TubeText::sorted(QList<qint32> tubes) const
{
    const auto key = [this](qint32 tube) {
        const ellery::TubeAddress address = m_steamGen[tube].address;
        return std::tuple(address.sec, address.row, address.col);
    };
    std::stable_sort(tubes.begin(), tubes.end(), [&key](qint32 a, qint32 b) { return key(a) < key(b); });
    return tubes;
}

QStringList TubeText::address(int tube) const
{
    const ellery::TubeAddress address = m_steamGen[tube].address;
    QStringList cells{m_steamGen.tubeLabel(Axis::Row, address.row), m_steamGen.tubeLabel(Axis::Col, address.col)};
    if (m_steamGen.hasSections())
        cells.prepend(m_steamGen.tubeLabel(Axis::Sec, address.sec));
    return cells;
}

QStringList TubeText::titles() const
{
    QStringList cells{m_steamGen.axisNames[int(Axis::Row)], m_steamGen.axisNames[int(Axis::Col)]};
    if (m_steamGen.hasSections())
        cells.prepend(m_steamGen.axisNames[int(Axis::Sec)]);
    return cells;
}

QString TubeText::line(QStringList cells) const
{
    for (QString &cell : cells) {
        if (m_form == Form::Tabs)
            cell = cell.simplified();
        else if (std::any_of(cell.cbegin(), cell.cend(), [](QChar c) { return u",\"\r\n"_s.contains(c); }))
            cell = u'"' + cell.replace(u'"', u"\"\""_s) + u'"';
    }
    return m_form == Form::Tabs ? QString(cells.join(u'\t') + u'\n') : QString(cells.join(u',') + u"\r\n"_s);
}

QString TubeText::ofTubes(const QList<qint32> &tubes) const
{
    QString text = m_form == Form::Csv ? line(titles()) : QString();
    for (const qint32 tube : sorted(tubes))
        text += line(address(tube));
    return text;
}

QString TubeText::ofMap(const Entries &entries) const
{
    // As in painting, the later entry is visible.
    QList<int> shown(m_steamGen.numTube(), -1);
    QList<qint32> tubes;
    for (int i = int(entries.size()) - 1; i >= 0; --i) {
        const plans::MapFill &fill = *entries[size_t(i)];
        if (!fill.shown)
            continue;
        for (const qint32 tube : fill.markedTubes(m_steamGen)) {
            if (std::exchange(shown[tube], shown[tube] < 0 ? i : shown[tube]) < 0)
                tubes.append(tube);
        }
    }
    QString text = m_form == Form::Csv ? line(titles() + QStringList{u"SYMBOL"_s, u"TYPE"_s, u"DESCRIPTION"_s}) : u""_s;
    for (const qint32 tube : sorted(tubes)) {
        const plans::MapFill &fill = *entries[size_t(shown[tube])];
        text += line(address(tube) + QStringList{fill.mark.symbol.text(), fill.typeName(), fill.label.trimmed()});
    }
    return text;
}

QString markedBy(const MapDocument &document, int tube)
{
    const ellery::TubeMark mark = document.tubes().mark(tube);
    if (mark.isOpen())
        return {};
    const ellery::SteamGen &component = document.component();
    const ellery::TubeAddress address = component[tube].address;
    for (int i = document.count() - 1; i >= 0; --i) {
        const plans::MapFill &fill = document.entry(i);
        if (!fill.shown || fill.mark != mark)
            continue;
        const auto marks = [&](qint32 other) {
            const ellery::TubeAddress at = component[other].address;
            return other == tube || (fill.allSections && at.row == address.row && at.col == address.col);
        };
        if (std::any_of(fill.tubes.begin(), fill.tubes.end(), marks))
            return fill.typeName() + u"  "_s + fill.label.trimmed();
    }
    return {};
}

} // namespace map
