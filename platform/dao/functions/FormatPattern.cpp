#include "FormatPattern.h"

#include "ValueText.h"

#include <algorithm>
#include <QHash>

namespace dao::functions {

using namespace Qt::StringLiterals;

qsizetype takeLiteral(QStringView pattern, qsizetype index, QString &text)
{
    if (pattern[index] == u'\\' && index + 1 < pattern.size()) {
        text += pattern[index + 1];
        return index + 2;
    }
    if (pattern[index] != u'"')
        return index;
    const qsizetype end = pattern.indexOf(u'"', index + 1);
    const qsizetype close = end < 0 ? pattern.size() : end;
    text += pattern.mid(index + 1, close - index - 1);
    return std::min(close + 1, pattern.size());
}

PatternKind patternKind(QStringView pattern)
{
    static constexpr QStringView kNumberCharacters = u"0#%";
    static constexpr QStringView kDateCharacters = u"dwmqyhnsct/:";
    static constexpr QStringView kTextCharacters = u"@&<>!";
    QString skipped;
    for (qsizetype i = 0; i < pattern.size();) {
        const qsizetype behind = takeLiteral(pattern, i, skipped);
        if (behind != i) {
            i = behind;
            continue;
        }
        const QChar c = pattern[i++];
        if (kNumberCharacters.contains(c))
            return PatternKind::Number;
        if (kTextCharacters.contains(c))
            return PatternKind::Text;
        if (kDateCharacters.contains(c.toLower()))
            return PatternKind::Date;
    }
    return PatternKind::None;
}

QStringList patternSections(QStringView pattern)
{
    QStringList sections;
    qsizetype begin = 0;
    QString skipped;
    for (qsizetype i = 0; i < pattern.size();) {
        const qsizetype behind = takeLiteral(pattern, i, skipped);
        if (behind != i) {
            i = behind;
        } else {
            if (pattern[i] == u';') {
                sections.append(pattern.mid(begin, i - begin).toString());
                begin = i + 1;
            }
            ++i;
        }
    }
    sections.append(pattern.mid(begin).toString());
    return sections;
}

QString namedNumberPattern(QStringView name)
{
    static const QHash<QString, QString> patterns = {
        {u"currency"_s, u"$#,##0.00;($#,##0.00)"_s},
        {u"euro"_s, u"\u20AC#,##0.00;(\u20AC#,##0.00)"_s},
        {u"fixed"_s, u"0.00"_s},
        {u"standard"_s, u"#,##0.00"_s},
        {u"percent"_s, u"0.00%"_s},
        {u"scientific"_s, u"0.00E+00"_s},
    };
    return patterns.value(name.toString().toLower());
}

QString namedDatePattern(QStringView name)
{
    static const QHash<QString, QString> patterns = {
        {u"general date"_s, u"c"_s},          {u"long date"_s, u"dddd, mmmm dd, yyyy"_s},
        {u"medium date"_s, u"dd-mmm-yy"_s},   {u"short date"_s, u"m/d/yyyy"_s},
        {u"long time"_s, u"h:nn:ss AM/PM"_s}, {u"medium time"_s, u"hh:nn AM/PM"_s},
        {u"short time"_s, u"hh:nn"_s},
    };
    return patterns.value(name.toString().toLower());
}

QString formatText(const QString &text, const QString &pattern)
{
    const QStringList sections = patternSections(pattern);
    const QString section = text.isEmpty() && sections.size() > 1 ? sections[1] : sections[0];
    bool fromLeft = false;
    QChar fold;
    qsizetype places = 0;
    QString skipped;
    for (qsizetype i = 0; i < section.size();) {
        const qsizetype behind = takeLiteral(section, i, skipped);
        if (behind != i) {
            i = behind;
            continue;
        }
        const QChar c = section[i++];
        fromLeft = fromLeft || c == u'!';
        places += c == u'@' || c == u'&';
        if (c == u'<' || c == u'>')
            fold = c; // the last one applies
    }
    const QString given = fold == u'<' ? lowerCaseOf(text) : fold == u'>' ? upperCaseOf(text) : text;

    // Unused placeholders are before the text if it is filled from the right, else after it.
    const qsizetype empty = std::max<qsizetype>(0, places - given.size());
    const qsizetype surplus = std::max<qsizetype>(0, given.size() - places);
    QString result;
    qsizetype place = 0;
    qsizetype taken = 0;
    for (qsizetype i = 0; i < section.size();) {
        const qsizetype behind = takeLiteral(section, i, result);
        if (behind != i) {
            i = behind;
            continue;
        }
        const QChar c = section[i++];
        if (c == u'@' || c == u'&') {
            const bool isEmpty = fromLeft ? place >= given.size() : place < empty;
            if (isEmpty) {
                result += c == u'@' ? u" "_s : QString();
            } else {
                const qsizetype count = !fromLeft && taken == 0 ? 1 + surplus : 1;
                result += QStringView(given).mid(taken, count);
                taken += count;
            }
            ++place;
        } else if (c != u'!' && c != u'<' && c != u'>') {
            result += c;
        }
    }
    // A section without placeholders shows only its literals; one with only case marks shows the text.
    if (taken < given.size() && (places > 0 || patternKind(section) == PatternKind::Text))
        result += QStringView(given).mid(taken);
    return result;
}

} // namespace dao::functions
