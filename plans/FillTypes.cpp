#include "BoxFill.h"
#include "ListFill.h"
#include "PatternFill.h"
#include "PcntFill.h"
#include "QueryFill.h"

using namespace Qt::StringLiterals;

namespace plans {

namespace {

template <typename Fill>
class FillType : public MapFillType
{
public:
    FillType(const QString &typeKey, const QString &typeName)
        : MapFillType(typeKey, typeName)
    {
    }
    std::unique_ptr<MapFill> create() const override { return std::make_unique<Fill>(); }
};

} // namespace

const QList<const MapFillType *> &MapFillType::all()
{
    // A list, because registration by each source would leave the order of the tool buttons to the linker.
    static const FillType<PcntFill> pcnt(u"RAND FILL"_s, u"RANDOM"_s);
    static const FillType<QueryFill> query(u"QUERY"_s, u"QUERY"_s);
    static const FillType<ListFill> list(u"LIST FILL"_s, u"LIST"_s);
    static const FillType<BoxFill> box(u"BOX"_s, u"BOX"_s);
    static const FillType<PatternFill> pattern(u"PATTERN"_s, u"PATTERN"_s);
    static const QList<const MapFillType *> types{&pcnt, &query, &list, &box, &pattern};
    return types;
}

const MapFillType *MapFillType::find(QStringView key)
{
    for (const MapFillType *type : all()) {
        if (type->key == key)
            return type;
    }
    return nullptr;
}

} // namespace plans
