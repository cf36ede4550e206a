#pragma once
#include "MapView.h"

#include <vector>

namespace brannock {

/// The views a user has looked at, to go back and forth between. Small steps that follow each other closely (a turning
/// wheel, a drag) are one view.
class ViewHistory
{
public:
    static constexpr size_t kMost = 100;

    void clear(const MapView &first)
    {
        m_views.assign(1, first);
        m_at = 0;
    }
    /// The view has changed. joined: it continues the change before, whose view it replaces.
    void add(const MapView &view, bool joined)
    {
        if (m_views.empty() || m_views[m_at] == view)
            return;
        m_views.resize(m_at + 1);
        if (joined && m_at > 0) {
            m_views[m_at] = view;
            return;
        }
        m_views.push_back(view);
        if (m_views.size() > kMost)
            m_views.erase(m_views.begin());
        m_at = m_views.size() - 1;
    }
    /// The present view has become this one without being a step of the user's.
    void replace(const MapView &view) { m_views[m_at] = view; }
    /// The viewport has another size, for all views.
    void setSize(const QSizeF &size)
    {
        for (MapView &view : m_views)
            view.size = size;
    }
    /// Flips are no part of the history; they hold for every view in it.
    void setOrientation(int x, int y)
    {
        for (MapView &view : m_views) {
            view.xOrientation = x;
            view.yOrientation = y;
        }
    }
    bool canGoBack() const { return m_at > 0; }
    bool canGoForward() const { return m_at + 1 < m_views.size(); }
    const MapView &back() { return m_views[--m_at]; }
    const MapView &forward() { return m_views[++m_at]; }

private:
    std::vector<MapView> m_views;
    size_t m_at = 0;
};

} // namespace brannock
