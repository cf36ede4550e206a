#include "TubeFinder.h"

#include <tarnwick/Format.h>

#include <algorithm>
#include <limits>
#include <QBitArray>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace app {

using ellery::Axis;

namespace {

int numberOn(const ellery::TubeAddress &address, Axis axis)
{
    switch (axis) {
    case Axis::Sec:
        return address.sec;
    case Axis::Row:
        return address.row;
    default:
        return address.col;
    }
}

} // namespace

TubeFinder::TubeFinder(const ellery::SteamGen &steamGen)
    : m_steamGen(steamGen)
    , m_axes(steamGen.hasSections() ? QList<Axis>{Axis::Sec, Axis::Row, Axis::Col} : QList<Axis>{Axis::Row, Axis::Col})
{
}

QString TubeFinder::axisName(qsizetype place) const
{
    return m_steamGen.axisNames[int(m_axes[place])];
}

bool TubeFinder::isAxisWord(QStringView word) const
{
    return std::any_of(m_axes.begin(), m_axes.end(), [&](Axis axis) {
        const QString &axisName = m_steamGen.axisNames[int(axis)];
        return word.compare(axisName, Qt::CaseInsensitive) == 0 ||
               (word.size() == 1 && word.compare(QStringView(axisName).left(1), Qt::CaseInsensitive) == 0);
    });
}

int TubeFinder::find(QStringView text) const
{
    const int tube = m_steamGen.parseTube(text);
    return tube >= 0 ? tube : m_steamGen.parseTube(withAxesApart(text));
}

qsizetype TubeFinder::axisWordAt(QStringView text, qsizetype at) const
{
    for (const Axis axis : m_axes) {
        const QStringView full = m_steamGen.axisNames[int(axis)];
        for (const QStringView word : {full, full.left(1)}) {
            if (!word.isEmpty() && text.sliced(at).startsWith(word, Qt::CaseInsensitive))
                return word.size();
        }
    }
    return 0;
}

QString TubeFinder::withAxesApart(QStringView text) const
{
    QString apart;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = i > 0 && text[i - 1].isDigit() ? axisWordAt(text, i) : 0;
        const QStringView rest = text.sliced(i + length).trimmed();
        // A letter without a number belongs to a label; at the end of the text its number is still to be typed.
        if (length == 0 || !(rest.isEmpty() || rest[0].isDigit())) {
            apart += text[i];
            continue;
        }
        apart += u' ' + text.sliced(i, length).toString();
        if (rest.isEmpty())
            apart += u' ';
        i += length - 1;
    }
    return apart;
}

QStringList TubeFinder::words(QStringView text) const
{
    static const QRegularExpression separators(u"[\\s,;=:/-]+"_s);
    QStringList words;
    for (const QString &word : text.toString().split(separators)) {
        if (!isAxisWord(word))
            words.append(word);
    }
    // An empty last word has not been started; other empty words are only blanks.
    for (qsizetype i = words.size() - 2; i >= 0; --i) {
        if (words[i].isEmpty())
            words.removeAt(i);
    }
    return words;
}

QString TubeFinder::withoutAxis(const QString &word, int place) const
{
    const QString full = axisName(place);
    for (const QString &prefix : {full, full.left(1)}) {
        if (!prefix.isEmpty() && word.startsWith(prefix, Qt::CaseInsensitive))
            return word.mid(prefix.size());
    }
    return word;
}

int TubeFinder::numberOf(const QString &word, int place) const
{
    const int number = m_steamGen.stringToNumber(m_axes[place], word);
    return number >= 0 ? number : m_steamGen.stringToNumber(m_axes[place], withoutAxis(word, place));
}

QList<int> TubeFinder::numbersInUse(const QList<int> &before) const
{
    QBitArray found(std::numeric_limits<qint16>::max() + 1);
    const Axis wanted = m_axes[before.size()];
    for (const ellery::Tube &tube : m_steamGen.tubes()) {
        bool fits = true;
        for (qsizetype i = 0; i < before.size() && fits; ++i)
            fits = numberOn(tube.address, m_axes[i]) == before[i];
        if (const int number = numberOn(tube.address, wanted); fits && number >= 0)
            found.setBit(number);
    }
    QList<int> numbers;
    for (int number = 0; number < found.size(); ++number) {
        if (found.testBit(number))
            numbers.append(number);
    }
    return numbers;
}

