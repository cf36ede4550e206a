#pragma once
#include <brannock/paint/MapView.h>
#include <vector>

namespace brannock {

/// History of the views of the map, for going back and forward. Small steps in quick succession (wheel, drag) are
/// merged into one.
class ViewHistory
{
public:
    static constexpr size_t kMost = 100;

    struct Step
    {
        MapView view;
        bool isFitted = false; ///< shows the whole map, independent of size and flips
    };

    void clear(const MapView &fitted)
    {
        m_steps.assign(1, {fitted, true});
        m_at = 0;
    }
    /// Adds a view. joined: it continues the previous change and replaces its view.
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
    /// Changes the current view without adding a step.
    void replace(const MapView &view) { m_steps[m_at].view = view; }
    /// Sets the viewport size in all views.
    void setSize(const QSizeF &size)
    {
        for (Step &step : m_steps)
            step.view.size = size;
    }
    /// Sets the flips in all views; they are not part of the history.
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
