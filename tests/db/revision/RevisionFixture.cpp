#include "RevisionFixture.h"

#include <db/SqlText.h>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

ellery::SteamGen smallSteamGen()
{
    ellery::SteamGen steamGen;
    steamGen.name = u"SGA"_s;
    QList<ellery::Tube> tubes;
    for (qint16 row = 1; row <= 3; ++row)
        for (qint16 col = 1; col <= 2; ++col)
            tubes.append({{0, row, col}, float(row) / 2, float(col), row == 1});
    steamGen.setTubes(tubes);
    steamGen.labels[int(ellery::Axis::Row)] = QStringList{u"A"_s, u"B"_s, QString(), u"D"_s};
    ellery::LandmarkSet set;
    set.number = 1;
    set.landmarks.append({0, u"TE"_s, u"TEH"_s, 1, 0, 0, 0, 999, true});
    set.landmarks.append({1, u"TS"_s, u"TSH"_s, 1, 20.5F, 0, 0, 20, true});
    steamGen.landmarkSets.append(set);
    set.number = 2;
    set.landmarks.removeLast();
    steamGen.landmarkSets.append(set);
    return steamGen;
}

RevisionTest::RevisionTest()
    : session(prompts)
    , path(folder.path(u"arvo/project.mdb"_s))
{
    EXPECT_TRUE(QDir().mkpath(folder.path(u"arvo"_s)));
    project.folder = folder.path();
    project.site.siteCode = u"P1"_s;
    project.site.compCode = u"PC"_s;
    project.currentOutage = u"P12"_s;
    project.outages.append({u"P12"_s, {}});
    project.steamGen = smallSteamGen();
}

QByteArray RevisionTest::makeOld(const old::Sizes &sizes, int shapes)
{
    make(shapes, sizes);
    connect({Answer::No});
    session.close();
    return bytes();
}

bool RevisionTest::connect(std::initializer_list<Answer> answers)
{
    return connectTo(path, answers);
}

bool RevisionTest::connectTo(const QString &file, std::initializer_list<Answer> answers)
{
    prompts.clear();
    prompts.answerWith(answers);
    return db::connectDatabase(session, file, {&project, this, progress});
}

QString RevisionTest::sample(const QString &name)
{
    return QDir(qEnvironmentVariable("ARVO_TESTDATA")).filePath(name + u".mdb"_s);
}

bool RevisionTest::takeSample(const QString &name)
{
    session.close();
    QFile::remove(path);
    return !qEnvironmentVariableIsEmpty("ARVO_TESTDATA") && QFile::copy(sample(name), path) &&
           QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

QStringList RevisionTest::fieldsOf(const dao::TableInfo &table)
{
    QStringList names;
    for (const dao::FieldInfo &field : table.fields)
        names.append(field.name);
    names.sort();
    return names;
}

QStringList RevisionTest::indexes(const QString &table)
{
    QStringList texts;
    for (const dao::IndexInfo &index : database().table(table).indexes) {
        QStringList names;
        for (const dao::IndexField &field : index.fields)
            names.append(field.name);
        texts.append(index.name + (index.primary ? u" primary "_s : u" "_s) + names.join(u','));
    }
    return texts;
}

int RevisionTest::number(const QString &sql)
{
    return int(db::firstValue(database(), sql).integer());
}

QStringList RevisionTest::errors() const
{
    QStringList lines;
    for (const Entry &entry : prompts.entries())
        if (entry.kind == Entry::Kind::Error)
            lines.append(QString::number(entry.number) + u' ' + entry.text.section(u'\n', 0, 0));
    return lines;
}
