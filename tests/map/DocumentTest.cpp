#include "TestMap.h"

#include <map/FillCommit.h>
#include <plans/PatternFill.h>

#include <QTemporaryDir>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace map {

namespace {

/// Keeps the events of a document.
class Heard
{
public:
    explicit Heard(MapDocument &document)
        : m_subscription(document.subscribe([this](const MapEvent &event) { events.append(event); }))
    {
    }
    QList<MapEvent> events;
    /// What the only event since the last call told.
    MapEvent::Changes next()
    {
        EXPECT_EQ(events.size(), 1);
        return events.isEmpty() ? MapEvent::Changes() : events.takeFirst().what & ~MapEvent::Changes(MapEvent::Undo);
    }

private:
    Subscription m_subscription;
};

class DocumentTest : public testing::Test
{
protected:
    TestMap host{1, 6};
    MapDocument &document = host.document;
};

} // namespace

TEST_F(DocumentTest, GoesBackAndForthThroughEveryChange)
{
    QStringList pictures{host.picture()};
    host.add(fixed({0, 1}), u"one"_s);
    pictures.append(host.picture());
    host.add(fixed({1, 2, 3}), u"two"_s);
    pictures.append(host.picture());
    host.move(0, 1);
    pictures.append(host.picture());
    host.setShown(0, false);
    pictures.append(host.picture());

    EXPECT_EQ(document.history().labels(), (QStringList{u"one"_s, u"two"_s, u"Move"_s, u"Show"_s}));
    for (int i = 3; i >= 0; --i) {
        document.undo();
        EXPECT_EQ(host.picture(), pictures[i]);
    }
    EXPECT_FALSE(document.canUndo());
    EXPECT_EQ(document.redoLabel(), u"one"_s);
    document.moveTo(4);
    EXPECT_EQ(host.picture(), pictures[4]);
    document.moveTo(2);
    EXPECT_EQ(host.picture(), pictures[2]);
    EXPECT_EQ(document.undoLabel(), u"two"_s);
    host.add(fixed({5}), u"other"_s);
    EXPECT_EQ(document.history().labels(), (QStringList{u"one"_s, u"two"_s, u"other"_s}));
    EXPECT_FALSE(document.canRedo());
    document.moveTo(-7);
    document.undo();
    EXPECT_EQ(host.picture(), pictures[0]);
}

TEST_F(DocumentTest, AChangeThatChangesNothingOrThrowsIsNone)
{
    host.add(fixed({0}));
    const Heard heard(document);
    host.select({});
    host.move(0, 5);
    document.change(u"there and back"_s, [](MapEdit &edit) {
        edit.setShown(0, false);
        edit.setShown(0, true);
    });
    EXPECT_THROW(document.change(u"broken"_s,
                                 [](MapEdit &edit) {
                                     edit.removeAll();
                                     throw tarnwick::Error(u"broken"_s);
                                 }),
                 tarnwick::Error);
    EXPECT_EQ(document.history().count(), 1);
    EXPECT_TRUE(heard.events.isEmpty());
    EXPECT_EQ(host.picture(), u"A....."_s);
}

TEST_F(DocumentTest, EveryChangeIsToldOnceByWhatItChanged)
{
    Heard heard(document);
    host.add(fixed({0, 1}));
    EXPECT_EQ(heard.next(), MapEvent::EntryList);
    host.add(fixed({2}));
    EXPECT_EQ(heard.events.value(0).entries, QList<int>{1});
    EXPECT_EQ(heard.next(), MapEvent::EntryList);
    host.setShown(0, false);
    EXPECT_EQ(heard.next(), MapEvent::Shown);
    document.change(u"look"_s, [](MapEdit &edit) {
        edit.setMark(1, markOf(u'?', 5));
        edit.setLabel(1, u"x"_s);
    });
    EXPECT_EQ(heard.next(), MapEvent::Marks | MapEvent::Labels);
    host.move(0, 1);
    EXPECT_EQ(heard.next(), MapEvent::EntryList);
    host.select({3});
    EXPECT_EQ(heard.next(), MapEvent::Selection);
    changeFill(document, host.runner, 0, FixedFill({4}));
    EXPECT_TRUE(heard.next().testFlag(MapEvent::Tubes));
    document.change(u"more"_s, [this](MapEdit &edit) {
        edit.setOrientation(-1, 1);
        MapHeader header;
        header.upperText = u"x"_s;
        edit.setHeader(header);
        // A change within a change is part of it.
        document.change(u"inner"_s, [](MapEdit &inner) { inner.setDescription(u"notes"_s); });
    });
    EXPECT_EQ(heard.next(), MapEvent::Orientation | MapEvent::Header | MapEvent::Description);
    EXPECT_EQ(document.undoLabel(), u"more"_s);
    document.undo();
    EXPECT_EQ(heard.next(), MapEvent::Orientation | MapEvent::Header | MapEvent::Description);
    document.moveTo(0);
    heard.next();
    document.setNeverSaved();
    heard.next();
    document.setProject(&host.record);
    EXPECT_TRUE(heard.next().testFlag(MapEvent::Component));
    {
        const Heard gone(document);
    }
    host.add(fixed({1}));
    EXPECT_EQ(heard.events.size(), 1);
}

