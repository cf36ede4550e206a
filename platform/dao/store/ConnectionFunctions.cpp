#include "Connection.h"
#include "ErrorTranslation.h"

#include <sqlite3.h>

namespace dao::store {

namespace {

// Whole numbers are passed as Double, like all untyped numbers of the dialect.
Value argumentOf(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return Value::fromDouble(double(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
        return Value::fromDouble(sqlite3_value_double(value));
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        return Value::fromText(QString::fromUtf8(text, sqlite3_value_bytes(value)));
    }
    default:
        return Value::null();
    }
}

void giveText(sqlite3_context *context, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text64(context, utf8.constData(), sqlite3_uint64(utf8.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void give(sqlite3_context *context, const Value &value)
{
    switch (value.type()) {
    case Value::Type::Short:
    case Value::Type::Long:
    case Value::Type::Byte:
    case Value::Type::Boolean:
        sqlite3_result_int64(context, value.integer());
        return;
    case Value::Type::Float:
    case Value::Type::Double:
    case Value::Type::Currency:
    case Value::Type::Date:
        sqlite3_result_double(context, value.real());
        return;
    case Value::Type::Text:
        giveText(context, value.text());
        return;
    default:
        sqlite3_result_null(context);
    }
}

struct AddedFunction
{
    Connection *connection;
    Connection::Function body;
};

void callFunction(sqlite3_context *context, int count, sqlite3_value **values)
{
    const auto &function = *static_cast<const AddedFunction *>(sqlite3_user_data(context));
    const auto stop = [context] {
        // Reported as an error of the function: an interrupt would roll back the whole transaction.
        const QByteArray text = QString::fromUtf16(kCancelText).toUtf8();
        sqlite3_result_error(context, text.constData(), int(text.size()));
    };
    // Exceptions must not pass through SQLite's C code.
    try {
        QList<Value> arguments;
        for (int i = 0; i < count; ++i)
            arguments.append(argumentOf(values[i]));
        give(context, function.body(arguments));
    } catch (const DaoException &e) {
        const QByteArray text = raiseText(e.number(), e.description()).toUtf8();
        sqlite3_result_error(context, text.constData(), int(text.size()));
    } catch (const tarnwick::Cancelled &) {
        stop();
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    } catch (...) {
        function.connection->throwAfterwards(std::current_exception());
        stop();
    }
}

void forget(void *body)
{
    delete static_cast<AddedFunction *>(body);
}

} // namespace

void Connection::addFunction(const QByteArray &name, const Function &body)
{
    sqlite3_create_function_v2(m_db, name.constData(), -1, SQLITE_UTF8, new AddedFunction{this, body}, &callFunction,
                               nullptr, nullptr, &forget);
}

} // namespace dao::store
