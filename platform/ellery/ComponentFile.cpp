#include "ComponentFile.h"

#include <fenwright/JsonSettings.h>
#include <fenwright/TableScanner.h>
#include <QDir>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using fenwright::JsonSettings;
using fenwright::TableScanner;
using fenwright::TableWriter;

namespace ellery {

namespace {

constexpr int kVersion = 1;
constexpr QStringView kFormat = u"component";
constexpr QStringView kAxisWords[] = {u"row", u"col", u"sec", u"leg"};

QString fileIn(const QString &folder, QStringView name)
{
    return QDir(folder).filePath(name.toString());
}

void readSettings(const QString &path, SteamGen &gen)
{
    const JsonSettings settings = JsonSettings::read(path, kFormat.toString(), kVersion);
    gen.name = settings.requiredText(u"name"_s);
    gen.modelName = settings.text(u"model"_s, gen.name);
    const JsonSettings pitch = settings.section(u"pitch"_s);
    const QString kind = pitch.text(u"kind"_s, u"square"_s);
    if (kind != u"square" && kind != u"triangular")
        pitch.fail(u"kind"_s, u"\"square\" or \"triangular\" is needed"_s);
    gen.triangular = kind == u"triangular";
    gen.pitch = float(pitch.number(u"distance"_s, 1));
    if (!(gen.pitch > 0))
        pitch.fail(u"distance"_s, u"a number above 0 is needed"_s);
    const JsonSettings axes = settings.section(u"axes"_s);
    for (int axis = 0; axis < 4; ++axis)
        gen.axisNames[axis] = axes.text(kAxisWords[axis].toString(), gen.axisNames[axis]);
    gen.labels[int(Axis::Leg)] = settings.texts(u"legs"_s);
    for (const JsonSettings &entry : settings.list(u"landmark_sets"_s)) {
        LandmarkSet set;
        set.number = entry.integer(u"number"_s, 0, kMaxTubeNumber, int(gen.landmarkSets.size()));
        set.firstRow = entry.integer(u"first_row"_s, 0, kMaxTubeNumber, 0);
        set.lastRow = entry.integer(u"last_row"_s, 0, kMaxTubeNumber, kMaxTubeNumber);
        set.bendLengthPerRow = float(entry.number(u"bend_length_per_row"_s, 0));
        for (const LandmarkSet &other : std::as_const(gen.landmarkSets)) {
            if (other.number == set.number)
                entry.fail(u"number"_s, u"landmark set %1 occurs twice"_s.arg(set.number));
        }
        gen.landmarkSets.append(set);
    }
}

TableScanner openTable(const QString &path, const QStringList &requiredColumns, SteamGen &gen)
{
    TableScanner table = TableScanner::open(path, requiredColumns);
    if (!table.isCounted())
        gen.uncountedTables.append(QFileInfo(path).fileName());
    return table;
}

QList<Tube> readTubes(const QString &path, SteamGen &gen)
{
    TableScanner table = openTable(path, {u"row"_s, u"col"_s, u"x"_s, u"y"_s}, gen);
    const int sec = table.column(u"sec");
    const int row = table.column(u"row");
    const int col = table.column(u"col");
    const int x = table.column(u"x");
    const int y = table.column(u"y");
    const int periphery = table.column(u"periphery");
    QList<Tube> tubes;
    QHash<quint64, int> lines;
    while (table.next()) {
        table.requireCells();
        Tube tube;
        tube.address.sec = qint16(table.integer(sec, 0, kMaxTubeNumber, 0));
        tube.address.row = qint16(table.integer(row, 0, kMaxTubeNumber));
        tube.address.col = qint16(table.integer(col, 0, kMaxTubeNumber));
        tube.x = table.single(x);
        tube.y = table.single(y);
        tube.periphery = table.flag(periphery, false);
        int &line =
            lines[quint64(tube.address.sec) << 32 | quint64(tube.address.row) << 16 | quint64(tube.address.col)];
        if (line != 0) {
            table.fail(
                u"The tube of section %1, row %2, column %3 occurs twice, in lines %4 and %5."_s.arg(tube.address.sec)
                    .arg(tube.address.row)
                    .arg(tube.address.col)
                    .arg(line)
                    .arg(table.line()));
        }
        line = table.line();
        tubes.append(tube);
    }
    if (tubes.isEmpty())
        throw tarnwick::FileError(path, 0, u"The file lists no tubes."_s);
    return tubes;
}

Axis axisOf(const TableScanner &table, int column)
{
    const QString word = table.text(column).trimmed().toLower();
    for (int axis = 0; axis < 4; ++axis) {
        if (word == kAxisWords[axis])
            return Axis(axis);
    }
    table.fail(column, u"'%1' is not one of row, col, sec, leg"_s.arg(word));
}

void readLabels(const QString &path, SteamGen &gen)
{
    TableScanner table = openTable(path, {u"axis"_s, u"number"_s, u"label"_s}, gen);
    const int axisColumn = table.column(u"axis");
    const int numberColumn = table.column(u"number");
    const int labelColumn = table.column(u"label");
    QHash<QString, int> lines; // keys "axis number" and "axis=label"
    const auto onlyOnce = [&](const QString &what, const QString &key) {
        int &line = lines[key];
        if (line != 0)
            table.fail(u"%1 occurs twice, in lines %2 and %3."_s.arg(what).arg(line).arg(table.line()));
        line = table.line();
    };
    while (table.next()) {
        table.requireCells();
        const Axis axis = axisOf(table, axisColumn);
        const int number = table.integer(numberColumn, 0, kMaxTubeNumber);
        const QString label = table.text(labelColumn).trimmed();
        if (label.isEmpty())
            continue;
        const QString word = kAxisWords[int(axis)].toString();
        onlyOnce(u"The label of %1 %2"_s.arg(word).arg(number), u"%1 %2"_s.arg(word).arg(number));
        onlyOnce(u"The %1 label '%2'"_s.arg(word, label), u"%1=%2"_s.arg(word, label.toLower()));
        QStringList &list = gen.labels[int(axis)];
        if (list.size() <= number)
            list.resize(number + 1);
        list[number] = label;
    }
}

LandmarkSet &setOfNumber(const TableScanner &table, int column, SteamGen &gen)
{
    const int number = table.integer(column, 0, kMaxTubeNumber, 0);
    for (LandmarkSet &set : gen.landmarkSets) {
        if (set.number == number)
            return set;
    }
    // The first set needs no entry in component.json: it applies to all rows.
    if (!gen.landmarkSets.isEmpty() || number != 0)
        table.fail(column, u"component.json has no landmark set %1"_s.arg(number));
    gen.landmarkSets.append(LandmarkSet());
    return gen.landmarkSets.last();
}

void readLandmarks(const QString &path, SteamGen &gen)
{
    TableScanner table = openTable(path, {u"type"_s, u"name"_s, u"pos"_s}, gen);
    const int set = table.column(u"set");
    const int number = table.column(u"number");
    const int name = table.column(u"name");
    const int type = table.column(u"type");
    const int leg = table.column(u"leg");
    const int pos = table.column(u"pos");
    const int angle = table.column(u"angle");
    const int firstRow = table.column(u"first_row");
    const int lastRow = table.column(u"last_row");
    const int forward = table.column(u"forward");
    QHash<QString, int> lines;
    while (table.next()) {
        table.requireCells();
        LandmarkSet &owner = setOfNumber(table, set, gen);
        Landmark landmark;
        landmark.number = table.integer(number, 0, 0x7FFF, int(owner.landmarks.size()));
        landmark.type = table.text(type).trimmed();
        landmark.name = table.text(name).trimmed();
        if (landmark.type.isEmpty() || landmark.name.isEmpty())
            table.fail(landmark.type.isEmpty() ? type : name, u"the cell is empty"_s);
        landmark.leg = table.integer(leg, -1, 2, 0);
        landmark.pos = table.single(pos);
        landmark.angle = table.single(angle, 0);
        landmark.firstRow = table.integer(firstRow, 0, kMaxTubeNumber, 0);
        landmark.lastRow = table.integer(lastRow, 0, kMaxTubeNumber, kMaxTubeNumber);
        landmark.forward = table.flag(forward, true);
        // In the database the names of a set's landmarks must be unique, ignoring case.
        int &line = lines[u"%1 %2"_s.arg(owner.number).arg(landmark.name.toLower())];
        if (line != 0)
            table.fail(u"Landmark '%1' occurs twice in set %2, in lines %3 and %4."_s.arg(landmark.name)
                           .arg(owner.number)
                           .arg(line)
                           .arg(table.line()));
        line = table.line();
        owner.landmarks.append(landmark);
    }
}

void readMarks(const QString &path, SteamGen &gen)
{
    TableScanner table = openTable(path, {u"x"_s, u"y"_s}, gen);
    const int x = table.column(u"x");
    const int y = table.column(u"y");
    const int kind = table.column(u"kind");
    while (table.next()) {
        table.requireCells();
        gen.stayRods.append(Mark{table.single(x), table.single(y), table.integer(kind, 0, kMaxTubeNumber, 0)});
    }
}

void writeSettings(const SteamGen &gen, const QString &path)
{
    QJsonObject axes;
    for (int axis = 0; axis < 4; ++axis)
        axes.insert(kAxisWords[axis].toString(), gen.axisNames[axis]);
    QJsonArray sets;
    for (const LandmarkSet &set : gen.landmarkSets) {
        sets.append(QJsonObject{{u"number"_s, set.number},
                                {u"first_row"_s, set.firstRow},
                                {u"last_row"_s, set.lastRow},
                                {u"bend_length_per_row"_s, fenwright::jsonNumber(set.bendLengthPerRow)}});
    }
    QJsonObject object{{u"name"_s, gen.name},
                       {u"model"_s, gen.modelName},
                       {u"pitch"_s, QJsonObject{{u"kind"_s, gen.triangular ? u"triangular"_s : u"square"_s},
                                                {u"distance"_s, fenwright::jsonNumber(gen.pitch)}}},
                       {u"axes"_s, axes},
                       {u"landmark_sets"_s, sets}};
    if (!gen.labels[int(Axis::Leg)].isEmpty())
        object.insert(u"legs"_s, QJsonArray::fromStringList(gen.labels[int(Axis::Leg)]));
    fenwright::writeJsonSettings(path, kFormat.toString(), kVersion, object);
}

QByteArray tubesText(const SteamGen &gen)
{
    TableWriter table;
    table.heading({u"sec"_s, u"row"_s, u"col"_s, u"x"_s, u"y"_s, u"periphery"_s});
    for (const Tube &tube : gen.tubes()) {
        table.cell(tube.address.sec);
        table.cell(tube.address.row);
        table.cell(tube.address.col);
        table.cell(tube.x);
        table.cell(tube.y);
        table.cell(int(tube.periphery));
        table.endRow();
    }
    return table.bytes();
}

/// Empty if there are none.
QByteArray labelsText(const SteamGen &gen)
{
    TableWriter table;
    table.heading({u"axis"_s, u"number"_s, u"label"_s});
    bool any = false;
    // Labels of legs are in component.json.
    for (const Axis axis : {Axis::Row, Axis::Col, Axis::Sec}) {
        const QStringList &list = gen.labels[int(axis)];
        for (int number = 0; number < list.size(); ++number) {
            if (list[number].isEmpty())
                continue;
            table.cell(kAxisWords[int(axis)]);
            table.cell(number);
            table.cell(list[number]);
            table.endRow();
            any = true;
        }
    }
    return any ? table.bytes() : QByteArray();
}

QByteArray landmarksText(const SteamGen &gen)
{
    TableWriter table;
    table.heading({u"set"_s, u"number"_s, u"type"_s, u"name"_s, u"leg"_s, u"pos"_s, u"angle"_s, u"first_row"_s,
                   u"last_row"_s, u"forward"_s});
    bool any = false;
    for (const LandmarkSet &set : gen.landmarkSets) {
        for (const Landmark &landmark : set.landmarks) {
            table.cell(set.number);
            table.cell(landmark.number);
            table.cell(landmark.type);
            table.cell(landmark.name);
            table.cell(landmark.leg);
            table.cell(landmark.pos);
            table.cell(landmark.angle);
            table.cell(landmark.firstRow);
            table.cell(landmark.lastRow);
            table.cell(int(landmark.forward));
            table.endRow();
            any = true;
        }
    }
    return any ? table.bytes() : QByteArray();
}

QByteArray marksText(const SteamGen &gen)
{
    TableWriter table;
    table.heading({u"x"_s, u"y"_s, u"kind"_s});
    for (const Mark &mark : gen.stayRods) {
        table.cell(mark.x);
        table.cell(mark.y);
        table.cell(mark.kind);
        table.endRow();
    }
    return gen.stayRods.isEmpty() ? QByteArray() : table.bytes();
}

} // namespace

SteamGen readComponent(const QString &folder)
{
    SteamGen gen;
    readSettings(fileIn(folder, u"component.json"), gen);
    gen.setTubes(readTubes(fileIn(folder, u"tubes.txt"), gen));
    const std::pair<QStringView, void (*)(const QString &, SteamGen &)> optionalFiles[] = {
        {u"labels.txt", readLabels}, {u"landmarks.txt", readLandmarks}, {u"marks.txt", readMarks}};
    for (const auto &[name, read] : optionalFiles) {
        if (QFile::exists(fileIn(folder, name)))
            read(fileIn(folder, name), gen);
    }
    return gen;
}

void writeComponent(const SteamGen &steamGen, const QString &folder)
{
    tarnwick::writeFileAtomically(fileIn(folder, u"tubes.txt"), tubesText(steamGen));
    const std::pair<QStringView, QByteArray> optionalFiles[] = {{u"labels.txt", labelsText(steamGen)},
                                                                {u"landmarks.txt", landmarksText(steamGen)},
                                                                {u"marks.txt", marksText(steamGen)}};
    for (const auto &[name, content] : optionalFiles) {
        if (!content.isEmpty())
            tarnwick::writeFileAtomically(fileIn(folder, name), content);
        else if (QFile::exists(fileIn(folder, name)) && !QFile::remove(fileIn(folder, name)))
            throw tarnwick::FileError(fileIn(folder, name), 0, u"The file cannot be removed."_s);
    }
    writeSettings(steamGen, fileIn(folder, u"component.json"));
}

} // namespace ellery
