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
    /// prompts must outlive this object.
    ColourChooser(const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts)
        : m_roots(roots)
        , m_prompts(prompts)
    {
    }
    virtual ~ColourChooser() = default;
    /// Empty if the user cancels.
    virtual std::optional<QColor> choose(QWidget *parent, const QColor &now);
    /// Calls tried with every colour selected while the chooser is open. Empty if the user cancels.
    std::optional<QColor> chooseTrying(QWidget *parent, const QColor &now,
                                       const std::function<void(const QColor &)> &tried);

private:
    tarnwick::PathRoots m_roots;
    tarnwick::UserPrompts &m_prompts;
};

} // namespace brannock
