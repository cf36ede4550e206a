#include "ValueStream.h"

#include <jet/wire/Protocol.h>

namespace jet {
namespace {

using dao::DataType;
using dao::Value;
using wire::Tag;

bool fits(Tag tag, DataType type)
{
    switch (tag) {
    case Tag::Null:
        return type != DataType::Boolean;
    case Tag::False:
    case Tag::True:
        return type == DataType::Boolean;
    case Tag::Byte:
        return type == DataType::Byte;
    case Tag::Short:
        return type == DataType::Integer;
    case Tag::Long:
        return type == DataType::Long;
    case Tag::Currency:
        return type == DataType::Currency;
    case Tag::Float:
        return type == DataType::Single;
    case Tag::Double:
        return type == DataType::Double;
    case Tag::Date:
        return type == DataType::Date;
    case Tag::Text:
        return dao::isTextType(type) || type == DataType::Guid;
    case Tag::Binary:
        return type == DataType::Binary || type == DataType::LongBinary;
    case Tag::Decimal:
        return type == DataType::Decimal;
    }
    return false;
}

Value takeDecimal(wire::WireReader &reader)
{
    bool isNumber = false;
    const double number = reader.blob().toDouble(&isNumber);
    if (!isNumber)
        throw wire::ProtocolError();
    return Value::fromDouble(number);
}

} // namespace

Value takeValue(wire::WireReader &reader, DataType type)
{
    const auto tag = Tag(reader.u8());
    if (!fits(tag, type))
        throw wire::ProtocolError();
    switch (tag) {
    case Tag::Null:
        return Value::null();
    case Tag::False:
        return Value::fromBoolean(false);
    case Tag::True:
        return Value::fromBoolean(true);
    case Tag::Byte:
        return Value::fromByte(reader.u8());
    case Tag::Short:
        return Value::fromShort(qint16(reader.u16()));
    case Tag::Long:
        return Value::fromLong(qint32(reader.u32()));
    case Tag::Currency:
        return Value::fromCurrencyScaled(reader.i64());
    case Tag::Float:
        return Value::fromFloat(reader.f32());
    case Tag::Double:
        return Value::fromDouble(reader.f64());
    case Tag::Date:
        return Value::fromDate(reader.f64());
    case Tag::Text:
        return Value::fromText(reader.text());
    case Tag::Binary:
        return Value::fromBinary(reader.blob());
    case Tag::Decimal:
        return takeDecimal(reader);
    }
    throw wire::ProtocolError();
}

} // namespace jet
