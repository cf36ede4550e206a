#include "SqlCompletion.h"

#include <dao/sql/ast/Token.h>
#include <dao/sql/bind/FunctionTable.h>
#include <db/FieldDefinition.h>

namespace query {

using namespace Qt::StringLiterals;
namespace ast = dao::sql::ast;
using ast::Keyword;
using ast::Symbol;
using ast::Token;
using Kind = Completion::Kind;

namespace {

constexpr const char16_t *kKeywords[] = {
    u"ALL",          u"ALTER TABLE", u"AND",        u"AS",       u"ASC",        u"BETWEEN",     u"BY",
    u"CREATE TABLE", u"DELETE",      u"DESC",       u"DISTINCT", u"DROP TABLE", u"EXISTS",      u"FALSE",
    u"FROM",         u"GROUP BY",    u"HAVING",     u"IN",       u"INNER JOIN", u"INSERT INTO", u"INTO",
    u"IS NULL",      u"IS NOT NULL", u"LEFT JOIN",  u"LIKE",     u"NOT",        u"NULL",        u"ON",
    u"OR",           u"ORDER BY",    u"PARAMETERS", u"PIVOT",    u"RIGHT JOIN", u"SELECT",      u"SET",
    u"TOP",          u"TRANSFORM",   u"TRUE",       u"UNION",    u"UPDATE",     u"VALUES",      u"WHERE"};

QString quoted(const QString &name)
{
    return ast::isPlainName(name) ? name : u'[' + name + u']';
}

/// A table or query that the statement reads, and its name there.
struct Scoped
{
    const SqlNames::Source *source;
    QString alias; ///< empty if there is none
};

bool beginsSource(const Token &token)
{
    return token.is(Keyword::From) || token.is(Keyword::Join) || token.is(Keyword::Update) || token.is(Keyword::Into);
}

/// Where a word of the statement stands: in the list of its sources, or elsewhere.
class Clauses
{
public:
    void pass(const Token &token)
    {
        if (token.is(Symbol::LeftParen))
            m_outer.append(m_isInSources);
        else if (token.is(Symbol::RightParen) && !m_outer.isEmpty())
            m_isInSources = m_outer.takeLast();
        else if (beginsSource(token))
            m_isInSources = true;
        else if (token.kind == Token::Kind::Word && endsSources(token.keyword))
            m_isInSources = false;
        m_expectsSource = beginsSource(token) || (m_isInSources && token.is(Symbol::Comma));
    }
    bool expectsSource() const { return m_expectsSource; }

private:
    static bool endsSources(Keyword keyword)
    {
        return keyword == Keyword::On || keyword == Keyword::Where || keyword == Keyword::Group ||
               keyword == Keyword::Order || keyword == Keyword::Set || keyword == Keyword::Select ||
               keyword == Keyword::Values;
    }

    QList<bool> m_outer;
    bool m_isInSources = false;
    bool m_expectsSource = false;
};

QList<Scoped> sourcesOf(const QList<Token> &tokens, const SqlNames &names)
{
    QList<Scoped> scope;
    Clauses clauses;
    for (int i = 0; i + 1 < tokens.size(); ++i) {
        if (clauses.expectsSource() && tokens[i].isName()) {
            if (const SqlNames::Source *source = names.source(tokens[i].text)) {
                int next = i + 1;
                next += tokens[next].is(Keyword::As) ? 1 : 0;
                const bool hasAlias = next < tokens.size() && tokens[next].isName() &&
                                      (tokens[next].keyword == Keyword::None || next > i + 1);
                scope.append({source, hasAlias ? tokens[next].string() : QString()});
            }
        }
        clauses.pass(tokens[i]);
    }
    return scope;
}

/// Collects the completions that match the typed word.
class Collector
{
public:
    explicit Collector(const QString &typed)
        : m_typed(typed)
    {
    }
    void add(const QString &name, const QString &text, const QString &detail, Kind kind)
    {
        const bool begins = name.startsWith(m_typed, Qt::CaseInsensitive);
        constexpr int kFewestWithin = 3;
        if (!begins && (m_typed.size() < kFewestWithin || !name.contains(m_typed, Qt::CaseInsensitive)))
            return;
        const QString key = text.toLower();
        if (m_seen.contains(key))
            return;
        m_seen.insert(key);
        (begins ? m_first : m_later).append({text, detail, kind});
    }
    void addName(const QString &name, const QString &detail, Kind kind) { add(name, quoted(name), detail, kind); }
    void addFields(const SqlNames::Source &source)
    {
        for (const dao::FieldInfo &field : source.fields) {
            const QString type = field.type == dao::DataType::Unknown ? QString() : db::daoTypeName(field.type) + u", ";
            addName(field.name, type + source.name, Kind::Field);
        }
    }
    void addSources(const SqlNames &names)
    {
        for (const SqlNames::Source &source : names.sources)
            addName(source.name, source.isQuery ? u"stored query"_s : u"table"_s,
                    source.isQuery ? Kind::Query : Kind::Table);
    }
    QList<Completion> items() const { return m_first + m_later; }

private:
    QString m_typed;
    QSet<QString> m_seen;
    QList<Completion> m_first; ///< begin with the typed word
    QList<Completion> m_later; ///< contain it
};

/// The names of sources and macros, and fields in brackets.
void addBracketed(Collector &found, const QList<Scoped> &scope, const SqlNames &names)
{
    const auto add = [&](const QString &name, const QString &detail, Kind kind) {
        found.add(name, u'[' + name + u']', detail, kind);
    };
    for (const tarnwick::JMacro::Entry &entry : names.macros.entries())
        add(entry.name.mid(1, entry.name.size() - 2), entry.value.simplified(), Kind::Macro);
    for (const Scoped &scoped : scope) {
        for (const dao::FieldInfo &field : scoped.source->fields)
            add(field.name, scoped.source->name, Kind::Field);
    }
    for (const SqlNames::Source &source : names.sources)
        add(source.name, source.isQuery ? u"stored query"_s : u"table"_s, source.isQuery ? Kind::Query : Kind::Table);
}

void addWords(Collector &found, const QList<Scoped> &scope)
{
    for (const Scoped &scoped : scope)
        found.addFields(*scoped.source);
    for (const Scoped &scoped : scope)
        found.addName(scoped.alias.isEmpty() ? scoped.source->name : scoped.alias, scoped.source->name, Kind::Alias);
    for (const dao::sql::bound::FunctionInfo &function : dao::sql::bound::functionTable()) {
        const QString name = QString::fromUtf16(function.name);
        found.add(name, name + u'(', QString::fromUtf16(function.signature), Kind::Function);
    }
    for (const char16_t *keyword : kKeywords)
        found.add(QString::fromUtf16(keyword), QString::fromUtf16(keyword), {}, Kind::Keyword);
}

/// The tokens of the statement before the cursor and behind it. They refer to the text.
struct Around
{
    QList<Token> before;
    QList<Token> all;

