#include <support/Printers.h>
#include <support/TemporaryFolder.h>
#include <tarnwick/gui/BoxPrompts.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/OnScreen.h>
#include <tarnwick/gui/ProgressDialog.h>
#include <tarnwick/gui/StateKeeper.h>

#include <gtest/gtest.h>
#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct SeenBox
{
    QString title;
    QString text;
    bool plain = false;
};

// Answers the next box with the key or button; keeps what it showed.
void whenBoxOpens(SeenBox &seen, const std::function<void(QMessageBox &)> &act)
{
    QTimer::singleShot(0, qApp, [&seen, act] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        seen = {box->windowTitle(), box->text(), box->textFormat() == Qt::PlainText};
        act(*box);
    });
}

std::function<void(QMessageBox &)> press(QMessageBox::StandardButton button)
{
    return [button](QMessageBox &box) { QTest::mouseClick(box.button(button), Qt::LeftButton); };
}

void pressEscape(QMessageBox &box)
{
    QTest::keyClick(&box, Qt::Key_Escape);
}

} // namespace

TEST(BoxPromptsTest, ShowsNumberAndTextAsTheyAre)
{
    QGuiApplication::setApplicationDisplayName(u"ARVO"_s);
    QStringList status;
    BoxPrompts prompts(nullptr, [&status](const QString &text) { status << text; });
    SeenBox seen;
    whenBoxOpens(seen, press(QMessageBox::Ok));
    prompts.error({1053, u"<b>%S</b>\n\nConnect first."}, u"x"_s);
    EXPECT_EQ(seen.title, u"ARVO - 1053"_s);
    EXPECT_EQ(seen.text, u"<b>x</b>\n\nConnect first."_s);
    EXPECT_TRUE(seen.plain);
    prompts.status({0, u"Stored %d."}, 3);
    EXPECT_EQ(status, QStringList{u"Stored 3."_s});
}

TEST(BoxPromptsTest, GivesTheAnswerOfTheButtonOrOfClosing)
{
    QWidget parent;
    BoxPrompts prompts(&parent);
    SeenBox seen;
    const Message question{0, u"Overwrite?"};
    whenBoxOpens(seen, press(QMessageBox::Yes));
    EXPECT_EQ(prompts.question(Buttons::YesNo, question), Answer::Yes);
    whenBoxOpens(seen, press(QMessageBox::No));
    EXPECT_EQ(prompts.question(Buttons::YesNoCancel, question), Answer::No);
    whenBoxOpens(seen, press(QMessageBox::Ok));
    EXPECT_EQ(prompts.question(Buttons::OkCancel, question), Answer::Ok);
    whenBoxOpens(seen, pressEscape);
    EXPECT_EQ(prompts.question(Buttons::YesNo, question), Answer::No);
    whenBoxOpens(seen, pressEscape);
    EXPECT_EQ(prompts.question(Buttons::YesNoCancel, question), Answer::Cancel);
    whenBoxOpens(seen, pressEscape);
    EXPECT_EQ(prompts.question(Buttons::OkCancel, question), Answer::Cancel);
    const auto pressReturn = [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); };
    whenBoxOpens(seen, pressReturn);
    EXPECT_EQ(prompts.question(Buttons::YesNo, question), Answer::Yes);
    whenBoxOpens(seen, pressReturn);
    EXPECT_EQ(prompts.question(Buttons::NoYes, question), Answer::No);
}

