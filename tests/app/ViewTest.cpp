// The window's options, its ways to find and drag, and what the keyboard reaches.
#include "WindowFixture.h"

#include <app/LegendView.h>

#include <brannock/gui/ColourButton.h>
#include <brannock/paint/MapColours.h>
#include <ellery/ComponentFile.h>
#include <query/dialogs/ArvoOptionsDlg.h>

#include <QComboBox>
#include <QCompleter>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <support/Files.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

class ViewTest : public WindowFixture
{
protected:
    void open()
    {
        WindowFixture::open();
        showActive();
        settle();
    }
    /// Presses OPTIONS and does something in the dialog, which must have ended it.
    void inOptions(const std::function<void(query::ArvoOptionsDlg &)> &work)
    {
        bool seen = false;
        QTimer::singleShot(0, &window, [&] {
            auto *dialog = qobject_cast<query::ArvoOptionsDlg *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            seen = true;
            work(*dialog);
            EXPECT_FALSE(dialog->isVisible());
            dialog->hide();
        });
        find<QToolButton>(u"optionsButton"_s)->click();
        EXPECT_TRUE(seen);
    }
    tarnwick::ColourRef mapColour() { return window.map().options().mapColour; }
};

void setColour(QDialog &dialog, const QString &name, quint32 value)
{
    auto *button = dialog.findChild<brannock::ColourButton *>(name);
    ASSERT_NE(button, nullptr);
    button->setColour(brannock::fromColourRef(tarnwick::ColourRef(value)));
    Q_EMIT button->colourChanged(button->colour());
}

} // namespace

TEST_F(ViewTest, OptionsAreTriedOutOnTheMapAndStoredWithOk)
{
    open();
    inOptions([this](query::ArvoOptionsDlg &dialog) {
        setColour(dialog, u"mapColour"_s, 0x112233);
        EXPECT_EQ(mapColour(), tarnwick::ColourRef(0x112233)) << "seen while the dialog is open";
        dialog.findChild<QSpinBox *>(u"displayTickSize"_s)->setValue(12);
        auto *margin = dialog.findChild<QDoubleSpinBox *>(u"leftMargin"_s);
        margin->setKeyboardTracking(false);
        margin->selectAll();
        QTest::keyClicks(margin, u"1.25"_s);
        dialog.accept();
    });
    EXPECT_EQ(mapColour(), tarnwick::ColourRef(0x112233));
    EXPECT_EQ(window.map().options().displayTickSize, 12);
    query::ArvoOptions read;
    ASSERT_TRUE(read.load(window.projectSession().roots()));
    EXPECT_EQ(read.map.mapColour, tarnwick::ColourRef(0x112233));
    EXPECT_EQ(read.page.margins.left, 1.25) << "what was just typed counts";
    EXPECT_FALSE(mapOf(window).canUndo()) << "options are no change of the map";
}

TEST_F(ViewTest, CancelledOptionsLeaveAllAsItWas)
{
    open();
    const tarnwick::ColourRef before = mapColour();
    said.clear();
    inOptions([](query::ArvoOptionsDlg &dialog) { dialog.reject(); });
    EXPECT_EQ(said.entries().size(), 1) << "nothing was changed, so nothing is asked";

    said.answerWith({Answer::Cancel, Answer::No});
    inOptions([](query::ArvoOptionsDlg &dialog) {
        setColour(dialog, u"mapColour"_s, 0x445566);
        dialog.reject();
        EXPECT_TRUE(dialog.isVisible()) << "Cancel goes back into the dialog";
        dialog.reject();
    });
    EXPECT_EQ(said.lastStatus(), u"Parameters unchanged."_s);
    EXPECT_EQ(mapColour(), before);
    query::ArvoOptions read;
    EXPECT_FALSE(read.load(window.projectSession().roots())) << "nothing was stored";

    said.answerWith({Answer::Yes});
    inOptions([](query::ArvoOptionsDlg &dialog) {
        setColour(dialog, u"mapColour"_s, 0x445566);
        dialog.reject();
    });
    EXPECT_EQ(mapColour(), tarnwick::ColourRef(0x445566)) << "Yes stores as OK does";
}

