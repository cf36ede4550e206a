#include "ComponentUpload.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <dao/values/Errors.h>
#include <db/Errors.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>
#include <fenwright/TableScanner.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

/// Writes rows of one table; the ordinals of the fields are looked up once.
class Rows
{
public:
    Rows(dao::Database &database, const QString &table, const QStringList &fields)
        : m_rows(database)
    {
        executeSql(database, u"DELETE FROM "_s + table);
        m_rows.open(dao::Recordset::Type::TableAppend, table);
        for (const QString &field : fields)
            m_fields.append(requireField(m_rows, field));
    }

    /// Takes one value for each of the fields.
    template <typename... Values>
    void add(const Values &...values)
    {
        qsizetype next = 0;
        m_rows.addNew();
        (setField(m_rows, m_fields[next++], values), ...);
        m_rows.update();
    }

private:
    dao::Recordset m_rows;
    QList<int> m_fields;
};

void uploadTubes(dao::Database &database, const ellery::SteamGen &steamGen, tarnwick::Progress *progress)
{
    tarnwick::ProgressLoop loop(progress, steamGen.numTube(), QString::fromUtf16(messages::kUploadingModel.text));
    Rows rows(database, u"tubes"_s, {u"sec"_s, u"row"_s, u"col"_s, u"x"_s, u"y"_s, u"is_periph"_s});
    qint64 count = 0;
    for (const ellery::Tube &tube : steamGen.tubes()) {
        rows.add(tube.address.sec, tube.address.row, tube.address.col, tube.x, tube.y, tube.periphery);
        loop.tick(++count);
    }
}

void uploadLandmarks(dao::Database &database, const ellery::SteamGen &steamGen)
{
    Rows rows(database, u"landmarks"_s,
              {u"land_set"_s, u"number"_s, u"type"_s, u"name"_s, u"leg"_s, u"pos"_s, u"angle"_s, u"first_row"_s,
               u"last_row"_s});
    for (const ellery::LandmarkSet &set : steamGen.landmarkSets)
        for (const ellery::Landmark &landmark : set.landmarks)
            rows.add(qint32(set.number), qint32(landmark.number), landmark.type, landmark.name, qint32(landmark.leg),
                     landmark.pos, landmark.angle, qint32(landmark.firstRow), qint32(landmark.lastRow));
}

void upload(DatabaseSession &session, const ellery::SteamGen &steamGen, tarnwick::Progress *progress)
{
    dao::Database &database = session.database();
    const dao::ProgressScope stoppable(database, progress);
    dao::Transaction transaction(session.workspace());
    session.prompts().status(messages::kUploadingModel);
    uploadTubes(database, steamGen, progress);
    session.prompts().status(messages::kUploadingLandmarks);
    uploadLandmarks(database, steamGen);
    transaction.commit();
}

bool ask(tarnwick::UserPrompts &prompts, const ellery::SteamGen &steamGen)
{
    QString text = QString::fromUtf16(messages::kAskUploadModel.text);
    if (const QString remark = fenwright::uncountedRemark(steamGen.uncountedTables); !remark.isEmpty())
        text += QStringLiteral("\n\n") + remark;
    return prompts.ask(tarnwick::Buttons::YesNo, text, messages::kAskUploadModel.number) == tarnwick::Answer::Yes;
}

} // namespace

bool uploadComponent(DatabaseSession &session, const ellery::SteamGen &steamGen, tarnwick::Progress *progress)
{
    if (!checkConnected(session))
        return false;
    tarnwick::UserPrompts &prompts = session.prompts();
    bool isUploaded = false;
    const auto askAndUpload = [&] {
        if (!session.isUpdatable())
            throw dao::DaoException(dao::error::ReadOnly, u"DAO.Database"_s, dao::errorText(dao::error::ReadOnly));
        if (!ask(prompts, steamGen))
            return;
        upload(session, steamGen, progress);
        prompts.status(messages::kUploadedModel);
        isUploaded = true;
    };
    if (attemptCancellable(prompts, askAndUpload, messages::kUploadModel) == tarnwick::Outcome::Cancelled)
        prompts.status(messages::kUploadModelCancelled);
    return isUploaded;
}

} // namespace db
