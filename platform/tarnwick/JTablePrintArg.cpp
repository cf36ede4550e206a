#include "JTablePrintArg.h"

#include <cmath>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kMaxInches = 1000;

void serializeInches(JFile &file, double &value)
{
    file.serialize(value);
    if (file.isReading() && !(std::abs(value) <= kMaxInches))
        file.fail(u"a margin or spacing is out of range"_s);
}

} // namespace

void PrintSection::serialize(JFile &file)
{
    file.serialize(text);
    file.serialize(font);
    file.serialize(size);
    file.serialize(colour);
    qint32 alignment = qint32(align);
    file.serialize(alignment);
    if (file.isReading() && (size < 1 || size > 1000))
        file.fail(u"the font size of a print section is out of range"_s);
    if (file.isReading() && (alignment < 0 || alignment > qint32(Align::Center)))
        file.fail(u"the alignment of a print section is unknown"_s);
    align = Align(alignment);
    serializeInches(file, spacing);
}

QString printAlignName(PrintSection::Align align)
{
    switch (align) {
    case PrintSection::Align::Right:
        return u"Right"_s;
    case PrintSection::Align::Center:
        return u"Center"_s;
    case PrintSection::Align::Left:
        break;
    }
    return u"Left"_s;
}

void PrintMargins::serialize(JFile &file)
{
    for (double *margin : {&left, &top, &right, &bottom})
        serializeInches(file, *margin);
}

QString JTablePrintArg::sectionName(int section)
{
    static const QString names[kSections] = {u"Report Title"_s,  u"Report Header"_s, u"Page Header"_s,
                                             u"Report Body"_s,   u"Page Footer"_s,   u"Report Footer"_s,
                                             u"Report Version"_s};
    return section >= 0 && section < kSections ? names[section] : QString();
}

JTablePrintArg JTablePrintArg::forResults()
{
    JTablePrintArg print;
    print.sections[ReportHeader].text = u"[DATE]"_s;
    print.sections[PageFooter].text = u"Page [CUR_PAGE] of [NUM_PAGE]"_s;
    print.sections[ReportFooter].text = u"Analyst ____________________________________________________"_s;
    return print;
}

void JTablePrintArg::serialize(JFile &file)
{
    file.version(1);
    file.serialize(title);
    for (PrintSection &section : sections)
        section.serialize(file);
    margins.serialize(file);
    file.serialize(separators);
}

} // namespace tarnwick
