#include <support/TemporaryFolder.h>
#include <tarnwick/gui/BoxPrompts.h>
#include <tarnwick/gui/FileDialogs.h>
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/gui/StateKeeper.h>

#include <gtest/gtest.h>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QJsonArray>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

enum Command : int { Spoil };
constexpr CommandRow kRows[] = {{Spoil, u"&Spoil\tCtrl+K", u"Fails"}};
constexpr MenuItem kBar[] = {openMenu(u"&File"), menuItem(Spoil), kCloseMenu, kEndOfMenu};
constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
constexpr CommandTable kTable(kRows, kLayouts);

/// Edits one text; storing it fails while isBroken.
class TextDialog : public JDialog
{
public:
    explicit TextDialog(UserPrompts &prompts)
        : JDialog(prompts, &kTable, u"textDialog"_s, nullptr)
    {
        commands().bind(Spoil, [] { throw Error(u"spoilt"_s); });
        m_edit = new QLineEdit;
        body().addWidget(m_edit);
        connect(m_edit, &QLineEdit::textChanged, this, [this] { refresh(); });
        finish(m_edit, {300, 200});
        keepDrafts(u"/project"_s, u"text"_s);
    }
    QString text() const { return m_edit->text(); }
    void type(const QString &text) { m_edit->setText(text); }
    using JDialog::actions;
    using JDialog::commands;

    bool isBroken = false;
    bool mayDiscard = true;
    QString stored;

protected:
    QString caption() const override { return u"Text"_s; }
    bool isModified() const override { return text() != stored; }
    int changeCount() const override { return isModified() ? 1 : 0; }
    bool store() override
    {
        if (isBroken)
            throw Error(u"no room"_s);
        stored = text();
        return true;
    }
    bool discard() override { return mayDiscard; }
    QByteArray draft() const override { return isModified() ? text().toUtf8() : QByteArray(); }
    void restoreDraft(const QByteArray &content) override
    {
        if (content == "damaged")
            throw Error(u"unreadable"_s);
        type(QString::fromUtf8(content));
    }

private:
    QLineEdit *m_edit;
};

class JDialogTest : public testing::Test
{
protected:
    JDialogTest()
    {
        qputenv("XDG_DATA_HOME", home.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    }
    qsizetype copies() const { return QDir(RecoveryCopies::folder()).entryList({u"*.text"_s}, QDir::Files).size(); }

    QTemporaryDir home;
    RecordingPrompts prompts;
};

} // namespace

TEST_F(JDialogTest, FailuresKeepTheDialogOpenAndChangesAreCounted)
{
    TextDialog dialog(prompts);
    EXPECT_EQ(dialog.actions().faults(), QStringList());
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), u"Text");
    dialog.type(u"a"_s);
    EXPECT_EQ(dialog.windowTitle(), u"Text*");
    EXPECT_EQ(dialog.findChild<QLabel *>(u"changes"_s)->text(), u"1 change not stored");
    dialog.isBroken = true;
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible());
    dialog.commands().run(Spoil);
    EXPECT_EQ(prompts.texts(RecordingPrompts::Entry::Kind::Error).size(), 2);
    dialog.mayDiscard = false;
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    dialog.isBroken = false;
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.stored, u"a");
    EXPECT_EQ(copies(), 0);
}

TEST_F(JDialogTest, UnsavedWorkOfADeadProgramIsOfferedAgain)
{
    const auto die = [&](const QString &text) {
        TextDialog dialog(prompts); // destroyed without having been closed, as by a kill
        dialog.type(text);
        EXPECT_TRUE(QTest::qWaitFor([&] { return copies() == 1; }));
    };
    die(u"unsaved"_s);
    prompts.answerWith({Answer::Cancel, Answer::Yes});
    {
        TextDialog later(prompts);
        EXPECT_EQ(later.text(), QString());
    }
    {
        TextDialog restored(prompts);
        EXPECT_EQ(restored.text(), u"unsaved");
        EXPECT_EQ(restored.windowTitle(), u"Text*");
        restored.accept();
    }
    EXPECT_EQ(copies(), 0);
    die(u"unwanted"_s);
    prompts.answerWith({Answer::No});
    EXPECT_EQ(TextDialog(prompts).text(), QString());
    EXPECT_EQ(copies(), 0);
    for (int damaged = 1; damaged <= 2; ++damaged) {
        die(u"damaged"_s);
        prompts.clear();
        prompts.answerWith({Answer::Yes});
        EXPECT_EQ(TextDialog(prompts).text(), QString());
        EXPECT_EQ(prompts.texts(RecordingPrompts::Entry::Kind::Error).size(), 1);
        EXPECT_EQ(copies(), 0) << "it is kept beside, under another name";
        EXPECT_EQ(QDir(RecoveryCopies::folder()).entryList({u"*.bad*"_s}, QDir::Files).size(), damaged);
    }
}

TEST_F(JDialogTest, StatusTextsAppearInTheActiveDialog)
{
    QStringList status;
    BoxPrompts boxes(nullptr, [&status](const QString &text) { status << text; });
    TextDialog dialog(boxes);
    QTimer::singleShot(0, &dialog, [&] {
        boxes.showStatus(u"Stored."_s);
        EXPECT_EQ(dialog.findChild<QLabel *>(u"message"_s)->text(), u"Stored.");
        dialog.accept();
    });
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    boxes.showStatus(u"Later."_s);
    EXPECT_EQ(status, QStringList{u"Later."_s});
}

TEST_F(JDialogTest, FileDialogsStartWhereTheUserWasUnlessThatIsAnotherProject)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    constexpr FileChooserInfo kChooser{u"queries", u"Queries (*.qry)", u".qry", u"All Files (*.*)"};
    const PathRoots first{home.path() + u"/installation"_s, home.path() + u"/first"_s};
    const PathRoots second{first.palomineDir, home.path() + u"/second"_s};
    for (const QString &folder : {u"/first/queries/old"_s, u"/second/queries"_s})
        QDir().mkpath(home.path() + folder);
    FileDialogs dialogs;
    const auto ask = [&](const PathRoots &roots, const std::function<void(QFileDialog &)> &act) {
        QTimer::singleShot(0, qApp, [act] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
        });
        return dialogs.saveFile(kChooser, u"Save"_s, roots);
    };
    const QString chosen = ask(first, [&](QFileDialog &dialog) {
        EXPECT_EQ(dialog.directory().path(), first.projectDir + u"/queries"_s);
        dialog.setDirectory(first.projectDir + u"/queries/old"_s);
        dialog.selectFile(u"R11.2"_s);
        static_cast<QDialog &>(dialog).accept();
    });
    EXPECT_EQ(chosen, first.projectDir + u"/queries/old/R11.2.qry"_s);
    const auto startsIn = [](const QString &folder) {
        return [folder](QFileDialog &dialog) {
            EXPECT_EQ(dialog.directory().path(), folder);
            dialog.reject();
        };
    };
    EXPECT_EQ(ask(first, startsIn(first.projectDir + u"/queries/old"_s)), QString());
    EXPECT_EQ(ask(second, startsIn(second.projectDir + u"/queries"_s)), QString());
}
