#include "ColourChooser.h"

#include <brannock/CustomColours.h>
#include <brannock/paint/MapColours.h>
#include <QColorDialog>
#include <tarnwick/OptionPrompts.h>

using namespace Qt::StringLiterals;

namespace brannock {

std::optional<QColor> ColourChooser::choose(QWidget *parent, const QColor &now)
{
    return chooseTrying(parent, now, [](const QColor &) {});
}

std::optional<QColor> ColourChooser::chooseTrying(QWidget *parent, const QColor &now,
                                                  const std::function<void(const QColor &)> &tried)
{
    CustomColours custom;
    tarnwick::loadOptions(custom, m_roots, m_prompts);
    const int places = std::min<int>(QColorDialog::customCount(), CustomColours::kCount);
    for (int i = 0; i < places; ++i)
        QColorDialog::setCustomColor(i, fromColourRef(custom.colours[i]));
    const QList<tarnwick::ColourRef> before = custom.colours;
    QColorDialog dialog(now, parent);
    dialog.setObjectName(u"colourDialog"_s);
    dialog.setWindowTitle(u"Color"_s);
    QObject::connect(&dialog, &QColorDialog::currentColorChanged, &dialog, tried);
    const QColor chosen = dialog.exec() == QDialog::Accepted ? dialog.selectedColor() : QColor();
    for (int i = 0; i < places; ++i)
        custom.colours[i] = toColourRef(QColorDialog::customColor(i));
    if (custom.colours != before)
        tarnwick::storeOptions(custom, m_roots, m_prompts);
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

} // namespace brannock
