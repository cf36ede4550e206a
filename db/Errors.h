#pragma once
#include <dao/values/DaoException.h>
#include <tarnwick/Prompts.h>

namespace db {

/// A value conversion of the platform failed (a date or currency text that cannot be read). Carries the status code.
class OleException : public tarnwick::Error
{
public:
    /// Status code: the text is not a value of the requested type.
    static constexpr int kTypeMismatch = int(0x80020005u);

    explicit OleException(int statusCode)
        : Error(QStringLiteral("A value cannot be converted."), statusCode)
    {
    }
    int statusCode() const { return number(); }
    QString details() const override { return tarnwick::format(u"SCODE[%d]", statusCode()); }
};

/// Full text of a database failure: the message, an empty line, "[code] source description". An exception that is not
/// the engine's has code -1 and "???". If the engine knows the place in the SQL text, or has a hint, each follows on a
/// line of its own.
QString daoErrorText(const QString &message, const std::exception &exception);
/// Full text of a failed value conversion: the message, an empty line, "SCODE[code]".
QString oleErrorText(const QString &message, const OleException &exception);

/// Writes an error text to the program's log: category "arvo.database", information level. Off unless the application
/// or QT_LOGGING_RULES enables it.
void logError(const QString &text);

/// Reports a database failure in an error box of severity 3 and in the log.
template <typename... Args>
void showDaoError(tarnwick::UserPrompts &prompts, const std::exception &exception, const tarnwick::Message &message,
                  const Args &...args)
{
    const QString text = daoErrorText(tarnwick::format(QStringView(message.text), args...), exception);
    logError(text);
    prompts.showError(tarnwick::kErrorSeverity, message.number, text);
}

/// Reports a failed value conversion in an error box of severity 3 and in the log.
template <typename... Args>
void showOleError(tarnwick::UserPrompts &prompts, const OleException &exception, const tarnwick::Message &message,
                  const Args &...args)
{
    const QString text = oleErrorText(tarnwick::format(QStringView(message.text), args...), exception);
    logError(text);
    prompts.showError(tarnwick::kErrorSeverity, message.number, text);
}

} // namespace db
