#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <query/ButtonGrid.h>
#include <query/QueryEditor.h>
#include <query/SqlCheck.h>
#include <query/SqlCompletion.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using query::QueryEditor;
using query::WordKind;
using tarnwick::Answer;

namespace {

struct FakeView : query::EditorView
{
    QString sql() const override { return document.sql; }
    void setSql(const QString &sql) override { type(sql); }
    void collect(query::QueryDocument &into) const override
    {
        into.sql = document.sql;
        into.layout.sections = document.layout.sections;
    }
    void showDocument(const query::QueryDocument &shown) override { document = shown; }
    bool isModified() const override { return modified; }
    void setModified(bool isModified) override { modified = isModified; }
    std::optional<QString> askName(const QString &suggestion) override
    {
        suggestions.append(suggestion);
        return name;
    }
    void beep() override { ++beeps; }
    void queriesChanged() override {}
    void type(const QString &sql)
    {
        document.sql = sql;
        modified = true;
    }

    query::QueryDocument document;
    bool modified = false;
    std::optional<QString> name;
    QStringList suggestions;
    int beeps = 0;
};

struct ScriptedFiles : tarnwick::FileChoice
{
    QString openFile(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &) override
    {
        return next;
    }
    QStringList openFiles(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &) override
    {
        return {next};
    }
    QString saveFile(const tarnwick::FileChooserInfo &, const QString &, const tarnwick::PathRoots &,
                     const QString &) override
    {
        return next;
    }
    QString next;
};

class QueryEditorTest : public support::DatabaseTest
{
protected:
    QueryEditorTest()
    {
        context.roots = {m_installation.path(), m_project.path()};
        context.roots.makeInstallationFolders();
        QDir(m_project.path()).mkdir(u"queries"_s);
        execute(u"CREATE TABLE t (id COUNTER PRIMARY KEY, row SHORT, col SHORT, n LONG, name TEXT(20))"_s);
        execute(u"INSERT INTO t (row, col, n) VALUES (1, 2, 3)"_s);
    }
    QueryEditor makeEditor(bool hasTransaction = true)
    {
        return QueryEditor({session, context, steamGen, files, u"sql"_s, hasTransaction}, view);
    }
    QString queryFile(const QString &name) const { return m_project.filePath(u"queries/"_s + name); }
    QString textFile(const QString &name, const QByteArray &text) const
    {
        QFile file(queryFile(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    void run(QueryEditor &editor, const QString &sql)
    {
        view.type(sql);
        last = editor.execute(nullptr);
    }
    QString said() const { return prompts.entries().last().text; }

    ellery::SteamGen steamGen;
    query::QueryContext context;
    ScriptedFiles files;
    FakeView view;
    query::Execution last;

private:
    QTemporaryDir m_installation;
    QTemporaryDir m_project;
};

} // namespace

TEST_F(QueryEditorTest, FilesAreOpenedSavedImportedAndRemembered)
{
    QueryEditor editor = makeEditor();
    editor.open();
    EXPECT_EQ(editor.caption(), u"ARVO Query - "_s);
    files.next = textFile(u"a.qry"_s, "SELECT n FROM t");
    editor.openFile();
    EXPECT_EQ(said(), u"Loaded \"a.qry\"."_s);
    EXPECT_EQ(editor.caption(), u"Query File - a.qry"_s);
    EXPECT_EQ(editor.document().name, u"queries\\a.qry"_s);
    EXPECT_EQ(view.sql(), u"SELECT n FROM t"_s);
    EXPECT_TRUE(editor.save());
    QFile saved(queryFile(u"a.qry"_s));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_EQ(saved.read(4), QByteArray::fromHex("78563412"));

    view.type(u"SELECT 1"_s);
    files.next = textFile(u"b.qry"_s, "SELECT row FROM t");
    prompts.answerWith({Answer::Cancel, Answer::Cancel, Answer::No});
    editor.importFile();
    EXPECT_EQ(view.sql(), u"SELECT 1"_s);
    editor.openFile();
    EXPECT_EQ(said(), u"Query \"queries\\a.qry\" has changed.\nDo you wish to save changes?"_s);
    EXPECT_EQ(view.sql(), u"SELECT 1"_s);
    editor.openFile();
    EXPECT_EQ(view.sql(), u"SELECT row FROM t"_s);
    last = editor.execute(nullptr);
    EXPECT_EQ(editor.recentNames(), QStringList{u"queries\\b.qry"_s});
    files.next = queryFile(u"none.qry"_s);
    editor.openFile();
    EXPECT_EQ(prompts.entries().last().number, 1070);
    EXPECT_EQ(editor.document().name, u"queries\\b.qry"_s);

    FakeView second;
    QueryEditor reopened({session, context, steamGen, files, u"sql"_s, true}, second);
    reopened.open();
    EXPECT_EQ(second.sql(), u"SELECT row FROM t"_s);
    prompts.answerWith({Answer::Yes});
    reopened.clearRecent();
    EXPECT_TRUE(reopened.recentNames().isEmpty());
}

TEST_F(QueryEditorTest, StoredQueriesAreStoredFetchedAndDeletedWithoutAQuestion)
{
    QueryEditor editor = makeEditor(false);
    editor.open();
    files.next = textFile(u"a.qry"_s, "SELECT n FROM t");
    editor.openFile();
    view.name = u"Deep"_s;
    EXPECT_TRUE(editor.storeQuery());
    EXPECT_EQ(view.suggestions, QStringList{u"a"_s});
    EXPECT_EQ(editor.caption(), u"ARVO Query - Deep"_s);
    EXPECT_EQ(editor.storedQueries(), QStringList{u"Deep"_s});
    view.type(u"SELECT row FROM t"_s);
    EXPECT_TRUE(editor.storeQuery());
    view.name = u"view#"_s;
    EXPECT_FALSE(editor.storeQueryAs());
    EXPECT_EQ(prompts.entries().last().number, 1072);
    EXPECT_EQ(editor.document().name, u"Deep"_s);
    ASSERT_EQ(editor.formerTexts(u"Deep"_s).size(), 1);
    editor.bringBack(u"Deep"_s, editor.formerTexts(u"Deep"_s)[0]);
    EXPECT_EQ(view.sql(), u"SELECT n FROM t"_s);
    prompts.answerWith({Answer::No});
    editor.fetch(u"Deep"_s);
    EXPECT_EQ(said(), u"Set query \"Deep\"."_s);
    EXPECT_EQ(view.sql(), u"SELECT row FROM t"_s);
    last = editor.execute(nullptr);
    EXPECT_TRUE(editor.recentNames().isEmpty());
    editor.deleteQuery();
    EXPECT_EQ(said(), u"Deleted query \"Deep\" from the database."_s);
    EXPECT_TRUE(editor.storedQueries().isEmpty());
    EXPECT_TRUE(view.sql().isEmpty());
    files.next = queryFile(u"a.qry"_s);
    editor.openFile();
    editor.deleteQuery();
    EXPECT_EQ(prompts.entries().last().number, 1075);
    EXPECT_EQ(view.sql(), u"SELECT n FROM t"_s);
}

TEST_F(QueryEditorTest, BackAndForwardGoThroughTheExecutedTexts)
{
    QueryEditor editor = makeEditor();
    editor.open();
    editor.back();
    EXPECT_EQ(view.beeps, 0) << "disabled with one entry";
    for (const QString &sql : {u"SELECT 1"_s, u"SELECT 2"_s, u"SELECT 1"_s})
        run(editor, sql);
    EXPECT_EQ(editor.versions().texts(), QStringList({QString(), u"SELECT 1"_s, u"SELECT 2"_s}));
    editor.forward();
    EXPECT_EQ(said(), u"Set query version 3 of 3."_s);
    editor.forward();
    EXPECT_EQ(view.beeps, 1);
    view.type(u"something else"_s);
    editor.back();
    EXPECT_EQ(said(), u"Set query version 1 of 3."_s);
    editor.clear();
    EXPECT_EQ(editor.versions().texts().size(), 3);
}

TEST_F(QueryEditorTest, TheTransactionBeginsWithTheFirstChangeAndEndsWithOkOrCancel)
{
    QueryEditor editor = makeEditor();
    editor.open();
    run(editor, u"SELECT n FROM t"_s);
    EXPECT_FALSE(editor.transaction().isOpen());
    run(editor, u"UPDATE t SET n = 'x' + 1"_s);
    EXPECT_FALSE(editor.transaction().isOpen()) << "a statement that failed holds no lock";
    run(editor, u"UPDATE t SET n = 4"_s);
    EXPECT_EQ(editor.transaction().changeCount(), 1);
    view.modified = false;
    EXPECT_TRUE(editor.commit());
    run(editor, u"UPDATE t SET n = 5"_s);
    view.name = u"Kept"_s;
    view.type(u"SELECT n FROM t WHERE n = 5"_s);
    EXPECT_TRUE(editor.storeQueryAs());
    EXPECT_FALSE(editor.draft().isEmpty());
    prompts.answerWith({Answer::No, Answer::Yes});
    EXPECT_FALSE(editor.cancel());
    EXPECT_TRUE(said().contains(u"UPDATE t SET n = 5 (1 row)\nquery \"Kept\" stored"_s));
    EXPECT_TRUE(editor.cancel());
    run(editor, u"SELECT n FROM t WHERE n = 4"_s);
    EXPECT_EQ(editor.result().rowCount(), 1);
    EXPECT_FALSE(database().hasQuery(u"Kept"_s));
    EXPECT_EQ(editor.formerTexts(u"Kept"_s).size(), 1) << "what was stored and undone can be brought back";
}

TEST_F(QueryEditorTest, InsertedRowsAreNotGivenUpWithoutAQuestion)
{
    QueryEditor editor = makeEditor();
    editor.open();
    run(editor, u"SELECT name, [desc] FROM tube_sets"_s);
    editor.result().insertRow(0);
    EXPECT_TRUE(editor.result().setCell(0, 1, u"text"_s));
    view.modified = false;
    prompts.answerWith({Answer::No, Answer::No, Answer::No, Answer::Yes});
    EXPECT_FALSE(editor.commit());
    EXPECT_TRUE(said().contains(u"row 1: no value for NAME"_s)) << qPrintable(said());
    EXPECT_FALSE(editor.cancel());
    run(editor, u"SELECT n FROM t"_s);
    EXPECT_EQ(editor.result().cellText(0, 1), u"text");
    view.modified = false;
    EXPECT_TRUE(editor.commit());
    EXPECT_FALSE(prompts.unusedAnswers());
}

TEST_F(QueryEditorTest, SeveralStatementsRunOneByOneUntilOneFails)
{
    context.userMacros.set(u"[p]"_s, u"1"_s);
    QueryEditor editor = makeEditor();
    editor.open();
    const QString text =
        u"UPDATE t SET n = 1;\nPARAMETERS [p] Long; SELECT n FROM t;\n  SELECT nothing FROM nowhere;"_s;
    run(editor, text);
    EXPECT_EQ(last.outcome, query::Execution::Outcome::Failed);
    EXPECT_EQ(last.where.start, text.indexOf(u"nowhere"_s));
    EXPECT_EQ(last.where.line, 3);
    EXPECT_EQ(last.affected, 1);
    const query::TextPart first{0, 19};
    last = editor.execute(nullptr, first);
    EXPECT_EQ(last.outcome, query::Execution::Outcome::Changed);
    EXPECT_EQ(query::statementsIn(u";; SELECT 1;"_s), (QList<query::TextPart>{{3, 8}}));
}

TEST_F(QueryEditorTest, ADraftHoldsTextVersionsAndStoredTexts)
{
    QByteArray draft;
    {
        QueryEditor editor = makeEditor();
        editor.open();
        EXPECT_TRUE(editor.draft().isEmpty());
        run(editor, u"SELECT 1"_s);
        view.document.layout.sections[0].text = u"Title"_s;
        view.type(u"SELECT 2, "_s);
        view.modified = false; // as after it was stored, in a transaction that goes with the program
        draft = editor.draft();
    }
    view = FakeView();
    QueryEditor editor = makeEditor();
    editor.open();
    editor.restoreDraft(draft);
    EXPECT_EQ(view.sql(), u"SELECT 2, "_s);
    EXPECT_EQ(view.document.layout.sections[0].text, u"Title"_s);
    EXPECT_TRUE(view.modified);
    EXPECT_EQ(editor.versions().texts().size(), 2);
    for (int length = 0; length < draft.size(); ++length)
        EXPECT_THROW(editor.restoreDraft(draft.first(length)), tarnwick::Error);
    EXPECT_EQ(view.sql(), u"SELECT 2, "_s);
}

TEST_F(QueryEditorTest, CompletionKnowsTheContext)
{
    execute(u"CREATE TABLE [other table] (a LONG, [b c] LONG)"_s);
    database().createQuery({u"Deep"_s, u"SELECT n FROM t"_s});
    query::SqlNames names = query::SqlNames::of(database());
    names.macros.set(u"[MAP NAME]"_s, u"plan"_s);
    struct Case
    {
        const char16_t *text; ///< the cursor at "|"
        const char16_t *first;
        const char16_t *absent = u"";
    };
    for (const Case &c :
         {Case{u"SELECT x.| FROM t AS x", u"id", u"SELECT"}, Case{u"SELECT na| FROM t", u"name", u"t"},
          Case{u"SELECT * FROM |", u"report", u"SELECT"}, Case{u"SELECT * FROM t, ot|", u"[other table]"},
          Case{u"SELECT * FROM De|", u"Deep"}, Case{u"SELECT * FROM t WHERE [MA|", u"[MAP NAME]"},
          Case{u"SELECT b| FROM [other table]", u"[b c]"}, Case{u"SELECT Lef|", u"Left("},
          Case{u"SELECT (SELECT o.| FROM [other table] AS o) FROM t", u"a", u"id"},
          Case{u"SELECT * FROM t WHERE name = 'na|", u""}}) {
        QString text = QString::fromUtf16(c.text);
        const int cursor = int(text.indexOf(u'|'));
        text.remove(cursor, 1);
        const query::CompletionList list = query::completionsAt(text, cursor, names);
        EXPECT_EQ(list.items.isEmpty() ? QString() : list.items[0].text, QString::fromUtf16(c.first))
            << qPrintable(text);
        for (const query::Completion &item : list.items)
            EXPECT_NE(item.text, QString::fromUtf16(c.absent)) << qPrintable(text);
    }
    EXPECT_EQ(query::callAt(u"SELECT Left(Mid(a, 1), "_s, 23)[0].section(u"  "_s, 0, 0), u"Left(text, length)"_s);
}

TEST_F(QueryEditorTest, WordsAndErrorsAreFoundAsTheEngineFindsThem)
{
    const query::SqlWords words(query::SqlNames::of(database()));
    const QString text = u"SELECT Left(name, 2), [limit], 'x', #1/2/2020# FROM t WHERE left = 1.5 --"_s;
    QList<WordKind> kinds;
    for (const query::StyledWord &word : words.words(text))
        kinds.append(word.kind);
    using enum WordKind;
    EXPECT_EQ(kinds, (QList<WordKind>{Keyword, Function, Field, Number, Parameter, Text, Date, Keyword, Table, Keyword,
                                      Keyword, Number, Fault}));
    const query::SqlCheck good =
        query::SqlCheck::of(database(), u"SELECT n FROM t WHERE n > [least] AND n < [Least]"_s);
    EXPECT_FALSE(good.error);
    ASSERT_EQ(good.parameters.size(), 1);
    const query::SqlCheck bad = query::SqlCheck::of(database(), u"SELECT n FROM t;\nSELECT n FRM t"_s);
    ASSERT_TRUE(bad.error);
    EXPECT_GE(bad.error->part.start, 26);
    for (const auto &[statement, start] :
         std::initializer_list<std::pair<QString, int>>{{u"SELECT n FROM t WHERE n = [N]"_s, 26},
                                                        {u"SELECT n FROM t WHERE (t.n <> n)"_s, 30},
                                                        {u"UPDATE t SET n = [t].[n]"_s, 17},
                                                        {u"SELECT a.n FROM t AS a, t AS b WHERE a.n = b.n"_s, -1},
                                                        {u"SELECT n FROM t WHERE 1 + n = n"_s, -1},
                                                        {u"SELECT n FROM t WHERE n = n + 1 OR [p] = [p]"_s, -1}}) {
        const auto remark = query::SqlCheck::of(database(), statement).remark;
        EXPECT_EQ(remark ? remark->part.start : -1, start) << qPrintable(statement);
    }
    EXPECT_EQ(query::formattedText(u"select n from t where n>1; select 1"_s),
              u"SELECT n\nFROM t\nWHERE n > 1;\n\nSELECT 1;"_s);
    EXPECT_THROW(query::formattedText(u"select n -- all\nfrom t"_s), tarnwick::Error);
}

TEST(ButtonGridTest, WideLabelsAreWrappedAtBlanksOrBetweenCharacters)
{
    const auto width = [](const QString &text) { return int(text.size()) * 10; };
    const auto grid = query::ButtonGrid::of(
        {u"queries\\a.qry"_s, u"queries\\wear_at_supports.qry"_s, u"queries\\abcdefghijklmnop.qry"_s}, 400, 20, width);
    EXPECT_EQ(grid.columns, 3);
    EXPECT_EQ(query::ButtonGrid::room(3, 400, 20), 117);
    EXPECT_EQ(grid.labels, QStringList({u"a.qry"_s, u"wear_at_\nsupports.qr\ny"_s, u"abcdefghijk\nlmnop.qry"_s}));
    EXPECT_EQ(query::ButtonGrid::of(QStringList(7, u"q.qry"_s), 400, 20, width).columns, 5);
}
