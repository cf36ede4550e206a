#include "FieldDefinition.h"

namespace db {

using namespace Qt::StringLiterals;

QString daoTypeName(int type)
{
    static const QString names[] = {QString(),     u"Boolean"_s,     u"Byte"_s,   u"Integer"_s, u"Long"_s,
                                    u"Currency"_s, u"Single"_s,      u"Double"_s, u"Date"_s,    QString(),
                                    u"Text"_s,     u"Long Binary"_s, u"Memo"_s};
    return type >= 0 && type < int(std::size(names)) ? names[type] : QString();
}

namespace {

bool hasFlag(QStringView flags, int position, QChar letter)
{
    return position < flags.size() && flags[position] == letter;
}

} // namespace

void createField(dao::TableInfo &table, const QString &name, dao::DataType type, int size, const QString &defaultValue,
                 const QString &validationRule, QStringView flags)
{
    dao::FieldInfo field;
    field.name = name;
    field.type = type;
    field.size = type == dao::DataType::Text ? size : 0;
    field.defaultValue = defaultValue;
    field.validationRule = validationRule;
    field.required = hasFlag(flags, 0, u'R');
    field.allowZeroLength = dao::isTextType(type) && hasFlag(flags, 1, u'Z');
    field.attributes = hasFlag(flags, 2, u'A') ? int(dao::AutoIncrement) : 0;
    table.fields.append(field);
}

dao::FieldInfo convertedField(const QString &name, dao::DataType type, const QString &defaultValue, int attributes,
                              int size, bool allowZeroLength)
{
    constexpr int kDefaultTextSize = 255;
    dao::FieldInfo field;
    field.name = name;
    field.type = type;
    field.size = type != dao::DataType::Text ? 0 : size == 0 ? kDefaultTextSize : size;
    field.attributes = attributes;
    field.defaultValue = defaultValue;
    field.required = !defaultValue.isNull();
    field.allowZeroLength = allowZeroLength && dao::isTextType(type);
    return field;
}

void addField(dao::TableInfo &table, const QString &name, dao::DataType type, const QString &defaultValue,
              int attributes, int size, bool allowZeroLength)
{
    table.fields.append(convertedField(name, type, defaultValue, attributes, size, allowZeroLength));
}

dao::IndexInfo newIndex(const QString &name, int flags, const QStringList &fields)
{
    dao::IndexInfo index;
    index.name = name;
    index.primary = flags & PrimaryIndex;
    index.unique = flags & UniqueIndex;
    index.ignoreNulls = flags & IgnoreNulls;
    index.required = flags & RequiredIndex;
    index.foreign = flags & ForeignIndex;
    for (const QString &field : fields) {
        if (field.isEmpty())
            break;
        index.fields.append({field, false});
    }
    return index;
}

void createIndex(dao::TableInfo &table, const QString &name, int flags, const QStringList &fields)
{
    table.indexes.append(newIndex(name, flags, fields));
}

} // namespace db
