#include "InspPlan.h"

#include "EntryOrder.h"

#include <algorithm>
#include <fenwright/CellText.h>
#include <fenwright/TableScanner.h>
#include <tarnwick/FileWriter.h>
#include <tuple>

using namespace Qt::StringLiterals;
using fenwright::TableScanner;
using fenwright::TableWriter;
using tarnwick::JDateTime;

namespace brannock {

namespace {

constexpr int kLargestAddress = 999;
constexpr int kLargestEntryNumber = 999999999;
constexpr QStringView kOrderWords[] = {u"row", u"column", u"entry"};

InspPlan::Order orderOf(const TableScanner &table)
{
    const QString word = table.property(u"order"_s).trimmed().toLower();
    for (int i = 0; i < 3; ++i) {
        if (word == kOrderWords[i])
            return InspPlan::Order(i);
    }
    if (!word.isEmpty())
        table.fail(u"Property 'order': '%1' is not one of row, column, entry."_s.arg(word));
    return InspPlan::Order::Entry;
}

JDateTime createTimeOf(const TableScanner &table)
{
    const QString text = table.property(u"create_time"_s);
    const std::optional<JDateTime> time = fenwright::cellTime(text.toUtf8());
    if (!time && !text.trimmed().isEmpty())
        table.fail(u"Property 'create_time': '%1' is not a date and time."_s.arg(text));
    return time.value_or(JDateTime());
}

QList<PlanEntry> readEntries(TableScanner &table)
{
    const int entryNum = table.column(u"entry_num");
    const int sec = table.column(u"sec");
    const int row = table.column(u"row");
    const int col = table.column(u"col");
    const int acquired = table.column(u"acquired");
    const int analyzed = table.column(u"analyzed");
    QList<PlanEntry> entries;
    QHash<int, int> lines;
    while (table.next()) {
        table.requireCells();
        PlanEntry entry;
        entry.entryNum = table.integer(entryNum, 0, kLargestEntryNumber, int(entries.size()));
        entry.sec = qint16(table.integer(sec, 0, kLargestAddress, 0));
        entry.row = qint16(table.integer(row, 0, kLargestAddress));
        entry.col = qint16(table.integer(col, 0, kLargestAddress));
        entry.acquired = qint16(table.integer(acquired, 0, 0x7FFF, 0));
        entry.analyzed = table.flag(analyzed, false) ? 1 : 0;
        int &line = lines[entry.entryNum];
        if (line != 0)
            table.fail(
                u"Entry number %1 occurs twice, in lines %2 and %3."_s.arg(entry.entryNum).arg(line).arg(table.line()));
        line = table.line();
        entries.append(entry);
    }
    return entries;
}

} // namespace

namespace {

const QStringList kRequired{u"row"_s, u"col"_s};

InspPlan readPlan(TableScanner &table)
{
    InspPlan plan;
    plan.name = table.property(u"name"_s);
    plan.probe = table.property(u"probe"_s);
    plan.beginTest = table.property(u"begin_test"_s);
    plan.endTest = table.property(u"end_test"_s);
    plan.description = table.property(u"description"_s);
    plan.createTime = createTimeOf(table);
    plan.order = orderOf(table);
    plan.entries = readEntries(table);
    plan.isCounted = table.isCounted();
    return plan;
}

} // namespace

void InspPlan::loadPlan(const QString &machinePath)
{
    TableScanner table = TableScanner::open(machinePath, kRequired);
    *this = readPlan(table);
}

InspPlan InspPlan::fromBytes(const QByteArray &content, const QString &name)
{
    TableScanner table(content, name, kRequired);
    return readPlan(table);
}

void InspPlan::storePlan(const QString &machinePath) const
{
    tarnwick::writeFileAtomically(machinePath, toBytes());
}

QByteArray InspPlan::toBytes() const
{
    TableWriter table;
    table.property(u"name"_s, name);
    table.property(u"probe"_s, probe);
    table.property(u"begin_test"_s, beginTest);
    table.property(u"end_test"_s, endTest);
    table.property(u"description"_s, description);
    table.property(u"create_time"_s, createTime.isNull() ? QString() : createTime.toIso());
    table.property(u"order"_s, kOrderWords[int(order)].toString());
    table.heading({u"entry_num"_s, u"sec"_s, u"row"_s, u"col"_s, u"acquired"_s, u"analyzed"_s});
    for (const PlanEntry &entry : entries) {
        for (const int value : {int(entry.entryNum), int(entry.sec), int(entry.row), int(entry.col),
                                int(entry.acquired), int(entry.analyzed)})
            table.cell(value);
        table.endRow();
    }
    return table.bytes();
}

void InspPlan::addTubes(const QList<ellery::TubeAddress> &tubes)
{
    qint32 next = 0;
    for (const PlanEntry &other : std::as_const(entries))
        next = std::max(next, other.entryNum + 1);
    entries.reserve(entries.size() + tubes.size());
    for (const ellery::TubeAddress &tube : tubes) {
        PlanEntry &entry = entries.emplaceBack();
        entry.entryNum = next++;
        entry.sec = tube.sec;
        entry.row = tube.row;
        entry.col = tube.col;
    }
}

void InspPlan::removeEntries(QList<int> places)
{
    if (places.size() == 1) { // without a copy, since a table deletes row by row
        const qint32 number = entries.takeAt(places[0]).entryNum;
        for (PlanEntry &entry : entries)
            entry.entryNum -= entry.entryNum > number ? 1 : 0;
        return;
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    QList<qint32> numbers;
    QList<PlanEntry> kept;
    kept.reserve(entries.size());
    for (int place = 0; place < int(entries.size()); ++place) {
        if (numbers.size() < places.size() && places[numbers.size()] == place)
            numbers.append(entries[place].entryNum);
        else
            kept.append(entries[place]);
    }
    std::sort(numbers.begin(), numbers.end());
    for (PlanEntry &entry : kept)
        entry.entryNum -= qint32(std::lower_bound(numbers.begin(), numbers.end(), entry.entryNum) - numbers.begin());
    entries = kept;
}

void InspPlan::sort(Order newOrder)
{
    order = newOrder;
    sortEntries(entries, newOrder);
}

} // namespace brannock
