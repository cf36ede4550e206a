#pragma once
#include <functional>
#include <optional>
#include <QColor>
#include <tarnwick/Paths.h>
#include <tarnwick/Prompts.h>

class QWidget;

namespace brannock {

/// The system's colour chooser with the user's own colours, which are kept between runs.
class ColourChooser
{
public:
    /// prompts must live as long as this object.
    ColourChooser(const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts)
        : m_roots(roots)
        , m_prompts(prompts)
    {
    }
    virtual ~ColourChooser() = default;
    /// Empty when the user cancels.
    virtual std::optional<QColor> choose(QWidget *parent, const QColor &now);
    /// The same; tried hears of every colour that is looked at on the way.
    std::optional<QColor> chooseTrying(QWidget *parent, const QColor &now,
                                       const std::function<void(const QColor &)> &tried);

private:
    tarnwick::PathRoots m_roots;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace brannock
