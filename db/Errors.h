#pragma once
#include <dao/values/DaoException.h>
#include <tarnwick/Failures.h>

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

/// Reports a database failure in an error box of severity 3 and in the log.
template <typename... Args>
void showDaoError(tarnwick::UserPrompts &prompts, const std::exception &exception, const tarnwick::Message &message,
                  const Args &...args)
{
    tarnwick::showFailure(prompts, message.number,
                          daoErrorText(tarnwick::format(QStringView(message.text), args...), exception));
}

/// Reports a failed value conversion in an error box of severity 3 and in the log.
template <typename... Args>
void showOleError(tarnwick::UserPrompts &prompts, const OleException &exception, const tarnwick::Message &message,
                  const Args &...args)
{
    tarnwick::showFailure(prompts, message.number,
                          oleErrorText(tarnwick::format(QStringView(message.text), args...), exception));
}

} // namespace db
