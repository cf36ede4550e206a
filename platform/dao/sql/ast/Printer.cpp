#include "Printer.h"

#include "QueryPrinter.h"

using namespace Qt::StringLiterals;

namespace dao::sql::ast {
namespace {

/// Prints statements that change rows and definitions.
class StatementPrinter : public QueryPrinter
{
public:
    void print(const Statement &statement)
    {
        if (!statement.parameters.empty()) {
            text += u"PARAMETERS "_s;
            list(statement.parameters, [this](const ParameterDeclaration &p) { print(p); });
            text += u";\n"_s;
        }
        std::visit([this](const auto &node) { print(node); }, statement.node);
        // The text of a stored query extends to the end, so no semicolon follows.
        if (!std::holds_alternative<CreateQuery>(statement.node))
            text += u';';
    }

private:
    using QueryPrinter::print;

    // ---- statements that change rows ----------------------------------------------------------------------------

    void print(const Insert &insert)
    {
        text += u"INSERT INTO "_s + nameText(insert.table.name);
        if (!insert.columns.empty()) {
            text += u' ';
            names(insert.columns);
        }
        if (insert.query) {
            text += u'\n';
            print(*insert.query);
            return;
        }
        clause(u"VALUES (");
        expressions(insert.values);
        text += u')';
    }

    void print(const Update &update)
    {
        text += u"UPDATE "_s;
        list(update.from, [this](const TableRefPtr &table) { print(*table); });
        clause(u"SET ");
        list(update.assignments, [this](const Assignment &assignment) {
            print(*assignment.target);
            text += u" = "_s;
            print(*assignment.value);
        });
        where(update.where);
    }

    void print(const Delete &statement)
    {
        text += u"DELETE"_s;
        if (!statement.items.empty())
            text += u' ';
        list(statement.items, [this](const SelectItem &item) { print(item); });
        from(statement.from);
        where(statement.where);
    }

    void print(const Execute &execute)
    {
        text += u"EXECUTE "_s + nameText(execute.query.name);
        if (!execute.arguments.empty())
            text += u' ';
        expressions(execute.arguments);
    }

    // ---- definitions --------------------------------------------------------------------------------------------

    void print(const ParameterDeclaration &parameter)
    {
        text += nameText(parameter.name.name) + u' ' + typeText(parameter.type, false);
    }

    void print(const CreateTable &create)
    {
        text += u"CREATE TABLE "_s + nameText(create.table.name) + u" ("_s;
        list(create.fields, [this](const FieldDefinition &field) { print(field); });
        if (!create.fields.empty() && !create.constraints.empty())
            text += u", "_s;
        list(create.constraints, [this](const Constraint &constraint) { print(constraint); });
        text += u')';
    }

    void print(const FieldDefinition &field)
    {
        text += nameText(field.name.name) + u' ' + typeText(field.type.type, field.type.autoIncrement);
        if (field.size > 0)
            text += u'(' + QString::number(field.size) + u')';
        if (field.notNull)
            text += *field.notNull ? u" NOT NULL"_s : u" NULL"_s;
        if (!field.defaultValue.isEmpty())
            text += u" DEFAULT "_s + field.defaultValue;
        for (const Constraint &constraint : field.constraints) {
            text += u' ';
            print(constraint);
        }
    }

    void print(const Constraint &constraint)
    {
        if (!constraint.name.isEmpty())
            text += u"CONSTRAINT "_s + nameText(constraint.name) + u' ';
        const bool isForeign = constraint.kind == Constraint::Kind::ForeignKey;
        switch (constraint.kind) {
        case Constraint::Kind::PrimaryKey:
            text += u"PRIMARY KEY"_s;
            break;
        case Constraint::Kind::Unique:
            text += u"UNIQUE"_s;
            break;
        case Constraint::Kind::NotNull:
            text += u"NOT NULL"_s;
            break;
        case Constraint::Kind::Check:
            text += u"CHECK ("_s + constraint.check + u')';
            break;
        case Constraint::Kind::ForeignKey:
            text += constraint.fields.empty() ? QString() : u"FOREIGN KEY"_s;
            break;
        }
        if (!constraint.fields.empty()) {
            text += u' ';
            names(constraint.fields);
            text += isForeign ? u" "_s : QString();
        }
        if (isForeign)
            references(constraint);
    }

    void references(const Constraint &constraint)
    {
        text += u"REFERENCES "_s + nameText(constraint.referencedTable.name);
        if (!constraint.referencedFields.empty()) {
            text += u' ';
            names(constraint.referencedFields);
        }
        if (constraint.cascadeUpdate)
            text += u" ON UPDATE CASCADE"_s;
        if (constraint.cascadeDelete)
            text += u" ON DELETE CASCADE"_s;
    }

    void print(const AlterTable &alter)
    {
        text += u"ALTER TABLE "_s + nameText(alter.table.name) + u' ';
        std::visit([this](const auto &change) { printChange(change); }, alter.change);
    }

    void printChange(const AlterTable::AddField &change)
    {
        text += u"ADD COLUMN "_s;
        print(change.field);
    }
    void printChange(const AlterTable::AlterField &change)
    {
        text += u"ALTER COLUMN "_s;
        print(change.field);
    }
    void printChange(const AlterTable::DropField &change) { text += u"DROP COLUMN "_s + nameText(change.field.name); }
    void printChange(const Constraint &change)
    {
        text += u"ADD "_s;
        print(change);
    }
    void printChange(const AlterTable::DropConstraint &change)
    {
        text += u"DROP CONSTRAINT "_s + nameText(change.constraint.name);
    }

    void print(const CreateIndex &create)
    {
        text += (create.unique ? u"CREATE UNIQUE INDEX "_s : u"CREATE INDEX "_s) + nameText(create.index.name) +
                u" ON "_s + nameText(create.table.name) + u" ("_s;
        list(create.fields, [this](const CreateIndex::Field &field) {
            text += nameText(field.name.name) + (field.descending ? u" DESC"_s : QString());
        });
        text += u')';
        if (create.primary)
            text += u" WITH PRIMARY"_s;
        else if (create.disallowNull)
            text += u" WITH DISALLOW NULL"_s;
        else if (create.ignoreNull)
            text += u" WITH IGNORE NULL"_s;
    }

    void print(const DropTable &drop) { text += u"DROP TABLE "_s + nameText(drop.table.name); }
    void print(const DropIndex &drop)
    {
        text += u"DROP INDEX "_s + nameText(drop.index.name) + u" ON "_s + nameText(drop.table.name);
    }
    void print(const DropQuery &drop) { text += u"DROP VIEW "_s + nameText(drop.query.name); }

    void print(const CreateQuery &create)
    {
        text += u"CREATE PROCEDURE "_s + nameText(create.query.name) + u" AS\n"_s + create.sql;
    }
};

} // namespace

QString printStatement(const Statement &statement)
{
    StatementPrinter printer;
    printer.print(statement);
    return printer.text;
}

QString printExpression(const Expr &expr)
{
    QueryPrinter printer;
    printer.print(expr);
    return printer.text;
}

} // namespace dao::sql::ast
