#include "Look.h"

#include "CheckStyle.h"

#include <app/logic/WindowCommandTable.h>

#include <tarnwick/gui/StateKeeper.h>
#include <tarnwick/gui/TableText.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPalette>
#include <QStyleFactory>

using namespace Qt::StringLiterals;
using tarnwick::StateKeeper;
using tarnwick::TableText;

namespace app {

namespace {

const QString kColoursKey = u"look/colours"_s;
const QString kTableTextKey = u"look/tableText"_s;
const QString kColourNames[] = {u"system"_s, u"light"_s, u"dark"_s}; // by Look::Colours

// The desktop's settings, as the portal of the freedesktop project offers them.
const QString kService = u"org.freedesktop.portal.Desktop"_s;
const QString kPath = u"/org/freedesktop/portal/desktop"_s;
const QString kInterface = u"org.freedesktop.portal.Settings"_s;
const QString kGroup = u"org.freedesktop.appearance"_s;
const QString kScheme = u"color-scheme"_s;

void useCheckStyle()
{
    if (!qobject_cast<CheckStyle *>(QApplication::style()))
        QApplication::setStyle(new CheckStyle);
}

} // namespace

Look::Look(QObject *parent)
    : QObject(parent)
    , m_systemStyle(QApplication::style()->name())
{
}

void Look::restore()
{
    const QJsonObject kept = StateKeeper::sessionFile().values();
    TableText::instance().setPercent(kept[kTableTextKey].toInt(TableText::instance().percent()));
    for (int i = 0; i < int(std::size(kColourNames)); ++i)
        if (kept[kColoursKey].toString() == kColourNames[i])
            m_colours = Colours(i);
    if (m_colours != Colours::System)
        apply();
    askSystem();
}

void Look::setColours(Colours colours)
{
    m_colours = colours;
    apply();
    StateKeeper::sessionFile().store({{kColoursKey, kColourNames[int(colours)]}});
}

void Look::setTableText(int percent)
{
    TableText::instance().setPercent(percent);
    StateKeeper::sessionFile().store({{kTableTextKey, percent}});
}

void Look::bind(tarnwick::CommandHandlers &handlers)
{
    for (const auto &[command, colours] :
         {std::pair(ColoursOfSystem, Colours::System), std::pair(LightColours, Colours::Light),
          std::pair(DarkColours, Colours::Dark)})
        handlers.bindCheckable(
            command, [this, chosen = colours] { setColours(chosen); },
            [this, chosen = colours] { return m_colours == chosen; });
    for (const auto &[command, percent] : {std::pair(SmallTableText, 85), std::pair(UsualTableText, 100),
                                           std::pair(LargeTableText, 125), std::pair(LargestTableText, 160)})
        handlers.bindCheckable(
            command, [chosen = percent] { setTableText(chosen); },
            [chosen = percent] { return TableText::instance().percent() == chosen; });
}

// This version of Qt does not tell whether the desktop is dark. The call does not wait for the answer: the desktop's
// service may have to be started first.
void Look::askSystem()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kService, kPath, kInterface, u"SettingChanged"_s, this,
                SLOT(onSystemSetting(QString, QString, QDBusVariant)));
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"Read"_s);
    call.setArguments({kGroup, kScheme});
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            setSystemDark(reply.value().variant());
        answer->deleteLater();
    });
}

void Look::onSystemSetting(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == kGroup && key == kScheme)
        setSystemDark(value.variant());
}

void Look::setSystemDark(const QVariant &scheme)
{
    // Read() wraps the value once more.
    const QVariant plain = scheme.canConvert<QDBusVariant>() ? scheme.value<QDBusVariant>().variant() : scheme;
    constexpr uint kPrefersDark = 1;
    const bool isDark = plain.toUInt() == kPrefersDark;
    if (std::exchange(m_isSystemDark, isDark) != isDark && m_colours == Colours::System)
        apply();
}

void Look::apply() const
{
    if (m_colours == Colours::Dark || (m_colours == Colours::System && m_isSystemDark)) {
        useDarkPalette();
    } else if (m_colours == Colours::Light) {
        useLightPalette();
    } else {
        if (QStyle *style = m_systemStyle == u"fusion"_s ? nullptr : QStyleFactory::create(m_systemStyle))
            QApplication::setStyle(style);
        else
            useCheckStyle();
        QApplication::setPalette(QPalette());
    }
}

void useDarkPalette()
{
    useCheckStyle();
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1e, 0x1f, 0x22);
    const QColor text(0xdf, 0xe1, 0xe5);
    const QColor faint(0x7f, 0x83, 0x8b);
    QPalette palette(QColor(0x3c, 0x3f, 0x43), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x27, 0x2a));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3c, 0x3f, 0x43));
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xa8, 0xff));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::HighlightedText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, QColor(0x6f, 0x73, 0x7a));
    }
    QApplication::setPalette(palette);
}

void useLightPalette()
{
    useCheckStyle();
    QApplication::setPalette(QApplication::style()->standardPalette());
}

} // namespace app
