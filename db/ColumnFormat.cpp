#include "ColumnFormat.h"

#include <tarnwick/JFormatSpec.h>

namespace db {

using namespace Qt::StringLiterals;
using dao::DataType;

namespace {

QString defaultFormat(DataType type)
{
    switch (type) {
    case DataType::Boolean:
        return u"T F"_s;
    case DataType::Byte:
        return u"%4d"_s;
    case DataType::Integer:
    case DataType::Long:
        return u"%d"_s;
    case DataType::Currency:
    case DataType::Text:
    case DataType::Memo:
        return u"%U"_s;
    case DataType::Single:
    case DataType::Double:
        return u"%.2f"_s;
    case DataType::Date:
        return u"%m/%d/%Y %X"_s;
    case DataType::LongBinary:
        return u"%D"_s;
    default:
        return {};
    }
}

qint32 defaultAlignment(DataType type)
{
    if (type == DataType::Boolean)
        return ColumnFormat::Center;
    return type >= DataType::Byte && type <= DataType::Date ? ColumnFormat::Right : ColumnFormat::Left;
}

/// The default format of a type, and the conversion letters that an edited format may use (null: any format is
/// accepted).
struct FormatRule
{
    const char16_t *letters;
    const char16_t *standard;
};

FormatRule ruleFor(DataType type)
{
    switch (type) {
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
        return {u"dDXx", u"%d"};
    case DataType::Currency:
    case DataType::Text:
    case DataType::Memo:
        return {u"U", u"%U"};
    case DataType::Single:
    case DataType::Double:
        return {u"feg", u"%.2f"};
    case DataType::Boolean:
        return {u"", u"T F"};
    case DataType::LongBinary:
        return {u"", u"%D"};
    default:
        return {nullptr, nullptr};
    }
}

} // namespace

ColumnFormat::ColumnFormat(const QString &fieldName, DataType fieldType)
    : name(fieldName)
    , title(fieldName.toUpper().replace(u'_', u' '))
    , type(fieldType)
    , width(qint32(title.size()))
    , format(defaultFormat(fieldType))
    , alignment(defaultAlignment(fieldType))
{
}

void ColumnFormat::revalidate()
{
    width = std::max(width, qint32(title.size()));
    const FormatRule rule = ruleFor(type);
    if (!rule.letters)
        return;
    const QChar letter = tarnwick::JFormatSpec(format).conversion();
    if (letter.isNull() || !QStringView(rule.letters).contains(letter))
        format = QString::fromUtf16(rule.standard);
}

void ColumnFormat::serialize(tarnwick::JFile &file)
{
    file.version(1);
    file.serialize(name);
    file.serialize(title);
    file.serialize(format);
    qint32 typeNumber = qint32(type);
    file.serialize(typeNumber);
    type = DataType(typeNumber);
    file.serialize(width);
    file.serialize(alignment);
}

QString ColumnFormat::fault() const
{
    constexpr qint32 kMaxWidth = 4096;
    if (width < 0 || width > kMaxWidth)
        return u"the width %1 is out of range"_s.arg(width);
    if (alignment < Center || alignment > Right)
        return u"the alignment %1 is unknown"_s.arg(alignment);
    return {};
}

} // namespace db
