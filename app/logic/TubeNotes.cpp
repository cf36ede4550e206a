#include "TubeNotes.h"

#include <results/repairs/TubeRepairs.h>

namespace app {

namespace {

constexpr int kMostRepairs = 3;
constexpr int kMostIndications = 4;

} // namespace

void TubeNotes::refresh()
{
    if (!m_session.hasProject())
        return;
    try {
        m_options.loadIfChanged(m_session.roots());
    } catch (const tarnwick::Error &) {
        // The history dialog tells it; the default file is as good for the tip.
    }
    const QString file = m_session.project().pathOf(m_options.historyFile);
    try {
        if (m_history.refresh(file))
            m_failure.clear();
    } catch (const tarnwick::Error &error) {
        m_failure = error.text();
    }
}

QStringList TubeNotes::repairs(int tube) const
{
    constexpr int kMostShown = 8;
    return results::repairLines(m_session.database(), m_session.project().steamGen[tube].address, kMostShown);
}

QList<brannock::TubeIndication> TubeNotes::indications(int tube) const
{
    return m_history.indications(m_session.project().steamGen[tube].address);
}

QStringList TubeNotes::lines(int tube) const
{
    const ellery::TubeAddress address = m_session.project().steamGen[tube].address;
    QStringList lines = results::repairLines(m_session.database(), address, kMostRepairs);
    lines += m_history.latestLines(address, kMostIndications);
    if (!m_failure.isEmpty())
        lines.append(m_failure);
    return lines;
}

} // namespace app
