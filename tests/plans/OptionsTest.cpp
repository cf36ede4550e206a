#include "TestBundle.h"

#include <db/DatabaseSession.h>

#include <plans/BoxFill.h>
#include <plans/ListFill.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <plans/ProjectQueries.h>

#include <QTemporaryDir>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace plans {

namespace {

class FillOptionsTest : public testing::Test
{
protected:
    template <typename Options>
    Options storedAndLoaded(Options &options)
    {
        options.store(roots);
        Options read;
        EXPECT_TRUE(read.load(roots));
        return read;
    }

    QTemporaryDir folder;
    tarnwick::PathRoots roots{folder.path(), {}};
};

} // namespace

TEST_F(FillOptionsTest, ComeBackFromTheirFiles)
{
    PcntFillOptions random;
    EXPECT_FALSE(random.load(roots));
    EXPECT_EQ(random.parameters, (PcntFill::Parameters{10, 0, {}, true, true, 1}));
    random.parameters = {25, 7, {1, 2}, false, false, 4294967295U};
    EXPECT_EQ(storedAndLoaded(random).parameters, random.parameters);

    PatternFillOptions pattern;
    EXPECT_EQ(pattern.parameters, PatternFill::Parameters());
    pattern.parameters = {{1, 2}, 3, 4, true, false, 5, 6};
    EXPECT_EQ(storedAndLoaded(pattern).parameters, pattern.parameters);

    BoxFillOptions box;
    EXPECT_EQ(box.parameters.radius, 1.0);
    box.parameters.radius = 3.25;
    EXPECT_EQ(storedAndLoaded(box).parameters, box.parameters);

    ListFillOptions list;
    list.fileFilter = 2;
    list.fileHasEntryNumbers = true;
    const ListFillOptions read = storedAndLoaded(list);
    EXPECT_EQ(read.fileFilter, 2);
    EXPECT_TRUE(read.fileHasEntryNumbers);
}

TEST_F(FillOptionsTest, SymbolsOfQueriesAreRememberedWithoutRegardToCase)
{
    tarnwick::RecordingPrompts prompts;
    db::DatabaseSession session(prompts);
    query::QueryContext context;
    context.roots = roots;
    ProjectQueries queries(session, context);
    EXPECT_FALSE(queries.isReady());
    EXPECT_FALSE(queries.rememberedMark(u"queries\\a.qry"_s));
    queries.rememberMark(u"queries\\a.qry"_s, markOf(u'W', 0x112233));

    query::QueryContext later;
    later.roots = roots;
    ASSERT_TRUE(later.history.load(roots));
    const ProjectQueries again(session, later);
    EXPECT_EQ(again.rememberedMark(u"Queries\\A.QRY"_s), markOf(u'W', 0x112233));
    EXPECT_FALSE(again.rememberedMark(u"queries\\b.qry"_s));
}

} // namespace plans
