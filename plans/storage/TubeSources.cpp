#include "TubeSources.h"

#include "Messages.h"
#include "PlanStorage.h"
#include "TubeGroups.h"
#include "TubeListFile.h"
#include "TubeSets.h"

#include <db/ListNames.h>
#include <plans/ListFill.h>
#include <QDir>
#include <tarnwick/Failures.h>
#include <tarnwick/OptionPrompts.h>

namespace plans {

using namespace Qt::StringLiterals;
using ellery::TubeAddress;
using Addresses = std::optional<QList<TubeAddress>>;

namespace {

const QString kSet = u"Tube set: "_s;
const QString kPlan = u"Plan: "_s;
const QString kListFile = u"List file: "_s;
const QString kPlanFile = u"Plan file: "_s;

/// The rest of a name after its kind; null if it is of another kind.
QString after(const QString &kind, const QString &name)
{
    return name.startsWith(kind) ? name.sliced(kind.size()) : QString();
}

} // namespace

QStringList TubeSources::files(const QString &folder, const QStringList &patterns) const
{
    return QDir(m_project.pathOf(folder)).entryList(patterns, QDir::Files, QDir::Name);
}

QStringList TubeSources::names() const
{
    QStringList names;
    for (const NamedTubes &tubes : m_ofMap)
        names.append(tubes.name);
    const auto add = [&names](const QString &kind, const QStringList &ones) {
        for (const QString &one : ones)
            names.append(kind + one);
    };
    if (m_session.isOpen()) {
        add(kSet, db::fetchListNames(m_session, u"name"_s, u"tube_sets"_s).value_or(QStringList()));
        add(kPlan, db::fetchListNames(m_session, u"name"_s, u"plans"_s).value_or(QStringList()));
    }
    add(kListFile, files(u"tube_lists"_s, {u"*.lst"_s, u"*.txt"_s}));
    add(kPlanFile, files(u"plans"_s, {u"*.pln"_s}));
    return names;
}

Addresses TubeSources::tubes(const QString &name) const
{
    for (const NamedTubes &tubes : m_ofMap) {
        if (tubes.name == name)
            return tubes.tubes;
    }
    if (const QString set = after(kSet, name); !set.isNull()) {
        const auto list = TubeSets(m_session).fetch(set);
        return list ? Addresses(addressesOf(list->entries)) : std::nullopt;
    }
    if (const QString stored = after(kPlan, name); !stored.isNull()) {
        const auto plan = PlanStorage(m_session).fetch(stored);
        return plan ? Addresses(addressesOf(plan->entries)) : std::nullopt;
    }
    QList<TubeAddress> addresses;
    const auto read = [&] {
        if (const QString list = after(kListFile, name); !list.isNull()) {
            ListFillOptions options;
            tarnwick::loadOptions(options, m_project.roots(), m_session.prompts());
            const TubeListFile file =
                TubeListFile::read(m_project.pathOf(u"tube_lists\\"_s + list), m_project.steamGen,
                                   TubeListFile::hasEntryNumbers(list, options.fileHasEntryNumbers));
            if (file.errorCount() > 0)
                m_session.prompts().error(messages::kSourceErrors, file.errorCount(), list);
            addresses = addressesOf(file.tubes());
        } else if (const QString plan = after(kPlanFile, name); !plan.isNull()) {
            brannock::InspPlan one;
            one.loadPlan(m_project.pathOf(u"plans\\"_s + plan));
            addresses = addressesOf(one.entries);
        } else {
            throw tarnwick::Error(u"There is no such source of tubes."_s);
        }
    };
    if (!tarnwick::attempt(m_session.prompts(), read, messages::kReadSource, name))
        return std::nullopt;
    return addresses;
}

} // namespace plans
