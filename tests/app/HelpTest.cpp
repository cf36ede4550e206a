#include "DialogFixture.h"

#include <QAccessible>
#include <QAction>
#include <QMessageBox>
#include <setup/dialogs/NewProjectDlg.h>
#include <support/Files.h>
#include <tarnwick/base/Installation.h>
#include <tarnwick/gui/BoxPrompts.h>
#include <tarnwick/gui/Help.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

class HelpTest : public DialogFixture, protected tarnwick::GuideViewer
{
protected:
    HelpTest() { tarnwick::setGuideViewer(this); }
    ~HelpTest() override { tarnwick::setGuideViewer(nullptr); }
    bool show(const QString &file) override
    {
        const QByteArray content = support::readFile(file);
        const bool isLeading = !file.contains(u"/go/"_s) || content.contains("content=\"0;url=../");
        EXPECT_TRUE(isLeading) << content.constData();
        pages.append(QDir(tarnwick::Installation::guideFolder()).relativeFilePath(file));
        return opens;
    }

    QStringList pages;
    bool opens = true;
};

TEST_F(HelpTest, OpensTheGuideAtThePlaceOfWindowDialogAndMessage)
{
    showActive();
    QTest::keyClick(&window, Qt::Key_F1);
    EXPECT_EQ(pages, QStringList{u"index.html"_s});

    inNext<setup::NewProjectDlg>([&](setup::NewProjectDlg &dialog) {
        QApplication::setActiveWindow(&dialog); // not done by the platform of the tests
        QTest::keyClick(dialog.focusWidget(), Qt::Key_F1);
        press(dialog, u"help"_s);
        EXPECT_EQ(pages.mid(1), QStringList(2, u"go/newProjectDlg.html"_s));
        opens = false;
        press(dialog, u"help"_s);
        EXPECT_TRUE(dialog.findChild<QLabel *>(u"message"_s)->text().contains(u"browser could not be started"));
        opens = true;
        dialog.reject();
    });
    run(NewProject);

    inNext<QMessageBox>([&](QMessageBox &box) {
        box.button(QMessageBox::Help)->click();
        EXPECT_TRUE(box.isVisible());
        EXPECT_EQ(pages.last(), u"go/message-1069.html");
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_FALSE(box.isVisible());
    });
    tarnwick::BoxPrompts(&window, {}).showError(tarnwick::kErrorSeverity, 1069, u"Could not execute query."_s);
}

TEST_F(HelpTest, EveryPartOfTheWindowHasANameAndShowsTheFocus)
{
    showActive();
    addPattern(1);
    for (QWidget *part : window.findChildren<QWidget *>()) {
        if (!part->isVisible() || part->focusPolicy() == Qt::NoFocus || part->window() != &window)
            continue;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(part);
        const std::string what =
            qPrintable(QString::fromLatin1(part->metaObject()->className()) + u' ' + part->objectName());
        ASSERT_NE(accessible, nullptr) << what;
        EXPECT_NE(accessible->role(), QAccessible::NoRole) << what;
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << what;
    }
    QStringList hidden;
    tabOrder(window, &hidden);
    EXPECT_EQ(hidden, QStringList());
}

} // namespace

} // namespace app
