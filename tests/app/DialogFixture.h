#pragma once
#include "DialogChecks.h"
#include "WindowFixture.h"

#include <app/CheckStyle.h>
#include <app/Look.h>
#include <dao/Recordset.h>
#include <QDeadlineTimer>
#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QTimer>
#include <tarnwick/RecoveryCopies.h>

namespace app {

/// Dialogs look as in the program. ARVO_DARK asks for the dark palette.
inline void useLookOfTheProgram()
{
    if (qEnvironmentVariableIsSet("ARVO_DARK"))
        useDarkPalette();
    else
        QApplication::setStyle(new CheckStyle);
}

/// A dialog over a project's database. ARVO_PICTURES names a folder for pictures of the dialogs; ARVO_DARK asks for the
/// dark palette.
class DialogFixture : public WindowFixture
{
protected:
    void SetUp() override
    {
        useLookOfTheProgram();
        ASSERT_TRUE(window.openProject(projectFolder()));
        session().connectDatabase(session().project().databasePath());
    }
    ProjectSession &session() { return window.projectSession(); }
    void sql(const QString &statement) { session().database().database().execute(statement); }
    /// The first value of a query's first row.
    qint64 number(const QString &query)
    {
        dao::Recordset rows(session().database().database());
        rows.open(dao::Recordset::Type::Snapshot, query);
        return rows.value(0).integer();
    }
    /// Copies of unsaved work of this kind.
    static qsizetype copiesOf(const QString &kind)
    {
        return QDir(tarnwick::RecoveryCopies::folder()).entryList({QStringLiteral("*.") + kind}, QDir::Files).size();
    }
    static void picture(QWidget &dialog, const QString &name)
    {
        dialog.show();
        dialog.activateWindow(); // keys reach an active window only
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QApplication::setActiveWindow(&dialog); // not done by the platform of the tests while another dialog is modal
        checkDialog(dialog, name);
        const QString folder = qEnvironmentVariable("ARVO_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(dialog.grab().save(folder + u'/' + name + QStringLiteral(".png")));
        }
    }
    static void press(QDialog &dialog, const QString &button)
    {
        dialog.findChild<QPushButton *>(button)->click();
        settle();
    }
    /// Runs a command of the dialog's menus, given by its text without mnemonic and key.
    static void choose(QDialog &dialog, const QString &text)
    {
        for (QAction *action : dialog.findChildren<QAction *>()) {
            if (action->text().section(u'\t', 0, 0).remove(u'&') == text) {
                EXPECT_TRUE(action->isEnabled()) << qPrintable(text) << ": " << qPrintable(action->toolTip());
                action->trigger();
                settle();
                return;
            }
        }
        FAIL() << "no command " << qPrintable(text);
    }
    /// Calls work with the modal dialog of this type that opens next. Others, such as progress, may come before it.
    template <typename Dialog>
    void inNext(const std::function<void(Dialog &)> &work)
    {
        constexpr int kLongestWait = 20'000; // ms
        auto *timer = new QTimer(&window);
        QObject::connect(timer, &QTimer::timeout, &window, [timer, work, deadline = QDeadlineTimer(kLongestWait)] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (!dialog && !deadline.hasExpired())
                return;
            timer->stop();
            timer->deleteLater();
            ASSERT_NE(dialog, nullptr);
            work(*dialog);
            if (dialog->isVisible())
                dialog->done(QDialog::Rejected); // the test has failed, but must end
        });
        timer->start(1);
    }
};

} // namespace app
