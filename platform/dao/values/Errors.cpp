#include "Errors.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

struct Entry
{
    error::Number number;
    const char16_t *text;
};

// clang-format off
constexpr Entry kTexts[] = {
    {error::InvalidProcedureCall, u"Invalid procedure call or argument."},
    {error::Overflow, u"Overflow."},
    {error::DivisionByZero, u"Division by zero."},
    {error::TypeMismatch, u"Type mismatch."},
    {error::InvalidUseOfNull, u"Invalid use of Null."},
    {error::InvalidArgument, u"Invalid argument."},
    {error::TooManyTransactions, u"Could not start transaction; too many transactions already nested."},
    {error::TableExists, u"Table '%1' already exists."},
    {error::ObjectNotFound, u"The Microsoft Jet database engine could not find the object '%1'. Make sure the object exists and that you spell its name and the path name correctly."},
    {error::ObjectExists, u"Object '%1' already exists."},
    {error::UpdateWithoutEdit, u"Update or CancelUpdate without AddNew or Edit."},
    {error::NoCurrentRecord, u"No current record."},
    {error::DuplicateKey, u"The changes you requested to the table were not successful because they would create duplicate values in the index, primary key, or relationship.  Change the data in the field or fields that contain duplicate data, remove the index, or redefine the index to permit duplicate entries and try again."},
    {error::FileNotFound, u"Could not find file '%1'."},
    {error::ReadOnly, u"Cannot update.  Database or object is read-only."},
    {error::NoTransaction, u"You tried to commit or roll back a transaction without first using BeginTrans."},
    {error::PathNotValid, u"'%1' is not a valid path.  Make sure that the path name is spelled correctly and that you are connected to the server on which the file resides."},
    {error::FileInUse, u"Could not use '%1'; file already in use."},
    {error::CannotOpenFile, u"The Microsoft Jet database engine cannot open the file '%1'.  It is already opened exclusively by another user, or you need permission to view its data."},
    {error::NullKey, u"Index or primary key cannot contain a Null value."},
    {error::CancelledByUser, u"Operation canceled by user."},
    {error::WrongParameterType, u"Wrong data type for parameter '%1'."},
    {error::TooFewParameters, u"Too few parameters. Expected %1."},
    {error::DuplicateAlias, u"Duplicate output alias '%1'."},
    {error::DuplicateDestination, u"Duplicate output destination '%1'."},
    {error::CannotExecuteSelect, u"Cannot execute a select query."},
    {error::EmptyStatement, u"Query must have at least one destination field."},
    {error::ActionQueryAsSource, u"The action query '%1' cannot be used as a row source."},
    {error::UnknownName, u"The Microsoft Jet database engine does not recognize '%1' as a valid field name or expression."},
    {error::TooComplexExpression, u"This expression is typed incorrectly, or it is too complex to be evaluated.  For example, a numeric expression may contain too many complicated elements.  Try simplifying the expression by assigning parts of the expression to variables."},
    {error::NotUpdatableQuery, u"Operation must use an updatable query."},
    {error::RepeatedTable, u"Cannot repeat table name '%1' in FROM clause."},
    {error::SyntaxInExpression, u"%1 in query expression '%2'."},
    {error::UnknownSource, u"The Microsoft Jet database engine cannot find the input table or query '%1'.  Make sure it exists and that its name is spelled correctly."},
    {error::AmbiguousField, u"The specified field '%1' could refer to more than one table listed in the FROM clause of your SQL statement."},
    {error::TableNotInFrom, u"Joined table '%1' not listed in FROM clause."},
    {error::JoinFieldOutside, u"JOIN operation '%1' refers to a field that is not in one of the joined tables."},
    {error::UndefinedFunction, u"Undefined function '%1' in expression."},
    {error::CannotDelete, u"Could not delete from specified tables."},
    {error::HavingWithoutGroup, u"HAVING clause (%1) without grouping or aggregation."},
    {error::HavingInTransform, u"Cannot use HAVING clause in TRANSFORM statement."},
    {error::OrderByNotSelected, u"ORDER BY clause (%1) conflicts with DISTINCT."},
    {error::OrderByNotGrouped, u"ORDER BY clause (%1) conflicts with GROUP BY clause."},
    {error::NestedAggregate, u"Cannot have aggregate function in expression (%1)."},
    {error::AggregateInWhere, u"Cannot have aggregate function in WHERE clause (%1)."},
    {error::AggregateInOrderBy, u"Cannot have aggregate function in ORDER BY clause (%1)."},
    {error::AggregateInGroupBy, u"Cannot have aggregate function in GROUP BY clause (%1)."},
    {error::AggregateInJoin, u"Cannot have aggregate function in JOIN operation (%1)."},
    {error::CircularQuery, u"Circular reference caused by '%1'."},
    {error::CircularAlias, u"Circular reference caused by alias '%1' in query definition's SELECT list."},
    {error::DuplicatePivotValue, u"Cannot specify fixed column heading '%1' in a crosstab query more than once."},
    {error::FieldNotUpdatable, u"Cannot update '%1'; field not updatable."},
    {error::NotGrouped, u"You tried to execute a query that does not include the specified expression '%1' as part of an aggregate function."},
    {error::StarInTransform, u"Cannot use '*' in crosstab query."},
    {error::InvalidName, u"'%1' is not a valid name.  Make sure that it does not include invalid characters or punctuation and that it is not too long."},
    {error::InvalidBracketing, u"Invalid bracketing of name '%1'."},
    {error::UnknownInsertField, u"The INSERT INTO statement contains the following unknown field name: '%1'.  Make sure you have typed the name correctly, and try the operation again."},
    {error::NoDeleteTable, u"Specify the table containing the records you want to delete."},
    {error::UnknownStatement, u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."},
    {error::SyntaxInDelete, u"Syntax error in DELETE statement."},
    {error::SyntaxInFrom, u"Syntax error in FROM clause."},
    {error::SyntaxInGroupBy, u"Syntax error in GROUP BY clause."},
    {error::SyntaxInHaving, u"Syntax error in HAVING clause."},
    {error::SyntaxInInsert, u"Syntax error in INSERT INTO statement."},
    {error::SyntaxInJoin, u"Syntax error in JOIN operation."},
    {error::MissingSemicolon, u"Missing semicolon (;) at end of SQL statement."},
    {error::SyntaxInOrderBy, u"Syntax error in ORDER BY clause."},
    {error::SyntaxInParameter, u"Syntax error in PARAMETER clause."},
    {error::SyntaxInSelect, u"The SELECT statement includes a reserved word or an argument name that is misspelled or missing, or the punctuation is incorrect."},
    {error::TextAfterEnd, u"Characters found after end of SQL statement."},
    {error::SyntaxInTransform, u"Syntax error in TRANSFORM statement."},
    {error::SyntaxInUpdate, u"Syntax error in UPDATE statement."},
    {error::SyntaxInWhere, u"Syntax error in WHERE clause."},
    {error::InvalidBookmark, u"Not a valid bookmark."},
    {error::FieldTooSmall, u"The field is too small to accept the amount of data you attempted to add.  Try inserting or pasting less data."},
    {error::FieldCannotBeSet, u"The field cannot be updated because another user or process has locked the corresponding record or table."},
    {error::RecordDeleted, u"Record is deleted."},
    {error::OutputTableNotFound, u"Could not find output table '%1'."},
    {error::RelatedRecords, u"The record cannot be deleted or changed because table '%1' includes related records."},
    {error::RelatedRecordRequired, u"You cannot add or change a record because a related record is required in table '%1'."},
    {error::DatabaseExists, u"Database already exists."},
    {error::TooManyCrosstabColumns, u"Too many crosstab column headers (%1)."},
    {error::InvalidOperation, u"Invalid operation."},
    {error::ItemNotFound, u"Item not found in this collection."},
    {error::PropertyNotFound, u"Property not found."},
    {error::PrimaryKeyExists, u"Primary key already exists."},
    {error::IndexExists, u"Index already exists."},
    {error::SyntaxInConstraint, u"Syntax error in CONSTRAINT clause."},
    {error::SyntaxInCreateTable, u"Syntax error in CREATE TABLE statement."},
    {error::SyntaxInCreateIndex, u"Syntax error in CREATE INDEX statement."},
    {error::SyntaxInFieldDefinition, u"Syntax error in field definition."},
    {error::SyntaxInAlterTable, u"Syntax error in ALTER TABLE statement."},
    {error::SyntaxInDrop, u"Syntax error in DROP TABLE or DROP INDEX."},
    {error::JoinNotSupported, u"Join expression not supported."},
    {error::SubqueryColumns, u"You have written a subquery that can return more than one field without using the EXISTS reserved word in the main query's FROM clause.  Revise the SELECT statement of the subquery to request only one field."},
    {error::UnionColumns, u"The number of columns in the two selected tables or queries of a union query do not match."},
    {error::InvalidTop, u"Invalid TOP argument in select query."},
    {error::RequiredField, u"The field '%1' cannot contain a Null value because the Required property for this field is set to True.  Enter a value in this field."},
    {error::ZeroLength, u"Field '%1' cannot be a zero-length string."},
    {error::ValidationText, u"%1"},
    {error::ValidationRule, u"One or more values are prohibited by the validation rule '%1' set for '%2'.  Enter a value that the expression for this field can accept."},
    {error::TopInDelete, u"TOP is not allowed in a DELETE statement."},
    {error::UnrecognizedFormat, u"Unrecognized database format '%1'."},
    {error::InsertCount, u"Number of query values and destination fields are not the same."},
    {error::NumericOverflow, u"Numeric field overflow."},
    {error::UnionOrder, u"The ORDER BY expression (%1) includes fields that are not selected by the query.  Only those fields requested in the first query can be included in an ORDER BY expression."},
    {error::SubqueryRows, u"At most one record can be returned by this subquery."},
    {error::TooComplex, u"Query is too complex."},
    {error::UnionInSubquery, u"Unions not allowed in a subquery."},
    {error::RelationTypes, u"Relationship must be on the same number of fields with the same data types."},
    {error::NoUniqueIndexForRelation, u"No unique index found for the referenced field of the primary table."},
    {error::NoSuchConstraint, u"Cannot find table or constraint '%1'."},
    {error::NoSuchIndex, u"No such index '%1' on table '%2'."},
    {error::IndexNameExists, u"Table '%1' already has an index named '%2'."},
    {error::TableDoesNotExist, u"Table '%1' does not exist."},
    {error::RelationExists, u"There is already a relationship named '%1' in the current database."},
    {error::RelationViolated, u"Cannot create relationship to enforce referential integrity.  Existing data in table '%1' violates referential integrity rules in table '%2'."},
    {error::FieldExists, u"Field '%1' already exists in table '%2'."},
    {error::NoSuchField, u"There is no field named '%1' in table '%2'."},
    {error::ObjectInvalid, u"Object invalid or no longer set."},
    {error::ConversionFailed, u"Data type conversion error."},
    {error::CriteriaMismatch, u"Data type mismatch in criteria expression."},
    {error::SourceIsTarget, u"Same table '%1' referenced as both the source and destination in make-table query."},
    {error::JoinTypeMismatch, u"Type mismatch in JOIN expression."},
    {error::Internal, u"Reserved error (%1); there is no message for this error."},
    {error::DiskFull, u"Not enough space on disk."},
    {error::OutOfResources, u"System resource exceeded."},
    {error::DiskError, u"Disk or network error on '%1'."},
    {error::DatabaseDamaged, u"Cannot open database '%1'.  It may not be a database that your application recognizes, or the file may be corrupt."},
    {error::FieldDefinedTwice, u"Cannot define field more than once."},
    {error::StatementRunning, u"The database engine could not use '%1' because a statement is still running."},
    {error::InvalidFieldType, u"Invalid field data type."},
    {error::FileLocked, u"Couldn't update; the file '%1' is currently locked by another user."},
    {error::NoFieldDefined, u"No field defined--cannot append TableDef or Index."},
    {error::FieldInIndex, u"Cannot delete a field that is part of an index or is needed by the system."},
    {error::IndexInUse, u"Cannot delete this index or table.  It is either the current index or is used in a relationship."},
    {error::JoinKeyNotInRecordset, u"Cannot add record(s); join key of table '%1' not in recordset."},
    {error::RelationWithoutFields, u"Cannot create a relationship with no fields."},
    {error::InvalidIndexField, u"Invalid field name '%1' in definition of index or relationship."},
};
// clang-format on

const QHash<int, QString> &texts()
{
    static const QHash<int, QString> map = [] {
        QHash<int, QString> result;
        for (const Entry &entry : kTexts)
            result.insert(entry.number, QString::fromUtf16(entry.text));
        return result;
    }();
    return map;
}

// Shortens a long text of the user for a message.
QString shownArgument(const QString &argument)
{
    constexpr qsizetype kLongestArgument = 1000;
    return argument.size() <= kLongestArgument ? argument : QString(argument.first(kLongestArgument) + u"..."_s);
}

} // namespace

QString errorText(int number, const QStringList &arguments)
{
    const QString pattern = texts().value(number, u"Reserved error (%1)."_s);
    // All arguments are inserted in one pass, because they can contain %1 themselves (users' expressions).
    QString result;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'%' && i + 1 < pattern.size() && pattern[i + 1].isDigit()) {
            const int index = pattern[i + 1].digitValue() - 1;
            result += index < arguments.size()   ? shownArgument(arguments[index])
                      : texts().contains(number) ? QString()
                                                 : QString::number(number);
            ++i;
        } else {
            result += pattern[i];
        }
    }
    return result;
}

void raise(int number, const QString &source, const QStringList &arguments, const SourceRange &where)
{
    throw DaoException(number, source, errorText(number, arguments), where);
}

} // namespace dao
