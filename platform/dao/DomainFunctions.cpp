#include "DomainFunctions.h"

#include <dao/store/Connection.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

#include <memory>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Database"_s;

QString literal(const Value &value)
{
    QString text = convertValue(value, DataType::Text).text();
    text.replace(u'"', u"\"\""_s);
    return u'"' + text + u'"';
}

// A stored query can call itself through a text that is built from its rows. The compiler cannot detect that, so the
// nesting of calls is limited at run time.
constexpr int kMaxNesting = 16;

// Arguments: function name, expression, domain and optionally criteria. Calls with literal texts do not come here: the
// compiler turns them into subqueries.
Value lookUp(store::Connection &connection, const CompileText &compile, const QList<Value> &arguments)
{
    if (arguments.size() < 3)
        throw store::engineError(error::InvalidProcedureCall, kSource);
    // Builds a call with literal texts, which the compiler turns into a subquery.
    QStringList texts;
    for (const Value &value : arguments.mid(1)) {
        if (!value.hasNoValue())
            texts.append(literal(value));
    }
    const sql::CompiledStatement statement =
        compile(u"SELECT "_s + arguments[0].text() + u'(' + texts.join(u", "_s) + u") AS found"_s);
    if (!statement.parameters.isEmpty())
        throw store::engineError(error::TooFewParameters, kSource, {QString::number(statement.parameters.size())});
    const auto &plan = std::get<sql::SelectPlan>(statement.plan);
    store::Statement rows(connection, plan.fullSql, store::Access::User);
    const bool found = rows.step();
    if (const int failure = found ? store::failureOf(rows, 0, DataType::Unknown) : 0)
        throw store::engineError(failure, kSource);
    return found ? store::columnValue(rows, 0, DataType::Unknown) : Value::null();
}

} // namespace

void registerDomainFunctions(store::Connection &connection, const CompileText &compile)
{
    const auto nested = std::make_shared<int>(0);
    connection.addFunction("jet_domain", [&connection, compile, nested](const QList<Value> &arguments) {
        if (*nested >= kMaxNesting)
            throw store::engineError(error::CircularQuery, kSource, {arguments.value(2).text()});
        ++*nested;
        const auto leave = qScopeGuard([nested] { --*nested; });
        return lookUp(connection, compile, arguments);
    });
}

} // namespace dao
