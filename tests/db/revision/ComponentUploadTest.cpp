#include "RevisionFixture.h"

#include <db/CreateDatabase.h>
#include <db/revision/ComponentUpload.h>

using namespace Qt::StringLiterals;

class ComponentUploadTest : public RevisionTest
{
protected:
    ComponentUploadTest()
    {
        make(old::Current);
        session.open(path);
    }

    bool upload(std::initializer_list<Answer> answers)
    {
        prompts.clear();
        prompts.answerWith(answers);
        return db::uploadComponent(session, project.steamGen);
    }
};

TEST_F(ComponentUploadTest, ReplacesTubesAndLandmarks)
{
    ASSERT_TRUE(upload({Answer::Yes}));
    EXPECT_EQ(questions(), QStringList{u"Are you sure you wish to upload the component to the database?"_s});
    EXPECT_EQ(said(Entry::Kind::Status),
              (QStringList{u"Uploading model ..."_s, u"Uploading landmarks ..."_s, u"Successfully uploaded model."_s}));
    EXPECT_EQ(rows(u"SELECT * FROM tubes WHERE row < 3 ORDER BY sec, row, col"_s),
              (QStringList{u"0|1|1|0.5|1|-1|0"_s, u"0|1|2|0.5|2|-1|0"_s, u"0|2|1|1|1|0|0"_s, u"0|2|2|1|2|0|0"_s}));
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), 6);
    EXPECT_EQ(rows(u"SELECT * FROM landmarks ORDER BY land_set, number"_s),
              (QStringList{u"0|TE|TEH|1|0|0|0|999|1"_s, u"1|TS|TSH|1|20.5|0|0|20|1"_s, u"0|TE|TEH|1|0|0|0|999|2"_s}));
}

TEST_F(ComponentUploadTest, DeclinedOrFailedChangesNothing)
{
    const QByteArray before = bytes();
    EXPECT_FALSE(upload({Answer::No}));
    EXPECT_EQ(bytes(), before);

    // A landmark that stands twice in its set.
    project.steamGen.landmarkSets[0].landmarks.append(project.steamGen.landmarkSets[0].landmarks.first());
    EXPECT_FALSE(upload({Answer::Yes}));
    EXPECT_EQ(errors(), QStringList{u"1031 Could not upload model."_s});
    EXPECT_EQ(bytes(), before);
}

TEST_F(ComponentUploadTest, NeedsAConnectionThatCanBeUpdated)
{
    session.open(path, dao::OpenMode::ReadOnly);
    EXPECT_FALSE(upload({}));
    EXPECT_EQ(errors(), QStringList{u"1031 Could not upload model."_s});
    session.close();
    EXPECT_FALSE(upload({}));
    EXPECT_EQ(errors(), QStringList{u"1053 Connect to a database first."_s});
}
