#include "Messages.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace jet {
namespace {

using wire::ErrorCode;
using wire::Fault;
using wire::RemarkCode;
using Kind = Remark::Kind;
using Reason = JetError::Reason;

struct FaultText
{
    Fault fault;
    const char16_t *text;
};
// %1 the page
constexpr FaultText kFaults[] = {
    {Fault::PageBeyondEnd, u"page %1 is beyond the end of the file"},
    {Fault::PageUnreadable, u"page %1 cannot be read"},
    {Fault::WrongPageKind, u"page %1 has unexpected content"},
    {Fault::EndlessChain, u"pages refer to each other in a circle"},
    {Fault::BadOffset, u"an offset on page %1 is outside of the page"},
    {Fault::BadLength, u"a length on page %1 is invalid"},
    {Fault::BadCount, u"a count on page %1 is invalid"},
    {Fault::BadName, u"a name is missing or invalid"},
    {Fault::BadType, u"a type is unknown"},
    {Fault::BadMap, u"the list of pages is of an unknown kind"},
    {Fault::BadValue, u"a value is invalid"},
    {Fault::Overlapping, u"values overlap"},
};

struct ErrorText
{
    Reason reason;
    const char16_t *text;
};
// %1 the file, %2 a detail
constexpr ErrorText kErrors[] = {
    {Reason::CannotOpen, u"The file '%1' could not be opened."},
    {Reason::NotJet, u"The file '%1' is not a Jet database."},
    {Reason::NewerFormat, u"The file '%1' is of a newer format than Jet 4, which cannot be read."},
    {Reason::CutShort, u"The file '%1' is truncated: a part of it is missing."},
    {Reason::Damaged, u"The file '%1' is damaged: the list of its objects cannot be read (%2)."},
    {Reason::OutOfMemory, u"The file '%1' could not be read: there is not enough memory."},
    {Reason::ReaderMissing, u"The file '%1' could not be read: the program '%2' could not be started."},
    {Reason::ReaderFailed,
     u"The file '%1' could not be read: the reading process failed (%2). The file may be damaged."},
    {Reason::ReaderStuck,
     u"The file '%1' could not be read: the reading process did not answer for %2 seconds. The file may be damaged."},
};

struct RemarkText
{
    RemarkCode code;
    Kind kind;
    const char16_t *text;
};
// %1 the object, %2 a detail, %3 a count, %4 the count that was expected, %5 the fault
constexpr RemarkText kRemarks[] = {
    {RemarkCode::LinkedTable, Kind::NotCarried, u"Table '%1' is only a link to %2."},
    {RemarkCode::Forms, Kind::NotCarried, u"%3 form(s): %2."},
    {RemarkCode::Reports, Kind::NotCarried, u"%3 report(s): %2."},
    {RemarkCode::Macros, Kind::NotCarried, u"%3 macro(s): %2."},
    {RemarkCode::Modules, Kind::NotCarried, u"%3 module(s): %2."},
    {RemarkCode::HiddenQueries, Kind::NotCarried, u"%3 query(s) inside of forms and reports."},
    {RemarkCode::DeletedObjects, Kind::NotCarried, u"Table '%1' was deleted, but not yet removed from the file."},
    {RemarkCode::SystemTable, Kind::NotCarried, u"Table '%1' belongs to the system."},
    {RemarkCode::UnknownObject, Kind::NotCarried, u"Object '%1' is of an unknown kind."},
    {RemarkCode::PassThroughQuery, Kind::NotCarried,
     u"Query '%1' is meant for another server: its text was carried over, its connection was not."},
    {RemarkCode::DecimalRounded, Kind::Changed, u"Table '%1', field '%2': %3 number(s) rounded to 15 digits."},
    {RemarkCode::TextDamaged, Kind::Changed, u"Table '%1', field '%2': %3 text(s) with unreadable characters."},
    {RemarkCode::RowCountDiffers, Kind::Suspect, u"Table '%1' has %3 row(s), but the file states %4."},
    {RemarkCode::RowsMissing, Kind::Lost, u"Table '%1': rows are missing, %3 of %4 could be found."},
    {RemarkCode::CatalogIncomplete, Kind::Lost,
     u"The list of objects is damaged: %3 of %4 entries could be read, objects may be missing."},
    {RemarkCode::SystemPagesMissing, Kind::Lost,
     u"The file is truncated: %3 page(s) of the system's table '%1' are missing."},
    {RemarkCode::TableDamaged, Kind::Lost, u"Table '%1' could not be read (%5)."},
    {RemarkCode::RowsDamaged, Kind::Lost, u"Table '%1': rows could not be read (%5)."},
    {RemarkCode::PagesDamaged, Kind::Lost, u"Table '%1': %3 page(s) of rows could not be read (%5)."},
    {RemarkCode::ValueDamaged, Kind::Lost, u"Table '%1', field '%2': %3 value(s) could not be read (%5)."},
    {RemarkCode::IndexesDamaged, Kind::Lost, u"Table '%1': the indexes could not be read (%5)."},
    {RemarkCode::PropertiesDamaged, Kind::Lost,
     u"Table '%1': properties (required, defaults, rules, descriptions) could not be read."},
    {RemarkCode::RelationDamaged, Kind::Lost, u"Relations could not be read."},
    {RemarkCode::QueryDamaged, Kind::Lost, u"Query '%1' could not be read (%5)."},
    {RemarkCode::QueriesDamaged, Kind::Lost, u"Stored queries could not be read or are not complete."},
};

QString faultText(Fault fault, quint32 page)
{
    for (const FaultText &entry : kFaults) {
        if (entry.fault == fault)
            return QString::fromUtf16(entry.text).replace(u"%1"_s, QString::number(page));
    }
    return u"reason unknown"_s;
}

// Replaces all placeholders in one pass, so that a name that contains "%1" is not expanded again.
QString fill(const char16_t *pattern, const QStringList &arguments)
{
    QString text;
    for (const char16_t *c = pattern; *c; ++c) {
        if (*c == u'%' && c[1] >= u'1' && c[1] <= u'9') {
            text += arguments.value(c[1] - u'1');
            ++c;
        } else {
            text += QChar(*c);
        }
    }
    return text;
}

Reason reasonOf(quint16 code)
{
    switch (ErrorCode(code)) {
    case ErrorCode::CannotOpen:
        return Reason::CannotOpen;
    case ErrorCode::NotJet:
        return Reason::NotJet;
    case ErrorCode::NewerFormat:
        return Reason::NewerFormat;
    case ErrorCode::CutShort:
        return Reason::CutShort;
    case ErrorCode::CatalogDamaged:
        return Reason::Damaged;
    case ErrorCode::OutOfMemory:
        return Reason::OutOfMemory;
    }
    throw wire::ProtocolError();
}

} // namespace

JetError errorFor(const QString &path, Reason reason, const QString &detail)
{
    for (const ErrorText &entry : kErrors) {
        if (entry.reason == reason)
            return JetError(reason, fill(entry.text, {QDir::toNativeSeparators(path), detail}));
    }
    return JetError(reason, path);
}

JetError errorFor(const QString &path, const wire::Note &note)
{
    return errorFor(path, reasonOf(note.code), faultText(note.fault, note.page));
}

Remark remarkFor(const wire::Note &note)
{
    for (const RemarkText &entry : kRemarks) {
        if (quint16(entry.code) == note.code) {
            const QStringList arguments{note.object, note.detail, QString::number(note.count),
                                        QString::number(note.expected), faultText(note.fault, note.page)};
            return {entry.kind, note.object, fill(entry.text, arguments)};
        }
    }
    throw wire::ProtocolError();
}

} // namespace jet
