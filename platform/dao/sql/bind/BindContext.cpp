#include "BindContext.h"

#include "Types.h"

#include <algorithm>
#include <functional>
#include <numeric>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

const QString kErrorSource = u"DAO.Database"_s;

// Stored queries that use each other several times multiply the number of tables.
constexpr int kMaxSources = 2000;
constexpr int kMaxNestedQueries = 40;
constexpr int kMaxDepth = 900;

// Aliases that each use another one twice double the size of the tree at every step.
constexpr qint64 kMaxSize = 1000000;

// Each level needs some kilobytes of stack.
constexpr int kMaxLevel = 800;

// SQLite's limit of 32766 variables, minus some for row keys.
constexpr size_t kMaxParameters = 32000;
constexpr size_t kMaxSuggestions = 50;

QString keyOf(const QString &name)
{
    return name.toLower();
}

} // namespace

std::unique_ptr<Source> BindContext::newSource(const QString &name, Range where)
{
    if (++m_sources > kMaxSources)
        fail(error::TooComplex, where);
    auto source = std::make_unique<Source>();
    source->number = m_sources;
    source->name = name;
    return source;
}

void BindContext::limit(int depth, qint64 size, Range where) const
{
    if (depth > kMaxDepth || size > kMaxSize)
        fail(error::TooComplex, where);
}

BindContext::Level::Level(BindContext &context, Range where)
    : m_context(context)
{
    if (context.m_level >= kMaxLevel)
        context.fail(error::TooComplex, where);
    ++context.m_level;
}

void BindContext::declare(const ast::ParameterDeclaration &declaration)
{
    const int id = parameter(declaration.name.name, declaration.name.range);
    BoundParameter &entry = m_parameters[size_t(id)];
    entry.declared = true;
    entry.mayBeColumn = false;
    entry.type = declaration.type;
}

// Equal names are one parameter, without regard to case.
int BindContext::parameter(const QString &name, Range where, const QString &suggestion)
{
    const auto found = m_parameterIds.constFind(keyOf(name));
    if (found != m_parameterIds.constEnd())
        return *found;
    if (m_parametersForbidden)
        fail(error::UnknownName, where, {name});
    if (m_parameters.size() >= kMaxParameters)
        fail(error::TooComplex, where);
    const int id = int(m_parameters.size());
    const bool bare = !textOf(where).startsWith(u'[');
    m_parameters.push_back({name, DataType::Unknown, false, placeOf(where), suggestion, bare, m_columnsUnknown});
    m_parameterIds.insert(keyOf(name), id);
    return id;
}

bool BindContext::isParameter(const QString &name) const
{
    return m_parameterIds.contains(keyOf(name));
}

bool BindContext::wantsSuggestion(const QString &name) const
{
    return m_parameters.size() < kMaxSuggestions && !isParameter(name);
}

BindContext::Headings BindContext::readHeadings(const Transform &transform)
{
    m_dependsOnData = true;
    Headings headings = m_readHeadings(transform);
    m_columnsUnknown = m_columnsUnknown || !headings;
    return headings;
}

void BindContext::noteUse(int id, DataType type)
{
    BoundParameter &entry = m_parameters[size_t(id)];
    if (entry.declared || type == DataType::Unknown)
        return;
    const bool sameFamily = entry.type == DataType::Unknown || familyOf(entry.type) == familyOf(type);
    // A parameter used with several type families is a text, converted at each use.
    entry.type = sameFamily ? commonType(entry.type, type) : DataType::Text;
}

// The order in which programs set parameters by index: the PARAMETERS clause first, then the order in the text. Clauses
// are not bound in text order, so the places are sorted. Names that may be columns come last, as no one sets them.
std::vector<int> BindContext::parameterOrder() const
{
    std::vector<int> order(m_parameters.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](int left, int right) {
        const BoundParameter &a = m_parameters[size_t(left)];
        const BoundParameter &b = m_parameters[size_t(right)];
        if (a.mayBeColumn != b.mayBeColumn)
            return b.mayBeColumn;
        if (a.declared || b.declared)
            return a.declared && !b.declared;
        return a.where.start < b.where.start;
    });
    return order;
}

QList<Parameter> BindContext::finalParameters() const
{
    QList<Parameter> result;
    for (const int id : parameterOrder()) {
        const BoundParameter &entry = m_parameters[size_t(id)];
        Parameter parameter;
        parameter.name = entry.name;
        parameter.type = entry.type == DataType::Unknown ? DataType::Text : entry.type;
        parameter.declared = entry.declared;
        parameter.where = SourceRange::of(m_userText, entry.where.start, entry.where.length);
        parameter.suggestion = entry.suggestion;
        parameter.bareText = entry.bare && !entry.declared && entry.type == DataType::Text;
        result.append(parameter);
    }
    return result;
}

QList<Parameter> BindContext::settableParameters() const
{
    const auto columns =
        std::count_if(m_parameters.begin(), m_parameters.end(), std::mem_fn(&BoundParameter::mayBeColumn));
    QList<Parameter> parameters = finalParameters();
    parameters.resize(parameters.size() - columns);
    return parameters;
}

QList<int> BindContext::parameterPositions() const
{
    QList<int> positions(qsizetype(m_parameters.size()));
    int position = 0;
    for (const int id : parameterOrder())
        positions[id] = ++position;
    return positions;
}

void BindContext::fail(int number, Range where, const QStringList &arguments, const QString &hint) const
{
    DaoException exception(number, kErrorSource, errorText(number, arguments), userPlace(where));
    if (!hint.isEmpty())
        exception.withHint(hint);
    throw exception;
}

// The user does not see the text of a stored query, so the error gets the place of the query's name and the name as a
// hint.
void BindContext::rethrow(const DaoException &exception) const
{
    if (!m_place)
        throw exception;
    DaoException moved(exception.number(), exception.source(), exception.description(),
                       SourceRange::of(m_userText, m_place->start, m_place->length));
    const QString query = m_queryStack.isEmpty() ? QString() : m_queryStack.constLast();
    moved.withHint(exception.hint().isEmpty() ? u"In '%1'."_s.arg(query)
                                              : u"In '%1': %2"_s.arg(query, exception.hint()));
    throw moved;
}

void BindContext::rethrowWithin(const DaoException &exception, Range part) const
{
    const SourceRange &inner = exception.where();
    const Range place = inner.length > 0 ? Range{part.start + inner.start, inner.length} : part;
    throw DaoException(exception.number(), exception.source(), exception.description(), userPlace(place))
        .withHint(exception.hint());
}

SourceRange BindContext::userPlace(Range range) const
{
    const Range place = placeOf(range);
    return SourceRange::of(m_userText, place.start, place.length);
}

QString BindContext::textOf(Range range) const
{
    return m_text.mid(range.start, range.length);
}

// A query that is already being bound refers to itself.
BindContext::Substitution::Substitution(BindContext &context, const QString &name, const QString &text, Range where)
    : m_context(context)
    , m_outerText(context.m_text)
    , m_outerPlace(context.m_place)
{
    if (context.m_queryStack.contains(name, Qt::CaseInsensitive))
        context.fail(error::CircularQuery, where, {name});
    if (context.m_queryStack.size() >= kMaxNestedQueries)
        context.fail(error::TooComplex, where);
    context.m_place = context.placeOf(where);
    context.m_text = text;
    context.m_queryStack.append(name);
}

BindContext::Substitution::~Substitution()
{
    m_context.m_text = m_outerText;
    m_context.m_place = m_outerPlace;
    m_context.m_queryStack.removeLast();
}

} // namespace dao::sql::bound
