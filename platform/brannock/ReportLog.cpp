#include "ReportLog.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QUuid>
#include <tarnwick/FileWriter.h>

#include <pwd.h>
#include <unistd.h>

namespace brannock {

using namespace Qt::StringLiterals;

namespace {

void addLine(const QString &path, const QJsonObject &line)
{
    tarnwick::appendLine(path, QJsonDocument(line).toJson(QJsonDocument::Compact));
}

QString userName()
{
    const passwd *user = ::getpwuid(::getuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
}

} // namespace

QString stateName(ReportLog::Entry::State state)
{
    switch (state) {
    case ReportLog::Entry::State::Stored:
        return u"stored"_s;
    case ReportLog::Entry::State::NotStored:
        return u"not stored"_s;
    case ReportLog::Entry::State::Interrupted:
        break;
    }
    return u"interrupted"_s;
}

QString ReportLog::begin(const QString &work, const QString &file, const QJsonObject &mark) const
{
    QString id = QUuid::createUuid().toString(QUuid::Id128);
    QJsonObject line{{u"id"_s, id},
                     {u"time"_s, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
                     {u"user"_s, userName()},
                     {u"work"_s, work},
                     {u"file"_s, file}};
    if (!mark.isEmpty())
        line.insert(u"mark"_s, mark);
    addLine(m_path, line);
    return id;
}

void ReportLog::end(const Entry &entry) const
{
    addLine(m_path, {{u"end"_s, entry.id},
                     {u"state"_s, stateName(entry.state)},
                     {u"entries"_s, entry.entries},
                     {u"stored"_s, entry.stored},
                     {u"skipped"_s, entry.skipped},
                     {u"problems"_s, entry.problems}});
}

QList<ReportLog::Entry> ReportLog::entries(int *damaged) const
{
    QList<Entry> entries;
    QHash<QString, qsizetype> places;
    int unread = 0;
    const QByteArray content = QFileInfo::exists(m_path) ? tarnwick::readFile(m_path) : QByteArray();
    for (const QByteArray &text : content.split('\n')) {
        if (text.isEmpty())
            continue;
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        const QString id = line.value(u"id"_s).toString();
        const auto begun = places.constFind(line.value(u"end"_s).toString());
        if (!id.isEmpty()) {
            Entry entry;
            entry.id = id;
            entry.time = line.value(u"time"_s).toString();
            entry.user = line.value(u"user"_s).toString();
            entry.work = line.value(u"work"_s).toString();
            entry.file = line.value(u"file"_s).toString();
            entry.mark = line.value(u"mark"_s).toObject();
            places.insert(id, entries.size());
            entries.append(entry);
        } else if (begun != places.constEnd()) {
            Entry &entry = entries[*begun];
            const bool isStored = line.value(u"state"_s).toString() == stateName(Entry::State::Stored);
            entry.state = isStored ? Entry::State::Stored : Entry::State::NotStored;
            entry.entries = line.value(u"entries"_s).toInt();
            entry.stored = line.value(u"stored"_s).toInt();
            entry.skipped = line.value(u"skipped"_s).toInt();
            entry.problems = line.value(u"problems"_s).toInt();
        } else {
            ++unread;
        }
    }
    if (damaged)
        *damaged = unread;
    return entries;
}

} // namespace brannock
