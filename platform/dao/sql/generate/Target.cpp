#include "Target.h"

using namespace Qt::StringLiterals;

namespace dao::sql::generate {

const Target &sqliteTarget()
{
    static const Target target{
        .functionPrefix = u"jet_",
        .notingPrefix = u"try_",
        .placing = u"cell_placed",
        .sourcePrefix = u"_s",
        .columnPrefix = u"_c",
        .keyPrefix = u"_k",
        .parameterPrefix = u"?",
        .caseless = u" COLLATE NOCASE",
        .trueValue = u"1",
        .limit = u" LIMIT ",
        .lesser = u"min",
        .greater = u"max",
        .materialisedTable = u"_materialised",
        .temporary = u"temp",
        .stopFunction = u"dao_cancelled",
    };
    return target;
}

} // namespace dao::sql::generate
