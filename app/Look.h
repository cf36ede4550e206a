#pragma once
#include <QDBusVariant>
#include <QObject>
#include <tarnwick/CommandHandlers.h>

namespace app {

/// The user's settings of the look: colours, and the size of text in tables. They are kept between sessions in the
/// session file and take effect at once.
class Look : public QObject
{
    Q_OBJECT
public:
    enum class Colours { System, Light, Dark };

    explicit Look(QObject *parent = nullptr);
    /// Takes over the stored settings, and follows the system if it changes between light and dark.
    void restore();

    Colours colours() const { return m_colours; }
    /// Sets and stores. Throws tarnwick::FileError if it cannot be stored; it then holds until the end of the program.
    void setColours(Colours colours);
    static void setTableText(int percent);
    /// Binds the commands of the menu.
    void bind(tarnwick::CommandHandlers &handlers);

private Q_SLOTS:
    /// A setting of the desktop has changed.
    void onSystemSetting(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void askSystem();
    void setSystemDark(const QVariant &scheme);
    void apply() const;

    Colours m_colours = Colours::System;
    bool m_isSystemDark = false;
    QString m_systemStyle; ///< name of the style at the start
};

/// Dark colours for the whole program.
void useDarkPalette();
/// Light colours for the whole program.
void useLightPalette();

} // namespace app