    Around(const QString &text, int start, int cursor)
    {
        before = ast::tokenize(QStringView(text).left(start));
        before.removeLast();
        for (qsizetype i = before.size(); i-- > 0;) {
            if (before[i].is(Symbol::Semicolon)) {
                before.remove(0, i + 1);
                break;
            }
        }
        all = before;
        for (const Token &token : ast::tokenize(QStringView(text).mid(cursor))) {
            all.append(token);
            if (token.is(Symbol::Semicolon))
                break;
        }
    }
};

/// Where the word before the cursor begins; -1 inside a text or date.
int wordStart(const QString &text, int cursor)
{
    const QList<Token> tokens = ast::tokenize(QStringView(text).left(cursor));
    if (tokens.size() < 2)
        return cursor;
    const Token &last = tokens[tokens.size() - 2];
    if (last.range.end() < cursor)
        return cursor;
    if (last.kind == Token::Kind::Faulty)
        return last.fault == ast::Fault::Bracket ? last.range.start : -1;
    if (last.kind == Token::Kind::Text || last.kind == Token::Kind::Date || last.kind == Token::Kind::Number)
        return -1;
    return last.isName() ? last.range.start : cursor;
}

} // namespace

CompletionList completionsAt(const QString &text, int cursor, const SqlNames &names)
{
    CompletionList list{.start = wordStart(text, cursor), .items = {}};
    if (list.start < 0)
        return list;
    const Around around(text, list.start, cursor);
    const QList<Scoped> scope = sourcesOf(around.all, names);
    const QString word = text.mid(list.start, cursor - list.start);
    const bool isBracket = word.startsWith(u'[');
    Collector found(isBracket ? word.mid(1) : word);
    const qsizetype count = around.before.size();
    const bool isQualified = count >= 2 &&
                             (around.before[count - 1].is(Symbol::Dot) || around.before[count - 1].is(Symbol::Bang)) &&
                             around.before[count - 2].isName();
    if (isQualified) {
        const QStringView qualifier = around.before[count - 2].text;
        for (const Scoped &scoped : scope) {
            const QString &name = scoped.alias.isEmpty() ? scoped.source->name : scoped.alias;
            if (name.compare(qualifier, Qt::CaseInsensitive) == 0)
                found.addFields(*scoped.source);
        }
        list.items = found.items();
        return list;
    }
    Clauses clauses;
    for (const Token &token : around.before)
        clauses.pass(token);
    if (isBracket)
        addBracketed(found, scope, names);
    else if (clauses.expectsSource())
        found.addSources(names);
    else
        addWords(found, scope);
    list.items = found.items();
    return list;
}

QStringList callAt(const QString &text, int cursor)
{
    QList<int> open; // index of the token before each open parenthesis
    const QList<Token> tokens = ast::tokenize(QStringView(text).left(cursor));
    for (int i = 0; i < tokens.size(); ++i) {
        if (tokens[i].is(Symbol::LeftParen))
            open.append(i - 1);
        else if (tokens[i].is(Symbol::RightParen) && !open.isEmpty())
            open.removeLast();
        else if (tokens[i].is(Symbol::Semicolon))
            open.clear();
    }
    if (open.isEmpty() || open.constLast() < 0 || !tokens[open.constLast()].isName())
        return {};
    QStringList lines;
    for (const auto &function : dao::sql::bound::functionsNamed(tokens[open.constLast()].text))
        lines.append(QString::fromUtf16(function.signature) + u"  " + QString::fromUtf16(function.help));
    return lines;
}

} // namespace query
