#pragma once
#include <tarnwick/gui/ElidedLabel.h>

namespace app {

/// Message line of the status bar.
class StatusLine : public tarnwick::ElidedLabel
{
public:
    using ElidedLabel::ElidedLabel;

    /// Replaces the text.
    void say(const QString &text);
    /// While on, a text is appended to the one before.
    void setJoins(bool on) { m_joins = on; }
    /// Clears a text that is outdated.
    void forget() { say({}); }
    /// Call at the end of work: clears a text about work in progress ("Execute ...").
    void endWork();

private:
    bool m_joins = false;
};

} // namespace app