TEST_F(DocumentTest, StatesShareWhatDidNotChange)
{
    host.add(fixed({0}));
    host.add(fixed({1}));
    const Entries before = document.entries();
    host.setShown(1, false);
    host.move(0, 1);
    EXPECT_EQ(document.entries()[1], before[0]);
    document.moveTo(2);
    EXPECT_EQ(document.entries(), before);
}

TEST_F(DocumentTest, ModifiedIsTheDistanceFromTheSavedState)
{
    const QTemporaryDir folder;
    host.record.folder = folder.path();
    EXPECT_FALSE(document.isModified());
    host.add(fixed({0}));
    EXPECT_TRUE(document.isModified());
    document.setStored(folder.filePath(u"a.map"_s));
    EXPECT_FALSE(document.isModified());
    host.select({1});
    EXPECT_FALSE(document.isModified()) << "no file holds the selection";
    document.undo();
    document.undo();
    EXPECT_TRUE(document.isModified());
    document.redo();
    EXPECT_FALSE(document.isModified());
    document.undo();
    host.add(fixed({1}));
    document.undo();
    EXPECT_TRUE(document.isModified()) << "the saved state cannot be reached any more";
    host.add(fixed({0}));
    EXPECT_FALSE(document.isModified()) << "the same again";
    document.setNeverSaved();
    document.undo();
    EXPECT_TRUE(document.isModified());
}

TEST_F(DocumentTest, AChangeOfTheEntriesClearsTheSignatures)
{
    host.add(fixed({1}));
    document.change(u"Set Map Header"_s, [](MapEdit &edit) {
        MapHeader header;
        header.preparedBy = u"A"_s;
        header.checkedBy = u"B"_s;
        header.upperText = u"stays"_s;
        edit.setHeader(header);
    });
    host.setShown(0, false);
    EXPECT_EQ(document.header().checkedBy, u"B"_s) << "a hidden entry still has the tubes that were checked";
    host.add(fixed({2}));
    EXPECT_TRUE(document.header().preparedBy.isEmpty() && document.header().checkedBy.isEmpty());
    EXPECT_EQ(document.header().upperText, u"stays"_s);
    document.undo();
    EXPECT_EQ(document.header().preparedBy, u"A"_s);
    document.moveTo(1);
    EXPECT_TRUE(document.header().upperText.isEmpty());
    document.redo();
    EXPECT_EQ(document.header().checkedBy, u"B"_s);
}

TEST_F(DocumentTest, AListenerThatFailsDoesNotKeepOthersFromTheEvent)
{
    const Subscription failing = document.subscribe([](const MapEvent &) { throw std::bad_alloc(); });
    Heard heard(document);
    EXPECT_THROW(host.add(fixed({1})), std::bad_alloc);
    EXPECT_EQ(heard.next(), MapEvent::EntryList);
    EXPECT_EQ(host.picture(), u".A...."_s);
    EXPECT_THROW(document.undo(), std::bad_alloc);
    EXPECT_EQ(heard.next(), MapEvent::EntryList);
    EXPECT_EQ(host.picture(), u"......"_s);
}

/// Random changes: everything undone is the start, everything redone the end; the oldest fall off the list.
TEST_F(DocumentTest, EverythingUndoneIsTheStart)
{
    quint32 state = 12345;
    const auto random = [&state](int limit) {
        state = state * 1664525U + 1013904223U;
        return int((state >> 10) % quint32(limit));
    };
    for (int step = 0; step < 200; ++step) {
        const int n = document.count();
        switch (n == 0 ? 0 : random(6)) {
        case 0:
            host.add(fixed({random(6), random(6)}));
            break;
        case 1:
            host.remove(random(n));
            break;
        case 2:
            host.move(random(n), random(n));
            break;
        case 3:
            document.change(u"Mark"_s, [&](MapEdit &edit) {
                edit.setMark(random(n), markOf(char16_t(u'a' + random(26)), quint32(random(1000))));
            });
            break;
        case 4:
            host.setShown(random(n), random(2) == 1);
            break;
        default:
            host.select({random(6), random(6)});
            break;
        }
    }
    const QString end = host.picture();
    const QList<qint32> selectedAtEnd = document.selection();
    document.moveTo(0);
    EXPECT_EQ(host.picture(), u"......"_s);
    EXPECT_EQ(document.count(), 0);
    EXPECT_EQ(document.tubes().selectedCount(), 0);
    document.moveTo(document.history().count());
    EXPECT_EQ(host.picture(), end);
    EXPECT_EQ(document.tubes().selection(), selectedAtEnd);
    for (int i = 0; i <= UndoHistory::kMaxLevels; ++i)
        host.select({i % 5});
    EXPECT_EQ(document.history().count(), UndoHistory::kMaxLevels);
    document.moveTo(0);
    EXPECT_EQ(host.picture(), end);
    EXPECT_EQ(document.history().savedPosition(), -1);
}

} // namespace map
