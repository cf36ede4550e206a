#include "DialogFixture.h"

#include <app/Look.h>

#include <QClipboard>
#include <QGuiApplication>
#include <tarnwick/FailureLog.h>
#include <tarnwick/gui/JTableWin.h>
#include <tarnwick/gui/StateKeeper.h>
#include <tarnwick/gui/TableText.h>

namespace app {

using namespace Qt::StringLiterals;

/// A user's settings of its own.
class LookTest : public WindowFixture
{
protected:
    LookTest() { qputenv("XDG_CONFIG_HOME", m_settings.path().toLocal8Bit()); }
    ~LookTest() override
    {
        qunsetenv("XDG_CONFIG_HOME");
        QApplication::setPalette(QPalette());
        tarnwick::TableText::instance().setPercent(100);
    }
    QImage look() { return lookOf(window); }
    static QImage lookOf(DBase &shown)
    {
        QApplication::setActiveWindow(&shown);
        settle();
        settle();
        return shown.grab().toImage();
    }

private:
    QTemporaryDir m_settings;
};

TEST_F(LookTest, ColoursChangeAtOnceAndAreKept)
{
    open();
    window.show();
    run(LightColours);
    const QImage light = look();
    run(DarkColours);
    const QImage dark = look();
    EXPECT_NE(light, dark);
    // Nothing keeps the colours from before: a window that starts dark looks the same, and back is back.
    {
        DBase second(&said);
        second.look().restore();
        EXPECT_EQ(second.look().colours(), Look::Colours::Dark);
        ASSERT_TRUE(second.openProject(projectFolder()));
        second.show();
        EXPECT_EQ(lookOf(second), dark);
    }
    run(LightColours);
    EXPECT_EQ(look(), light);
    run(ColoursOfSystem);
    EXPECT_TRUE(command(ColoursOfSystem)->isChecked());
    EXPECT_FALSE(command(LightColours)->isChecked());
    for (const uint scheme : {1u, 2u}) { // the desktop becomes dark, then light
        QMetaObject::invokeMethod(&window.look(), "onSystemSetting", Q_ARG(QString, u"org.freedesktop.appearance"_s),
                                  Q_ARG(QString, u"color-scheme"_s), Q_ARG(QDBusVariant, QDBusVariant(scheme)));
        EXPECT_EQ(look() == dark, scheme == 1) << scheme;
    }
}

TEST_F(LookTest, TextOfTablesChangesInOpenAndNewTables)
{
    tarnwick::JTableWin table(said);
    const int usual = table.rowHeight();
    run(LargestTableText);
    EXPECT_GT(table.rowHeight(), usual * 5 / 4);
    EXPECT_EQ(tarnwick::JTableWin(said).rowHeight(), table.rowHeight());
    tarnwick::TableText::instance().setPercent(100);
    window.look().restore();
    EXPECT_EQ(tarnwick::TableText::instance().percent(), 160);
    run(UsualTableText);
    EXPECT_EQ(table.rowHeight(), usual);
}

class AboutTest : public DialogFixture
{
};

TEST_F(AboutTest, TellsVersionsAndFoldersAndCopiesThem)
{
    const QTemporaryDir state;
    const QByteArray before = qgetenv("XDG_STATE_HOME");
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    tarnwick::FailureLog(u"arvo"_s).add(1069, u"Could not execute query."_s);
    for (const auto &[number, title, part] :
         {std::tuple(About, u"About Palomine ARVO"_s, session().project().folder),
          std::tuple(Failures, u"Failures"_s, u"1069 Could not execute query."_s)}) {
        inNext<QDialog>([&, caption = title, name = number](QDialog &dialog) {
            EXPECT_EQ(dialog.windowTitle(), caption);
            picture(dialog, name == About ? u"about"_s : u"failures"_s);
            press(dialog, u"copyText"_s);
        });
        run(number);
        EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(part)) << qPrintable(title);
    }
    qputenv("XDG_STATE_HOME", before);
}

} // namespace app