TEST_F(ViewTest, OptionsHoldTabsAndMacros)
{
    open();
    inOptions([](query::ArvoOptionsDlg &dialog) {
        auto *sql = dialog.findChild<QPlainTextEdit *>(u"tabSql"_s);
        EXPECT_FALSE(sql->isEnabled());
        dialog.findChild<QWidget *>(u"addTab"_s)->setFocus();
        for (int i = 0; i < 2; ++i) {
            dialog.findChild<QPushButton *>(u"addTab"_s)->click();
            sql->setPlainText(u"SELECT %1"_s.arg(i));
        }
        auto *name = dialog.findChild<QComboBox *>(u"tabName"_s);
        name->lineEdit()->selectAll();
        QTest::keyClicks(name->lineEdit(), u"Plugs"_s);
        name->setCurrentIndex(0);
        EXPECT_EQ(sql->toPlainText(), u"SELECT 0"_s);
        dialog.findChild<QPushButton *>(u"deleteTab"_s)->click();

        QAbstractItemModel &macros = *dialog.findChild<QTableView *>(u"userMacros"_s)->model();
        EXPECT_TRUE(macros.setData(macros.index(0, 1), u"limit"_s, Qt::EditRole));
        EXPECT_TRUE(macros.setData(macros.index(0, 2), u"40"_s, Qt::EditRole));
        dialog.accept();
    });
    const query::ArvoOptions &options = window.projectSession().options();
    EXPECT_EQ(options.tubeInfoTabs, (QList<query::ArvoOptions::TubeInfoTab>{{u"Plugs"_s, u"SELECT 1"_s}}));
    EXPECT_EQ(options.userMacros.value(u"[LIMIT]").value_or(QString()), u"40"_s);
    EXPECT_EQ(window.projectSession().queryContext().userMacros, options.userMacros) << "queries see them at once";
}

TEST_F(ViewTest, OptionsThatCannotBeStoredAreSaidAndHoldUntilTheEnd)
{
    open();
    const QString config = window.projectSession().roots().palomineDir + u"/config"_s;
    ASSERT_TRUE(QDir(config).removeRecursively() && QFile(config).open(QIODevice::NewOnly));
    said.clear();
    inOptions([](query::ArvoOptionsDlg &dialog) {
        setColour(dialog, u"mapColour"_s, 0x778899);
        dialog.accept();
    });
    const QStringList errors = said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith(u"Could not store the options.\n\n"_s)) << qPrintable(errors[0]);
    EXPECT_EQ(mapColour(), tarnwick::ColourRef(0x778899));
}

TEST_F(ViewTest, TheFindFieldCompletesAndSaysWhatIsWrong)
{
    open();
    auto *field = find<QLineEdit>(u"findTube"_s);
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(field->hasFocus());
    const ellery::TubeAddress address = mapOf(window).component()[40].address;
    QTest::keyClicks(field, u"%1 %2"_s.arg(address.row).arg(address.col));
    const QAbstractItemModel &found = *field->completer()->model();
    ASSERT_GT(found.rowCount(), 0);
    const QString whole = mapOf(window).component().tubeName(address);
    EXPECT_EQ(found.index(0, 0).data().toString(), whole);
    field->completer()->popup()->hide();

    QTest::keyClicks(field, u"77777"_s);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(said.lastStatus().startsWith(u"There is no tube \""_s)) << qPrintable(said.lastStatus());
    EXPECT_EQ(field->accessibleDescription(), said.lastStatus());
    EXPECT_TRUE(mapOf(window).tubes().selection().isEmpty());
    field->setText(whole);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(mapOf(window).tubes().selection(), QList<qint32>{40});
    EXPECT_EQ(field->accessibleDescription(), QString());
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(window.map().hasFocus());
    field->setFocus();

    // A row chosen from the list leads on to its columns.
    QCoreApplication::processEvents();
    said.clear();
    field->clear();
    QTest::keyClicks(field, QString::number(address.row));
    QTest::keyClick(field->completer()->popup(), Qt::Key_Down);
    const QString row = field->text();
    EXPECT_TRUE(row.endsWith(u"COL "_s)) << qPrintable(row);
    QTest::keyClick(field->completer()->popup(), Qt::Key_Return);
    QTRY_VERIFY(field->completer()->popup()->isVisible());
    EXPECT_TRUE(found.index(0, 0).data().toString().startsWith(row)) << qPrintable(found.index(0, 0).data().toString());
    EXPECT_TRUE(said.entries().isEmpty()) << qPrintable(said.lastStatus());
    field->completer()->popup()->hide();
}

