#include "WindowFixture.h"

#include <app/DBaseApp.h>

#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/QueryPage.h>
#include <query/dialogs/SqlCommands.h>
#include <query/dialogs/SQLDlg.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;
using tarnwick::Answer;

namespace app {

namespace {

/// The SQL editor over a project's database, and pictures of it (see DialogPicturesTest.cpp).
class SqlDialogTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsSet("ARVO_DARK"))
            useDarkPalette();
        ASSERT_TRUE(window.openProject(projectFolder()));
        session().connectDatabase(session().project().databasePath());
        execute(u"DELETE FROM report"_s);
        for (int i = 0; i < 40; ++i)
            addResult({{u"sec"_s, u"0"_s},
                       {u"row"_s, QString::number(i / 8 + 1)},
                       {u"col"_s, QString::number(i % 8 + 1)},
                       {u"defect"_s, i % 4 ? u"'NDD'"_s : u"'ODI'"_s},
                       {u"volts"_s, QString::number(0.4 * i)},
                       {u"pcnt"_s, QString::number(i)}});
    }
    /// A row of table report; required fields that are not given get some value.
    void addResult(QMap<QString, QString> values)
    {
        for (const dao::FieldInfo &field : session().database().database().table(u"report"_s).fields) {
            if (field.required && !field.isAutoIncrement() && !values.contains(field.name))
                values[field.name] = dao::isTextType(field.type) ? u"'A'"_s : u"1"_s;
        }
        execute(u"INSERT INTO report (%1) VALUES (%2)"_s.arg(values.keys().join(u','), values.values().join(u',')));
    }
    void execute(const QString &statement) { session().database().database().execute(statement); }
    ProjectSession &session() { return window.projectSession(); }
    query::SQLDlg::Setup setup()
    {
        return {.editor = {.session = session().database(),
                           .context = session().queryContext(),
                           .steamGen = session().project().steamGen,
                           .files = dialogs,
                           .optionsName = u"sql"_s,
                           .hasTransaction = true},
                .mode = query::TableMode::Edit,
                .isFull = true,
                .parent = &window};
    }
    void picture(QWidget &dialog, const QString &name)
    {
        dialog.show();
        settle();
        const QString folder = qEnvironmentVariable("ARVO_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(dialog.grab().save(folder + u'/' + name + u".png"_s));
        }
    }
};

} // namespace

TEST_F(SqlDialogTest, RunsAndShowsErrorsInTheText)
{
    query::SQLDlg dialog(setup());
    dialog.show();
    settle();
    EXPECT_EQ(dialog.findChild<tarnwick::CommandActions *>()->faults(), QStringList());
    query::SqlEditor &sql = dialog.page().sql();
    sql.setSql(u"SELECT row, col, cal_num, defect, volts, Left(analyst_id, 2) AS who\nFROM report\n"
               u"WHERE volts > 1.5 AND defect <> 'NDD'\nORDER BY row, col"_s);
    dialog.findChild<QPushButton *>(u"executeButton"_s)->click();
    settle();
    picture(dialog, u"sql-editor"_s);
    EXPECT_GT(dialog.page().table().grid().rowCount(), 0);
    sql.setSql(u"SELECT row, col\nFROM repor\nWHERE pcnt > 40"_s);
    dialog.execute();
    EXPECT_EQ(sql.cursorPlace(), 21);
    picture(dialog, u"sql-editor-error"_s);
    sql.setSql({});
    said.answerWith({Answer::No});
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}

} // namespace app
