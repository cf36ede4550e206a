#pragma once
#include <brannock/paint/MapView.h>
#include <vector>

namespace brannock {

/// The views a user has looked at, to go back and forth between. Small steps that follow each other closely (a turning
/// wheel, a drag) are one view.
class ViewHistory
{
public:
    static constexpr size_t kMost = 100;

    struct Step
    {
        MapView view;
        bool isFitted = false; ///< shows the whole map, whatever size and flips are by now
    };

    void clear(const MapView &fitted)
    {
        m_steps.assign(1, {fitted, true});
        m_at = 0;
    }
    /// The view has changed. joined: it continues the change before, whose view it replaces.
    void add(const Step &step, bool joined)
    {
        if (m_steps.empty() || m_steps[m_at].view == step.view)
            return;
        m_steps.resize(m_at + 1);
        if (joined && m_at > 0) {
            m_steps[m_at] = step;
            return;
        }
        m_steps.push_back(step);
        if (m_steps.size() > kMost)
            m_steps.erase(m_steps.begin());
        m_at = m_steps.size() - 1;
    }
    /// The present view has become this one without being a step of the user's.
    void replace(const MapView &view) { m_steps[m_at].view = view; }
    /// The viewport has another size, for all views.
    void setSize(const QSizeF &size)
    {
        for (Step &step : m_steps)
            step.view.size = size;
    }
    /// Flips are no part of the history; they hold for every view in it.
    void setOrientation(int x, int y)
    {
        for (Step &step : m_steps) {
            step.view.xOrientation = x;
            step.view.yOrientation = y;
        }
    }
    bool canGoBack() const { return m_at > 0; }
    bool canGoForward() const { return m_at + 1 < m_steps.size(); }
    const Step &back() { return m_steps[--m_at]; }
    const Step &forward() { return m_steps[++m_at]; }

private:
    std::vector<Step> m_steps;
    size_t m_at = 0;
};

} // namespace brannock
