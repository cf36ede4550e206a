#include "PlanEditor.h"

#include "Messages.h"
#include "PlanCheck.h"
#include "PlanStorage.h"
#include "TubeListFile.h"

#include <fenwright/TableScanner.h>
#include <numeric>
#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/MoveBefore.h>

namespace plans {

using namespace Qt::StringLiterals;
using brannock::InspPlan;
using brannock::PlanEntry;
using ellery::Axis;
using ellery::TubeAddress;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::SuitePath;

PlanEditor::PlanEditor(db::DatabaseSession &session, const brannock::Project &project)
    : EntriesEditor(session, project)
{
    m_plan.createTime = tarnwick::JDateTime::now();
}

QString PlanEditor::caption() const
{
    if (!m_isFromFile)
        return tarnwick::format(messages::kDatabasePlanCaption.text, m_plan.name);
    const QString file =
        m_file.isEmpty() ? shownName() : SuitePath::fromMachine(m_file, m_project.roots()).shown(u"plans"_s);
    return tarnwick::format(messages::kFilePlanCaption.text, file);
}

QString PlanEditor::shownName() const
{
    return m_plan.name.isEmpty() ? u"Untitled"_s : m_plan.name;
}

PlanEditor::Fields PlanEditor::fields() const
{
    return {m_plan.probe, m_plan.beginTest, m_plan.endTest, m_plan.description};
}

void PlanEditor::setFields(const Fields &fields)
{
    if (fields == this->fields())
        return;
    m_plan.probe = fields.probe;
    m_plan.beginTest = fields.beginTest;
    m_plan.endTest = fields.endTest;
    m_plan.description = fields.description;
    m_isModified = true;
}

bool PlanEditor::setLabel(int place, Axis axis, const QString &text)
{
    int number = 0;
    if (!numberOf(text, axis, number))
        return false;
    PlanEntry &entry = m_plan.entries[place];
    qint16 &part = axis == Axis::Row ? entry.row : axis == Axis::Col ? entry.col : entry.sec;
    if (part != number) {
        part = qint16(number);
        entry.acquired = 0; // that was another tube
        entry.analyzed = 0;
        m_isModified = true;
    }
    return true;
}

void PlanEditor::setOrder(Order order)
{
    if (order == this->order())
        return;
    m_plan.sort(order);
    m_isModified = true;
}

template <typename Takes>
int PlanEditor::load(const tarnwick::Message &duplicates, Takes takes)
{
    const int first = int(m_plan.entries.size());
    std::vector<bool> planned(size_t(component().numTube()));
    for (const PlanEntry &entry : std::as_const(m_plan.entries)) {
        if (const int tube = component().findTube(entry.address()); tube >= 0)
            planned[size_t(tube)] = true;
    }
    QList<TubeAddress> added;
    int known = 0;
    for (int tube = 0; tube < component().numTube(); ++tube) {
        if (!takes(tube))
            continue;
        if (planned[size_t(tube)])
            ++known;
        else
            added.append(component()[tube].address);
    }
    setOrder(Order::Entry);
    append(added);
    if (known > 0)
        prompts().error(duplicates, known);
    return first;
}

int PlanEditor::loadSymbols(const ellery::TubeStates &tubes)
{
    return load(messages::kSymbolDuplicates, [&](int tube) { return !tubes.isOpen(tube); });
}

int PlanEditor::loadSelected(const ellery::TubeStates &tubes)
{
    return load(messages::kSelectedDuplicates, [&](int tube) { return tubes.isSelected(tube); });
}

int PlanEditor::append(const QList<TubeAddress> &tubes)
{
    if (!tubes.isEmpty()) {
        m_plan.addTubes(tubes);
        m_isModified = true;
    }
    return int(tubes.size());
}

void PlanEditor::removeEntries(const QList<int> &places)
{
    if (places.isEmpty())
        return;
    m_plan.removeEntries(places);
    m_isModified = true;
}

int PlanEditor::moveEntries(const QList<int> &places, int before)
{
    if (m_plan.order != InspPlan::Order::Entry)
        return -1;
    QList<PlanEntry> entries = m_plan.entries;
    const int target = tarnwick::moveBefore(entries, places, before);
    for (int place = 0; place < int(entries.size()); ++place)
        entries[place].entryNum = place;
    if (entries != m_plan.entries) {
        m_plan.entries = entries;
        m_isModified = true;
    }
    return target;
}

void PlanEditor::combine(const QList<TubeAddress> &tubes, Combine how)
{
    const int before = int(m_plan.entries.size());
    if (how == Combine::Add) {
        setOrder(Order::Entry);
        append(missingFrom(addressesOf(m_plan.entries), tubes));
    } else {
        const TubeGroup group(tubes);
        QList<int> removed;
        for (int place = 0; place < before; ++place) {
            if (group.contains(m_plan.entries[place].address()) == (how == Combine::Remove))
                removed.append(place);
        }
        removeEntries(removed);
    }
    prompts().status(messages::kTubesCombined, before, int(m_plan.entries.size()));
}

int PlanEditor::paste(const QString &text)
{
    const AddressText addresses = parseAddresses(text, component());
    const int first = int(m_plan.entries.size());
    setOrder(Order::Entry);
    const int added = append(missingFrom(addressesOf(m_plan.entries), addresses.tubes));
    addresses.report(prompts(), added);
    return first;
}

bool PlanEditor::clearTubes()
{
    if (prompts().question(Buttons::YesNo, messages::kAskClearTubes) != Answer::Yes)
        return false;
    m_isModified = m_isModified || !m_plan.entries.isEmpty();
    m_plan.entries.clear();
    return true;
}

bool PlanEditor::clearAll()
{
    if (prompts().question(Buttons::YesNo, messages::kAskClearPlan) != Answer::Yes)
        return false;
    setFields({});
    m_isModified = m_isModified || !m_plan.entries.isEmpty();
    m_plan.entries.clear();
    return true;
}

void PlanEditor::take(const InspPlan &plan, bool isFromFile, const QString &file)
{
    m_plan = plan;
    setOrigin(isFromFile, file);
    const auto isMissing = [this](const PlanEntry &entry) { return component().findTube(entry.address()) < 0; };
    const auto missing = std::count_if(m_plan.entries.cbegin(), m_plan.entries.cend(), isMissing);
    if (missing > 0)
        prompts().information(messages::kPlanTubesMissing, int(missing));
}

void PlanEditor::newPlan()
{
    InspPlan plan;
    plan.createTime = tarnwick::JDateTime::now();
    take(plan, true, {});
}

bool PlanEditor::open(const QString &machinePath)
{
    InspPlan plan;
    const QString name = QFileInfo(machinePath).fileName();
    const auto load = [&] { plan.loadPlan(machinePath); };
    if (!tarnwick::attempt(prompts(), load, messages::kOpenPlan, name))
        return false;
    if (!plan.isCounted)
        prompts().showInformation(fenwright::uncountedRemark({name}));
    if (plan.name.isEmpty())
        plan.name = QFileInfo(machinePath).completeBaseName();
    take(plan, true, machinePath);
    prompts().status(messages::kPlanOpened, name);
    return true;
}

QString PlanEditor::fileName() const
{
    if (m_plan.name.isEmpty())
        return u"default.pln"_s;
    if (m_plan.name.endsWith(u".pln"_s, Qt::CaseInsensitive))
        return m_plan.name;
    return tarnwick::validFileName(m_plan.name) + u".pln"_s;
}

bool PlanEditor::isValid() const
{
    const QString missing = options.missingFields(m_plan);
    if (!missing.isEmpty())
        prompts().information(messages::kEnterValid, missing);
    return missing.isEmpty();
}

bool PlanEditor::store(const QString &machinePath)
{
    if (!isValid())
        return false;
    InspPlan plan = m_plan;
    if (plan.name.isEmpty())
        plan.name = QFileInfo(machinePath).completeBaseName();
    const auto write = [&] { plan.storePlan(machinePath); };
    const QString name = SuitePath::fromMachine(machinePath, m_project.roots()).shown(u"plans"_s);
    if (!tarnwick::attempt(prompts(), write, messages::kPlanNotStored, name))
        return false;
    m_plan = plan;
    setOrigin(true, machinePath);
    prompts().status(messages::kPlanStored, name);
    return true;
}

bool PlanEditor::fetch(const QString &name, tarnwick::Progress *progress)
{
    const auto plan = PlanStorage(m_session, progress).fetch(name);
    if (plan)
        take(*plan, false, {});
    return plan.has_value();
}

bool PlanEditor::upload(const QString &name, tarnwick::Progress *progress)
{
    PlanStorage storage(m_session, progress);
    if (name.isEmpty() || !isValid())
        return false;
    if (!storage.upload(m_plan, name)) {
        m_isModified = m_isModified || storage.hasDeleted(); // the plan is only here now
        return false;
    }
    m_plan.name = name;
    setOrigin(false);
    return true;
}

bool PlanEditor::remove()
{
    return PlanStorage(m_session).remove(m_plan.name);
}

bool PlanEditor::checkAnalyzed(tarnwick::Progress *progress)
{
    return checkPlan(m_session, m_plan, m_project.outageName(), options.incompleteCodes, progress);
}

QString PlanEditor::summary() const
{
    const auto count = [this](auto isCounted) {
        return int(std::count_if(m_plan.entries.cbegin(), m_plan.entries.cend(), isCounted));
    };
    const int total = int(m_plan.entries.size());
    const int acquired = count([](const PlanEntry &entry) { return entry.acquired >= 1; });
    const int analyzed = count([](const PlanEntry &entry) { return entry.analyzed != 0; });
    const int done = count([](const PlanEntry &entry) { return entry.acquired >= 1 || entry.analyzed != 0; });
    QString text = total == 1 ? u"1 tube"_s : tarnwick::format(u"%D tubes", total);
    if (!m_plan.probe.isEmpty())
        text += u", "_s + m_plan.probe;
    if (!m_plan.beginTest.isEmpty() || !m_plan.endTest.isEmpty())
        text += u", "_s + m_plan.beginTest + u" to "_s + m_plan.endTest;
    constexpr int kAll = 100;
    text += tarnwick::format(u": %D acquired, %D analyzed, %D left (%d%% done)", acquired, analyzed, total - done,
                             total == 0 ? 0 : int(qint64(done) * kAll / total));
    return text;
}

QByteArray PlanEditor::draft() const
{
    return m_isModified ? m_plan.toBytes() : QByteArray();
}

void PlanEditor::restoreDraft(const QByteArray &content)
{
    m_plan = InspPlan::fromBytes(content, u"the copy"_s);
    m_isModified = true;
}

QString PlanEditor::nameInDraft(const QByteArray &content) const
{
    const QString name = InspPlan::fromBytes(content, u"the copy"_s).name;
    return name.isEmpty() ? u"Untitled"_s : name;
}

} // namespace plans
