#include "Types.h"

namespace dao::sql::bound {
namespace {

/// Ranks numeric types: a higher one holds a lower one. For products Double ranks above Currency.
int rankOf(DataType type, bool product)
{
    switch (type) {
    case DataType::Boolean:
    case DataType::Integer:
        return 2;
    case DataType::Byte:
        return 1;
    case DataType::Long:
        return 3;
    case DataType::Single:
        return 4;
    case DataType::Double:
    case DataType::Date:
        return product ? 6 : 5;
    case DataType::Currency:
        return product ? 5 : 6;
    case DataType::Decimal:
        return 7;
    default:
        return 5;
    }
}

// Types whose sums and products can exceed their own range.
bool isSmall(DataType type)
{
    return type == DataType::Byte || type == DataType::Integer || type == DataType::Single || type == DataType::Boolean;
}

} // namespace

Family familyOf(DataType type)
{
    switch (type) {
    case DataType::Unknown:
        return Family::Any;
    case DataType::Date:
        return Family::Date;
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return Family::Text;
    case DataType::Binary:
    case DataType::LongBinary:
        return Family::Binary;
    default:
        return Family::Number;
    }
}

// The result types of the dialect: "/" is a Single for small types and otherwise a Double, "\" and Mod are whole
// numbers, a date plus a number of days is a date, and two dates differ by a number of days. Sums of whole numbers are
// computed with 64 bits by SQLite and shown as Long or, beyond its range, as Double.
DataType arithmeticType(BinaryOp op, DataType left, DataType right)
{
    switch (op) {
    case BinaryOp::Power:
        return DataType::Double;
    case BinaryOp::IntegerDivide:
    case BinaryOp::Mod:
        return DataType::Long;
    case BinaryOp::Divide:
        return isSmall(left) && isSmall(right) ? DataType::Single : DataType::Double;
    default:
        break;
    }
    const bool leftDate = left == DataType::Date;
    const bool rightDate = right == DataType::Date;
    if (op == BinaryOp::Add && (leftDate || rightDate))
        return DataType::Date;
    if (op == BinaryOp::Subtract && leftDate && !rightDate)
        return DataType::Date;
    if (leftDate || rightDate)
        return DataType::Double;
    const bool product = op == BinaryOp::Multiply;
    const DataType wider = rankOf(left, product) >= rankOf(right, product) ? left : right;
    if (isIntegerType(wider) || wider == DataType::Boolean)
        return DataType::Long;
    return wider == DataType::Unknown ? DataType::Double : wider;
}

// For columns of a UNION and branches of IIf: the narrowest type that holds both. Types of different families meet in
// Text, dates and numbers in Double.
DataType commonType(DataType left, DataType right)
{
    if (left == right || right == DataType::Unknown)
        return left;
    if (left == DataType::Unknown)
        return right;
    const Family family = familyOf(left);
    if (family != familyOf(right)) {
        const bool numbers = (family == Family::Number || family == Family::Date) &&
                             (familyOf(right) == Family::Number || familyOf(right) == Family::Date);
        return numbers ? DataType::Double : DataType::Text;
    }
    if (family == Family::Text)
        return left == DataType::Memo || right == DataType::Memo ? DataType::Memo : DataType::Text;
    if (family == Family::Binary)
        return DataType::LongBinary;
    if ((left == DataType::Byte && right == DataType::Boolean) ||
        (left == DataType::Boolean && right == DataType::Byte))
        return DataType::Integer;
    const DataType wider = rankOf(left, false) >= rankOf(right, false) ? left : right;
    return wider == DataType::Boolean ? DataType::Integer : wider;
}

// A plain field keeps size, rule and default of its table; a nested query's column keeps them too, but an autonumber
// counts only in its own table. A comparison is shown as -1 or 0, an Integer.
FieldInfo outputInfo(const QString &name, const Expr &expr)
{
    const FieldRef *column = expr.as<FieldRef>();
    FieldInfo info = column ? column->source->table->fields[column->field] : FieldInfo();
    if (column) {
        info.sourceTable = column->source->table->name;
        info.sourceField = info.name;
    } else if (const Output *output = expr.as<Output>()) {
        info = output->source->query->output()[size_t(output->index)].info;
        info.attributes &= ~AutoIncrement;
    } else {
        info.type = expr.type == DataType::Boolean ? DataType::Integer : expr.type;
        if (info.type == DataType::Unknown)
            info.type = DataType::Text;
        info.size = sizeOf(info.type);
    }
    info.name = name;
    return info;
}

// Decides whether an assignment can omit jet_to_...(): the conversion is called for each row, and plain columns of the
// same type need none.
bool fitsField(const Expr &expr, DataType field)
{
    const DataType type = expr.type;
    // A computed number can be outside the range of its nominal type.
    const bool exact = expr.hasFixedType || expr.as<FieldRef>() || expr.as<Output>();
    switch (field) {
    case DataType::Text:
    case DataType::Memo:
    case DataType::Guid:
        return familyOf(type) == Family::Text;
    case DataType::Binary:
    case DataType::LongBinary:
        return familyOf(type) == Family::Binary;
    case DataType::Byte:
        return exact && type == DataType::Byte;
    case DataType::Integer:
        return exact && (type == DataType::Byte || type == DataType::Integer || type == DataType::Boolean);
    case DataType::Long:
        return (exact && (isIntegerType(type) || type == DataType::Boolean)) ||
               (expr.as<Aggregate>() && type == DataType::Long);
    case DataType::Single:
        return exact && (isSmall(type));
    case DataType::Currency:
        return exact && (isIntegerType(type) || type == DataType::Currency || type == DataType::Boolean);
    case DataType::Double:
    case DataType::Decimal:
        return (exact || expr.as<Call>()) && (familyOf(type) == Family::Number || familyOf(type) == Family::Date);
    case DataType::Date:
        return (exact || expr.as<Call>()) && familyOf(type) == Family::Date;
    case DataType::Boolean: {
        const FieldRef *column = expr.as<FieldRef>();
        return column && type == DataType::Boolean && !column->source->nullable;
    }
    case DataType::Unknown:
        break;
    }
    return false;
}

QStringList fieldNames(const TableInfo &table)
{
    QStringList names;
    for (const FieldInfo &field : table.fields)
        names.append(field.name);
    return names;
}

} // namespace dao::sql::bound
