#include "Keywords.h"

#include <array>
#include <QHash>

namespace dao::sql::ast {
namespace {

struct Word
{
    const char16_t *text;
    Keyword keyword;
};

constexpr Word kWords[] = {
    {u"ACTION", Keyword::Action},
    {u"ADD", Keyword::Add},
    {u"ALL", Keyword::All},
    {u"ALIKE", Keyword::ALike},
    {u"ALTER", Keyword::Alter},
    {u"AND", Keyword::And},
    {u"ANY", Keyword::Any},
    {u"AS", Keyword::As},
    {u"ASC", Keyword::Asc},
    {u"BETWEEN", Keyword::Between},
    {u"BY", Keyword::By},
    {u"CASCADE", Keyword::Cascade},
    {u"CHECK", Keyword::Check},
    {u"COLUMN", Keyword::Column},
    {u"COMP", Keyword::Comp},
    {u"COMPRESSION", Keyword::Compression},
    {u"CONSTRAINT", Keyword::Constraint},
    {u"CREATE", Keyword::Create},
    {u"DEFAULT", Keyword::Default},
    {u"DELETE", Keyword::Delete},
    {u"DESC", Keyword::Desc},
    {u"DISALLOW", Keyword::Disallow},
    {u"DISTINCT", Keyword::Distinct},
    {u"DISTINCTROW", Keyword::DistinctRow},
    {u"DROP", Keyword::Drop},
    {u"EQV", Keyword::Eqv},
    {u"EXEC", Keyword::Exec},
    {u"EXECUTE", Keyword::Execute},
    {u"EXISTS", Keyword::Exists},
    {u"FALSE", Keyword::False},
    {u"FOREIGN", Keyword::Foreign},
    {u"FROM", Keyword::From},
    {u"GROUP", Keyword::Group},
    {u"HAVING", Keyword::Having},
    {u"IDENTITY", Keyword::Identity},
    {u"IGNORE", Keyword::Ignore},
    {u"IMP", Keyword::Imp},
    {u"IN", Keyword::In},
    {u"INDEX", Keyword::Index},
    {u"INNER", Keyword::Inner},
    {u"INSERT", Keyword::Insert},
    {u"INTO", Keyword::Into},
    {u"IS", Keyword::Is},
    {u"JOIN", Keyword::Join},
    {u"KEY", Keyword::Key},
    {u"LEFT", Keyword::Left},
    {u"LIKE", Keyword::Like},
    {u"MOD", Keyword::Mod},
    {u"NO", Keyword::No},
    {u"NOT", Keyword::Not},
    {u"NULL", Keyword::Null},
    {u"OFF", Keyword::Off},
    {u"ON", Keyword::On},
    {u"OPTION", Keyword::Option},
    {u"OR", Keyword::Or},
    {u"ORDER", Keyword::Order},
    {u"OUTER", Keyword::Outer},
    {u"OWNERACCESS", Keyword::OwnerAccess},
    {u"PARAMETERS", Keyword::Parameters},
    {u"PERCENT", Keyword::Percent},
    {u"PIVOT", Keyword::Pivot},
    {u"PRIMARY", Keyword::Primary},
    {u"PROCEDURE", Keyword::Procedure},
    {u"REFERENCES", Keyword::References},
    {u"RIGHT", Keyword::Right},
    {u"SELECT", Keyword::Select},
    {u"SET", Keyword::Set},
    {u"SOME", Keyword::Some},
    {u"TABLE", Keyword::Table},
    {u"TEMPORARY", Keyword::Temporary},
    {u"TOP", Keyword::Top},
    {u"TRANSFORM", Keyword::Transform},
    {u"TRUE", Keyword::True},
    {u"UNION", Keyword::Union},
    {u"UNIQUE", Keyword::Unique},
    {u"UPDATE", Keyword::Update},
    {u"VALUES", Keyword::Values},
    {u"VIEW", Keyword::View},
    {u"WHERE", Keyword::Where},
    {u"WITH", Keyword::With},
    {u"XOR", Keyword::Xor},
    {u"YES", Keyword::Yes},
};

struct TypeWord
{
    const char16_t *text;
    TypeName name;
};

constexpr TypeWord kTypeWords[] = {
    {u"BIT", {DataType::Boolean}},
    {u"BOOLEAN", {DataType::Boolean}},
    {u"LOGICAL", {DataType::Boolean}},
    {u"LOGICAL1", {DataType::Boolean}},
    {u"YESNO", {DataType::Boolean}},
    {u"BYTE", {DataType::Byte}},
    {u"TINYINT", {DataType::Byte}},
    {u"INTEGER1", {DataType::Byte}},
    {u"SHORT", {DataType::Integer}},
    {u"SMALLINT", {DataType::Integer}},
    {u"INTEGER2", {DataType::Integer}},
    {u"LONG", {DataType::Long}},
    {u"INT", {DataType::Long}},
    {u"INTEGER", {DataType::Long}},
    {u"INTEGER4", {DataType::Long}},
    {u"COUNTER", {DataType::Long, true}},
    {u"AUTOINCREMENT", {DataType::Long, true}},
    {u"IDENTITY", {DataType::Long, true}},
    {u"CURRENCY", {DataType::Currency}},
    {u"MONEY", {DataType::Currency}},
    {u"SINGLE", {DataType::Single}},
    {u"REAL", {DataType::Single}},
    {u"FLOAT4", {DataType::Single}},
    {u"IEEESINGLE", {DataType::Single}},
    {u"DOUBLE", {DataType::Double}},
    {u"FLOAT", {DataType::Double}},
    {u"FLOAT8", {DataType::Double}},
    {u"IEEEDOUBLE", {DataType::Double}},
    {u"NUMBER", {DataType::Double}},
    {u"DATETIME", {DataType::Date}},
    {u"DATE", {DataType::Date}},
    {u"TIME", {DataType::Date}},
    {u"TIMESTAMP", {DataType::Date}},
    {u"BINARY", {DataType::Binary}},
    {u"VARBINARY", {DataType::Binary}},
    {u"TEXT", {DataType::Text}},
    {u"CHAR", {DataType::Text}},
    {u"CHARACTER", {DataType::Text}},
    {u"VARCHAR", {DataType::Text}},
    {u"STRING", {DataType::Text}},
    {u"ALPHANUMERIC", {DataType::Text}},
    {u"NCHAR", {DataType::Text}},
    {u"NVARCHAR", {DataType::Text}},
    {u"NATIONAL", {DataType::Text}},
    {u"LONGBINARY", {DataType::LongBinary}},
    {u"GENERAL", {DataType::LongBinary}},
    {u"OLEOBJECT", {DataType::LongBinary}},
    {u"IMAGE", {DataType::LongBinary}},
    {u"MEMO", {DataType::Memo}},
    {u"LONGTEXT", {DataType::Memo}},
    {u"LONGCHAR", {DataType::Memo}},
    {u"NOTE", {DataType::Memo}},
    {u"NTEXT", {DataType::Memo}},
    {u"GUID", {DataType::Guid}},
    {u"UNIQUEIDENTIFIER", {DataType::Guid}},
    {u"DECIMAL", {DataType::Decimal}},
    {u"NUMERIC", {DataType::Decimal}},
    {u"DEC", {DataType::Decimal}},
    {u"VALUE", {DataType::Unknown}},
};

constexpr qsizetype kLongestWord = 16;

constexpr char16_t upper(char16_t c)
{
    return c >= u'a' && c <= u'z' ? char16_t(c - u'a' + u'A') : c;
}

/// The first keyword for each initial letter; kWords is sorted.
std::array<const Word *, 26> firstWords()
{
    std::array<const Word *, 26> firsts;
    firsts.fill(std::end(kWords));
    for (const Word *word = std::end(kWords); word-- != std::begin(kWords);)
        firsts[*word->text - u'A'] = word;
    return firsts;
}

bool isSameWord(QStringView word, const char16_t *keyword)
{
    for (const QChar c : word) {
        if (upper(c.unicode()) != *keyword++)
            return false;
    }
    return *keyword == 0;
}

template <typename Result, typename Table>
QHash<QString, Result> hashOf(const Table &table, Result (*pick)(const decltype(table[0]) &))
{
    QHash<QString, Result> hash;
    for (const auto &entry : table)
        hash.insert(QString::fromUtf16(entry.text), pick(entry));
    return hash;
}

} // namespace

// Called for each word of each text: compares only with keywords with the same initial and allocates nothing.
Keyword keywordOf(QStringView word)
{
    static const auto firsts = firstWords();
    if (word.isEmpty() || word.size() > kLongestWord)
        return Keyword::None;
    const char16_t initial = upper(word.front().unicode());
    if (initial < u'A' || initial > u'Z')
        return Keyword::None;
    for (const Word *entry = firsts[initial - u'A']; entry != std::end(kWords) && *entry->text == initial; ++entry) {
        if (isSameWord(word, entry->text))
            return entry->keyword;
    }
    return Keyword::None;
}

std::optional<TypeName> typeNameOf(QStringView word)
{
    static const auto hash = hashOf<TypeName>(kTypeWords, [](const TypeWord &entry) { return entry.name; });
    const auto found = hash.constFind(word.toString().toUpper());
    return found == hash.constEnd() ? std::nullopt : std::optional(*found);
}

bool endsExpression(Keyword keyword)
{
    switch (keyword) {
    case Keyword::From:
    case Keyword::Where:
    case Keyword::Group:
    case Keyword::Having:
    case Keyword::Order:
    case Keyword::Union:
    case Keyword::Into:
    case Keyword::Pivot:
    case Keyword::With:
    case Keyword::On:
    case Keyword::As:
    case Keyword::Inner:
    case Keyword::Join:
    case Keyword::Select:
    case Keyword::And:
    case Keyword::Or:
    case Keyword::Xor:
    case Keyword::Eqv:
    case Keyword::Imp:
    case Keyword::Mod:
    case Keyword::Like:
    case Keyword::ALike:
    case Keyword::Between:
    case Keyword::In:
    case Keyword::Is:
        return true;
    default:
        return false;
    }
}

bool endsTableName(Keyword keyword)
{
    switch (keyword) {
    case Keyword::Left:
    case Keyword::Right:
    case Keyword::Outer:
    case Keyword::Set:
    case Keyword::Values:
        return true;
    default:
        return endsExpression(keyword);
    }
}

} // namespace dao::sql::ast
