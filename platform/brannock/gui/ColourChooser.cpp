#include "ColourChooser.h"

#include "MapColours.h"

#include <brannock/CustomColours.h>
#include <QColorDialog>
#include <tarnwick/OptionPrompts.h>

using namespace Qt::StringLiterals;

namespace brannock {

std::optional<QColor> ColourChooser::choose(QWidget *parent, const QColor &now)
{
    CustomColours custom;
    tarnwick::loadOptions(custom, m_roots, m_prompts);
    const int places = std::min<int>(QColorDialog::customCount(), CustomColours::kCount);
    for (int i = 0; i < places; ++i)
        QColorDialog::setCustomColor(i, fromColourRef(custom.colours[i]));
    const QList<quint32> before = custom.colours;
    const QColor chosen = QColorDialog::getColor(now, parent, u"Color"_s);
    for (int i = 0; i < places; ++i)
        custom.colours[i] = toColourRef(QColorDialog::customColor(i));
    if (custom.colours != before)
        tarnwick::storeOptions(custom, m_roots, m_prompts);
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

} // namespace brannock
