#include "TubeListFile.h"

#include "Messages.h"

#include <QFileInfo>
#include <tarnwick/FileWriter.h>
#include <tarnwick/StringToValue.h>
#include <tarnwick/TextDecoding.h>

#include <array>

namespace plans {

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace {

constexpr int kMostWords = 4;
constexpr QChar kLineEnd = u'\n';

/// Makes every line end a line feed, and replaces every other character that cannot be printed by a blank.
void blankUnprintable(QString &text)
{
    const bool hasLineFeeds = text.contains(kLineEnd);
    if (hasLineFeeds)
        text.replace(u"\r\n"_s, u"\n"_s);
    for (QChar &character : text) {
        const char16_t code = character.unicode();
        const bool isPlain = (code >= u' ' && code < 0x7F) || character == kLineEnd;
        if (isPlain)
            continue;
        if (code == u'\r' && !hasLineFeeds)
            character = kLineEnd;
        else if (!character.isPrint() && !character.isSurrogate())
            character = u' ';
    }
}

/// The first words of a line, separated by blanks; the others are empty.
std::array<QStringView, kMostWords> firstWords(QStringView line, bool isCut)
{
    std::array<QStringView, kMostWords> words;
    qsizetype at = 0;
    for (QStringView &word : words) {
        while (at < line.size() && line[at].isSpace())
            ++at;
        const qsizetype start = at;
        while (at < line.size() && !line[at].isSpace())
            ++at;
        if (at == line.size() && isCut)
            break; // only a part of the word is here
        word = line.sliced(start, at - start);
    }
    return words;
}

} // namespace

TubeListFile TubeListFile::read(const QString &machinePath, const ellery::SteamGen &component, bool hasEntryNumbers)
{
    return {tarnwick::readFile(machinePath), component, hasEntryNumbers};
}

TubeListFile::TubeListFile(const QByteArray &content, const ellery::SteamGen &component, bool hasEntryNumbers)
    : m_text(tarnwick::decodedText(content))
{
    blankUnprintable(m_text);
    parse(component, hasEntryNumbers);
}

bool TubeListFile::hasEntryNumbers(const QString &path, bool option)
{
    return option || QFileInfo(path).suffix().compare("lst"_L1, Qt::CaseInsensitive) == 0;
}

void TubeListFile::parse(const ellery::SteamGen &component, bool hasEntryNumbers)
{
    const QStringView text(m_text);
    m_isLastLineOpen = !text.isEmpty() && text.back() != kLineEnd;
    m_lines.reserve(text.count(kLineEnd) + 1);
    for (qsizetype start = 0; start < text.size();) {
        qsizetype end = text.indexOf(kLineEnd, start);
        end = end < 0 ? text.size() : end;
        ListFillLine line;
        line.line = int(m_lines.size()) + 1;
        line.text = text.sliced(start, end - start);
        parseLine(line, component, hasEntryNumbers);
        m_lines.append(line);
        start = end + 1;
    }
}

void TubeListFile::parseLine(ListFillLine &line, const ellery::SteamGen &component, bool hasEntryNumbers)
{
    const bool isNote = line.text.startsWith(u'!');
    line.isComment = isNote || line.text.startsWith(u'#');
    // The heading that tubeListText() writes above numbered lines.
    const bool isHeading = line.isComment && line.text.sliced(1).trimmed().startsWith(u"ENTRY");
    m_hasUnreadNumbers = m_hasUnreadNumbers || (isHeading && !hasEntryNumbers);
    if (isNote)
        m_notes.append(line.text.sliced(std::min<qsizetype>(2, line.text.size()))).append(kLineEnd);
    line.isCut = line.text.size() > kLongestLine && !line.isComment;
    if (line.isCut)
        line.text.truncate(kLongestLine);

    const auto words = line.isComment ? std::array<QStringView, kMostWords>() : firstWords(line.text, line.isCut);
    const QStringView *word = words.data();
    line.entryNum = hasEntryNumbers ? tarnwick::string_to_value<qint32>(*word++).value_or(0) : m_nextEntry;
    line.sec = component.numTube() > 0 ? component[0].address.sec : qint16(0);
    if (component.hasSections())
        line.sec = qint16(component.stringToSec(*word++));
    line.row = qint16(component.stringToRow(*word++));
    line.col = qint16(component.stringToCol(*word));
    if (!line.isComment)
        line.tube = component.findTube({line.sec, line.row, line.col});
    m_nextEntry += line.tube >= 0 ? 1 : 0;
    m_errors += line.isError() ? 1 : 0;
    m_cut += line.isCut ? 1 : 0;
}

QList<ListFillTube> TubeListFile::tubes() const
{
    QList<ListFillTube> tubes;
    tubes.reserve(m_nextEntry);
    for (const ListFillLine &line : m_lines) {
        if (line.tube >= 0)
            tubes.append({line.entryNum, line.row, line.col, line.sec, {}});
    }
    return tubes;
}

QStringList TubeListFile::remarks() const
{
    QStringList remarks;
    if (m_cut > 0)
        remarks.append(tarnwick::format(messages::kLinesCut.text, m_cut, kLongestLine));
    if (m_isLastLineOpen)
        remarks.append(QString::fromUtf16(messages::kLastLineOpen.text));
    if (m_hasUnreadNumbers)
        remarks.append(QString::fromUtf16(messages::kUnreadNumbers.text));
    return remarks;
}

QString axisLabel(const ellery::SteamGen &component, Axis axis, int number)
{
    const QString label = component.tubeLabel(axis, number);
    return label.isEmpty() ? u'?' + QString::number(number) : label;
}

QString tubeListText(const TubeList &list, const QString &name, const tarnwick::JDateTime &time,
                     const ellery::SteamGen &component)
{
    QString text = tarnwick::format(u"# File %S\n# Date %t\n", name, time);
    QString notes = list.description;
    notes.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    blankUnprintable(notes); // as reading does: so that writing again gives the same bytes
    if (notes.endsWith(kLineEnd))
        notes.chop(1);
    if (!list.description.isEmpty()) {
        for (const QString &note : notes.split(kLineEnd))
            text += u"! "_s + note + kLineEnd;
    }
    const bool hasSections = component.hasSections();
    text += tarnwick::format(u"# %5s ", u"ENTRY");
    if (hasSections)
        text += tarnwick::format(u"%4S ", component.axisNames[int(Axis::Sec)]);
    text += tarnwick::format(u"%4S %4S\n", component.axisNames[int(Axis::Row)], component.axisNames[int(Axis::Col)]);
    const auto label = [&](Axis axis, int number) { return axisLabel(component, axis, number).rightJustified(4); };
    for (const ListFillTube &tube : list.entries) {
        text += u"  "_s + QString::number(tube.entryNum).rightJustified(5) + u' ';
        if (hasSections)
            text += label(Axis::Sec, tube.sec) + u' ';
        text += label(Axis::Row, tube.row) + u' ' + label(Axis::Col, tube.col) + kLineEnd;
    }
    return text;
}

} // namespace plans
