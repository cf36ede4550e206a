#include "TubeFiles.h"

#include <brannock/InspPlan.h>
#include <functional>
#include <tarnwick/FileWriter.h>
#include <tarnwick/Format.h>

using namespace Qt::StringLiterals;
using brannock::Project;
using ellery::Axis;
using tarnwick::format;

namespace demo {

namespace {

constexpr int kSampleStride = 5;

QByteArray listText(const Project &project, const QString &suitePath, const QString &notes, const QList<int> &tubes)
{
    const ellery::SteamGen &gen = project.steamGen;
    QString text = format(u"# File %S\n", suitePath);
    text += format(u"# Date %t\n", project.outageDate());
    text += format(u"! %S\n", notes);
    text += format(u"# %5s ", u"ENTRY");
    if (gen.hasSections())
        text += format(u"%4S ", gen.axisNames[int(Axis::Sec)]);
    text += format(u"%4S %4S\n", gen.axisNames[int(Axis::Row)], gen.axisNames[int(Axis::Col)]);
    for (int i = 0; i < tubes.size(); ++i) {
        const ellery::TubeAddress &address = gen[tubes[i]].address;
        text += format(u"  %5d ", i);
        if (gen.hasSections())
            text += format(u"%4S ", gen.tubeLabel(Axis::Sec, address.sec));
        text += format(u"%4S %4S\n", gen.tubeLabel(Axis::Row, address.row), gen.tubeLabel(Axis::Col, address.col));
    }
    return text.toUtf8();
}

/// A tube list without entry numbers, as plants exchange them.
QByteArray plainText(const Project &project, const QString &notes, const QList<int> &tubes)
{
    const ellery::SteamGen &gen = project.steamGen;
    QString text = format(u"# %S\n", notes);
    for (const int tube : tubes) {
        const ellery::TubeAddress &address = gen[tube].address;
        if (gen.hasSections())
            text += gen.tubeLabel(Axis::Sec, address.sec) + u' ';
        text += gen.tubeLabel(Axis::Row, address.row) + u' ' + gen.tubeLabel(Axis::Col, address.col) + u'\n';
    }
    return text.toUtf8();
}

QList<int> tubesWhere(const Project &project, const std::function<bool(int)> &wanted)
{
    QList<int> tubes;
    for (int tube = 0; tube < project.steamGen.numTube(); ++tube) {
        if (wanted(tube))
            tubes.append(tube);
    }
    return tubes;
}

void writePlan(const Project &project, const QString &name, const QString &probe, const QString &begin,
               const QString &end, const QString &description, const QList<int> &tubes)
{
    brannock::InspPlan plan;
    plan.name = name;
    plan.probe = probe;
    plan.beginTest = begin;
    plan.endTest = end;
    plan.description = description;
    plan.createTime = project.outageDate();
    for (int i = 0; i < tubes.size(); ++i) {
        const ellery::TubeAddress &address = project.steamGen[tubes[i]].address;
        plan.entries.append({i, address.row, address.col, address.sec, 0, 0});
    }
    plan.storePlan(project.pathOf(u"plans\\"_s + name + u".pln"));
}

} // namespace

void writeTubeLists(const Project &project, const Flaws &flaws)
{
    const int present = int(project.outages.size()) - 1;
    const auto isPlugged = [&](int tube) { return flaws.of(tube).isPlugged(present); };
    const auto wears = [&](int tube) {
        const Condition condition = flaws.of(tube);
        return !condition.isPlugged(present) &&
               std::any_of(condition.flaws.begin(), condition.flaws.end(),
                           [&](const Flaw &flaw) { return flaw.growth > 0 && flaw.isThere(present); });
    };
    const std::pair<QString, QString> names[] = {{u"plugged"_s, u"Tubes out of service before the outage"_s},
                                                 {u"wear"_s, u"Tubes with wear that is watched"_s}};
    const QList<int> tubes[] = {tubesWhere(project, isPlugged), tubesWhere(project, wears)};
    for (int i = 0; i < 2; ++i) {
        const QString path = u"tube_lists\\"_s + names[i].first + u".lst";
        tarnwick::writeFileAtomically(project.pathOf(path), listText(project, path, names[i].second, tubes[i]));
    }
    const QList<int> periphery = tubesWhere(project, [&](int tube) { return project.steamGen[tube].periphery; });
    tarnwick::writeFileAtomically(project.pathOf(u"tube_lists\\periphery.txt"_s),
                                  plainText(project, u"Tubes on the bundle's edge"_s, periphery));
}

void writePlans(const Project &project, const Flaws &flaws)
{
    const int present = int(project.outages.size()) - 1;
    const ellery::LandmarkSet &landmarks = project.steamGen.landmarkSets.last();
    const QList<int> open = tubesWhere(project, [&](int tube) { return !flaws.of(tube).isPlugged(present); });
    writePlan(project, u"Bobbin full length"_s, project.probes[0].model, landmarks.landmarks.first().name,
              landmarks.landmarks.last().name, u"All tubes in service through their whole length."_s, open);
    QList<int> sample;
    for (qsizetype i = 0; i < open.size(); i += kSampleStride)
        sample.append(open[i]);
    writePlan(project, u"Rotating probe"_s, project.probes[1].model, landmarks[1].name, landmarks[1].name,
              u"One tube in five at the inlet tubesheet."_s, sample);
}

} // namespace demo
