#include "GridSource.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QString GridSource::whyNotEditable(int, int) const
{
    return u"This column cannot be edited."_s;
}

bool GridSource::setText(int, int, const QString &)
{
    return false;
}

QString GridSource::whyNotInsertable() const
{
    return u"Rows cannot be inserted here."_s;
}

bool GridSource::insertRow(int)
{
    return false;
}

QString GridSource::whyNotDeletable(int) const
{
    return u"Rows cannot be deleted here."_s;
}

bool GridSource::deleteRow(int)
{
    return false;
}

} // namespace tarnwick
