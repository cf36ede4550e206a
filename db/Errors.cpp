#include "Errors.h"

namespace db {

using namespace Qt::StringLiterals;

QString daoErrorText(const QString &message, const std::exception &exception)
{
    const auto *known = dynamic_cast<const tarnwick::Error *>(&exception);
    return message + u"\n\n"_s + (known ? known->details() : u"[-1] ???"_s);
}

QString oleErrorText(const QString &message, const OleException &exception)
{
    return message + u"\n\n"_s + exception.details();
}

} // namespace db
