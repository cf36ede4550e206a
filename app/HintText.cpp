#include "HintText.h"

#include <brannock/paint/MapColours.h>

#include <QEvent>
#include <QPalette>
#include <QWidget>

namespace app {

QColor hintColour(const QPalette &palette)
{
    constexpr double kWeaker = 0.35;
    constexpr double kContrast = 4.5;
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    return brannock::readable(brannock::mixed(palette.color(QPalette::Active, QPalette::Text), base, kWeaker), base,
                              kContrast);
}

namespace {

class HintKeeper : public QObject
{
public:
    explicit HintKeeper(QWidget *field)
        : QObject(field)
        , m_field(field)
    {
        field->installEventFilter(this);
        apply();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
            apply();
        return QObject::eventFilter(watched, event);
    }

private:
    void apply()
    {
        QPalette palette = m_field->palette();
        const QColor hint = hintColour(palette);
        if (palette.color(QPalette::Active, QPalette::PlaceholderText) == hint)
            return; // also ends the recursion caused by the change below
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, QPalette::PlaceholderText, hint);
        m_field->setPalette(palette);
    }

    QWidget *m_field;
};

} // namespace

void keepHintReadable(QWidget *field)
{
    new HintKeeper(field);
}

} // namespace app
