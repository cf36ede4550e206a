// The two ways out of the SQL editor, and its work after a crash.
#include "Messages.h"
#include "QueryEditor.h"

#include <tarnwick/Failures.h>

namespace query {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::JFile;

/// The work of an editor as bytes.
struct QueryEditor::Draft
{
    QueryDocument document;
    QStringList texts;

    void serialize(JFile &file)
    {
        constexpr int kVersion = 1;
        file.version(kVersion);
        document.serialize(file);
        file.serialize(texts);
    }
    static Draft read(const QByteArray &bytes)
    {
        JFile file = JFile::fromBytes(bytes, u"draft"_s);
        Draft draft;
        draft.serialize(file);
        return draft;
    }
};

bool QueryEditor::commit()
{
    if (m_view.isModified()) {
        const Answer answer = prompts().question(tarnwick::Buttons::YesNo, messages::kAskSaveQuery, m_document.name);
        if (answer == Answer::Yes && !(m_document.isFile() ? save() : storeQuery()))
            return false;
    }
    if (!askToDropRows(m_result, prompts()) || !m_transaction.commit())
        return false;
    m_stored.clear();
    return true;
}

bool QueryEditor::cancel()
{
    if (!askToSave() || !askToDropRows(m_result, prompts()))
        return false;
    const int count = m_transaction.changeCount();
    const QString changes = m_transaction.changes().join(u'\n');
    const auto mayUndo = [&] {
        using enum tarnwick::Buttons;
        return count == 1 ? prompts().question(NoYes, messages::kAskUndoChange, changes)
                          : prompts().question(NoYes, messages::kAskUndoChanges, count, changes);
    };
    if (count > 0 && mayUndo() != Answer::Yes)
        return false;
    m_transaction.rollback();
    keepStoredTexts();
    return true;
}

/// Texts that were stored in the transaction are versions of their queries now: they can be brought back.
void QueryEditor::keepStoredTexts()
{
    for (const StoredText &stored : std::exchange(m_stored, {})) {
        const auto keep = [&] {
            QueryVersions(m_setup.session.path()).keep(stored.name, stored.sql, QDateTime::currentDateTimeUtc());
        };
        tarnwick::attempt(prompts(), keep, messages::kReadVersions);
    }
}

QByteArray QueryEditor::draft() const
{
    if (!m_view.isModified() && !m_versions.canMove() && m_stored.isEmpty())
        return {};
    Draft draft{.document = m_document, .texts = m_versions.texts()};
    m_view.collect(draft.document);
    for (const StoredText &stored : m_stored) {
        if (!draft.texts.contains(stored.sql))
            draft.texts.append(stored.sql);
    }
    JFile file = JFile::forWriting(u"draft"_s);
    draft.serialize(file);
    return file.bytes();
}

void QueryEditor::restoreDraft(const QByteArray &bytes)
{
    const Draft draft = Draft::read(bytes);
    m_document = draft.document;
    show(true); // a text that was stored in a transaction has gone with it
    m_view.queriesChanged();
    m_versions.restore(draft.texts);
}

QString QueryEditor::draftName(const QByteArray &bytes)
{
    const QString name = Draft::read(bytes).document.name;
    return name.isEmpty() ? u"query"_s : u"query \"%1\""_s.arg(name);
}

} // namespace query
