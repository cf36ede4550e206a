#pragma once
#include "AppFixture.h"

#include <plans/PatternFill.h>
#include <QTest>
#include <tarnwick/gui/CommandActions.h>

namespace app {

/// A main window, still without a project, and how tests drive it.
class WindowFixture : public AppTest
{
protected:
    /// Lets changes reach what is shown.
    static void settle() { QCoreApplication::processEvents(); }
    void open()
    {
        ASSERT_TRUE(window.openProject(projectFolder()));
        settle();
    }
    /// Keys reach an active window only.
    void showActive()
    {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QAction *command(int number) { return window.commands().action(number); }
    void run(int number)
    {
        command(number)->trigger();
        settle();
    }
    /// A new fill of every tube in every so many rows.
    void addPattern(int firstRow, int rowIncrement = 2)
    {
        plans::PatternFill fill;
        fill.parameters.firstRow = firstRow;
        fill.parameters.rowIncrement = rowIncrement;
        fill.parameters.colIncrement = 1;
        addFill(window, fill);
        settle();
    }
    template <typename Widget>
    Widget *find(const QString &name)
    {
        Widget *widget = window.findChild<Widget *>(name);
        EXPECT_NE(widget, nullptr) << qPrintable(name);
        return widget;
    }

    ScriptedDialogs dialogs;
    DBase window{&said};
};

} // namespace app