QString TubeFinder::name(const QList<int> &numbers) const
{
    QStringList parts;
    for (qsizetype i = 0; i < numbers.size(); ++i)
        parts.append(axisName(i) + u' ' + m_steamGen.tubeLabel(m_axes[i], numbers[i]));
    if (numbers.size() < m_axes.size())
        parts.append(axisName(numbers.size()) + u' ');
    return parts.join(u' ');
}

QStringList TubeFinder::completions(QStringView text, int most) const
{
    const QStringList list = completionsOf(text, most);
    return list.isEmpty() ? completionsOf(withAxesApart(text), most) : list;
}

QStringList TubeFinder::completionsOf(QStringView text, int most) const
{
    const QStringList typed = words(text);
    if (text.trimmed().isEmpty() || typed.isEmpty() || typed.size() > m_axes.size())
        return {};
    QList<int> numbers;
    for (int i = 0; i < typed.size() - 1; ++i)
        numbers.append(numberOf(typed[i], i));
    const int place = int(numbers.size());
    const QStringList beginnings{typed.last(), withoutAxis(typed.last(), place)};
    QStringList list;
    for (const int number : numbersInUse(numbers)) {
        const QString label = m_steamGen.tubeLabel(m_axes[place], number);
        const bool fits = std::any_of(beginnings.begin(), beginnings.end(), [&label](const QString &beginning) {
            return label.startsWith(beginning, Qt::CaseInsensitive);
        });
        if (fits && list.size() < most)
            list.append(name(numbers + QList<int>{number}));
    }
    return list;
}

QString TubeFinder::numbersText(qsizetype place, const QList<int> &numbers) const
{
    constexpr qsizetype kMostListed = 5;
    QStringList labels;
    bool even = true; // true if all steps are equal
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        labels.append(m_steamGen.tubeLabel(m_axes[place], numbers[i]));
        even = even && (i < 2 || numbers[i] - numbers[i - 1] == numbers[1] - numbers[0]);
    }
    if (labels.size() > 2 && even && numbers[1] - numbers[0] == 1)
        return labels.first() + u" to "_s + labels.last();
    if (labels.size() <= kMostListed)
        return labels.join(u", "_s);
    if (even)
        return labels[0] + u", "_s + labels[1] + u" ... "_s + labels.last();
    return labels.first() + u" to "_s + labels.last() + u", with gaps"_s;
}

QString TubeFinder::hint(QStringView text) const
{
    const auto typed = [this](QStringView address) {
        QStringList list = words(address);
        list.removeAll(QString());
        return list;
    };
    const QStringList asTyped = typed(text);
    return hintOf(asTyped.size() == m_axes.size() ? asTyped : typed(withAxesApart(text)));
}

QString TubeFinder::hintOf(const QStringList &typed) const
{
    QStringList axes;
    for (qsizetype i = 0; i < m_axes.size(); ++i)
        axes.append(axisName(i));
    if (typed.size() != m_axes.size())
        return u"Type its "_s + axes.join(u" and ") + u'.';
    QList<int> numbers;
    for (int i = 0; i < typed.size(); ++i) {
        const QList<int> inUse = numbersInUse(numbers);
        const int number = numberOf(typed[i], i);
        if (inUse.contains(number)) {
            numbers.append(number);
            continue;
        }
        // Without labels of the plant, "R" is not part of the number.
        const bool hasLabels = !m_steamGen.labels[int(m_axes[i])].isEmpty();
        const QString word = hasLabels ? typed[i] : withoutAxis(typed[i], i);
        if (inUse.isEmpty())
            return tarnwick::format(u"There is no %S %S.", axes[i], word);
        if (i == 0)
            return tarnwick::format(u"There is no %S %S, only %S %S.", axes[i], word, axes[i], numbersText(i, inUse));
        return tarnwick::format(u"%Shas %S %S.", name(numbers).chopped(axes[i].size() + 1), axes[i],
                                numbersText(i, inUse));
    }
    return {};
}

} // namespace app