TEST_F(ViewTest, KeysLeadThroughThePartsOfTheWindow)
{
    open();
    window.map().setFocus();
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(find<LegendView>(u"legend"_s)->hasFocus());
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(find<QToolBar>(u"mainBar"_s)->isAncestorOf(window.focusWidget()));
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(find<QLineEdit>(u"findTube"_s)->hasFocus());
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(window.map().hasFocus());
    for (const auto *button : window.findChildren<QToolButton *>()) {
        if (button->isVisible() && qobject_cast<QToolBar *>(button->parentWidget()) &&
            button->objectName() != u"qt_toolbar_ext_button"_s) {
            EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus) << qPrintable(button->toolTip());
        }
    }
}

namespace {

class ComponentTest : public ViewTest
{
protected:
    ComponentTest()
    {
        demo::DemoOptions options;
        options.tubes = 300;
        options.entries = 10;
        options.outages = 1;
        demo::makeProject(options, project);
    }
    /// A component maker that copies other tubes over those of the project.
    void makeTool(const ellery::SteamGen &result)
    {
        const QDir bin(QDir(window.projectSession().roots().palomineDir).filePath(u"bin"_s));
        ASSERT_TRUE(bin.mkpath(u"."_s));
        ellery::writeComponent(result, m_folder.filePath(u"result"_s));
        QFile tool(bin.filePath(u"ossory"_s));
        ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\ncp '" + m_folder.filePath(u"result/tubes.txt"_s).toLocal8Bit() +
                   "' component/tubes.txt\n");
        tool.close();
        tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_folder;
    const QString project = m_folder.filePath(u"project"_s);
};

} // namespace

TEST_F(ComponentTest, LegendFollowsAComponentThatTheMakerHasChanged)
{
    ASSERT_TRUE(window.openProject(project));
    ellery::SteamGen fewer = mapOf(window).component();
    QList<ellery::Tube> tubes = mapOf(window).component().tubes();
    const ellery::TubeAddress gone = tubes.takeFirst().address;
    const ellery::TubeAddress kept = tubes.last().address;
    fewer.setTubes(tubes);
    makeTool(fewer);
    plans::PatternFill fill;
    fill.parameters.rowIncrement = 1;
    fill.parameters.colIncrement = 1;
    addFill(window, fill);
    const int before = int(mapOf(window).entry(0).tubes.size());
    const ellery::SteamGen &component = mapOf(window).component();
    selectTubes(mapOf(window), {component.findTube(kept), component.findTube(gone)});
    setHeaderText(mapOf(window), &map::MapHeader::preparedBy, u"A. Alder"_s);
    said.clear();

    window.commands().action(ComponentMaker)->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Information),
              QStringList{u"1 map symbols were deleted!"_s});
    EXPECT_EQ(mapOf(window).entry(0).tubes.size(), before - 1);
    EXPECT_EQ(mapOf(window).hits(0), before - 1);
    EXPECT_TRUE(mapOf(window).header().preparedBy.isEmpty()) << "signed for other tubes";
    EXPECT_EQ(mapOf(window).tubes().selection(), QList<qint32>{mapOf(window).component().findTube(kept)});
    EXPECT_EQ(window.map().scene().numTube(), fewer.numTube());
    EXPECT_EQ(window.map().steamGen(), &mapOf(window).component());
    EXPECT_TRUE(mapOf(window).isModified()) << "map files hold the places of tubes";
    EXPECT_FALSE(mapOf(window).canUndo()) << "nothing before it fits these tubes";

    said.clear();
    window.commands().action(ComponentMaker)->trigger();
    EXPECT_TRUE(said.entries().isEmpty()) << "nothing has changed this time";
}

TEST_F(ComponentTest, ADamagedComponentIsSaidAndTheOldOneStays)
{
    ASSERT_TRUE(window.openProject(project));
    const int tubes = mapOf(window).component().numTube();
    makeTool(mapOf(window).component());
    support::writeFile(m_folder.filePath(u"result/tubes.txt"_s), "no heading here\n");
    said.clear();
    window.commands().action(ComponentMaker)->trigger();
    EXPECT_EQ(said.texts(tarnwick::RecordingPrompts::Entry::Kind::Error).size(), 1);
    EXPECT_EQ(mapOf(window).component().numTube(), tubes);
    EXPECT_EQ(window.map().scene().numTube(), tubes);
}

} // namespace app
