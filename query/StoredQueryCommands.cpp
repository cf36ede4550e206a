#include "StoredQueryCommands.h"

#include "Messages.h"
#include "QueryVersions.h"

#include <dao/QueryDef.h>
#include <dao/sql/ast/Statement.h>
#include <dao/sql/Compiler.h>
#include <dao/values/DaoException.h>
#include <db/FieldDefinition.h>
#include <db/StoredQueries.h>
#include <tarnwick/Failures.h>

namespace query {

using namespace Qt::StringLiterals;
namespace ast = dao::sql::ast;

namespace {

struct KindOf
{
    QString operator()(const ast::QueryPtr &query) const
    {
        const ast::Select *select = query->singleSelect();
        if (!select)
            return u"union"_s;
        return select->into ? u"make table"_s : u"select"_s;
    }
    QString operator()(const ast::Transform &) const { return u"cross table"_s; }
    QString operator()(const ast::Insert &) const { return u"append"_s; }
    QString operator()(const ast::Update &) const { return u"update"_s; }
    QString operator()(const ast::Delete &) const { return u"delete"_s; }
    QString operator()(const ast::Execute &) const { return u"execute"_s; }
    template <typename Definition>
    QString operator()(const Definition &) const
    {
        return u"definition"_s;
    }
};

StoredQueryInfo infoOf(dao::Database &database, const QString &name)
{
    StoredQueryInfo info{.name = name, .kind = {}, .parameters = {}, .error = {}};
    try {
        const dao::QueryDef query = dao::QueryDef::stored(database, name);
        info.kind = std::visit(KindOf(), dao::sql::checkSyntax(query.sql())->node);
        for (int i = 0; i < query.parameterCount(); ++i)
            info.parameters.append(u"[%1] %2"_s.arg(query.parameter(i).name, db::daoTypeName(query.parameter(i).type)));
    } catch (const dao::DaoException &exception) {
        info.error = u"[%1] %2"_s.arg(exception.number()).arg(exception.description());
    }
    return info;
}

/// Keeps the present text of a query as a version, unless it is the new text. Must succeed before the text is replaced.
void keepVersion(const db::DatabaseSession &session, const QString &name, const QString &newSql)
{
    const dao::Database &database = session.database();
    if (!database.hasQuery(name))
        return;
    const dao::QueryInfo old = database.query(name);
    if (old.sql != newSql)
        QueryVersions(session.path()).keep(old.name, old.sql, QDateTime::currentDateTimeUtc());
}

/// Runs work on a connected database and reports its failure with the message. Returns false then.
template <typename Work>
bool reported(db::DatabaseSession &session, const tarnwick::Message &message, Work work)
{
    return db::checkConnected(session) && tarnwick::attempt(session.prompts(), work, message);
}

} // namespace

bool storeQuery(db::DatabaseSession &session, const QString &name, const QString &sql, Overwrite overwrite)
{
    tarnwick::UserPrompts &prompts = session.prompts();
    if (db::isViewName(name)) {
        prompts.error(messages::kViewName);
        return false;
    }
    if (!db::checkConnected(session))
        return false;
    if (overwrite == Overwrite::Ask && session.database().hasQuery(name) &&
        prompts.question(tarnwick::Buttons::NoYes, messages::kAskOverwriteQuery, name) != tarnwick::Answer::Yes)
        return false;
    const bool stored = reported(session, messages::kStoreQuery, [&] {
        dao::sql::checkSyntax(sql);
        keepVersion(session, name, sql);
        db::storeQueryDef(session.database(), name, sql);
    });
    if (stored)
        prompts.status(messages::kStoredQuery, name);
    return stored;
}

bool deleteQuery(db::DatabaseSession &session, const QString &name)
{
    const bool deleted = reported(session, messages::kDeleteQuery, [&] {
        keepVersion(session, name, {});
        session.database().deleteQuery(name);
    });
    if (deleted)
        session.prompts().status(messages::kDeletedQuery, name);
    return deleted;
}

std::optional<QString> fetchQuery(db::DatabaseSession &session, const QString &name)
{
    std::optional<QString> sql;
    reported(session, messages::kFetchQuery, [&] { sql = session.database().query(name).sql; });
    return sql;
}

QList<StoredQueryInfo> storedQueries(dao::Database &database)
{
    QList<StoredQueryInfo> infos;
    for (const QString &name : db::storedQueryNames(database))
        infos.append(infoOf(database, name));
    return infos;
}

} // namespace query
