#include "ComponentUpload.h"

#include "Messages.h"

#include <db/Errors.h>
#include <db/FieldAccess.h>
#include <db/SqlText.h>

using namespace Qt::StringLiterals;

namespace app {

namespace {

void storeTubes(dao::Database &database, const ellery::SteamGen &steamGen)
{
    db::executeSql(database, u"DELETE FROM tubes"_s);
    dao::Recordset rows(database);
    rows.open(dao::Recordset::Type::TableAppend, u"tubes"_s);
    for (const ellery::Tube &tube : steamGen.tubes()) {
        rows.addNew();
        db::setField(rows, u"sec"_s, tube.address.sec);
        db::setField(rows, u"row"_s, tube.address.row);
        db::setField(rows, u"col"_s, tube.address.col);
        db::setField(rows, u"x"_s, tube.x);
        db::setField(rows, u"y"_s, tube.y);
        db::setField(rows, u"is_periph"_s, tube.periphery);
        rows.update();
    }
}

void storeLandmark(dao::Recordset &rows, const ellery::LandmarkSet &set, const ellery::Landmark &landmark)
{
    rows.addNew();
    db::setField(rows, u"land_set"_s, qint32(set.number));
    db::setField(rows, u"number"_s, qint16(landmark.number));
    db::setField(rows, u"type"_s, landmark.type);
    db::setField(rows, u"name"_s, landmark.name);
    db::setField(rows, u"leg"_s, qint16(landmark.leg));
    db::setField(rows, u"pos"_s, landmark.pos);
    db::setField(rows, u"angle"_s, landmark.angle);
    db::setField(rows, u"first_row"_s, qint16(landmark.firstRow));
    db::setField(rows, u"last_row"_s, qint16(landmark.lastRow));
    rows.update();
}

void storeLandmarks(dao::Database &database, const ellery::SteamGen &steamGen)
{
    db::executeSql(database, u"DELETE FROM landmarks"_s);
    dao::Recordset rows(database);
    rows.open(dao::Recordset::Type::TableAppend, u"landmarks"_s);
    for (const ellery::LandmarkSet &set : steamGen.landmarkSets) {
        for (const ellery::Landmark &landmark : set.landmarks)
            storeLandmark(rows, set, landmark);
    }
}

} // namespace

bool uploadComponent(db::DatabaseSession &session, const ellery::SteamGen &steamGen)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    try {
        dao::Transaction transaction(session.workspace());
        prompts.status(messages::kUploadingModel);
        storeTubes(session.database(), steamGen);
        prompts.status(messages::kUploadingLandmarks);
        storeLandmarks(session.database(), steamGen);
        transaction.commit();
        prompts.status(messages::kUploadedModel);
        return true;
    } catch (const dao::DaoException &exception) {
        db::showDaoError(prompts, exception, messages::kUploadModelFailed);
        return false;
    }
}

} // namespace app
