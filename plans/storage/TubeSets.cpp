#include "TubeSets.h"

#include "Messages.h"
#include "NamedRows.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/SqlText.h>
#include <tarnwick/Failures.h>

namespace plans {

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::Outcome;

namespace {

tarnwick::Error noneNamed()
{
    return tarnwick::Error(u"There is no tube set of this name in the database."_s);
}

const QStringList kFields{u"entry_num"_s, u"row"_s, u"col"_s, u"sec"_s, u"symbol"_s, u"color"_s};
constexpr const char16_t *kRepeatedNumber =
    u"Two entries of the list have the same entry number. \"Util | Set Index\" numbers them anew.";

TubeList readSet(dao::Database &database, const QString &name)
{
    TubeList list;
    list.name = name;
    bool isFound = false;
    {
        dao::Recordset set(database);
        set.open(dao::Recordset::Type::Snapshot, db::sqlText(u"SELECT * FROM tube_sets WHERE name = '%S'", name));
        for (; !set.isEof(); set.moveNext()) {
            list.description = db::getField<QString>(set, u"desc"_s);
            isFound = true;
        }
    }
    if (!isFound)
        throw noneNamed();
    readEntries(database, kTubeSetTables, name, kFields, [&](const QList<dao::Value> &cells) {
        ListFillTube tube;
        tube.entryNum = db::fieldAs<qint32>(cells[0]);
        tube.row = db::fieldAs<qint16>(cells[1]);
        tube.col = db::fieldAs<qint16>(cells[2]);
        tube.sec = db::fieldAs<qint16>(cells[3]);
        tube.mark = {ellery::Symbol(char16_t(db::fieldAs<qint16>(cells[4]))),
                     tarnwick::ColourRef(quint32(db::fieldAs<qint32>(cells[5])))};
        list.entries.append(tube);
    });
    return list;
}

} // namespace

std::optional<QList<TubeSets::Info>> TubeSets::list()
{
    if (!db::checkConnected(m_session))
        return std::nullopt;
    QList<Info> sets;
    const auto read = [&] {
        dao::Recordset rows(m_session.database());
        rows.open(
            dao::Recordset::Type::Snapshot,
            u"SELECT name, [desc], (SELECT COUNT(*) FROM tube_set_entry WHERE tube_set_entry.name = tube_sets.name)"
            u" AS entries FROM tube_sets ORDER BY name"_s);
        for (; !rows.isEof(); rows.moveNext())
            sets.append(
                {db::getField<QString>(rows, 0), db::getField<QString>(rows, 1), db::getField<qint32>(rows, 2)});
    };
    if (!tarnwick::attempt(m_session.prompts(), read, messages::kListSets))
        return std::nullopt;
    return sets;
}

std::optional<TubeList> TubeSets::fetch(const QString &name)
{
    if (name.isEmpty() || !db::checkConnected(m_session))
        return std::nullopt;
    TubeList list;
    const dao::ProgressScope stoppable(m_session.database(), m_progress);
    const auto read = [&] { list = readSet(m_session.database(), name); };
    const Outcome outcome = tarnwick::attemptCancellable(m_session.prompts(), read, messages::kFetchSet, name);
    if (outcome != Outcome::Failed)
        m_session.prompts().status(outcome == Outcome::Done ? messages::kSetFetched : messages::kFetchCancelled);
    if (outcome != Outcome::Done)
        return std::nullopt;
    return list;
}

void TubeSets::add(const TubeList &list, const QString &name) const
{
    bool areEntries = false; // the name of the set can be refused, too
    try {
        NamedUpload{.session = m_session,
                    .progress = m_progress,
                    .tables = kTubeSetTables,
                    .name = name,
                    .describe = [&](dao::Recordset &row) { db::setField(row, u"desc"_s, list.description); },
                    .fields = kFields,
                    .count = list.entries.size(),
                    .entry =
                        [&](qsizetype index, dao::Value *values) {
                            areEntries = true;
                            const ListFillTube &tube = list.entries[index];
                            *values++ = db::toValue(tube.entryNum);
                            *values++ = db::toValue(tube.row);
                            *values++ = db::toValue(tube.col);
                            *values++ = db::toValue(tube.sec);
                            *values++ = db::toValue(qint16(tube.mark.symbol.character()));
                            *values++ = db::toValue(qint32(tube.mark.colour.value()));
                        }}
            .run();
    } catch (const dao::DaoException &exception) {
        if (!areEntries || exception.number() != dao::error::DuplicateKey)
            throw;
        throw tarnwick::Error(exception.details() + u"\n\n"_s + QString::fromUtf16(kRepeatedNumber));
    }
}

bool TubeSets::isDone(tarnwick::Outcome outcome) const
{
    if (outcome == Outcome::Cancelled)
        m_session.prompts().status(messages::kUploadSetCancelled);
    return outcome == Outcome::Done;
}

bool TubeSets::mayStore(const TubeList &list, const QString &name)
{
    tarnwick::UserPrompts &prompts = m_session.prompts();
    qint64 existing = 0;
    const auto look = [&] { existing = countNamed(m_session.database(), kTubeSetTables, name); };
    if (!tarnwick::attempt(prompts, look, messages::kCheckSetExists))
        return false;
    if (existing == 0)
        return true;
    const auto tryOut = [&] {
        tryNamed(m_session, [&] {
            deleteNamed(m_session, kTubeSetTables, name);
            add(list, name);
        });
    };
    if (!isDone(tarnwick::attemptCancellable(prompts, tryOut, messages::kUploadSet, name)))
        return false;
    if (prompts.question(Buttons::OkCancel, messages::kAskReplaceSet) != Answer::Ok ||
        prompts.question(Buttons::YesNo, messages::kAreYouSure) != Answer::Yes) {
        prompts.status(messages::kUploadSetCancelled);
        return false;
    }
    const auto remove = [&] { deleteNamed(m_session, kTubeSetTables, name); };
    m_hasDeleted = tarnwick::attempt(prompts, remove, messages::kDeleteSet, name);
    return m_hasDeleted;
}

bool TubeSets::upload(const TubeList &list, const QString &name)
{
    if (name.isEmpty() || !db::checkConnected(m_session) || !mayStore(list, name))
        return false;
    tarnwick::UserPrompts &prompts = m_session.prompts();
    prompts.status(messages::kUploadingSet, name);
    const auto store = [&] { add(list, name); };
    if (!isDone(tarnwick::attemptCancellable(prompts, store, messages::kUploadSet, name)))
        return false;
    prompts.status(messages::kSetUploaded);
    return true;
}

bool TubeSets::remove(const QString &name, Asks asks)
{
    tarnwick::UserPrompts &prompts = m_session.prompts();
    if (name.isEmpty() || !db::checkConnected(m_session) ||
        (asks == Asks::First && prompts.question(Buttons::YesNo, messages::kAskDeleteSet) != Answer::Yes))
        return false;
    const auto remove = [&] {
        if (!deleteNamed(m_session, kTubeSetTables, name))
            throw noneNamed();
    };
    if (!tarnwick::attempt(prompts, remove, messages::kDeleteSet, name))
        return false;
    prompts.status(messages::kSetDeleted);
    return true;
}

} // namespace plans
