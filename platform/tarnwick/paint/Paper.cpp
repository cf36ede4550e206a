#include "Paper.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace tarnwick {

// Qt knows the unit of length of a locale but not its paper: Canada, Chile and the Philippines use metres and Letter
// paper. The list is that of the Unicode locale data.
QPageSize defaultPaper()
{
    QString name;
    for (const char *variable : {"LC_ALL", "LC_PAPER", "LANG"}) {
        name = qEnvironmentVariable(variable);
        if (!name.isEmpty())
            break;
    }
    switch (QLocale(name).territory()) {
    case QLocale::Belize:
    case QLocale::Canada:
    case QLocale::Chile:
    case QLocale::Colombia:
    case QLocale::CostaRica:
    case QLocale::ElSalvador:
    case QLocale::Guatemala:
    case QLocale::Mexico:
    case QLocale::Nicaragua:
    case QLocale::Panama:
    case QLocale::Philippines:
    case QLocale::PuertoRico:
    case QLocale::UnitedStates:
    case QLocale::Venezuela:
        // QLocale gives a locale without a country, like "C", the default country of its language.
        return QPageSize(name.contains(u'_') ? QPageSize::Letter : QPageSize::A4);
    default:
        return QPageSize(QPageSize::A4);
    }
}

std::optional<QPageSize> paperOfName(const QString &name)
{
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        const auto paper = QPageSize::PageSizeId(id);
        if (paper != QPageSize::Custom && QPageSize::key(paper).compare(name, Qt::CaseInsensitive) == 0)
            return QPageSize(paper);
    }
    return std::nullopt;
}

} // namespace tarnwick
