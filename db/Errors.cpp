#include "Errors.h"

#include <QLoggingCategory>

namespace db {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcDatabase, "arvo.database", QtWarningMsg)

QString placeText(const dao::DaoException &exception)
{
    QString below;
    if (exception.where().isValid())
        below += tarnwick::format(u"\n\nLine %d, column %d.", exception.where().line, exception.where().column);
    if (!exception.hint().isEmpty())
        below += (below.isEmpty() ? u"\n\n"_s : u" "_s) + exception.hint();
    return below;
}

} // namespace

QString daoErrorText(const QString &message, const std::exception &exception)
{
    int code = -1;
    QString engineText = u"???"_s;
    QString below;
    if (const auto *known = dynamic_cast<const dao::DaoException *>(&exception)) {
        code = known->number();
        engineText = tarnwick::format(u"%U %U", known->source(), known->description());
        below = placeText(*known);
    }
    return tarnwick::format(u"%S\n\n[%d] %S", message, code, engineText) + below;
}

QString oleErrorText(const QString &message, const OleException &exception)
{
    return tarnwick::format(u"%S\n\nSCODE[%d]", message, exception.statusCode());
}

void logError(const QString &text)
{
    qCInfo(lcDatabase).noquote() << text;
}

} // namespace db
