#include "ValueBinding.h"

#include "Statement.h"

#include <dao/values/CellFailure.h>
#include <dao/values/Decimal.h>
#include <dao/values/Errors.h>
#include <dao/values/OleDate.h>

#include <cmath>
#include <limits>

namespace dao::store {

namespace {

constexpr double kCurrencyScale = 10'000.0;

// The value as stored. Used where the column's type is unknown or the stored value has another storage class.
Value untyped(const Statement &statement, int column)
{
    switch (statement.storage(column)) {
    case Statement::Storage::Integer: {
        const qint64 value = statement.integer(column);
        if (value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max())
            return Value::fromLong(qint32(value));
        return Value::fromDouble(double(value));
    }
    case Statement::Storage::Real:
        return Value::fromDouble(statement.real(column));
    case Statement::Storage::Text:
        return Value::fromText(statement.text(column));
    case Statement::Storage::Blob:
        return Value::fromBinary(statement.bytes(column));
    case Statement::Storage::Null:
        break;
    }
    return Value::null();
}

template <typename T>
bool fits(qint64 value)
{
    return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

// Another program can store a number outside the range of the declared type; it is then read as it is.
Value wholeValue(const Statement &statement, int column, DataType type)
{
    const qint64 value = statement.integer(column);
    switch (type) {
    case DataType::Byte:
        return fits<quint8>(value) ? Value::fromByte(quint8(value)) : untyped(statement, column);
    case DataType::Integer:
        return fits<qint16>(value) ? Value::fromShort(qint16(value)) : untyped(statement, column);
    default:
        return fits<qint32>(value) ? Value::fromLong(qint32(value)) : untyped(statement, column);
    }
}

// Currency is stored as a real number and read as a whole number of ten-thousandths.
Value realValue(double value, DataType type)
{
    switch (type) {
    case DataType::Currency:
        return Value::fromCurrencyScaled(tenThousandths(value));
    case DataType::Single:
        return Value::fromFloat(float(value));
    case DataType::Date:
        return Value::fromDate(value);
    default:
        return Value::fromDouble(value);
    }
}

} // namespace

void bindValue(Statement &statement, int parameter, const Value &value)
{
    switch (value.type()) {
    case Value::Type::Empty:
    case Value::Type::Error:
    case Value::Type::Null:
        statement.bindNull(parameter);
        return;
    case Value::Type::Boolean:
        statement.bind(parameter, qint64(value.boolean() ? -1 : 0));
        return;
    case Value::Type::Short:
    case Value::Type::Long:
    case Value::Type::Byte:
        statement.bind(parameter, value.integer());
        return;
    case Value::Type::Currency:
        statement.bind(parameter, double(value.integer()) / kCurrencyScale);
        return;
    case Value::Type::Float:
    case Value::Type::Double:
    case Value::Type::Date:
        statement.bind(parameter, value.real());
        return;
    case Value::Type::Text:
        statement.bind(parameter, value.text());
        return;
    case Value::Type::Binary:
        statement.bind(parameter, value.binary());
        return;
    }
}

Value columnValue(const Statement &statement, int column, DataType type)
{
    const Statement::Storage storage = statement.storage(column);
    if (storage == Statement::Storage::Null)
        return Value::null();
    const bool number = storage == Statement::Storage::Integer || storage == Statement::Storage::Real;
    switch (type) {
    case DataType::Boolean:
        return number ? Value::fromBoolean(statement.real(column) != 0) : untyped(statement, column);
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
        return storage == Statement::Storage::Integer ? wholeValue(statement, column, type)
                                                      : untyped(statement, column);
    case DataType::Currency:
    case DataType::Single:
    case DataType::Double:
    case DataType::Date:
    case DataType::Decimal:
        return number ? realValue(statement.real(column), type) : untyped(statement, column);
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        // A number in a column whose type depends on its values: formatted by this engine, not by SQLite.
        return Value::fromText(number ? numberText(statement.real(column)) : statement.text(column));
    case DataType::Binary:
    case DataType::LongBinary:
        return storage == Statement::Storage::Blob ? Value::fromBinary(statement.bytes(column))
                                                   : untyped(statement, column);
    case DataType::Unknown:
        break;
    }
    return untyped(statement, column);
}

// A blob marks a cell that failed (see CellFailure.h). A result that SQLite computed itself is checked here for
// overflow.
int failureOf(const Statement &statement, int column, DataType type)
{
    const Statement::Storage storage = statement.storage(column);
    if (storage == Statement::Storage::Blob)
        return failureIn(statement.bytes(column));
    if (storage != Statement::Storage::Real && (storage != Statement::Storage::Integer || type != DataType::Date))
        return 0;
    const double number = statement.real(column);
    if (!std::isfinite(number))
        return error::Overflow;
    return type == DataType::Date && !isValidDate(number) ? error::InvalidProcedureCall : 0;
}

} // namespace dao::store
