#include "RevisionFixture.h"

#include <dao/Recordset.h>
#include <db/SqlText.h>
#include <QDir>

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

QStringList RevisionTest::fields(const QString &table)
{
    QStringList names;
    for (const dao::FieldInfo &field : database().table(table).fields)
        names.append(field.name);
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

static QString cell(const dao::Value &value)
{
    using Type = dao::Value::Type;
    switch (value.type()) {
    case Type::Null:
        return u"-"_s;
    case Type::Text:
        return value.text().isEmpty() ? u"''"_s : value.text();
    case Type::Float:
    case Type::Double:
    case Type::Date:
        return QString::number(value.real());
    default:
        return QString::number(value.integer());
    }
}

QStringList RevisionTest::rows(const QString &sql)
{
    QStringList lines;
    dao::Recordset recordset(database());
    for (recordset.open(dao::Recordset::Type::Snapshot, sql); !recordset.isEof(); recordset.moveNext()) {
        QStringList cells;
        for (int i = 0; i < recordset.fieldCount(); ++i)
            cells.append(cell(recordset.value(i)));
        lines.append(cells.join(u'|'));
    }
    return lines;
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
