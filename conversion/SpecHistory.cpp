#include "SpecHistory.h"

namespace conversion {

void SpecHistory::restart(const ReportConvSpec &spec)
{
    m_states = {spec};
    m_position = 0;
}

void SpecHistory::note(const ReportConvSpec &spec)
{
    if (spec.sameSettings(m_states[m_position]))
        return;
    m_states.resize(m_position + 1);
    m_states.append(spec);
    if (m_states.size() > kMaxLevels + 1)
        m_states.removeFirst();
    m_position = m_states.size() - 1;
}

} // namespace conversion
