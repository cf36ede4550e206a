#pragma once
#include "EditorTransaction.h"
#include "EditorVersions.h"
#include "EditorView.h"
#include "QueryExecution.h"
#include "QueryMacros.h"
#include "QueryVersions.h"
#include "Statements.h"
#include "StatementWords.h"
#include "StoredQueryCommands.h"

#include <tarnwick/FileChoice.h>

namespace query {

/// The commands of the SQL editor, without a window: the query that is edited and its name, versions, files, stored
/// queries, execution, and the transaction.
class QueryEditor
{
public:
    /// References must outlive the editor.
    struct Setup
    {
        db::DatabaseSession &session;
        QueryContext &context;
        const ellery::SteamGen &steamGen;
        tarnwick::FileChoice &files;
        QString optionsName = QStringLiteral("sql"); ///< or "query_fill"
        bool hasTransaction = true;                  ///< OK commits what was changed, Cancel undoes it
    };
    /// view must outlive the editor. Reads the options.
    QueryEditor(const Setup &setup, EditorView &view);

    /// Opens the first query of the recent list.
    void open();
    /// Opens this query in place of the present one; a name without a query is left alone.
    void openNamed(const QString &name);

    /// Shows this query in place of the present one.
    void openDocument(const QueryDocument &document);

    const QueryDocument &document() const { return m_document; }
    /// The query as it is in the window now.
    const QueryDocument &currentDocument();
    SQLOptions &options() { return m_options; }
    void storeOptions();
    QueryResult &result() { return m_result; }
    const EditorVersions &versions() const { return m_versions; }
    const EditorTransaction &transaction() const { return m_transaction; }
    const Setup &setup() const { return m_setup; }

    /// The name of the query and its kind, without the mark of changes.
    QString caption() const;
    /// Stored queries offered to the user. A failure is reported (1068).
    QStringList storedQueries();
    /// The present name if it is that of a stored query; else empty.
    QString storedName() const;
    QStringList recentNames() const { return m_options.recentQueries; }

    // The commands.
    void newQuery();
    void openFile();
    /// Opens this query file in place of the present query.
    void openFile(const QString &machinePath);
    bool save();
    bool saveAs();
    void importFile();
    void exportFile();
    void openRecent(const QString &name);
    void clear();
    void forward() { moveVersion(1); }
    void back() { moveVersion(-1); }
    void clearRecent();
    bool storeQuery();
    bool storeQueryAs(const QString &suggestion = {});
    void deleteQuery();
    void fetch(const QString &name);
    /// Asks to save, then loads the query file of a quick-launch button. Returns true if it can be executed.
    bool loadButton(const QString &path);

    /// Takes the text as version and runs the statements in it one by one; of several, stops at the first that does not
    /// succeed. part: of the text, such as the selection; empty for all of it. begins is told number and count of the
    /// statement that begins.
    Execution execute(tarnwick::Progress *progress, const TextPart &part = {},
                      const std::function<void(int, int)> &begins = {});

    /// Whether the text differs from the one whose rows are shown.
    bool isEditedSinceRun() const { return m_view.sql() != m_textOfRows; }

    /// Runs another statement than the text, such as one that makes an index; it belongs to the transaction.
    Execution executeOther(const QString &sql, tarnwick::Progress *progress);
    /// What the statements of the text, or of a part of it, read; see StatementWords. Throws its exceptions.
    QList<StatementWords> explain(const TextPart &part = {});

    /// The macros for expansion and printing. Copies the margins of the options into the layout.
    tarnwick::JMacro setUpMacros();
    /// The query with its macros expanded, for the preview.
    QueryDocument expanded();

    /// OK: asks whether to save, and commits. Returns false if the editor stays open.
    bool commit();
    /// Cancel: asks about what would be lost, and rolls back. Returns false if the editor stays open.
    bool cancel();

    /// The query with its versions, for recovery after a crash; empty if there is nothing to lose.
    QByteArray draft() const;
    void restoreDraft(const QByteArray &draft);
    static QString draftName(const QByteArray &draft);

    /// Former texts of stored queries, to be brought back: the names that have some, and the texts of one.
    QStringList namesWithFormerTexts() const;
    QList<QueryVersions::Version> formerTexts(const QString &name) const;
    /// Puts a former text into the editor.
    void bringBack(const QString &name, const QueryVersions::Version &version);

private:
    struct Draft;
    /// A query that was stored in the transaction.
    struct StoredText
    {
        QString name;
        QString sql;
    };

    bool askToSave(tarnwick::Buttons buttons = tarnwick::Buttons::YesNoCancel);
    bool load(const QString &machinePath);
    bool write(const QString &machinePath, bool isAdopted);
    bool storeUnder(const QString &name, Overwrite overwrite);
    void show(bool isModified);
    void adopt(const QString &name);
    void resetVersions() { m_versions.reset(m_view.sql()); }
    void moveVersion(int steps);
    void keepStoredTexts();
    tarnwick::UserPrompts &prompts() const { return m_setup.session.prompts(); }
    const tarnwick::PathRoots &roots() const { return m_setup.context.roots; }

    Setup m_setup;
    EditorView &m_view;
    SQLOptions m_options;
    QueryDocument m_document;
    EditorVersions m_versions;
    QString m_textOfRows; ///< text when the rows of the result were found
    QList<StoredText> m_stored;
    EditorTransaction m_transaction;
    QueryResult m_result;
};

} // namespace query
