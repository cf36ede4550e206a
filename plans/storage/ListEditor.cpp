#include "ListEditor.h"

#include "Messages.h"
#include "TubeSets.h"

#include <algorithm>
#include <brannock/EntryOrder.h>
#include <QFileInfo>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/JFile.h>
#include <tarnwick/MoveBefore.h>
#include <tarnwick/StringToValue.h>
#include <tuple>

namespace plans {

using namespace Qt::StringLiterals;
using ellery::Axis;
using ellery::TubeAddress;
using tarnwick::Answer;
using tarnwick::Buttons;
using tarnwick::SuitePath;

namespace {

const QString kFolder = u"tube_lists"_s;
const QString kDraftIdentifier = u"ListDraft"_s;

/// What a copy for recovery contains, in both directions.
struct Draft
{
    TubeList list;
    QString file;
    bool isFromFile = true;

    void serialize(tarnwick::JFile &copy)
    {
        constexpr int kVersion = 1;
        constexpr int kSmallestTube = 10; // version and three numbers of 16 bits
        copy.header(kDraftIdentifier, kVersion);
        copy.serialize(list.name);
        copy.serialize(list.description);
        copy.serialize(file);
        copy.serialize(isFromFile);
        copy.list(list.entries, kSmallestTube, [](tarnwick::JFile &f, ListFillTube &tube) { tube.serialize(f); });
    }
};

Draft readDraft(const QByteArray &content)
{
    tarnwick::JFile copy = tarnwick::JFile::fromBytes(content, u"the copy"_s);
    Draft draft;
    draft.serialize(copy);
    return draft;
}

} // namespace

QString ListEditor::caption() const
{
    const tarnwick::Message &text = m_isFromFile ? messages::kFileListCaption : messages::kDatabaseListCaption;
    return tarnwick::format(text.text, shownName());
}

QString ListEditor::shownName() const
{
    if (m_list.name.isEmpty())
        return u"Untitled"_s;
    return m_isFromFile ? SuitePath(m_list.name).shown(kFolder) : m_list.name;
}

void ListEditor::setList(const TubeList &list)
{
    // A fill does not say whether its list was a file. It was if there is such a file, in the folder of the lists or
    // elsewhere; without one the extension decides.
    QString file;
    if (!list.name.isEmpty()) {
        file = SuitePath(kFolder + u'\\' + list.name).machinePath(m_project.roots());
        if (!QFileInfo(file).isFile())
            file = SuitePath(list.name).machinePath(m_project.roots());
    }
    const QString extension = SuitePath(list.name).extension().toLower();
    const bool isFromFile =
        list.name.isEmpty() || QFileInfo(file).isFile() || extension == u".lst"_s || extension == u".txt"_s;
    if (!isFromFile)
        file.clear();
    take(list, isFromFile, file);
}

void ListEditor::take(const TubeList &list, bool isFromFile, const QString &file)
{
    m_list = list;
    setOrigin(isFromFile, file);
    m_order = Order::Entry;
    m_parsed = {};
}

QString ListEditor::summary() const
{
    const qsizetype total = m_list.entries.size();
    const qsizetype tubes = TubeGroup(addressesOf(m_list.entries)).count();
    QString text = total == 1 ? u"1 entry"_s : tarnwick::format(u"%D entries", total);
    if (tubes != total)
        text += tarnwick::format(u", %D different tubes", tubes);
    return text;
}

QString ListEditor::fileName() const
{
    return m_list.name.isEmpty() ? QString() : QFileInfo(shownName()).fileName();
}

QString ListEditor::offeredName() const
{
    return m_isFromFile ? QFileInfo(m_file).completeBaseName() : m_list.name;
}

void ListEditor::setOrder(Order order)
{
    prompts().status(messages::kSorting);
    m_order = order;
    brannock::sortEntries(m_list.entries, order);
    prompts().status(messages::kSorted);
}

void ListEditor::setDescription(const QString &description)
{
    m_isModified = m_isModified || description != m_list.description;
    m_list.description = description;
}

bool ListEditor::setNumber(int place, const QString &text)
{
    const auto number = tarnwick::string_to_value<qint32>(text);
    if (!number || *number < 0) {
        prompts().error(messages::kNotALabel, text.trimmed(), u"entry number");
        return false;
    }
    m_list.entries[place].entryNum = *number;
    m_isModified = true;
    return true;
}

bool ListEditor::setLabel(int place, Axis axis, const QString &text)
{
    int number = 0;
    if (!numberOf(text, axis, number))
        return false;
    ListFillTube &tube = m_list.entries[place];
    (axis == Axis::Row ? tube.row : axis == Axis::Col ? tube.col : tube.sec) = qint16(number);
    m_isModified = true;
    return true;
}

void ListEditor::append(const TubeAddress &address, const ellery::TubeMark &mark)
{
    m_list.entries.append({qint32(m_list.entries.size()), address.row, address.col, address.sec, mark});
    m_isModified = true;
}

template <typename Takes>
int ListEditor::add(const ellery::TubeStates &tubes, Takes takes)
{
    const int first = int(m_list.entries.size());
    for (int tube = 0; tube < component().numTube(); ++tube) {
        if (takes(tube))
            append(component()[tube].address, tubes.mark(tube));
    }
    return first;
}

int ListEditor::addSelected(const ellery::TubeStates &tubes)
{
    return add(tubes, [&](int tube) { return tubes.isSelected(tube); });
}

int ListEditor::addSymbols(const ellery::TubeStates &tubes)
{
    return add(tubes, [&](int tube) { return !tubes.isOpen(tube); });
}

void ListEditor::removeEntries(const QList<int> &places)
{
    std::vector<bool> isRemoved(size_t(m_list.entries.size()));
    for (const int place : places)
        isRemoved[size_t(place)] = true;
    size_t place = 0;
    if (m_list.entries.removeIf([&](const ListFillTube &) { return bool(isRemoved[place++]); }) > 0)
        m_isModified = true;
}

int ListEditor::moveEntries(const QList<int> &places, int before)
{
    QList<ListFillTube> entries = m_list.entries;
    const int first = tarnwick::moveBefore(entries, places, before);
    m_isModified = m_isModified || entries != m_list.entries;
    m_list.entries = entries;
    return first;
}

void ListEditor::combine(const QList<TubeAddress> &tubes, Combine how)
{
    const int before = int(m_list.entries.size());
    if (how == Combine::Add) {
        for (const TubeAddress &address : missingFrom(addressesOf(m_list.entries), tubes))
            append(address, {});
    } else if (removeTubes(m_list.entries, TubeGroup(tubes), how == Combine::Remove) > 0) {
        m_isModified = true;
    }
    prompts().status(messages::kTubesCombined, before, int(m_list.entries.size()));
}

int ListEditor::paste(const QString &text)
{
    const AddressText addresses = parseAddresses(text, component());
    const int first = int(m_list.entries.size());
    for (const TubeAddress &address : addresses.tubes)
        append(address, {});
    addresses.report(prompts(), int(addresses.tubes.size()));
    return first;
}

bool ListEditor::clear()
{
    if (prompts().question(Buttons::YesNo, messages::kAskClearList) != Answer::Yes)
        return false;
    m_isModified = m_isModified || !m_list.entries.isEmpty();
    m_list.entries.clear();
    return true;
}

void ListEditor::setIndex(qint32 first, const QList<int> &places)
{
    std::vector<bool> isDone(size_t(m_list.entries.size()));
    const auto number = [&](int place) {
        if (isDone[size_t(place)])
            return;
        m_list.entries[place].entryNum = first++;
        isDone[size_t(place)] = true;
    };
    for (const int place : places)
        number(place);
    for (int place = 0; place < int(m_list.entries.size()); ++place)
        number(place);
    m_isModified = m_isModified || !m_list.entries.isEmpty();
}

QString ListEditor::fileForTools() const
{
    if (!m_isFromFile)
        prompts().information(messages::kListIsNoFile);
    else if (m_list.name.isEmpty())
        prompts().information(messages::kOpenFileFirst);
    return m_file;
}

bool ListEditor::read(const QString &machinePath, TubeListFile &file) const
{
    const QString name = SuitePath::fromMachine(machinePath, m_project.roots()).shown(kFolder);
    const bool hasNumbers = TubeListFile::hasEntryNumbers(machinePath, options.fileHasEntryNumbers);
    const auto work = [&] { file = TubeListFile::read(machinePath, component(), hasNumbers); };
    return tarnwick::attempt(prompts(), work, messages::kReadList, name);
}

bool ListEditor::parseFile()
{
    return read(m_file, m_parsed);
}

bool ListEditor::open(const QString &machinePath)
{
    TubeListFile file;
    if (!read(machinePath, file))
        return false;
    const SuitePath path = SuitePath::fromMachine(machinePath, m_project.roots());
    TubeList list;
    list.name = path.relativeTo(kFolder);
    list.entries = file.tubes();
    list.description = file.notes();
    take(list, true, machinePath);
    m_parsed = file;
    prompts().status(messages::kListOpened, path.shown(kFolder));
    if (!file.remarks().isEmpty())
        prompts().showInformation(file.remarks().join(u'\n'));
    if (file.errorCount() > 0)
        prompts().error(messages::kListErrors, file.errorCount());
    return true;
}

bool ListEditor::store(const QString &machinePath)
{
    const SuitePath path = SuitePath::fromMachine(machinePath, m_project.roots());
    const QString text = tubeListText(m_list, path.text(), tarnwick::JDateTime::now(), component());
    const auto write = [&] { tarnwick::writeFileAtomically(machinePath, text.toUtf8()); };
    if (!tarnwick::attempt(prompts(), write, messages::kStoreList))
        return false;
    m_list.name = path.relativeTo(kFolder);
    setOrigin(true, machinePath);
    m_parsed = {};
    prompts().status(messages::kListStored, path.shown(kFolder));
    return true;
}

bool ListEditor::fetch(const QString &name, tarnwick::Progress *progress)
{
    const auto list = TubeSets(m_session, progress).fetch(name);
    if (list)
        take(*list, false, {});
    return list.has_value();
}

bool ListEditor::upload(const QString &name, tarnwick::Progress *progress)
{
    TubeSets sets(m_session, progress);
    if (!sets.upload(m_list, name)) {
        m_isModified = m_isModified || sets.hasDeleted(); // the set is only here now
        return false;
    }
    m_list.name = name;
    setOrigin(false);
    return true;
}

bool ListEditor::remove()
{
    return TubeSets(m_session).remove(m_list.name);
}

QByteArray ListEditor::draft() const
{
    if (!m_isModified)
        return {};
    tarnwick::JFile copy = tarnwick::JFile::forWriting({});
    Draft{m_list, m_file, m_isFromFile}.serialize(copy);
    return copy.bytes();
}

void ListEditor::restoreDraft(const QByteArray &content)
{
    const Draft draft = readDraft(content);
    take(draft.list, draft.isFromFile, draft.file);
    m_isModified = true;
}

QString ListEditor::nameInDraft(const QByteArray &content) const
{
    const QString name = readDraft(content).list.name;
    return name.isEmpty() ? u"Untitled"_s : name;
}

} // namespace plans