TEST(BoxPromptsTest, TakeTheWaitCursorAwayWhileTheyAreOpen)
{
    BoxPrompts prompts(nullptr);
    SeenBox seen;
    const WaitCursor wait;
    whenBoxOpens(seen, [](QMessageBox &box) {
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        pressEscape(box);
    });
    prompts.error({1089, u"Not enough open tubes to do a full fill!"});
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

TEST(ProgressDialogTest, OpensForWorkThatOnlyAsks)
{
    ProgressDialog progress(nullptr, u"Update Map"_s, std::chrono::milliseconds(0));
    EXPECT_FALSE(progress.cancelled());
    EXPECT_TRUE(progress.dialog()->isVisible());
}

TEST(ProgressDialogTest, QuickWorkShowsNothing)
{
    ProgressDialog progress(nullptr, u"Upload"_s, std::chrono::hours(1));
    progress.report(1, 10, u"Reading"_s);
    EXPECT_FALSE(progress.dialog()->isVisible());
    EXPECT_FALSE(progress.cancelled());
}

TEST(ProgressDialogTest, IsModalAndItsCancelStopsTheWork)
{
    ProgressDialog progress(nullptr, u"Upload"_s, std::chrono::milliseconds(0));
    progress.report(5'000'000'000, 10'000'000'000, u"Reading"_s);
    ASSERT_TRUE(progress.dialog()->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), progress.dialog());

    QTest::mouseClick(progress.dialog()->findChild<QPushButton *>(), Qt::LeftButton);
    EXPECT_TRUE(progress.cancelled());
    EXPECT_TRUE(progress.dialog()->isVisible()); // until the work has noticed
    ProgressLoop loop(&progress, 10, u"Reading"_s);
    EXPECT_THROW(loop.tick(1), Cancelled);
}

TEST(GuardedTest, LetsNoExceptionPass)
{
    RecordingPrompts prompts;
    EXPECT_TRUE(guarded(prompts, [] {}));
    EXPECT_FALSE(guarded(prompts, [] { throw Cancelled(); }));
    EXPECT_TRUE(prompts.entries().isEmpty());
    EXPECT_FALSE(
        guarded(prompts, {1039, u"Could not read map file."}, [] { throw FileError(u"a.map"_s, 3, u"why"_s); }));
    EXPECT_FALSE(guarded(prompts, [] { throw std::bad_alloc(); }));
    ASSERT_EQ(prompts.entries().size(), 2);
    EXPECT_EQ(prompts.entries()[0].number, 1039);
    EXPECT_EQ(prompts.entries()[0].text, u"Could not read map file.\n\na.map, line 3: why"_s);
}

namespace {

struct Window : QWidget
{
    Window()
        : splitter(new QSplitter(this))
        , table(new QTableView)
    {
        setObjectName(u"testWindow"_s);
        splitter->setObjectName(u"splitter"_s);
        table->setObjectName(u"table"_s);
        splitter->addWidget(table);
        splitter->addWidget(new QWidget);
        splitter->resize(400, 200);
    }
    QSplitter *splitter;
    QTableView *table;
};

} // namespace

TEST(StateKeeperTest, WindowsAreOnTheScreenWithTheirWholeFrame)
{
    const support::TemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    Window window;
    EXPECT_LT(sizeOnScreen(window, {9000, 9000}).height(), window.screen()->availableSize().height());
    window.resize(9000, 300);
    window.move(-50, 7000);
    StateKeeper::keep(&window);
    window.show();
    QCoreApplication::processEvents();
    const QRect room = window.screen()->availableGeometry();
    EXPECT_TRUE(room.contains(window.frameGeometry()));
    EXPECT_EQ(window.height(), 300) << "what fits stays";
    window.hide();
    qunsetenv("XDG_CONFIG_HOME");
}

TEST(StateKeeperTest, WindowsComeBackAsTheyWereLeft)
{
    const support::TemporaryFolder folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    QStandardItemModel model(1, 2);
    {
        Window window;
        StateKeeper::keep(&window);
        window.resize(523, 317);
        window.table->setModel(&model);
        window.show();
        window.table->setColumnWidth(0, 77);
        window.splitter->setSizes({100, 300});
        window.hide();
    }
    ASSERT_FALSE(StateKeeper::sessionFile().values().isEmpty());
    Window again;
    StateKeeper::keep(&again);
    EXPECT_EQ(again.size(), QSize(523, 317));
    EXPECT_LT(again.splitter->sizes()[0], again.splitter->sizes()[1]);
    again.table->setModel(&model); // the widths come when the columns do
    EXPECT_EQ(again.table->columnWidth(0), 77);

    QStandardItemModel other(1, 3);
    const int untouched = QTableView().horizontalHeader()->defaultSectionSize();
    Window third;
    StateKeeper::keep(&third);
    third.table->setModel(&other);
    EXPECT_EQ(third.table->columnWidth(0), untouched);
    qunsetenv("XDG_CONFIG_HOME");
}
