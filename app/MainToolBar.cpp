#include "MainToolBar.h"

#include <plans/MapFill.h>
#include <tarnwick/gui/ReturnKey.h>

#include <QToolButton>

using namespace Qt::StringLiterals;

namespace app {

MainToolBar::MainToolBar(QWidget *parent)
    : QToolBar(u"Tools"_s, parent)
{
    setObjectName(u"mainBar"_s);
    setMovable(false);
    for (const plans::MapFillType *type : plans::MapFillType::all()) {
        QToolButton *button =
            add(type->name, u"fill"_s + type->name, fillButtonWhen(type->key), fillButtonTip(type->key));
        connect(button, &QToolButton::clicked, this, [this, type] { Q_EMIT fillRequested(type->key); });
    }
    addSeparator();
    for (const ToolButton &info : kToolButtons) {
        const QString name = QString::fromUtf16(info.name);
        QToolButton *button = add(QString::fromUtf16(info.text), name, info.when, info.tip);
        connect(button, &QToolButton::clicked, this, [this, name] { Q_EMIT buttonPressed(name); });
    }
}

QToolButton *MainToolBar::add(const QString &text, const QString &name, When when, const char16_t *tip)
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(text);
    button->setAccessibleName(text.trimmed());
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::TabFocus);
    tarnwick::pressWithReturn(button);
    addWidget(button);
    m_buttons.append({button, when, tip});
    return button;
}

QWidget *MainToolBar::firstButton() const
{
    const auto first = std::find_if(m_buttons.begin(), m_buttons.end(),
                                    [](const Button &button) { return button.widget->isEnabled(); });
    return first == m_buttons.end() ? m_buttons.first().widget : first->widget;
}

void MainToolBar::refresh(const CommandContext &context)
{
    for (const Button &button : m_buttons) {
        button.widget->setEnabled(app::isEnabled(button.when, context));
        button.widget->setToolTip(tipText(button.tip, button.when, context));
    }
}

} // namespace app
