#include "FormatEdit.h"

#include "CellText.h"
#include "Messages.h"

#include <db/FieldDefinition.h>
#include <tarnwick/Failures.h>
#include <tarnwick/StringToValue.h>

namespace query {

using namespace Qt::StringLiterals;
using db::ColumnFormat;
using tarnwick::GridColumn;

namespace {

/// By the numbers of ColumnFormat::Alignment.
const QStringList kAlignments{u"CENTER"_s, u"LEFT"_s, u"RIGHT"_s};

/// A value to show what a format does; Null if the type has none.
dao::Value sampleOf(dao::DataType type)
{
    constexpr double kSampleDate = 43864.51; // 2020-02-03, shortly after noon
    constexpr double kSampleNumber = 12.345678;
    if (type == dao::DataType::Date)
        return dao::Value::fromDate(kSampleDate);
    if (type == dao::DataType::Boolean)
        return dao::Value::fromBoolean(true);
    if (dao::isIntegerType(type))
        return dao::Value::fromLong(int(kSampleNumber));
    if (type == dao::DataType::Single || type == dao::DataType::Double)
        return dao::Value::fromDouble(kSampleNumber);
    return dao::Value::null();
}

} // namespace

FormatEdit::FormatEdit(db::DatabaseSession &session, QueryContext &context)
    : m_session(session)
    , m_context(context)
{
}

bool FormatEdit::rebuild(FormatList &list, bool &isNew)
{
    const auto readTables = [&] { isNew = list.rebuild(m_session.database()); };
    return tarnwick::attempt(m_session.prompts(), readTables, messages::kFormatInfo);
}

bool FormatEdit::open()
{
    if (!db::checkConnected(m_session))
        return false;
    m_list = m_context.formats;
    if (!rebuild(m_list, m_isModified))
        return false;
    m_table = m_list.tables.isEmpty() ? -1 : 0;
    return true;
}

QStringList FormatEdit::tableNames() const
{
    QStringList names;
    for (const FormatList::Table &table : m_list.tables)
        names.append(table.name);
    return names;
}

bool FormatEdit::store()
{
    m_context.formats.tables = m_list.tables;
    const auto storeFile = [this] { m_context.formats.store(m_context.roots); };
    if (!tarnwick::attempt(m_session.prompts(), storeFile, messages::kFormatsNotStored))
        return false;
    m_isModified = false;
    m_session.prompts().status(messages::kFormatsStored);
    return true;
}

bool FormatEdit::importFrom(const QString &machinePath)
{
    FormatList imported;
    bool isNew = false;
    const auto load = [&] { imported.loadFrom(machinePath); };
    if (!tarnwick::attempt(m_session.prompts(), load, messages::kFormatsNotRead))
        return false;
    showRefused(imported, m_session.prompts());
    if (!rebuild(imported, isNew))
        return false;
    m_list.tables = imported.tables; // the same tables: those of the database
    m_table = qMin(m_table, int(m_list.tables.size()) - 1);
    m_isModified = true;
    return true;
}

bool FormatEdit::exportTo(const QString &machinePath)
{
    const auto storeFile = [&] { m_list.storeTo(machinePath); };
    return tarnwick::attempt(m_session.prompts(), storeFile, messages::kFormatsNotStored);
}

int FormatEdit::rowCount() const
{
    return m_table < 0 ? 0 : int(m_list.tables[m_table].fields.size());
}

GridColumn FormatEdit::column(int column) const
{
    static const GridColumn kColumns[ColumnCount] = {
        {.title = u"NAME"_s, .width = 20},
        {.title = u"TITLE"_s, .width = 20},
        {.title = u"FORMAT"_s, .width = 14},
        {.title = u"WIDTH"_s, .width = 6, .align = tarnwick::ColumnAlign::Right},
        {.title = u"ALIGN"_s,
         .width = 6,
         .align = tarnwick::ColumnAlign::Left,
         .editor = GridColumn::Editor::Choice,
         .choices = kAlignments,
         .hasFreeText = true},
        {.title = u"TYPE"_s, .width = 12},
    };
    return kColumns[column];
}

QString FormatEdit::text(int row, int column) const
{
    const ColumnFormat &field = format(row);
    switch (column) {
    case Name:
        return field.name;
    case Title:
        return field.title;
    case Format:
        return field.format;
    case Width:
        return QString::number(field.width);
    case Align:
        return kAlignments.value(field.alignment);
    default:
        return db::daoTypeName(field.type);
    }
}

QVariant FormatEdit::value(int row, int column) const
{
    return column == Width ? QVariant(format(row).width) : QVariant(text(row, column));
}

QString FormatEdit::tip(int row, int column) const
{
    const dao::Value sample = sampleOf(format(row).type);
    if (column == Format && !sample.isNull())
        return u"Example: %1"_s.arg(cellText(sample, format(row)));
    return {};
}

QString FormatEdit::whyNotEditable(int, int column) const
{
    return column == Name || column == Type ? u"Name and type are those of the database's field."_s : QString();
}

bool FormatEdit::set(ColumnFormat &format, int column, const QString &text)
{
    if (column == Title)
        format.title = text;
    else if (column == Width)
        format.width = tarnwick::leadingInteger(text);
    else if (column == Format)
        format.format = text;
    // Only the first letter counts; any other leaves the alignment as it was.
    for (qsizetype i = 0; column == Align && i < kAlignments.size(); ++i) {
        if (!text.isEmpty() && kAlignments[i].startsWith(text.trimmed().left(1), Qt::CaseInsensitive))
            format.alignment = qint32(i);
    }
    if (const QString fault = format.fault(); !fault.isEmpty()) {
        m_session.prompts().status(messages::kFormatRefused, fault);
        return false;
    }
    if (column == Format && format.type != dao::DataType::Boolean) {
        const QString typed = format.format;
        format.revalidate();
        if (format.format != typed)
            m_session.prompts().status(messages::kFormatReplaced, typed, db::daoTypeName(format.type));
    }
    return true;
}

bool FormatEdit::setText(int row, int column, const QString &text)
{
    if (!whyNotEditable(row, column).isEmpty())
        return false;
    ColumnFormat edited = format(row);
    if (!set(edited, column, text))
        return false;
    if (edited != format(row)) {
        m_list.tables[m_table].fields[row] = edited;
        m_isModified = true;
    }
    return true;
}

} // namespace query
