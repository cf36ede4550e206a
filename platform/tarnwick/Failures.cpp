#include "Failures.h"

#include <new>
#include <QLoggingCategory>

namespace tarnwick {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(lcFailures, "arvo.failures", QtWarningMsg)

static QString reasonOf(const std::exception &failure)
{
    if (const auto *error = dynamic_cast<const Error *>(&failure))
        return error->details();
    if (dynamic_cast<const std::bad_alloc *>(&failure))
        return u"There is not enough memory."_s;
    return QString::fromUtf8(failure.what());
}

QString failureText(const QString &message, const std::exception &failure)
{
    const QString reason = reasonOf(failure);
    return message.isEmpty() ? reason : QString(message + u"\n\n" + reason);
}

void showFailure(UserPrompts &prompts, int number, const QString &text)
{
    qCInfo(lcFailures).noquote() << text;
    prompts.showError(kErrorSeverity, number, text);
}

} // namespace tarnwick
